// SPDX-License-Identifier: BSD-3-Clause
#include <apps/lorix/commands/infocommand.h>

#include <apps/lorix/container.h>
#include <apps/lorix/table.h>

#include <lorix/summary/summarycreator.h>

#include <algorithm>

namespace lorix::cli {

namespace {

constexpr qsizetype glanceSteps = 10;

struct Overview
{
    qint64 fileBytes = 0;
    qint64 historyBytes = 0;
    qint64 nested = 0;
    qint64 sectionless = 0;
};

Overview overviewOf(const LorixParser& parser, qint64 fileBytes)
{
    Overview overview;
    overview.fileBytes = fileBytes;
    for (const SectionTag& section : parser.getSections())
        overview.historyBytes += std::max(section.size, 0);
    // Damaged sizes may claim more than there is.
    overview.historyBytes = std::min(overview.historyBytes, fileBytes);
    for (const FileTag& file : parser.getFiles())
        overview.nested += file.filename.endsWith(QLatin1String(".lorix")) ? 1 : 0;
    overview.sectionless = parser.getSectionlessFiles().size();
    return overview;
}

QString share(qint64 part, qint64 whole)
{
    const double percent =
        whole > 0 ? 100.0 * static_cast<double>(part) / static_cast<double>(whole) : 0;
    return QString::number(percent, 'f', 1) + QStringLiteral(" %");
}

// The steps of the sections alone, newest first.
QList<Summary> stepsOf(LorixParser& parser)
{
    QList<Summary> steps = SummaryCreator().createSummaries(parser);
    steps.resize(parser.getNumSections());
    std::reverse(steps.begin(), steps.end());
    return steps;
}

QString decoded(const QString& text, const Summary& step)
{
    return step.fromXml ? decodedEntities(text) : decodedField(text);
}

QString whoOf(const Summary& step)
{
    const QString user = decoded(step.user, step);
    const QString host = decoded(step.host, step);
    return user.isEmpty() || host.isEmpty() ? user + host : user + QLatin1Char('@') + host;
}

// The newest steps, as many as are read at a glance.
QString stepTable(const QList<Summary>& steps, const Paint& paint)
{
    Table table;
    table.addColumn(QStringLiteral("step"), Table::Right);
    table.addColumn(QStringLiteral("when"));
    table.addColumn(QStringLiteral("who"));
    table.addColumn(QStringLiteral("tool"));
    table.addColumn(QStringLiteral("title"));
    for (const Summary& step : steps.mid(0, glanceSteps)) {
        const QString title = decoded(step.title, step);
        table.addRow({QString::number(step.tagId), decoded(step.timestamp, step), whoOf(step),
                      decoded(step.tool, step),
                      title.isEmpty() ? QStringLiteral("(no title)") : title});
    }
    QString text = table.text(paint);
    const qsizetype older = steps.size() - glanceSteps;
    if (older > 0)
        text +=
            QStringLiteral("and %1; 'lorix summary' tells them all\n")
                .arg(counted(older, QStringLiteral("older step"), QStringLiteral("older steps")));
    return text;
}

QString describe(const LorixParser& parser, const Overview& overview, const QList<Summary>& steps,
                 const QString& path, const Paint& paint)
{
    QString text = paint.bold(printable(path)) + QLatin1Char('\n');
    const auto line = [&text](const QString& label, const QString& value) {
        text += QStringLiteral("  %1 %2\n").arg(label.leftJustified(9), value);
    };
    QString contents =
        counted(parser.getNumSections(), QStringLiteral("step"), QStringLiteral("steps")) +
        QStringLiteral(", ") +
        counted(parser.getNumFiles(), QStringLiteral("embedded file"),
                QStringLiteral("embedded files"));
    if (overview.nested > 0)
        contents += QStringLiteral(", ") +
                    counted(overview.nested, QStringLiteral("of them with a history of its own"),
                            QStringLiteral("of them with histories of their own"));
    line(QStringLiteral("history"), contents);
    line(QStringLiteral("size"), humanSize(overview.fileBytes) + QStringLiteral(", history ") +
                                     humanSize(overview.historyBytes) + QStringLiteral(" (") +
                                     share(overview.historyBytes, overview.fileBytes) +
                                     QLatin1Char(')'));
    if (overview.sectionless > 0)
        line(QStringLiteral("loose"),
             counted(overview.sectionless, QStringLiteral("file that belongs to no step"),
                     QStringLiteral("files that belong to no step")));
    if (!steps.isEmpty())
        text += stepTable(steps, paint);
    return text;
}

QJsonArray stepsToJson(const QList<Summary>& steps)
{
    QJsonArray array;
    for (const Summary& step : steps)
        array.append(QJsonObject{{QStringLiteral("id"), step.tagId},
                                 {QStringLiteral("title"), step.title},
                                 {QStringLiteral("timestamp"), step.timestamp},
                                 {QStringLiteral("user"), step.user},
                                 {QStringLiteral("host"), step.host},
                                 {QStringLiteral("tool"), step.tool}});
    return array;
}

QJsonObject toJson(const LorixParser& parser, const Overview& overview, const QList<Summary>& steps)
{
    QJsonObject object;
    object.insert(QStringLiteral("size"), overview.fileBytes);
    object.insert(QStringLiteral("historySize"), overview.historyBytes);
    object.insert(QStringLiteral("sections"), parser.getNumSections());
    object.insert(QStringLiteral("files"), parser.getNumFiles());
    object.insert(QStringLiteral("nested"), overview.nested);
    object.insert(QStringLiteral("sectionless"), overview.sectionless);
    object.insert(QStringLiteral("steps"), stepsToJson(steps));
    return object;
}

} // namespace

QString InfoCommand::summary() const
{
    return QStringLiteral("Say what a document carries: steps, files, sizes");
}

QString InfoCommand::examples() const
{
    return QStringLiteral("  lorix report.pdf             the overview (short for lorix info)\n"
                          "  lorix info -r archive/       one for every container below a folder\n"
                          "  lorix info --json *.pdf      for scripts, one object per line");
}

Answer InfoCommand::examine(const Input& input, const View& view, bool& skipped) const
{
    Answer answer = Answer::start(name(), input.path);
    LorixParser parser;
    if (!openContainer(parser, input, answer, skipped))
        return answer;
    const Overview overview = overviewOf(parser, QFileInfo(input.path).size());
    const QList<Summary> steps = stepsOf(parser);
    if (view.json)
        answer.json.insert(QStringLiteral("info"), toJson(parser, overview, steps));
    else
        answer.text = describe(parser, overview, steps, input.path, view.paint);
    return answer;
}

} // namespace lorix::cli
