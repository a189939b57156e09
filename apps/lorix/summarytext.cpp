// SPDX-License-Identifier: BSD-3-Clause
#include <apps/lorix/summarytext.h>

#include <QSet>

namespace lorix::cli {

namespace {

const QString summaryName = QStringLiteral("ws_summary.xml");

// A name or text that stands both in a marker and, for files with a summary,
// in the XML.
QString decoded(const FileSummary& file, const QString& text, const QString& inMarker)
{
    const bool asInMarker = file.fromTags || (file.tagId >= 0 && text == inMarker);
    return decodedField(asInMarker ? text : decodedEntities(text));
}

QString joined(const QString& first, const QString& between, const QString& second)
{
    return first.isEmpty() || second.isEmpty() ? first + second : first + between + second;
}

// "key  value unit", each key once, in document order.
template <typename Record>
QStringList attributeLines(const Record& record)
{
    QStringList lines;
    QSet<QString> seen;
    for (const QString& key : record.userAttributeKeys) {
        if (seen.contains(key))
            continue;
        seen.insert(key);
        const QString value = joined(record.userAttributes.value(key), QStringLiteral(" "),
                                     record.userAttributeUnits.value(key));
        lines.append(decodedEntities(key + QStringLiteral(" = ") + value));
    }
    return lines;
}

QString flagsOf(const FileSummary& file)
{
    QStringList flags;
    const auto add = [&flags](bool set, const QString& name) {
        if (set)
            flags.append(name);
    };
    add(file.generateMD5, QStringLiteral("MD5 generated"));
    add(file.preview, QStringLiteral("preview"));
    add(file.previewWS, QStringLiteral("preview of the step"));
    add(file.thumbnail, QStringLiteral("thumbnail"));
    add(file.thumbnailOnly, QStringLiteral("thumbnail only"));
    return flags.join(QStringLiteral(", "));
}

QString exactSize(int bytes)
{
    if (bytes < 1024)
        return humanSize(bytes);
    return QStringLiteral("%1 (%2 bytes)").arg(humanSize(bytes)).arg(bytes);
}

QList<FileSummary> withPurpose(const Summary& step, const QString& purpose, bool full)
{
    QList<FileSummary> files;
    for (const FileSummary& file : step.files) {
        // That a summary lies in the container as well is no news.
        const bool own = step.fromXml && file.fromTags && file.filename == summaryName;
        if (file.filePurpose == purpose && (full || !own))
            files.append(file);
    }
    return files;
}

} // namespace

SummaryText::SummaryText(const LorixParser& parser, const Paint& paint, bool full)
    : m_parser(parser), m_paint(paint), m_full(full)
{}

void SummaryText::addHeading(const QString& path)
{
    const int steps = m_parser.getNumSections();
    m_text += m_paint.bold(printable(path)) + QStringLiteral(": ") +
              counted(steps, QStringLiteral("step"), QStringLiteral("steps")) +
              (steps > 1 ? QStringLiteral(", newest first\n") : QStringLiteral("\n"));
}

void SummaryText::addStep(const Summary& step)
{
    const auto section = m_parser.getSection(step.tagId);
    const QString marked = section ? decodedField(section->title) : QString();
    const QString title = step.fromXml ? decodedEntities(step.title) : marked;
    addTitle(QString::number(step.tagId), title.isEmpty() ? marked : title);
    if (!step.fromXml) {
        const bool broken = !step.files.isEmpty() && step.files.last().filename == summaryName;
        addLine(QStringLiteral("note"),
                broken ? QStringLiteral("its summary cannot be read; this is what the markers tell")
                       : QStringLiteral("no summary; this is what the markers tell"));
        if (section)
            addLine(QStringLiteral("creator"), decodedField(section->creator));
    }
    addStepFields(step);
    addFiles(QStringLiteral("inputs"), withPurpose(step, QStringLiteral("InFile"), m_full));
    addFiles(QStringLiteral("outputs"), withPurpose(step, QStringLiteral("OutFile"), m_full));
    addFiles(step.fromXml ? QStringLiteral("not named") : QStringLiteral("files"),
             withPurpose(step, QStringLiteral("Undefined"), m_full));
    addAttributes(attributeLines(step));
}

void SummaryText::addLooseFiles(const QList<FileSummary>& files)
{
    if (files.isEmpty())
        return;
    addTitle(QStringLiteral("-"), QStringLiteral("Files that belong to no step"));
    addFiles(QStringLiteral("files"), files);
}

void SummaryText::addTitle(const QString& number, const QString& title)
{
    if (!m_text.isEmpty())
        m_text += QLatin1Char('\n');
    m_text += number + QStringLiteral("  ") +
              (title.isEmpty() ? QStringLiteral("(no title)") : m_paint.bold(printable(title))) +
              QLatin1Char('\n');
}

void SummaryText::addLine(const QString& label, const QString& value)
{
    if (!value.isEmpty())
        m_text += QStringLiteral("   ") + m_paint.dim(label.leftJustified(11)) + QLatin1Char(' ') +
                  printable(value) + QLatin1Char('\n');
}

void SummaryText::addStepFields(const Summary& step)
{
    if (!step.fromXml)
        return;
    const auto line = [this](const QString& label, const QString& stored) {
        addLine(label, decodedEntities(stored));
    };
    line(QStringLiteral("time"), step.timestamp);
    line(QStringLiteral("who"), joined(step.user, QStringLiteral(" on "), step.host));
    line(QStringLiteral("tool"), step.toolPath.isEmpty()
                                     ? step.tool
                                     : joined(step.tool, QStringLiteral(" at "), step.toolPath));
    line(QStringLiteral("command"), step.command);
    line(QStringLiteral("about"), step.description);
    line(QStringLiteral("comment"), step.comment);
    line(QStringLiteral("creator"), step.creator);
    if (m_full)
        addDocumentFields(step);
}

void SummaryText::addDocumentFields(const Summary& step)
{
    const std::pair<QString, QString> fields[] = {{QStringLiteral("document"), step.lorixRootFile},
                                                  {QStringLiteral("PDF title"), step.pdfTitle},
                                                  {QStringLiteral("PDF author"), step.pdfAuthor},
                                                  {QStringLiteral("PDF subject"), step.pdfSubject},
                                                  {QStringLiteral("PDF words"), step.pdfKeywords},
                                                  {QStringLiteral("PDF maker"), step.pdfProducer},
                                                  {QStringLiteral("PDF source"), step.pdfCreator},
                                                  {QStringLiteral("signature"), step.md5}};
    for (const auto& field : fields)
        addLine(field.first, decodedEntities(field.second));
}

void SummaryText::addAttributes(const QStringList& lines)
{
    for (qsizetype i = 0; i < lines.size(); ++i)
        addLine(i == 0 ? QStringLiteral("attributes") : QString(), lines.at(i));
}

void SummaryText::addFiles(const QString& label, const QList<FileSummary>& files)
{
    for (qsizetype i = 0; i < files.size(); ++i) {
        const FileSummary& file = files.at(i);
        const auto tag = m_parser.getFile(file.tagId);
        const QString name = decoded(file, file.filename, tag ? tag->filename : QString());
        QString line =
            (tag ? QStringLiteral("#%1").arg(tag->id) : QStringLiteral("-")).leftJustified(5) +
            QLatin1Char(' ') + humanSize(file.uncompressedSize).rightJustified(10) +
            QStringLiteral("  ") + name;
        if (!tag)
            line += file.embedded ? QStringLiteral("  (embedded, but not found)")
                                  : QStringLiteral("  (not embedded)");
        addLine(i == 0 ? label : QString(), line);
        if (m_full)
            addFileFields(file);
    }
}

void SummaryText::addFileFields(const FileSummary& file)
{
    const auto tag = m_parser.getFile(file.tagId);
    const auto field = [this](const QString& label, const QString& value) {
        if (!value.isEmpty())
            addLine(QString(), QStringLiteral("      %1 %2").arg(label.leftJustified(10), value));
    };
    const FileTag marker = tag ? *tag : FileTag();
    field(QStringLiteral("path"), decodedEntities(file.filepath));
    field(QStringLiteral("type"), decoded(file, file.filetype, marker.filetype));
    field(QStringLiteral("about"), decoded(file, file.description, marker.desc));
    field(QStringLiteral("comment"), decoded(file, file.comment, marker.comment));
    field(QStringLiteral("modified"), decodedEntities(file.lastModified));
    field(QStringLiteral("size"), exactSize(file.uncompressedSize));
    field(QStringLiteral("md5"), decodedEntities(file.uncompressedMD5));
    if (!file.compressedMethod.isEmpty())
        field(QStringLiteral("stored"),
              QStringLiteral("%1, %2").arg(decodedEntities(file.compressedMethod),
                                           exactSize(file.compressedSize)));
    field(QStringLiteral("stored md5"), decodedEntities(file.compressedMD5));
    field(QStringLiteral("marked"), flagsOf(file));
    for (const QString& attribute : attributeLines(file))
        field(QStringLiteral("attribute"), attribute);
}

} // namespace lorix::cli
