// SPDX-License-Identifier: BSD-3-Clause
#include <lorix/summary/elementscan.h>
#include <lorix/summary/summaryreader.h>
#include <lorix/summary/textvalues.h>

#include <QDebug>
#include <QLoggingCategory>

#include <algorithm>
#include <limits>

namespace lorix {

namespace {

constexpr int unlimited = std::numeric_limits<int>::max();

template <typename Record, typename Value>
struct Field
{
    QStringView tag;
    Value Record::*member;
};

constexpr Field<Workflowstep, QString> stepTexts[] = {
    {u"LorixRootFile", &Workflowstep::lorixRootFile},
    {u"Timestamp", &Workflowstep::timestamp},
    {u"Title", &Workflowstep::title},
    {u"Description", &Workflowstep::description},
    {u"Comment", &Workflowstep::comment},
    {u"Command", &Workflowstep::command},
    {u"Tool", &Workflowstep::tool},
    {u"ToolPath", &Workflowstep::toolPath},
    {u"Host", &Workflowstep::host},
    {u"User", &Workflowstep::user},
    {u"Creator", &Workflowstep::creator},
    {u"PDFTitle", &Workflowstep::pdfTitle},
    {u"PDFAuthor", &Workflowstep::pdfAuthor},
    {u"PDFSubject", &Workflowstep::pdfSubject},
    {u"PDFKeywords", &Workflowstep::pdfKeywords},
    {u"PDFProducer", &Workflowstep::pdfProducer},
    {u"PDFCreator", &Workflowstep::pdfCreator},
};

constexpr Field<FileSummary, QString> fileTexts[] = {
    {u"Filename", &FileSummary::filename},
    {u"Filepath", &FileSummary::filepath},
    {u"Filetype", &FileSummary::filetype},
    {u"Description", &FileSummary::description},
    {u"Comment", &FileSummary::comment},
    {u"LastModified", &FileSummary::lastModified},
    {u"UncompressedMD5", &FileSummary::uncompressedMD5},
    {u"CompressedMethod", &FileSummary::compressedMethod},
    {u"CompressedMD5", &FileSummary::compressedMD5},
};

constexpr Field<FileSummary, bool> fileFlags[] = {
    {u"GenerateMD5", &FileSummary::generateMD5}, {u"Embedded", &FileSummary::embedded},
    {u"Preview", &FileSummary::preview},         {u"PreviewWS", &FileSummary::previewWS},
    {u"Thumbnail", &FileSummary::thumbnail},     {u"ThumbnailOnly", &FileSummary::thumbnailOnly},
};

constexpr Field<FileSummary, int> fileSizes[] = {
    {u"UncompressedSize", &FileSummary::uncompressedSize},
    {u"CompressedSize", &FileSummary::compressedSize},
};

// Calls visit(tag, content) for the first-level elements until it returns false.
template <typename Visit>
void forEachElement(QStringView text, Visit visit)
{
    qsizetype from = 0;
    while (const auto element = findElement(text, from)) {
        const auto& range = *element;
        if (!visit(text.sliced(range.tagStart, range.tagLength),
                   text.sliced(range.contentStart, range.contentEnd - range.contentStart)))
            return;
        from = range.end;
    }
}

// The field named by the tag, null where there is none.
template <typename Record, typename Value, std::size_t count>
const Field<Record, Value>* fieldOf(const Field<Record, Value> (&fields)[count], QStringView tag)
{
    const auto* const end = fields + count;
    const auto* const found =
        std::find_if(fields, end, [tag](const auto& field) { return field.tag == tag; });
    return found == end ? nullptr : found;
}

// Stores the content in the field named by the tag, if there is one.
template <typename Record, typename Value, std::size_t count, typename Convert>
bool assign(Record& record, const Field<Record, Value> (&fields)[count], QStringView tag,
            QStringView content, Convert convert)
{
    const auto* const field = fieldOf(fields, tag);
    if (field)
        record.*field->member = convert(content);
    return field != nullptr;
}

// The same for a file's texts. One that is the same as in the file before takes no
// room of its own: types, folders and times of many files are.
bool assignText(FileSummary& file, const FileSummary& before, QStringView tag, QStringView content)
{
    const auto* const field = fieldOf(fileTexts, tag);
    if (!field)
        return false;
    const QString& other = before.*field->member;
    const bool same = !content.isEmpty() && content == other;
    file.*field->member = same ? other : content.toString();
    return true;
}

QString text(QStringView content)
{
    return content.toString();
}

// Numbers need no copy of their digits.
QString borrowed(QStringView content)
{
    return QString::fromRawData(content.data(), content.size());
}

void reportUnknown(const char* label, QStringView tag, QStringView content)
{
    if (QLoggingCategory::defaultCategory()->isDebugEnabled())
        qDebug() << label << tag.toString() << ":" << content.toString();
}

SummaryReader::Attribute readAttribute(QStringView content)
{
    SummaryReader::Attribute attribute;
    forEachElement(content, [&](QStringView tag, QStringView data) {
        if (tag == u"Key")
            attribute.first = text(data);
        else if (tag == u"Value")
            attribute.second = text(data);
        else if (tag == u"Unit")
            attribute.third = QSharedPointer<QString>::create(text(data));
        else
            reportUnknown("unknown tag (parseAttribute):", tag, data);
        return true;
    });
    return attribute;
}

SummaryReader::Attributes readUserAttributes(QStringView content)
{
    SummaryReader::Attributes attributes;
    forEachElement(content, [&](QStringView tag, QStringView data) {
        if (tag == u"Attribute") {
            const SummaryReader::Attribute attribute = readAttribute(data);
            attributes.first.insert(attribute.first, attribute.second);
            attributes.second.append(attribute.first);
            if (attribute.third)
                attributes.third.insert(attribute.first, *attribute.third);
        } else {
            reportUnknown("unknown tag (parseUserAttributes):", tag, data);
        }
        return true;
    });
    return attributes;
}

template <typename Record>
void setUserAttributes(Record& record, QStringView content)
{
    SummaryReader::Attributes attributes = readUserAttributes(content);
    record.userAttributes = std::move(attributes.first);
    record.userAttributeKeys = std::move(attributes.second);
    record.userAttributeUnits = std::move(attributes.third);
}

// `before` is the file read last.
FileSummary readFile(QStringView content, const FileSummary& before = FileSummary())
{
    const auto flag = [](QStringView data) { return str2bool(borrowed(data)); };
    const auto size = [](QStringView data) { return str2int(borrowed(data)); };
    FileSummary file;
    file.tagId = -1;
    file.fromTags = false;
    forEachElement(content, [&](QStringView tag, QStringView data) {
        if (tag == u"UserAttributes")
            setUserAttributes(file, data);
        else if (!assignText(file, before, tag, data) &&
                 !assign(file, fileFlags, tag, data, flag) &&
                 !assign(file, fileSizes, tag, data, size))
            reportUnknown("unknown tag (ParseFile):", tag, data);
        return true;
    });
    return file;
}

Workflowstep readWorkflowstep(QStringView content, int maxFiles = unlimited)
{
    Workflowstep step;
    step.tagId = -1;
    const auto addFile = [&](QStringView data, const QString& purpose) {
        if (step.files.size() >= maxFiles)
            return;
        step.files.append(step.files.isEmpty() ? readFile(data)
                                               : readFile(data, step.files.constLast()));
        step.files.last().filePurpose = purpose;
    };
    forEachElement(content, [&](QStringView tag, QStringView data) {
        if (tag == u"InFile")
            addFile(data, QStringLiteral("InFile"));
        else if (tag == u"OutFile")
            addFile(data, QStringLiteral("OutFile"));
        else if (tag == u"UserAttributes")
            setUserAttributes(step, data);
        else if (!assign(step, stepTexts, tag, data, text))
            reportUnknown("unknown tag (parseWorkflowstep):", tag, data);
        return true;
    });
    return step;
}

Summary readLoxchange(QStringView content, int maxFiles = unlimited)
{
    Summary summary;
    forEachElement(content, [&](QStringView tag, QStringView data) {
        if (tag == u"Workflowstep")
            static_cast<Workflowstep&>(summary) = readWorkflowstep(data, maxFiles);
        else if (tag == u"MD5Signature")
            summary.md5 = text(data);
        return true;
    });
    summary.fromXml = true;
    return summary;
}

} // namespace

SummaryReader::SummaryReader(QObject* parent) : QObject(parent) {}

Summary SummaryReader::readSummary(const QString& xml, int maxFiles) const
{
    Summary summary;
    forEachElement(xml, [&](QStringView tag, QStringView data) {
        if (tag != u"loxchange")
            return true;
        summary = readLoxchange(data, maxFiles);
        return false;
    });
    return summary;
}

Summary SummaryReader::parseSummary(const QString& content) const
{
    return readLoxchange(content);
}

Workflowstep SummaryReader::parseWorkflowstep(const QString& content) const
{
    return readWorkflowstep(content);
}

FileSummary SummaryReader::parseFile(const QString& content) const
{
    return readFile(content);
}

SummaryReader::Attributes SummaryReader::parseUserAttributes(const QString& content) const
{
    return readUserAttributes(content);
}

SummaryReader::Attribute SummaryReader::parseAttribute(const QString& content) const
{
    return readAttribute(content);
}

} // namespace lorix
