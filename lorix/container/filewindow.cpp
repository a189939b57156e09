// SPDX-License-Identifier: BSD-3-Clause
#include <lorix/container/filewindow.h>

#include <algorithm>
#include <cstring>

namespace lorix {

namespace {
constexpr qint64 windowBytes = 256 * 1024;
} // namespace

FileWindow::FileWindow(const FileIterator& file)
    : m_file(file), m_buffer(static_cast<int>(windowBytes), Qt::Uninitialized)
{}

qint64 FileWindow::findForwards(const QByteArrayMatcher& needle, qint64 from)
{
    const qint64 length = needle.pattern().size();
    while (cover(from, length)) {
        const qint64 found = needle.indexIn(at(from), static_cast<int>(end() - from));
        if (found >= 0)
            return from + found;
        from = end() - length + 1;
    }
    return -1;
}

qint64 FileWindow::findBackwards(const QByteArray& needle, qint64 before)
{
    const auto length = static_cast<size_t>(needle.size());
    before = std::min(before, m_file.getFileSize() - needle.size() + 1);
    while (coverBefore(before, needle.size() - 1)) {
        for (const char* place = at(before); place != at(m_start);) {
            --place;
            if (*place == needle.front() && std::memcmp(place, needle.constData(), length) == 0)
                return m_start + (place - at(m_start));
        }
        before = m_start;
    }
    return -1;
}

qint64 FileWindow::startOfLine(qint64 pos)
{
    while (coverBefore(pos, 0)) {
        for (const char* place = at(pos); place != at(m_start); --place) {
            if (place[-1] == '\n')
                return m_start + (place - at(m_start));
        }
        pos = m_start;
    }
    return 0;
}

qint64 FileWindow::endOfLine(qint64 from)
{
    while (cover(from, 1)) {
        const void* feed = std::memchr(at(from), '\n', static_cast<size_t>(end() - from));
        if (feed)
            return m_start + (static_cast<const char*>(feed) - m_buffer.constData()) + 1;
        from = end();
    }
    return m_file.getFileSize();
}

bool FileWindow::isLineStart(qint64 pos)
{
    return pos == 0 || (cover(pos - 1, 1) && *at(pos - 1) == '\n');
}

QByteArray FileWindow::bytes(qint64 from, qint64 to)
{
    if (to - from > windowBytes)
        return m_file.getBytes(static_cast<int>(from), static_cast<int>(to - from));
    if (!cover(from, to - from))
        return {};
    return QByteArray(at(from), static_cast<int>(std::min(to, end()) - from));
}

// Makes the window hold [from, from + length); false when the file ends before.
bool FileWindow::cover(qint64 from, qint64 length)
{
    if (from < 0 || from + length > m_file.getFileSize())
        return false;
    if (from >= m_start && from + length <= end())
        return true;
    m_start = from;
    m_filled =
        m_file.readBytes(static_cast<int>(from), m_buffer.data(), static_cast<int>(windowBytes));
    return length <= m_filled;
}

// Makes the window hold some bytes before `before`, all from its start on, and
// `tail` bytes from there; false when there are none.
bool FileWindow::coverBefore(qint64 before, qint64 tail)
{
    if (before <= 0)
        return false;
    if (m_start < before && before + tail <= end())
        return true;
    const qint64 from = std::max<qint64>(before + tail - windowBytes, 0);
    return cover(from, before + tail - from);
}

} // namespace lorix
