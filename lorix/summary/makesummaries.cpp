// SPDX-License-Identifier: BSD-3-Clause
#include <lorix/bounds.h>
#include <lorix/summary/makesummaries.h>
#include <lorix/summary/printsummary.h>
#include <lorix/summary/summaryreader.h>
#include <lorix/summary/tagmatcher.h>

#include <QDebug>

#include <algorithm>
#include <limits>

using namespace lorix;

namespace {

const QString summaryName = QStringLiteral("ws_summary.xml");

// How many times its own size a zlib stream can inflate to.
constexpr qint64 largestInflation = 1032;

// The files of every section, in the order of the sections. Sections may
// overlap, so that a small container can hold more pairs than memory does; what
// lies beyond the bound counts for no section.
QList<QList<FileTag>> filesBySection(const LorixParser& parser, const QList<SectionTag>& sections)
{
    qsizetype left = parser.bounds().summaryFiles;
    QList<QList<FileTag>> result;
    result.reserve(sections.size());
    for (const SectionTag& section : sections) {
        result.append(left > 0 ? parser.getFilesInSection(section.id) : QList<FileTag>());
        if (result.last().size() > left)
            result.last().resize(left);
        left -= result.last().size();
    }
    return result;
}

// Reads XML summaries as long as the container's bounds allow it.
class XmlSource
{
public:
    explicit XmlSource(const LorixParser& parser)
        : m_parser(parser), m_bytes(parser.bounds().summaryBytes),
          m_files(parser.bounds().summaryFiles)
    {}

    // False where the file has no content or too much.
    bool read(const FileTag& tag, Summary& summary)
    {
        const qint64 size = largestContent(tag);
        if (size > m_bytes)
            return false;
        m_bytes -= size;
        QSharedPointer<QByteArray> content = m_parser.getFileContent(tag.id);
        if (!content)
            return false;
        const QString text = QString::fromUtf8(*content);
        content.reset(); // before the records come to stand beside the text
        summary = SummaryReader().readSummary(text, m_files);
        m_files -= static_cast<int>(summary.files.size());
        return true;
    }

private:
    // The stored bytes that are really there; a marker may claim anything.
    qint64 storedBytes(const FileTag& tag) const
    {
        const qint64 start = qint64(tag.position) + tag.taglen + tag.offset;
        const qint64 last = start + tag.cfilesize - 1;
        const bool inside = tag.cfilesize > 0 && last <= std::numeric_limits<int>::max() &&
                            !m_parser.getBytes(static_cast<int>(last), 1).isEmpty();
        return inside ? tag.cfilesize : 0;
    }

    // The most that reading the file can bring, whatever its marker claims.
    qint64 largestContent(const FileTag& tag) const
    {
        const qint64 stored = storedBytes(tag);
        if (tag.compression != QLatin1String("flate"))
            return stored;
        return std::max(stored, std::min<qint64>(tag.filesize, stored * largestInflation));
    }

    const LorixParser& m_parser;
    qint64 m_bytes;
    int m_files;
};

void augment(Summary& summary, const SectionTag& section, TagMatcher& matcher)
{
    summary.tagId = section.id;
    for (FileSummary& file : summary.files) {
        if (!file.embedded)
            continue;
        const int id = matcher.take(makeFileHash(file, section.id), file);
        if (id >= 0)
            file.tagId = id;
    }
    for (const FileTag& tag : matcher.remaining(section.id)) {
        qDebug() << "foundMismatch";
        const FileSummary file = makeFileSummaryFromFileTag(tag);
        printFileSummary(file);
        summary.files.append(file);
    }
}

} // namespace

TagHash makeTagHash(LorixParser& parser)
{
    const QList<SectionTag> sections = parser.getSections();
    const QList<QList<FileTag>> files = filesBySection(parser, sections);
    TagHash hash;
    for (qsizetype i = 0; i < sections.size(); ++i) {
        const int id = sections.at(i).id;
        for (const FileTag& tag : files.at(i))
            hash.insert(makeFileHash(tag, id), qMakePair(tag, id));
    }
    return hash;
}

QList<Summary> makeSummaries(LorixParser& parser, const TagHash& tagHash)
{
    const QList<SectionTag> sections = parser.getSections();
    QList<QList<FileTag>> files = filesBySection(parser, sections);
    TagMatcher matcher(tagHash);
    XmlSource source(parser);
    QList<Summary> summaries;
    for (qsizetype i = sections.size() - 1; i >= 0; --i) {
        const SectionTag& section = sections.at(i);
        // Taken, so that its room serves the records that come to be.
        const QList<FileTag> own = files.takeLast();
        const bool hasXml = !own.isEmpty() && own.last().filename == summaryName;
        Summary summary;
        if (hasXml && source.read(own.last(), summary)) {
            augment(summary, section, matcher);
        } else {
            if (hasXml)
                qDebug() << "could not read summary" << own.last().id;
            summary = makeSummaryFromTags(section, own);
        }
        summaries.append(summary);
    }
    const Summary unmatched = makeUnmatchedTagSummary(parser.getSectionlessFiles());
    if (!unmatched.files.isEmpty())
        summaries.append(unmatched);
    return summaries;
}

Summary augmentSummary(const Summary& summary, const SectionTag& section, TagHash& hash)
{
    TagMatcher matcher(hash);
    Summary augmented = summary;
    augment(augmented, section, matcher);
    hash = matcher.hash();
    return augmented;
}

Summary makeUnmatchedTagSummary(const QList<FileTag>& tags)
{
    Summary summary;
    summary.title = QStringLiteral("<unmatched files>");
    summary.files.reserve(tags.size());
    for (const FileTag& tag : tags)
        summary.files.append(makeFileSummaryFromFileTag(tag));
    return summary;
}
