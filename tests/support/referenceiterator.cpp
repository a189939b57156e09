// SPDX-License-Identifier: BSD-3-Clause
#include <support/referenceiterator.h>

namespace {

// The last line feed at or before `last`, byte for byte.
qint64 lastLineFeed(const QByteArray& bytes, qint64 last)
{
    for (qint64 i = last; i >= 0; --i)
        if (bytes.at(i) == '\n')
            return i;
    return -1;
}

} // namespace

void ReferenceIterator::open(const QByteArray& bytes)
{
    closeFile();
    m_open = true;
    m_file = bytes;
    m_bufferStart = 0;
    m_bufferPos = 0;
    if (getBuffer(0))
        searchForwards();
}

void ReferenceIterator::closeFile()
{
    m_open = false;
    m_file.clear();
    m_buffer.clear();
    m_bufferStart = -1;
    m_bufferPos = 0;
    m_linePos = -1;
}

bool ReferenceIterator::firstLine()
{
    m_bufferStart = 0;
    m_bufferPos = 0;
    getBuffer(0);
    return searchForwards();
}

bool ReferenceIterator::nextLine()
{
    return searchForwards();
}

bool ReferenceIterator::lastLine()
{
    if (!m_open) {
        m_bufferStart = 0;
        m_bufferPos = 0;
        return false;
    }
    const qint64 size = getFileSize();
    if (size == 0) {
        m_bufferPos = 0;
        return false;
    }
    m_bufferStart = qMax<qint64>(size - chunkSize, 0);
    getBuffer(m_bufferStart);
    m_bufferPos = size - m_bufferStart;
    return searchBackwards();
}

bool ReferenceIterator::prevLine()
{
    return searchBackwards();
}

bool ReferenceIterator::gotoPos(qint64 pos)
{
    if (pos < 0 || pos >= getFileSize())
        return false;
    m_bufferStart = qMax<qint64>(pos - chunkSize / 2, 0);
    m_bufferPos = pos - m_bufferStart;
    if (!getBuffer(m_bufferStart))
        return false;
    return searchForwards();
}

QSharedPointer<QByteArray> ReferenceIterator::curLine() const
{
    if (!m_open)
        return {};
    return QSharedPointer<QByteArray>::create(m_line);
}

QSharedPointer<QString> ReferenceIterator::curLineAsString() const
{
    if (!m_open || m_line.contains('\0'))
        return {};
    return QSharedPointer<QString>::create(QString::fromUtf8(m_line));
}

bool ReferenceIterator::curLineStartsWithBytes(const char* prefix) const
{
    return m_line.startsWith(prefix);
}

bool ReferenceIterator::canRead(qint64 pos, qint64 len) const
{
    return pos >= 0 && pos < getFileSize() && len >= 0 && pos + len <= getFileSize();
}

QByteArray ReferenceIterator::getBytes(qint64 pos, qint64 len) const
{
    return canRead(pos, len) ? m_file.mid(pos, len) : QByteArray();
}

qint64 ReferenceIterator::getFileSize() const
{
    return m_open ? m_file.size() : 0;
}

bool ReferenceIterator::empty() const
{
    return getFileSize() < 1;
}

bool ReferenceIterator::reachedEnd() const
{
    return !(getFileSize() > m_bufferStart + m_bufferPos);
}

bool ReferenceIterator::reachedStart() const
{
    return m_bufferStart == 0 && m_bufferPos == 0;
}

bool ReferenceIterator::getBuffer(qint64 pos)
{
    m_buffer.clear();
    if (!m_open || pos < 0)
        return false;
    const bool atEnd = pos >= m_file.size();
    if (!atEnd)
        m_buffer = m_file.mid(pos, chunkSize);
    return !atEnd || !m_buffer.isEmpty();
}

bool ReferenceIterator::searchForwards()
{
    m_linePos = m_bufferStart + m_bufferPos;
    if (!(getFileSize() > m_linePos))
        return false;
    m_line.clear();
    for (;;) {
        const qint64 found = m_buffer.indexOf('\n', m_bufferPos);
        if (found >= 0) {
            m_line += m_buffer.mid(m_bufferPos, found + 1 - m_bufferPos);
            m_bufferPos = found + 1;
            return true;
        }
        m_line += m_buffer.mid(m_bufferPos);
        m_bufferStart += m_buffer.size();
        m_bufferPos = 0;
        if (!getBuffer(m_bufferStart))
            return true;
    }
}

bool ReferenceIterator::searchBackwards()
{
    if (m_bufferStart == 0 && m_bufferPos == 0) {
        m_linePos = 0;
        return false;
    }
    m_line.clear();
    qint64 found = m_bufferPos - 2 < 0 ? -1 : lastLineFeed(m_buffer, m_bufferPos - 2);
    for (;;) {
        if (found >= 0) {
            m_line.prepend(m_buffer.mid(found + 1, m_bufferPos - found - 1));
            m_bufferPos = found + 1;
            m_linePos = m_bufferStart + m_bufferPos;
            return true;
        }
        m_line.prepend(m_buffer.left(m_bufferPos));
        if (m_bufferStart < 1) {
            m_bufferPos = 0;
            m_linePos = m_bufferStart;
            return true;
        }
        const qint64 oldStart = m_bufferStart;
        m_bufferStart = qMax<qint64>(oldStart - chunkSize, 0);
        if (!getBuffer(m_bufferStart)) {
            m_bufferPos = 0;
            m_linePos = m_bufferStart;
            return true;
        }
        m_bufferPos = oldStart - m_bufferStart;
        found = m_bufferPos - 1 < 0 ? -1 : lastLineFeed(m_buffer, m_bufferPos - 1);
    }
}
