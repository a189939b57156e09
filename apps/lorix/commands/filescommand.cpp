// SPDX-License-Identifier: BSD-3-Clause
#include <apps/lorix/commands/filescommand.h>

#include <apps/lorix/container.h>
#include <apps/lorix/table.h>

#include <QList>

namespace lorix::cli {

namespace {

// The section of every file by file id, -1 for none. Where damaged sizes let
// sections overlap, the newest one counts.
QList<int> sectionOfFiles(const LorixParser& parser)
{
    QList<int> sections(parser.getNumFiles(), -1);
    for (int id = parser.getNumSections() - 1; id >= 0; --id) {
        for (const FileTag& file : parser.getFilesInSection(id))
            sections[file.id] = id;
    }
    return sections;
}

QJsonObject toJson(const FileTag& file, int section)
{
    return {{QStringLiteral("id"), file.id},
            {QStringLiteral("section"), section},
            {QStringLiteral("position"), file.position},
            {QStringLiteral("taglen"), file.taglen},
            {QStringLiteral("filetype"), file.filetype},
            {QStringLiteral("filename"), file.filename},
            {QStringLiteral("desc"), file.desc},
            {QStringLiteral("comment"), file.comment},
            {QStringLiteral("compression"), file.compression},
            {QStringLiteral("filesize"), file.filesize},
            {QStringLiteral("cfilesize"), file.cfilesize},
            {QStringLiteral("blocksize"), file.blocksize},
            {QStringLiteral("offset"), file.offset},
            {QStringLiteral("md5file"), file.md5file},
            {QStringLiteral("md5cfile"), file.md5cfile}};
}

QJsonArray recordsOf(const QList<FileTag>& files, const QList<int>& sections)
{
    QJsonArray records;
    for (const FileTag& file : files)
        records.append(toJson(file, sections[file.id]));
    return records;
}

QString tableOf(const QList<FileTag>& files, const QList<int>& sections, const Paint& paint)
{
    if (files.isEmpty())
        return {};
    Table table;
    table.addColumn(QStringLiteral("id"), Table::Right);
    table.addColumn(QStringLiteral("section"), Table::Right);
    table.addColumn(QStringLiteral("bytes"), Table::Right);
    table.addColumn(QStringLiteral("stored"), Table::Right);
    table.addColumn(QStringLiteral("method"));
    table.addColumn(QStringLiteral("type"));
    table.addColumn(QStringLiteral("name"));
    for (const FileTag& file : files) {
        const int section = sections[file.id];
        table.addRow({QString::number(file.id),
                      section < 0 ? QStringLiteral("-") : QString::number(section),
                      QString::number(file.filesize), QString::number(file.cfilesize),
                      file.compression, decodedField(file.filetype), decodedField(file.filename)});
    }
    return table.text(paint);
}

} // namespace

QString FilesCommand::summary() const
{
    return QStringLiteral("List the embedded files in file order, each with its section");
}

QString FilesCommand::examples() const
{
    return QStringLiteral("  lorix files report.pdf\n"
                          "  lorix files --json report.pdf | jq '.files[] | .filename'");
}

Answer FilesCommand::examine(const Input& input, const View& view, bool& skipped) const
{
    Answer answer = Answer::start(name(), input.path);
    LorixParser parser;
    if (!openContainer(parser, input, answer, skipped))
        return answer;
    const QList<FileTag> files = parser.getFiles();
    const QList<int> sections = sectionOfFiles(parser);
    if (view.json)
        answer.json.insert(QStringLiteral("files"), recordsOf(files, sections));
    else
        answer.text = printable(input.path) + QStringLiteral(": ") +
                      counted(files.size(), QStringLiteral("embedded file"),
                              QStringLiteral("embedded files")) +
                      QLatin1Char('\n') + tableOf(files, sections, view.paint);
    return answer;
}

} // namespace lorix::cli
