// SPDX-License-Identifier: BSD-3-Clause
#include <apps/lorix/commands/extractcommand.h>

#include <apps/lorix/container.h>
#include <apps/lorix/interrupt.h>
#include <apps/lorix/progressline.h>
#include <apps/lorix/table.h>
#include <apps/lorix/targetnames.h>

#include <QJsonDocument>
#include <QRegularExpression>
#include <QSet>

#include <algorithm>
#include <thread>

namespace lorix::cli {

namespace {

// An id, or a pattern that a name or its last component matches as a whole.
class Chooser
{
public:
    explicit Chooser(const QString& text)
        : m_pattern(QRegularExpression::wildcardToRegularExpression(text))
    {
        bool number = false;
        m_id = text.toInt(&number);
        if (!number || m_id < 0)
            m_id = -1;
    }

    bool matches(const FileTag& file, const QString& name) const
    {
        if (m_id >= 0)
            return file.id == m_id;
        return m_pattern.match(name).hasMatch() ||
               m_pattern.match(name.section(QLatin1Char('/'), -1)).hasMatch();
    }

private:
    int m_id = -1;
    QRegularExpression m_pattern;
};

} // namespace

QString ExtractCommand::summary() const
{
    return QStringLiteral("Write embedded files to a folder");
}

QString ExtractCommand::examples() const
{
    return QStringLiteral("  lorix extract report.pdf -d out         everything\n"
                          "  lorix extract report.pdf 3 '*.txt'      file 3 and all texts\n"
                          "  lorix extract --dry-run report.pdf      what would be written where");
}

void ExtractCommand::declare(CLI::App& app)
{
    addText(app, "FILE", m_file, "Document to look into")->required();
    addTexts(app, "WHAT", m_patterns,
             "Ids of files, or patterns of their names with *, ? and [...]; all files without");
    addText(app, "-d,--directory", m_folder,
            "Folder to write to, the current one by default; "
            "made where it is missing")
        ->type_name("FOLDER");
    app.add_flag("--verify", m_options.verify, "Compare the digests as the bytes pass");
    app.add_flag("--keep-bad", m_options.keepBad, "Keep files that are damaged as well");
    app.add_flag("--overwrite", m_overwrite, "Replace files that exist");
    app.add_flag("--dry-run", m_dryRun, "Only say what would be written");
    m_options.jobs = std::max(1, static_cast<int>(std::thread::hardware_concurrency()));
    app.add_option("--jobs", m_options.jobs, "How many files are written at once")
        ->check(CLI::Range(1, 1024))
        ->default_str("one per processor");
}

// Files in ascending order of ids; false when something was asked for that is
// not there.
bool ExtractCommand::choose(const LorixParser& parser, Answer& answer,
                            QList<ExtractItem>& items) const
{
    const QList<FileTag> files = parser.getFiles();
    const TargetNames names(files);
    QSet<int> chosen;
    for (const QString& pattern : m_patterns) {
        const Chooser chooser(pattern);
        bool any = false;
        for (const FileTag& file : files) {
            if (!chooser.matches(file, decodedField(file.filename)))
                continue;
            chosen.insert(file.id);
            any = true;
        }
        if (!any)
            answer.fail(No, QStringLiteral("extract.nomatch"), m_file,
                        QStringLiteral("there is no embedded file %1; 'lorix files' lists them")
                            .arg(quoted(pattern)));
    }
    for (const FileTag& file : files) {
        if (!m_patterns.isEmpty() && !chosen.contains(file.id))
            continue;
        ExtractItem item;
        item.file = file;
        item.name = names.nameOf(file.id);
        items.append(item);
    }
    return answer.exitCode == Done;
}

int ExtractCommand::run(Console& console, const GlobalOptions& options)
{
    Answer answer = Answer::start(name(), m_file);
    LorixParser parser;
    bool skipped = false;
    if (openContainer(parser, {m_file, true, false}, answer, skipped)) {
        QList<ExtractItem> items;
        choose(parser, answer, items);
        const TargetFolder folder(m_folder, m_overwrite);
        if (m_dryRun) {
            for (ExtractItem& item : items)
                item.failure = folder.obstacle(item.name);
        } else {
            ExtractRun run(parser, m_file, folder, m_options, items);
            ProgressLine progress(console, m_file, run.totalBytes());
            if (!run.run([&progress](qint64 done) { progress.update(done); }))
                return Interrupted;
        }
        report(answer, items, Paint(console.colored()));
    }
    if (options.json) {
        console.writeBytes(QJsonDocument(answer.json).toJson(QJsonDocument::Compact) + '\n');
    } else {
        console.write(answer.text);
        for (const QString& error : answer.errors)
            console.error(error);
    }
    return console.flush() ? answer.exitCode : worse(answer.exitCode, Failed);
}

QString ExtractCommand::outcomeOf(const ExtractItem& item) const
{
    if (!item.failure.isEmpty())
        return m_dryRun ? QStringLiteral("cannot be written") : QStringLiteral("not written");
    if (m_dryRun)
        return QStringLiteral("would be written");
    if (item.findings.isEmpty())
        return m_options.verify ? QStringLiteral("verified") : QStringLiteral("written");
    return item.written ? QStringLiteral("DAMAGED, kept") : QStringLiteral("DAMAGED, not kept");
}

void ExtractCommand::report(Answer& answer, const QList<ExtractItem>& items,
                            const Paint& paint) const
{
    const TargetFolder folder(m_folder, m_overwrite);
    Table table;
    table.addColumn(QStringLiteral("id"), Table::Right);
    table.addColumn(QStringLiteral("bytes"), Table::Right);
    table.addColumn(QStringLiteral("outcome"));
    table.addColumn(QStringLiteral("target"));
    QJsonArray records;
    QList<Finding> findings;
    for (const ExtractItem& item : items) {
        const QString target = folder.pathOf(item.name);
        table.addRow({QString::number(item.file.id), QString::number(item.file.filesize),
                      outcomeOf(item), target});
        records.append(QJsonObject{{QStringLiteral("id"), item.file.id},
                                   {QStringLiteral("filename"), item.file.filename},
                                   {QStringLiteral("filesize"), item.file.filesize},
                                   {QStringLiteral("target"), target},
                                   {QStringLiteral("written"), item.written}});
        if (!item.failure.isEmpty())
            answer.fail(Failed, QStringLiteral("extract.target"), target, item.failure);
        findings += item.findings;
    }
    for (const Finding& finding : findings)
        answer.errors.append(printable(m_file) + QStringLiteral(": ") + printable(finding.message) +
                             QStringLiteral(" [%1]").arg(finding.code));
    answer.addFindings(findings);
    answer.json.insert(QStringLiteral("directory"), m_folder);
    answer.json.insert(QStringLiteral("files"), records);
    if (!items.isEmpty())
        answer.text = table.text(paint);
}

} // namespace lorix::cli
