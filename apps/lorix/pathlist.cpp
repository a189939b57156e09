// SPDX-License-Identifier: BSD-3-Clause
#include <apps/lorix/pathlist.h>

#include <QFileInfo>

#include <cerrno>
#include <unistd.h>

namespace lorix::cli {

PathList::PathList(const QString& path, char delimiter) : m_delimiter(delimiter)
{
    if (path == QLatin1String("-")) {
        m_file.open(STDIN_FILENO, QIODevice::ReadOnly | QIODevice::Unbuffered);
    } else if (!QFileInfo(path).isDir()) {
        m_file.setFileName(path);
        m_file.open(QIODevice::ReadOnly | QIODevice::Unbuffered);
    }
}

bool PathList::next(QString& name)
{
    for (;;) {
        qsizetype end = m_buffer.indexOf(m_delimiter, m_start);
        if (end < 0 && m_buffer.size() - m_start < mostBytes && readMore())
            continue;
        if (end < 0)
            end = m_buffer.size();
        if (m_start == m_buffer.size())
            return false;
        const QByteArray bytes = m_buffer.mid(m_start, end - m_start);
        m_start = qMin(end + 1, m_buffer.size());
        if (bytes.isEmpty())
            continue;
        name = QFile::decodeName(bytes);
        return true;
    }
}

// Takes what is there, and waits only when there is nothing.
bool PathList::readMore()
{
    m_buffer.remove(0, m_start);
    m_start = 0;
    const qsizetype had = m_buffer.size();
    m_buffer.resize(had + mostBytes);
    ssize_t count = -1;
    do {
        count = ::read(m_file.handle(), m_buffer.data() + had, static_cast<size_t>(mostBytes));
    } while (count < 0 && errno == EINTR);
    m_buffer.resize(had + qMax<ssize_t>(count, 0));
    return count > 0;
}

} // namespace lorix::cli
