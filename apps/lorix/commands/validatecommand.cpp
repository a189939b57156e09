// SPDX-License-Identifier: BSD-3-Clause
#include <apps/lorix/commands/validatecommand.h>

#include <apps/lorix/container.h>
#include <apps/lorix/interrupt.h>
#include <apps/lorix/progressline.h>
#include <apps/lorix/structure.h>
#include <apps/lorix/sumlist.h>
#include <apps/lorix/table.h>

#include <lorix/queues/storedrange.h>

#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <limits>

namespace lorix::cli {

namespace {

QList<CheckItem> itemsOf(const LorixParser& parser)
{
    QList<CheckItem> items;
    for (const SectionTag& section : parser.getSections()) {
        CheckItem item;
        item.kind = CheckItem::Section;
        item.id = section.id;
        item.size = section.size;
        items.append(item);
    }
    for (const FileTag& file : parser.getFiles()) {
        CheckItem item;
        item.kind = CheckItem::File;
        item.id = file.id;
        item.size = storedSize(file);
        items.append(item);
    }
    return items;
}

// What the numbers and what the bytes show, each finding once.
QList<Finding> findingsOf(const LorixParser& parser, qint64 fileBytes,
                          const QList<CheckItem>& items)
{
    QList<Finding> findings;
    for (const CheckItem& item : items) {
        for (const Finding& finding : item.diagnosis.findings) {
            const bool known = finding.code == QLatin1String("section.outside") ||
                               finding.code == QLatin1String("file.outside");
            if (!known)
                findings.append(finding);
        }
    }
    return structureFindings(parser, fileBytes) + findings;
}

qsizetype countOf(const QList<Finding>& findings, const char* severity)
{
    qsizetype count = 0;
    for (const Finding& finding : findings)
        count += finding.severity == QLatin1String(severity) ? 1 : 0;
    return count;
}

QString verdictOf(const CheckItem& item)
{
    if (item.valid)
        return QStringLiteral("ok");
    return item.diagnosis.words.isEmpty() ? QStringLiteral("invalid") : item.diagnosis.words;
}

QString tableOf(const LorixParser& parser, const QList<CheckItem>& items, const Paint& paint)
{
    if (items.isEmpty())
        return {};
    Table table;
    table.addColumn(QStringLiteral("item"));
    table.addColumn(QStringLiteral("bytes"), Table::Right);
    table.addColumn(QStringLiteral("verdict"));
    table.addColumn(QStringLiteral("name"));
    for (const CheckItem& item : items) {
        const bool section = item.kind == CheckItem::Section;
        table.addRow(
            {(section ? QStringLiteral("section %1") : QStringLiteral("file %1")).arg(item.id),
             QString::number(item.size), verdictOf(item),
             decodedField(section ? parser.getSection(item.id)->title
                                  : parser.getFile(item.id)->filename)});
    }
    return table.text(paint);
}

QString findingLines(const QList<Finding>& findings, const Paint& paint)
{
    QString lines;
    for (const Finding& finding : findings) {
        const bool error = finding.severity == QLatin1String("error");
        lines += (error ? paint.bad(finding.severity) : paint.warning(finding.severity)) +
                 QStringLiteral(": ") + printable(finding.message) +
                 paint.dim(QStringLiteral(" [%1]").arg(finding.code)) + QLatin1Char('\n');
        if (!finding.expected.isEmpty() && !finding.found.isEmpty())
            lines += QStringLiteral("       expected %1, found %2\n")
                         .arg(printable(finding.expected), printable(finding.found));
    }
    return lines;
}

QString headline(const QString& path, bool valid, const QString& what, const Paint& paint)
{
    return printable(path) + QStringLiteral(": ") +
           (valid ? paint.good(QStringLiteral("valid")) : paint.bad(QStringLiteral("NOT VALID"))) +
           QStringLiteral(", ") + what + QLatin1Char('\n');
}

void addRecords(Answer& answer, const LorixParser& parser, const QList<CheckItem>& items)
{
    QJsonArray sections;
    QJsonArray files;
    for (const CheckItem& item : items) {
        QJsonObject record{{QStringLiteral("id"), item.id}, {QStringLiteral("valid"), item.valid}};
        if (item.kind == CheckItem::Section) {
            const auto section = parser.getSection(item.id);
            record.insert(QStringLiteral("title"), section->title);
            record.insert(QStringLiteral("size"), section->size);
            record.insert(QStringLiteral("md5section"), section->md5section);
            sections.append(record);
        } else {
            const auto file = parser.getFile(item.id);
            record.insert(QStringLiteral("filename"), file->filename);
            record.insert(QStringLiteral("filesize"), file->filesize);
            record.insert(QStringLiteral("md5file"), file->md5file);
            files.append(record);
        }
    }
    answer.json.insert(QStringLiteral("sections"), sections);
    answer.json.insert(QStringLiteral("files"), files);
}

// Turns list entries into items; what cannot be checked at all is noted.
QList<CheckItem> itemsOf(const SumList& list)
{
    QList<CheckItem> items;
    for (const SumEntry& entry : list.entries) {
        CheckItem item;
        item.kind = CheckItem::Saved;
        const QFileInfo info(entry.path);
        const qint64 largest = std::numeric_limits<int>::max();
        item.size = info.isFile() ? qMin(info.size(), largest) : 0;
        item.saved = {entry.path, entry.md5, static_cast<int>(item.size)};
        items.append(item);
    }
    return items;
}

Finding listFinding(const char* code, const char* severity, const QString& message)
{
    Finding finding;
    finding.code = QLatin1String(code);
    finding.severity = QLatin1String(severity);
    finding.message = message;
    return finding;
}

// Why a file on disk does not count as checked; empty code where it does.
Finding savedProblem(const CheckItem& item)
{
    const QString& path = item.saved.filename;
    const QFileInfo info(path);
    QFile file(path);
    if (!info.exists())
        return listFinding("saved.missing", "error",
                           quoted(path) + QStringLiteral(": there is no such file"));
    if (!info.isFile())
        return listFinding("saved.unreadable", "error",
                           quoted(path) + QStringLiteral(": this is no regular file"));
    if (!file.open(QIODevice::ReadOnly))
        return listFinding("saved.unreadable", "error",
                           quoted(path) +
                               QStringLiteral(": cannot be read: %1").arg(file.errorString()));
    if (info.size() > std::numeric_limits<int>::max())
        return listFinding("saved.toolarge", "error",
                           quoted(path) + QStringLiteral(": is too large to be checked"));
    if (item.valid)
        return {};
    Finding finding = listFinding("saved.content.mismatch", "error",
                                  quoted(path) + QStringLiteral(": the content differs"));
    finding.expected = item.saved.md5;
    return finding;
}

} // namespace

QString ValidateCommand::summary() const
{
    return QStringLiteral("Check every digest of a document's history");
}

QString ValidateCommand::examples() const
{
    return QStringLiteral(
        "  lorix validate report.pdf            every section and file, newest section first\n"
        "  lorix validate -q -r archive/        all below a folder, without progress\n"
        "  lorix validate --saved MD5SUMS       files on disk against a list of md5sum");
}

void ValidateCommand::declare(CLI::App& app)
{
    FileCommand::declare(app);
    addText(app, "--saved", m_savedList,
            "Check files on disk against a list in the format of md5sum")
        ->type_name("FILE");
    app.get_option("--jobs")->description("How many digests are computed at once");
}

int ValidateCommand::run(Console& console, const GlobalOptions& options)
{
    m_console = &console;
    if (!hasInputs() && m_savedList.isEmpty()) {
        console.error(QStringLiteral("validate needs a FILE or --saved LIST"));
        return Unusable;
    }
    int exitCode = Done;
    if (!m_savedList.isEmpty()) {
        bool skipped = false;
        const View view{Paint(console.colored()), options.json};
        const Answer answer = examineList(view, skipped);
        if (!skipped)
            print(answer, console, options);
        exitCode = answer.exitCode;
    }
    if (Interrupt::requested())
        return Interrupted;
    return hasInputs() ? worse(exitCode, FileCommand::run(console, options)) : exitCode;
}

// Of many files, each has a thread of its own already and takes those that no
// other file needs.
bool ValidateCommand::check(CheckRun& run, const QString& label, bool alone) const
{
    if (!alone) {
        const int extra = std::max(0, jobs() - ++m_busy);
        m_busy += extra;
        const bool whole = run.run(extra + 1, [](qint64) {});
        m_busy -= extra + 1;
        return whole;
    }
    ProgressLine progress(*m_console, label, run.totalBytes());
    return run.run(jobs(), [&progress](qint64 done) { progress.update(done); });
}

Answer ValidateCommand::examine(const Input& input, const View& view, bool& skipped) const
{
    Answer answer = Answer::start(name(), input.path);
    LorixParser parser;
    if (!openContainer(parser, input, answer, skipped))
        return answer;
    QList<CheckItem> items = itemsOf(parser);
    CheckRun run(&parser, input.path, items);
    if (!check(run, input.path, hasSingleInput())) {
        skipped = true;
        return answer;
    }
    const QList<Finding> findings = findingsOf(parser, QFileInfo(input.path).size(), items);
    answer.addFindings(findings);
    bool valid = countOf(findings, "error") == 0;
    for (const CheckItem& item : items)
        valid = valid && item.valid;
    if (!valid)
        answer.exitCode = worse(answer.exitCode, No);
    answer.json.insert(QStringLiteral("valid"), valid);
    if (view.json) {
        addRecords(answer, parser, items);
        return answer;
    }
    answer.text =
        headline(input.path, valid,
                 counted(parser.getNumSections(), QStringLiteral("section"),
                         QStringLiteral("sections")) +
                     QStringLiteral(", ") +
                     counted(parser.getNumFiles(), QStringLiteral("file"), QStringLiteral("files")),
                 view.paint) +
        tableOf(parser, items, view.paint) + findingLines(findings, view.paint);
    return answer;
}

Answer ValidateCommand::examineList(const View& view, bool& skipped) const
{
    Answer answer = Answer::start(name(), m_savedList);
    QFile file(m_savedList);
    if (!file.open(QIODevice::ReadOnly)) {
        answer.fail(Unusable, QStringLiteral("input.unreadable"), m_savedList,
                    QStringLiteral("cannot be read: %1").arg(file.errorString()));
        return answer;
    }
    const SumList list = SumList::parse(file.readAll());
    if (list.entries.isEmpty()) {
        answer.fail(Unusable, QStringLiteral("input.nolist"), m_savedList,
                    QStringLiteral("holds no line in the format of md5sum"));
        return answer;
    }
    QList<CheckItem> items = itemsOf(list);
    CheckRun run(nullptr, QString(), items);
    if (!check(run, m_savedList, true)) {
        skipped = true;
        return answer;
    }
    QList<Finding> findings;
    Table table;
    table.addColumn(QStringLiteral("bytes"), Table::Right);
    table.addColumn(QStringLiteral("verdict"));
    table.addColumn(QStringLiteral("name"));
    QJsonArray records;
    for (const CheckItem& item : items) {
        const Finding problem = savedProblem(item);
        const bool valid = problem.code.isEmpty();
        if (!valid)
            findings.append(problem);
        table.addRow({QString::number(item.size),
                      valid ? QStringLiteral("ok")
                            : problem.message.mid(quoted(item.saved.filename).size() + 2),
                      item.saved.filename});
        records.append(QJsonObject{{QStringLiteral("filename"), item.saved.filename},
                                   {QStringLiteral("md5"), item.saved.md5},
                                   {QStringLiteral("valid"), valid}});
    }
    for (const int line : list.badLines)
        findings.append(
            listFinding("list.line", "warning",
                        QStringLiteral("line %1 is not in the format of md5sum").arg(line)));
    answer.addFindings(findings);
    const bool valid = answer.exitCode == Done;
    answer.json.insert(QStringLiteral("valid"), valid);
    answer.json.insert(QStringLiteral("saved"), records);
    answer.text = headline(m_savedList, valid,
                           counted(items.size(), QStringLiteral("file"), QStringLiteral("files")),
                           view.paint) +
                  table.text(view.paint) + findingLines(findings, view.paint);
    return answer;
}

} // namespace lorix::cli
