// SPDX-License-Identifier: BSD-3-Clause
#include <lorix/queues/extractionqueue.h>

#include <lorix/container/lorixparser.h>
#include <lorix/queues/progresspercent.h>

#include <algorithm>
#include <limits>
#include <utility>

namespace lorix {

namespace {
constexpr qint64 chunkBytes = 100000;
} // namespace

ExtractionQueue::ExtractionQueue(LorixParser* parser)
    : LogSource(nullptr), m_parser(parser), m_stopWatch(nullptr)
{
    m_stopWatch.publishToLogSignal(this);
}

void ExtractionQueue::clear()
{
    m_extractees.clear();
    m_bytesDone = 0;
    m_totalBytes = 0;
    m_totalDone = 0;
    m_target.close();
    ++m_generation;
}

void ExtractionQueue::reinit(LorixParser* parser)
{
    clear();
    m_parser = parser;
}

void ExtractionQueue::reset(LorixParser* parser)
{
    reinit(parser);
}

void ExtractionQueue::addExtractees(const QHash<int, QString>& targets)
{
    if (!m_parser)
        return;
    // A tree asks for one file of many, time and again: the targets are looked
    // up, not the files gone through.
    QList<int> ids = targets.keys();
    std::sort(ids.begin(), ids.end());
    for (const int id : std::as_const(ids)) {
        const QSharedPointer<FileTag> file = m_parser->getFile(id);
        if (!file || file->id == -1)
            continue;
        m_extractees.append(Extractee::fromFile(*file, targets.value(id)));
        m_totalBytes += m_extractees.constLast().size;
    }
}

void ExtractionQueue::nextEntry()
{
    if (!m_extractees.isEmpty()) {
        m_totalDone += m_extractees.constFirst().size - m_bytesDone;
        m_extractees.removeFirst();
    }
    m_bytesDone = 0;
    ++m_generation;
}

bool ExtractionQueue::handleError(const QString& message, const Extractee& extractee)
{
    const quint64 generation = m_generation;
    Q_EMIT log(message, 2);
    Q_EMIT fileProcessed(extractee.id, false);
    // A receiver may have cancelled or re-pointed the queue in the meantime;
    // then the item is gone and another one must not be dropped in its place.
    if (generation == m_generation)
        nextEntry();
    return !m_extractees.isEmpty();
}

bool ExtractionQueue::process()
{
    QString target;
    if (!m_extractees.isEmpty()) {
        const Extractee item = m_extractees.constFirst();
        target = item.target;
        if (m_bytesDone == 0)
            begin(item);
        advance(item);
    }
    Q_EMIT percentFinishedChanged(progressPercent(m_totalDone, m_totalBytes), target);
    if (m_extractees.isEmpty()) {
        m_stopWatch.stop(true);
        clear();
    }
    return !m_extractees.isEmpty();
}

void ExtractionQueue::cancelExtraction()
{
    clear();
    m_stopWatch.stop(true);
}

void ExtractionQueue::begin(const Extractee& item)
{
    m_inflater.reset();
    m_target.close();
    m_target.setFileName(item.target);
    m_target.open(QIODevice::WriteOnly | QIODevice::Unbuffered);
}

void ExtractionQueue::advance(const Extractee& item)
{
    const qint64 length = qMin<qint64>(item.size - m_bytesDone, chunkBytes);
    const qint64 position = item.start + m_bytesDone;
    QByteArray stored;
    if (m_parser && position >= 0 && position <= std::numeric_limits<int>::max())
        stored = m_parser->getBytes(static_cast<int>(position), static_cast<int>(length));
    if (stored.size() < length) {
        handleError(tr("Could not read from file %1").arg(item.target), item);
        return;
    }
    storedBytesRead(item, stored);
    bool written = true;
    if (item.cmd5.isEmpty()) {
        written = writeContent(item, stored.constData(), stored.size());
    } else if (!writeInflated(item, stored, &written)) {
        handleError(tr("Could not decompress data from file %1").arg(item.target), item);
        return;
    }
    if (!written) {
        // Receivers know this message with its doubled word.
        handleError(tr("Could not write to file file %1").arg(item.target), item);
        return;
    }
    m_bytesDone += length;
    m_totalDone += length;
    if (m_bytesDone != item.size)
        return;
    const quint64 generation = m_generation;
    Q_EMIT fileProcessed(item.id, true);
    if (generation == m_generation)
        nextEntry();
}

// False when the stream is damaged; then the target is as it was before.
bool ExtractionQueue::writeInflated(const Extractee& item, const QByteArray& stored, bool* written)
{
    const qint64 before = m_target.pos();
    *written = writeContent(item, nullptr, 0);
    const bool whole = m_inflater.inflatePieces(stored, [&](const char* bytes, qsizetype count) {
        *written = *written && writeContent(item, bytes, count);
    });
    if (whole)
        return m_inflater.isValid();
    if (m_target.isOpen() && m_target.pos() != before) {
        m_target.resize(before);
        m_target.seek(before);
    }
    return false;
}

// Writing nothing fails as well where the target is not open.
bool ExtractionQueue::writeContent(const Extractee& item, const char* bytes, qsizetype count)
{
    if (!m_target.isOpen())
        return false;
    if (count == 0)
        return true;
    const qint64 written = m_target.write(bytes, count);
    if (written != count) {
        // A write cut short gives no reason; the next one does.
        if (written >= 0)
            m_target.write(bytes + written, count - written);
        return false;
    }
    contentWritten(item, bytes, count);
    return true;
}

void ExtractionQueue::storedBytesRead(const Extractee& extractee, const QByteArray& bytes)
{
    Q_UNUSED(extractee)
    Q_UNUSED(bytes)
}

void ExtractionQueue::contentWritten(const Extractee& extractee, const char* bytes, qsizetype count)
{
    Q_UNUSED(extractee)
    Q_UNUSED(bytes)
    Q_UNUSED(count)
}

} // namespace lorix
