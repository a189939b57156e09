// SPDX-License-Identifier: BSD-3-Clause
#include <apps/lorix/summaryjson.h>

namespace lorix::cli {

namespace {

QJsonObject toJson(const QHash<QString, QString>& texts)
{
    QJsonObject object;
    for (auto it = texts.cbegin(); it != texts.cend(); ++it)
        object.insert(it.key(), it.value());
    return object;
}

template <typename Record>
void addAttributes(QJsonObject& object, const Record& record)
{
    object.insert(QStringLiteral("userAttributes"), toJson(record.userAttributes));
    object.insert(QStringLiteral("userAttributeUnits"), toJson(record.userAttributeUnits));
    object.insert(QStringLiteral("userAttributeKeys"),
                  QJsonArray::fromStringList(record.userAttributeKeys));
}

} // namespace

QJsonObject toJson(const FileSummary& file)
{
    QJsonObject object{{QStringLiteral("tagId"), file.tagId},
                       {QStringLiteral("filename"), file.filename},
                       {QStringLiteral("filepath"), file.filepath},
                       {QStringLiteral("filetype"), file.filetype},
                       {QStringLiteral("description"), file.description},
                       {QStringLiteral("comment"), file.comment},
                       {QStringLiteral("lastModified"), file.lastModified},
                       {QStringLiteral("generateMD5"), file.generateMD5},
                       {QStringLiteral("embedded"), file.embedded},
                       {QStringLiteral("preview"), file.preview},
                       {QStringLiteral("previewWS"), file.previewWS},
                       {QStringLiteral("thumbnail"), file.thumbnail},
                       {QStringLiteral("thumbnailOnly"), file.thumbnailOnly},
                       {QStringLiteral("uncompressedSize"), file.uncompressedSize},
                       {QStringLiteral("uncompressedMD5"), file.uncompressedMD5},
                       {QStringLiteral("compressedMethod"), file.compressedMethod},
                       {QStringLiteral("compressedSize"), file.compressedSize},
                       {QStringLiteral("compressedMD5"), file.compressedMD5},
                       {QStringLiteral("filePurpose"), file.filePurpose},
                       {QStringLiteral("fromTags"), file.fromTags}};
    addAttributes(object, file);
    return object;
}

QJsonArray toJson(const QList<FileSummary>& files)
{
    QJsonArray array;
    for (const FileSummary& file : files)
        array.append(toJson(file));
    return array;
}

QJsonObject toJson(const Summary& summary)
{
    QJsonObject object{{QStringLiteral("tagId"), summary.tagId},
                       {QStringLiteral("lorixRootFile"), summary.lorixRootFile},
                       {QStringLiteral("timestamp"), summary.timestamp},
                       {QStringLiteral("title"), summary.title},
                       {QStringLiteral("description"), summary.description},
                       {QStringLiteral("comment"), summary.comment},
                       {QStringLiteral("command"), summary.command},
                       {QStringLiteral("tool"), summary.tool},
                       {QStringLiteral("toolPath"), summary.toolPath},
                       {QStringLiteral("host"), summary.host},
                       {QStringLiteral("user"), summary.user},
                       {QStringLiteral("creator"), summary.creator},
                       {QStringLiteral("pdfTitle"), summary.pdfTitle},
                       {QStringLiteral("pdfAuthor"), summary.pdfAuthor},
                       {QStringLiteral("pdfSubject"), summary.pdfSubject},
                       {QStringLiteral("pdfKeywords"), summary.pdfKeywords},
                       {QStringLiteral("pdfProducer"), summary.pdfProducer},
                       {QStringLiteral("pdfCreator"), summary.pdfCreator},
                       {QStringLiteral("files"), toJson(summary.files)},
                       {QStringLiteral("md5"), summary.md5},
                       {QStringLiteral("fromXml"), summary.fromXml}};
    addAttributes(object, summary);
    return object;
}

} // namespace lorix::cli
