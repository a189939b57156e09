// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <lorix/container/fileiterator.h>
#include <lorix/export.h>

#include <QByteArray>
#include <QByteArrayMatcher>

namespace lorix {

/// Searches an open file for byte strings and line ends in large steps, in
/// fixed memory (256 KiB), where moving line by line would be slow. All
/// positions are 0-based byte offsets.
class LORIX_EXPORT FileWindow
{
public:
    /// Looks through `file`, which must stay open and alive meanwhile.
    explicit FileWindow(const FileIterator& file);

    /// Where the first occurrence of `needle` that begins at or behind `from`
    /// begins; -1 when there is none.
    qint64 findForwards(const QByteArrayMatcher& needle, qint64 from);

    /// Where the last occurrence of `needle` that begins before `before`
    /// begins; -1 when there is none.
    qint64 findBackwards(const QByteArray& needle, qint64 before);

    /// The first byte of the line that holds `pos`.
    qint64 startOfLine(qint64 pos);

    /// The first byte behind the line that holds `from`: behind the next line
    /// feed at or after `from`, or the file's size.
    qint64 endOfLine(qint64 from);

    /// Whether a line begins at `pos`: it is 0 or follows a line feed.
    bool isLineStart(qint64 pos);

    /// The bytes [from, to), fewer where the file ends before.
    QByteArray bytes(qint64 from, qint64 to);

private:
    bool cover(qint64 from, qint64 length);
    bool coverBefore(qint64 before, qint64 tail);
    const char* at(qint64 pos) const { return m_buffer.constData() + (pos - m_start); }
    qint64 end() const { return m_start + m_filled; }

    const FileIterator& m_file;
    QByteArray m_buffer;
    qint64 m_start = 0;
    qint64 m_filled = 0;
};

} // namespace lorix
