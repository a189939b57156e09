// SPDX-License-Identifier: BSD-3-Clause
#include <apps/lorix/commands/infocommand.h>

#include <apps/lorix/container.h>

#include <algorithm>

namespace lorix::cli {

namespace {

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

QString describe(const LorixParser& parser, const Overview& overview, const QString& path,
                 const Paint& paint)
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
    for (const SectionTag& section : parser.getSections()) {
        const QString title = printable(decodedField(section.title));
        line(section.id == 0 ? QStringLiteral("newest") : QString(),
             QStringLiteral("%1  %2")
                 .arg(section.id)
                 .arg(title.isEmpty() ? QStringLiteral("(no title)") : title));
    }
    return text;
}

QJsonObject toJson(const LorixParser& parser, const Overview& overview)
{
    QJsonObject object;
    object.insert(QStringLiteral("size"), overview.fileBytes);
    object.insert(QStringLiteral("historySize"), overview.historyBytes);
    object.insert(QStringLiteral("sections"), parser.getNumSections());
    object.insert(QStringLiteral("files"), parser.getNumFiles());
    object.insert(QStringLiteral("nested"), overview.nested);
    object.insert(QStringLiteral("sectionless"), overview.sectionless);
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
    answer.json.insert(QStringLiteral("info"), toJson(parser, overview));
    answer.text = describe(parser, overview, input.path, view.paint);
    return answer;
}

} // namespace lorix::cli
