// SPDX-License-Identifier: BSD-3-Clause
#include <lorix/container/fileiterator.h>

#include <lorix/container/bytebuffers.h>

#include <algorithm>
#include <limits>

namespace lorix {

namespace {

constexpr int chunkBytes = 10240;
constexpr int jumpBackBytes = 5120;
constexpr qint64 keptLineBytes = 1024 * 1024;
constexpr qint64 keptPrefixBytes = 4096;
constexpr qint64 largestFile = std::numeric_limits<int>::max();

} // namespace

FileIterator::FileIterator() = default;
FileIterator::~FileIterator() = default;

bool FileIterator::open(const QString& path)
{
    closeFile();
    m_file = std::make_unique<QFile>(path);
    const QFileInfo info(path);
    // A pipe would block in open() and a device has no size to check against.
    if (info.exists() && !info.isFile())
        return false;
    if (!m_file->open(QIODevice::ReadOnly | QIODevice::Unbuffered))
        return false;
    m_info = QFileInfo(*m_file);
    if (m_info.size() > largestFile) {
        closeFile();
        return false;
    }
    m_bytesWalked = 0;
    m_bufferStart = 0;
    m_bufferPos = 0;
    if (readChunk(0))
        searchForwards();
    return true;
}

void FileIterator::closeFile()
{
    if (m_file && m_line.isEmpty() && m_lineLength > 0)
        m_line = getBytes(m_lineStart, static_cast<int>(std::min(m_lineLength, keptPrefixBytes)));
    m_lineLength = m_line.size();
    m_file.reset();
    m_buffer.clear();
    m_bufferStart = -1;
    m_bufferPos = 0;
    m_linePos = -1;
    m_info = QFileInfo();
}

bool FileIterator::firstLine()
{
    m_bufferStart = 0;
    m_bufferPos = 0;
    readChunk(0);
    return searchForwards();
}

bool FileIterator::nextLine()
{
    return searchForwards();
}

bool FileIterator::lastLine()
{
    const int size = getFileSize();
    m_bufferPos = 0;
    if (!m_file || !m_file->isOpen())
        m_bufferStart = 0;
    if (size == 0)
        return false;
    m_bufferStart = std::max(size - chunkBytes, 0);
    readChunk(m_bufferStart);
    m_bufferPos = size - m_bufferStart;
    return searchBackwards();
}

bool FileIterator::prevLine()
{
    return searchBackwards();
}

bool FileIterator::gotoPos(int pos)
{
    if (pos < 0 || pos >= getFileSize())
        return false;
    m_bufferStart = std::max(pos - jumpBackBytes, 0);
    m_bufferPos = pos - m_bufferStart;
    return readChunk(m_bufferStart) && searchForwards();
}

QSharedPointer<QByteArray> FileIterator::curLine() const
{
    if (!m_file || !m_file->isOpen())
        return {};
    if (m_line.size() == m_lineLength)
        return QSharedPointer<QByteArray>::create(m_line);
    return QSharedPointer<QByteArray>::create(
        getBytes(m_lineStart, static_cast<int>(m_lineLength)));
}

QSharedPointer<QString> FileIterator::curLineAsString() const
{
    if (!m_file || !m_file->isOpen() || curLineContainsNulls())
        return {};
    if (m_line.size() == m_lineLength)
        return QSharedPointer<QString>::create(QString::fromUtf8(m_line));
    return QSharedPointer<QString>::create(QString::fromUtf8(*curLine()));
}

bool FileIterator::curLineStartsWithBytes(const char* prefix) const
{
    if (m_line.size() == m_lineLength)
        return m_line.startsWith(prefix);
    const int length = static_cast<int>(std::min<qint64>(qstrlen(prefix), m_lineLength));
    return getBytes(m_lineStart, length).startsWith(prefix);
}

bool FileIterator::containsNulls(const QByteArray& bytes)
{
    return bytes.contains('\0');
}

bool FileIterator::curLineContainsNulls() const
{
    if (m_line.size() == m_lineLength)
        return containsNulls(m_line);
    constexpr qint64 stepBytes = 1024 * 1024;
    for (qint64 done = 0; done < m_lineLength; done += stepBytes) {
        const int length = static_cast<int>(std::min(stepBytes, m_lineLength - done));
        if (containsNulls(getBytes(static_cast<int>(m_lineStart + done), length)))
            return true;
    }
    return false;
}

QByteArray FileIterator::getBytes(int pos, int len) const
{
    if (pos < 0 || len < 0 || pos >= getFileSize() || qint64(pos) + len > getFileSize())
        return {};
    if (!m_file->seek(pos))
        return {};
    return m_file->read(len);
}

int FileIterator::readBytes(int pos, char* to, int len) const
{
    if (pos < 0 || len <= 0 || pos >= getFileSize() || !m_file->seek(pos))
        return 0;
    return static_cast<int>(std::max<qint64>(m_file->read(to, len), 0));
}

int FileIterator::getFileSize() const
{
    return m_file && m_file->isOpen() ? static_cast<int>(m_info.size()) : 0;
}

bool FileIterator::empty() const
{
    return getFileSize() < 1;
}

bool FileIterator::reachedEnd() const
{
    return getFileSize() <= qint64(m_bufferStart) + m_bufferPos;
}

bool FileIterator::reachedStart() const
{
    return m_bufferStart == 0 && m_bufferPos == 0;
}

bool FileIterator::readChunk(int pos)
{
    m_buffer.resize(chunkBytes);
    m_buffer.resize(readBytes(pos, m_buffer.data(), chunkBytes));
    // A file cut short under us gives no bytes before its recorded end: that
    // counts as the end too, or the reading would never stop.
    return !m_buffer.isEmpty();
}

bool FileIterator::searchForwards()
{
    m_linePos = m_bufferStart + m_bufferPos;
    if (!m_file || !m_file->isOpen() || getFileSize() <= m_linePos)
        return false;
    clearLine();
    for (;;) {
        const int feed = static_cast<int>(m_buffer.indexOf('\n', m_bufferPos));
        if (feed >= 0) {
            growLineAtEnd(m_bufferPos, feed + 1);
            m_bufferPos = feed + 1;
            return finishLine();
        }
        const int length = static_cast<int>(m_buffer.size());
        growLineAtEnd(m_bufferPos, length);
        m_bufferStart += length;
        m_bufferPos = 0;
        if (!readChunk(m_bufferStart))
            return finishLine();
    }
}

bool FileIterator::searchBackwards()
{
    if (m_bufferStart == 0 && m_bufferPos == 0) {
        m_linePos = 0;
        return false;
    }
    if (!m_file || !m_file->isOpen())
        return false;
    clearLine();
    // The byte before the read position is the line feed that ends the wanted line.
    int feed = findLastIndexOf(m_buffer, '\n', m_bufferPos - 1);
    while (feed < 0) {
        growLineAtStart(m_bufferPos, 0);
        const int oldStart = m_bufferStart;
        m_bufferStart = std::max(oldStart - chunkBytes, 0);
        if (oldStart < 1 || !readChunk(m_bufferStart)) {
            m_bufferPos = 0;
            m_linePos = m_bufferStart;
            return finishLine();
        }
        m_bufferPos = oldStart - m_bufferStart;
        feed = findLastIndexOf(m_buffer, '\n', m_bufferPos);
    }
    growLineAtStart(m_bufferPos, feed + 1);
    m_bufferPos = feed + 1;
    m_linePos = m_bufferStart + m_bufferPos;
    return finishLine();
}

void FileIterator::clearLine()
{
    m_line.clear();
    m_lineLength = 0;
}

void FileIterator::growLineAtEnd(int from, int to)
{
    if (m_line.size() == m_lineLength)
        appendToBuffer(m_line, m_buffer, from, to - from);
    m_lineLength += std::max(0, std::min(to, static_cast<int>(m_buffer.size())) - from);
    dropLongLine();
}

void FileIterator::growLineAtStart(int to, int from)
{
    if (m_line.size() == m_lineLength)
        prependToBuffer(m_line, m_buffer, to, to - from);
    m_lineLength += std::max(0, std::min(to, static_cast<int>(m_buffer.size())) - from);
    dropLongLine();
}

void FileIterator::dropLongLine()
{
    if (m_lineLength > keptLineBytes)
        m_line = QByteArray();
}

bool FileIterator::finishLine()
{
    // A failed move leaves the line but not always its position.
    m_lineStart = m_linePos;
    m_bytesWalked += m_lineLength;
    return true;
}

} // namespace lorix
