// SPDX-License-Identifier: BSD-3-Clause
#include <lorix/container/lorixparser.h>

#include <lorix/container/filewindow.h>
#include <lorix/container/leasttree.h>
#include <lorix/container/markerline.h>

#include <QSet>

#include <algorithm>
#include <limits>
#include <utility>

namespace lorix {

namespace {

constexpr int headerLines = 10;
constexpr int linesBackToSearch = 5;
constexpr int attemptsToSearch = 10;

bool isPosition(qint64 offset)
{
    return offset >= 0 && offset <= std::numeric_limits<int>::max();
}

qint64 sectionStart(const SectionTag& section)
{
    return qint64(section.position) - section.left;
}

qint64 sectionEnd(const SectionTag& section)
{
    return sectionStart(section) + section.size;
}

qint64 blockEnd(const FileTag& file)
{
    return qint64(file.position) + file.taglen + file.blocksize;
}

QSharedPointer<FileTag> makeFileTag(const MarkerMatch& match, int linePos)
{
    auto tag = QSharedPointer<FileTag>::create();
    tag->position = linePos + 1;
    tag->taglen = match.length - 1;
    tag->filetype = match.fields[0];
    tag->filename = match.fields[1];
    tag->desc = match.fields[2];
    tag->comment = match.fields[3];
    tag->compression = match.fields[4];
    tag->filesize = makeInt(match.fields[5]);
    tag->cfilesize = makeInt(match.fields[6]);
    tag->blocksize = makeInt(match.fields[7]);
    tag->offset = makeInt(match.fields[8]);
    tag->md5file = match.fields[9];
    tag->md5cfile = match.fields[10];
    return tag;
}

QSharedPointer<FileTag> parseFileLine(const QByteArray& line, qint64 linePos)
{
    if (FileIterator::containsNulls(line))
        return {};
    const MarkerMatch match = matchFileMarker(QString::fromUtf8(line));
    return match.length < 0 ? QSharedPointer<FileTag>()
                            : makeFileTag(match, static_cast<int>(linePos));
}

// The text of `line` from where a section marker may begin; empty when there is
// no such place.
QString sectionInLine(const QByteArray& line, ParseMode mode)
{
    if (FileIterator::containsNulls(line))
        return {};
    const QString text = QString::fromUtf8(line);
    const QLatin1String prefix(sectionPrefix);
    if (text.startsWith(prefix))
        return text;
    const qsizetype inside = mode == Tolerant ? text.indexOf(prefix) : -1;
    return inside < 0 ? QString() : text.mid(inside);
}

// Leaves `lines` at the end of the file, as reading every line from `from` on
// would: behind the last line, or, where no line begins at or behind `from`,
// behind the one that begins at `last`.
void standAtEnd(FileIterator& lines, qint64 from, qint64 last)
{
    if (from >= lines.getFileSize())
        lines.gotoPos(static_cast<int>(last));
    else if (lines.lastLine())
        lines.nextLine();
    lines.nextLine();
}

} // namespace

LorixParser::LorixParser(ParseMode mode, QObject* parent) : LogSource(parent), m_mode(mode) {}

LorixParser::~LorixParser() = default;

bool LorixParser::open(const QString& path)
{
    m_sections.clear();
    m_files.clear();
    if (!m_iterator.open(path) || m_iterator.getFileSize() > m_bounds.fileBytes || !headerFound())
        return false;
    m_sections = readSections();
    m_files = findFiles();
    std::vector<qint64> ends;
    ends.reserve(static_cast<std::size_t>(m_files.size()));
    for (const FileTag& file : std::as_const(m_files))
        ends.push_back(blockEnd(file));
    m_blockEnds = makeLeastTree(ends);
    return true;
}

bool LorixParser::headerFound()
{
    bool onLine = m_iterator.firstLine();
    for (int examined = 0; onLine && examined < headerLines; ++examined) {
        if (m_iterator.curLineContainsNulls())
            return false;
        const QByteArray start = m_iterator.getBytes(
            m_iterator.curPos(), static_cast<int>(std::min<qint64>(m_iterator.curLength(), 1024)));
        if (QString::fromUtf8(start).startsWith(QLatin1String(headerPrefix)))
            return true;
        onLine = m_iterator.nextLine();
    }
    return false;
}

QSharedPointer<SectionTag> LorixParser::findLastSection()
{
    const QByteArray prefix(sectionPrefix);
    FileWindow window(m_iterator);
    qint64 before = m_iterator.getFileSize();
    for (;;) {
        const qint64 found = window.findBackwards(prefix, before);
        if (found < 0)
            break;
        before = window.startOfLine(found);
        const qint64 end = window.endOfLine(found);
        if (end - before > m_bounds.markerLineBytes)
            continue;
        const QString marker = sectionInLine(window.bytes(before, end), m_mode);
        if (matchSectionMarker(marker).length < 0)
            continue;
        // Stands on that line as walking back to it would.
        m_iterator.gotoPos(static_cast<int>(found));
        m_iterator.prevLine();
        return parseSection(marker);
    }
    m_iterator.firstLine();
    while (m_iterator.prevLine())
        ;
    return {};
}

QSharedPointer<SectionTag> LorixParser::findPrevSection(const SectionTag& section)
{
    if (section.previousmarker < 0)
        return {};
    const qint64 target = qint64(section.position) - 1 - section.previousmarker;
    if (isPosition(target) && m_iterator.gotoPos(static_cast<int>(target)) &&
        curLineMayBeMarker()) {
        const auto line = m_iterator.curLineAsString();
        const auto found = line ? parseSection(*line) : QSharedPointer<SectionTag>();
        if (found)
            return found;
    }
    return m_mode == Tolerant ? searchAround() : QSharedPointer<SectionTag>();
}

// The lines from four above to four below the current one.
QSharedPointer<SectionTag> LorixParser::searchAround()
{
    for (int line = 0; line < linesBackToSearch; ++line)
        m_iterator.prevLine();
    for (int attempt = 0; attempt < attemptsToSearch; ++attempt) {
        const auto line =
            curLineMayBeMarker() ? m_iterator.curLineAsString() : QSharedPointer<QString>();
        const qsizetype inside = line ? line->indexOf(QLatin1String(sectionPrefix)) : -1;
        if (inside >= 0) {
            if (const auto found = parseSection(line->mid(inside)))
                return found;
        }
        m_iterator.nextLine();
    }
    return {};
}

QList<SectionTag> LorixParser::readSections()
{
    QList<SectionTag> sections;
    // What comes before a section depends on these two alone, so that meeting
    // them again means a chain without end.
    QSet<QPair<int, int>> seen;
    const qint64 limit =
        m_iterator.bytesWalked() + m_bounds.chainBytes + 2 * qint64(m_iterator.getFileSize());
    for (auto section = findLastSection(); section && m_iterator.bytesWalked() <= limit;
         section = findPrevSection(*section)) {
        const QPair<int, int> link(section->position, section->previousmarker);
        if (seen.contains(link))
            break;
        seen.insert(link);
        section->id = static_cast<int>(sections.size());
        sections.append(*section);
    }
    return sections;
}

QList<FileTag> LorixParser::findFiles()
{
    QList<FileTag> files;
    if (m_iterator.empty())
        return files;
    const QByteArrayMatcher prefix(filePrefix);
    FileWindow window(m_iterator);
    const qint64 size = m_iterator.getFileSize();
    qint64 from = 0;
    qint64 last = 0;
    for (;;) {
        const qint64 found = window.findForwards(prefix, from);
        if (found < 0)
            break;
        from = found + 1;
        if (!window.isLineStart(found))
            continue;
        last = found;
        from = window.endOfLine(found);
        if (from - found > m_bounds.markerLineBytes)
            continue;
        const auto tag = parseFileLine(window.bytes(found, from), found);
        if (!tag)
            continue;
        tag->id = static_cast<int>(files.size());
        files.append(*tag);
        // Short of the block's end by the marker's length; what is written for
        // this reader ends each block with a line end in between.
        const qint64 target = qint64(tag->position) + tag->blocksize;
        if (target < size) {
            last = target;
            from = window.endOfLine(target);
        }
    }
    standAtEnd(m_iterator, from, last);
    return files;
}

// Lines beyond the bound are passed over unread: they could fill the memory.
bool LorixParser::curLineMayBeMarker() const
{
    return m_iterator.curLength() <= m_bounds.markerLineBytes;
}

QSharedPointer<SectionTag> LorixParser::parseSection(const QString& line)
{
    const MarkerMatch match = matchSectionMarker(line);
    if (match.length < 0)
        return {};
    auto tag = QSharedPointer<SectionTag>::create();
    tag->position = m_iterator.curPos() + 1;
    tag->taglen = match.length - 1;
    tag->version = match.fields[0];
    tag->creator = match.fields[1];
    tag->title = match.fields[2];
    tag->left = makeInt(match.fields[3]);
    tag->size = makeInt(match.fields[4]);
    tag->index = makeInt(match.fields[5]);
    tag->md5section = match.fields[6];
    tag->previousmd5 = match.fields[7];
    tag->previousmarker = makeInt(match.fields[8]);
    tag->validationTag = makeValidationTag(tag->md5section);
    return tag;
}

QSharedPointer<FileTag> LorixParser::parseFile(const QString& line)
{
    const MarkerMatch match = matchFileMarker(line);
    return match.length < 0 ? QSharedPointer<FileTag>() : makeFileTag(match, m_iterator.curPos());
}

int LorixParser::getNumSections() const
{
    return static_cast<int>(m_sections.size());
}

int LorixParser::getNumFiles() const
{
    return static_cast<int>(m_files.size());
}

QSharedPointer<SectionTag> LorixParser::getSection(int id) const
{
    if (id < 0 || id >= m_sections.size())
        return {};
    return QSharedPointer<SectionTag>::create(m_sections[id]);
}

QSharedPointer<FileTag> LorixParser::getFile(int id) const
{
    if (id < 0 || id >= m_files.size())
        return {};
    return QSharedPointer<FileTag>::create(m_files[id]);
}

QList<SectionTag> LorixParser::getSections() const
{
    return m_sections;
}

QList<FileTag> LorixParser::getFiles() const
{
    return m_files;
}

QList<FileTag> LorixParser::getFilesInSection(int id) const
{
    QList<FileTag> result;
    if (id < 0 || id >= m_sections.size())
        return result;
    const SectionTag& section = m_sections[id];
    // Files stand in ascending order of position. Sections and the blocks that
    // files claim may all overlap, so that looking at each file behind the
    // section's start would cost sections times files.
    const auto first =
        std::lower_bound(m_files.begin(), m_files.end(), sectionStart(section),
                         [](const FileTag& file, qint64 start) { return file.position < start; });
    qsizetype next = nextAtMost(m_blockEnds, first - m_files.begin(), sectionEnd(section));
    for (; next >= 0; next = nextAtMost(m_blockEnds, next + 1, sectionEnd(section)))
        result.append(m_files[next]);
    return result;
}

bool LorixParser::fileInSection(const FileTag& file, const SectionTag& section) const
{
    // Not quite symmetric: the file's start counts from 1.
    return sectionStart(section) <= file.position && blockEnd(file) <= sectionEnd(section);
}

QList<FileTag> LorixParser::getSectionlessFiles() const
{
    QList<const SectionTag*> byStart;
    for (const SectionTag& section : m_sections)
        byStart.append(&section);
    std::sort(byStart.begin(), byStart.end(), [](const SectionTag* a, const SectionTag* b) {
        return sectionStart(*a) < sectionStart(*b);
    });
    QList<FileTag> result;
    auto next = byStart.cbegin();
    qint64 reach = std::numeric_limits<qint64>::min();
    for (const FileTag& file : m_files) {
        for (; next != byStart.cend() && sectionStart(**next) <= file.position; ++next)
            reach = std::max(reach, sectionEnd(**next));
        if (blockEnd(file) > reach)
            result.append(file);
    }
    return result;
}

} // namespace lorix
