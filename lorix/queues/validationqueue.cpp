// SPDX-License-Identifier: BSD-3-Clause
#include <lorix/queues/validationqueue.h>

#include <lorix/container/lorixparser.h>
#include <lorix/queues/progresspercent.h>

#include <algorithm>
#include <limits>

namespace lorix {

namespace {

constexpr int defaultChunkSize = 100000;

enum ItemType { SectionItem = 0, FileItem = 1, SavedFileItem = 2 };

// A position that does not fit the format's offsets lies outside every file.
QByteArray bytesAt(LorixParser* parser, qint64 position, qint64 length)
{
    constexpr qint64 largest = std::numeric_limits<int>::max();
    if (!parser || position < 0 || position > largest || length < 0 || length > largest)
        return {};
    return parser->getBytes(static_cast<int>(position), static_cast<int>(length));
}

QList<int> ascendingOnce(QList<int> ids)
{
    std::sort(ids.begin(), ids.end());
    ids.erase(std::unique(ids.begin(), ids.end()), ids.end());
    return ids;
}

} // namespace

ValidationQueue::ValidationQueue(LorixParser* parser, int chunkSize)
    : LogSource(nullptr), m_parser(parser), m_validator(QString(), QString()), m_stopWatch(nullptr),
      m_chunkSize(chunkSize > 0 ? chunkSize : defaultChunkSize)
{
    m_stopWatch.publishToLogSignal(this);
}

void ValidationQueue::clear()
{
    m_validatees.clear();
    m_bytesDone = 0;
    m_totalBytes = 0;
    m_totalDone = 0;
    m_begun = false;
    m_savedFile.close();
    ++m_generation;
}

void ValidationQueue::reinit(LorixParser* parser)
{
    clear();
    m_parser = parser;
}

void ValidationQueue::reset(LorixParser* parser)
{
    reinit(parser);
    m_stopWatch.start(QStringLiteral("validation finished"), false);
}

void ValidationQueue::repopulate(LorixParser* parser)
{
    reset(parser);
    if (!m_parser)
        return;
    const QList<SectionTag> sections = m_parser->getSections();
    for (auto section = sections.crbegin(); section != sections.crend(); ++section)
        enqueue(Validatee::fromSection(*section));
    const QList<FileTag> files = m_parser->getFiles();
    for (const FileTag& file : files)
        enqueue(Validatee::fromFile(file));
}

void ValidationQueue::addValidatees(const QList<int>& fileIds, const QList<int>& sectionIds)
{
    if (!m_parser)
        return;
    // Callers may queue one of many, time and again: ids are looked up, the
    // records not gone through.
    const QList<int> sections = ascendingOnce(sectionIds);
    for (auto id = sections.crbegin(); id != sections.crend(); ++id) {
        const QSharedPointer<SectionTag> section = m_parser->getSection(*id);
        if (section && section->id != -1)
            enqueue(Validatee::fromSection(*section));
    }
    for (const int id : ascendingOnce(fileIds)) {
        const QSharedPointer<FileTag> file = m_parser->getFile(id);
        if (file && file->id != -1)
            enqueue(Validatee::fromFile(*file));
    }
}

void ValidationQueue::addValidatees(const QList<SavedFile>& savedFiles)
{
    for (const SavedFile& file : savedFiles)
        enqueue(Validatee::fromSavedFile(file));
}

void ValidationQueue::enqueue(const Validatee& item)
{
    m_validatees.append(item);
    m_totalBytes += item.size;
}

void ValidationQueue::nextEntry()
{
    if (!m_validatees.isEmpty())
        m_validatees.removeFirst();
    m_bytesDone = 0;
    m_begun = false;
    m_savedFile.close();
    ++m_generation;
}

bool ValidationQueue::process()
{
    QString name;
    if (!m_validatees.isEmpty()) {
        const Validatee item = m_validatees.first();
        name = item.name;
        if (!m_begun)
            begin(item);
        advance(item);
        if (m_bytesDone == item.size)
            finish(item);
    }
    Q_EMIT percentFinishedChanged(progressPercent(m_totalDone, m_totalBytes), name);
    if (m_validatees.isEmpty()) {
        m_stopWatch.stop(true);
        clear();
    }
    return !m_validatees.isEmpty();
}

void ValidationQueue::cancelValidation()
{
    clear();
    m_stopWatch.stop(true);
}

void ValidationQueue::begin(const Validatee& item)
{
    m_begun = true;
    m_tagFed = false;
    m_validator.reinit(item.md5, item.cmd5);
    if (item.type != SavedFileItem)
        return;
    m_savedFile.close();
    m_savedFile.setFileName(item.name);
    m_savedFile.open(QIODevice::ReadOnly);
}

QByteArray ValidationQueue::readChunk(const Validatee& item, qint64 length)
{
    if (item.type != SavedFileItem)
        return bytesAt(m_parser, item.start + m_bytesDone, length);
    return m_savedFile.isOpen() && length > 0 ? m_savedFile.read(length) : QByteArray();
}

void ValidationQueue::advance(const Validatee& item)
{
    // Where the tag is longer than what is left of the size, the length is
    // negative once: nothing is read and the counter comes back to the size.
    qint64 length = qMin<qint64>(item.size - m_bytesDone, m_chunkSize);
    const qint64 toMarker = item.tagPosition - (item.start + m_bytesDone);
    if (item.type == SectionItem && toMarker > 0)
        length = qMin(length, toMarker);
    m_validator.update(readChunk(item, length));
    m_bytesDone += length;
    m_totalDone += length;
    if (item.type != SectionItem || m_tagFed || item.start + m_bytesDone != item.tagPosition)
        return;
    m_tagFed = true;
    m_validator.update(item.validationTag);
    m_bytesDone += item.validationTag.size();
}

void ValidationQueue::finish(const Validatee& item)
{
    const quint64 generation = m_generation;
    const bool valid = m_validator.isValid();
    if (item.type == SectionItem) {
        Q_EMIT sectionProcessed(item.id, valid);
    } else if (item.type == FileItem) {
        Q_EMIT fileProcessed(item.id, valid);
    } else {
        Q_EMIT savedFileProcessed(item.name, valid);
        const QString text =
            valid ? tr("Checksum of file %1 is correct") : tr("Checksum of file %1 is incorrect");
        Q_EMIT log(text.arg(item.name), 0);
    }
    // A receiver may have cancelled or re-pointed the queue in the meantime;
    // then the item is gone and another one must not be dropped in its place.
    if (generation == m_generation)
        nextEntry();
}

} // namespace lorix
