// SPDX-License-Identifier: BSD-3-Clause
#include <apps/lorix/commands/sectionscommand.h>

#include <apps/lorix/container.h>
#include <apps/lorix/table.h>

namespace lorix::cli {

namespace {

QJsonObject toJson(const SectionTag& section)
{
    return {{QStringLiteral("id"), section.id},
            {QStringLiteral("position"), section.position},
            {QStringLiteral("taglen"), section.taglen},
            {QStringLiteral("version"), section.version},
            {QStringLiteral("creator"), section.creator},
            {QStringLiteral("title"), section.title},
            {QStringLiteral("left"), section.left},
            {QStringLiteral("size"), section.size},
            {QStringLiteral("index"), section.index},
            {QStringLiteral("md5section"), section.md5section},
            {QStringLiteral("previousmd5"), section.previousmd5},
            {QStringLiteral("previousmarker"), section.previousmarker}};
}

} // namespace

QString SectionsCommand::summary() const
{
    return QStringLiteral("List the sections, newest first");
}

QString SectionsCommand::examples() const
{
    return QStringLiteral("  lorix sections report.pdf\n"
                          "  lorix sections --json report.pdf | jq '.sections[].title'");
}

Answer SectionsCommand::examine(const Input& input, const View& view, bool& skipped) const
{
    Answer answer = Answer::start(name(), input.path);
    LorixParser parser;
    if (!openContainer(parser, input, answer, skipped))
        return answer;
    Table table;
    table.addColumn(QStringLiteral("id"), Table::Right);
    table.addColumn(QStringLiteral("start"), Table::Right);
    table.addColumn(QStringLiteral("bytes"), Table::Right);
    table.addColumn(QStringLiteral("md5"));
    table.addColumn(QStringLiteral("creator"));
    table.addColumn(QStringLiteral("title"));
    QJsonArray records;
    for (const SectionTag& section : parser.getSections()) {
        table.addRow({QString::number(section.id),
                      QString::number(qint64(section.position) - section.left),
                      QString::number(section.size), section.md5section,
                      decodedField(section.creator), decodedField(section.title)});
        records.append(toJson(section));
    }
    answer.json.insert(QStringLiteral("sections"), records);
    answer.text =
        printable(input.path) + QStringLiteral(": ") +
        counted(parser.getNumSections(), QStringLiteral("section"), QStringLiteral("sections")) +
        QLatin1Char('\n') + (table.isEmpty() ? QString() : table.text(view.paint));
    return answer;
}

} // namespace lorix::cli
