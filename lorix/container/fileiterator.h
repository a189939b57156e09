// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <lorix/export.h>

#include <QByteArray>
#include <QFile>
#include <QFileInfo>
#include <QSharedPointer>
#include <QString>

#include <memory>

namespace lorix {

/// Reads a file line by line, forwards from the start, backwards from the end
/// or from any byte, without loading it.
///
/// A line is the run of bytes up to and including the next line feed (byte 10),
/// or up to the end of the file; carriage returns belong to the line. All
/// positions are 0-based byte offsets. Memory is one chunk of 10240 bytes plus
/// the current line; a line of more than 1 MiB is not kept but read again
/// where somebody asks for it.
///
/// After a forward move the read position stands behind the current line,
/// after a backward move at its first byte. So the first prevLine() after a
/// forward move gives the line that holds the current position once more, from
/// its real start, and the first nextLine() after a backward move gives the
/// current line once more. The container parser counts on this.
///
///     FileIterator lines;
///     for (bool more = lines.open(path) && lines.firstLine(); more; more = lines.nextLine())
///         use(*lines.curLine());
class LORIX_EXPORT FileIterator
{
public:
    FileIterator();
    ~FileIterator();
    FileIterator(const FileIterator&) = delete;
    FileIterator& operator=(const FileIterator&) = delete;

    /// Closes what was open, opens `path` for reading and stands on its first
    /// line. False when it cannot be opened, is no regular file, or is larger
    /// than 2147483647 bytes. An empty file opens; it has no line.
    bool open(const QString& path);

    /// Back to the closed state; the bytes of the current line are kept.
    void closeFile();

    /// Moves to the first line; false when there is none.
    bool firstLine();
    /// Moves forwards by one line; false at the end.
    bool nextLine();
    /// Moves to the last line; false when there is none.
    bool lastLine();
    /// Moves backwards by one line; false at the start.
    bool prevLine();
    /// Makes the bytes from `pos` to the next line feed the current line, even
    /// inside a line. False, and nothing moves, when `pos` is not in the file.
    bool gotoPos(int pos);

    /// A copy of the current line's bytes; null when no file is open.
    QSharedPointer<QByteArray> curLine() const;
    /// The current line decoded from UTF-8, line end included; null when no file
    /// is open or the line holds a zero byte.
    QSharedPointer<QString> curLineAsString() const;
    /// Whether the raw bytes of the current line begin with `prefix`.
    bool curLineStartsWithBytes(const char* prefix) const;
    /// Whether `bytes` holds a zero byte.
    static bool containsNulls(const QByteArray& bytes);
    /// Offset of the current line's first byte; -1 when there is none.
    int curPos() const { return m_linePos; }
    /// Length of the current line in bytes, line end included.
    qint64 curLength() const { return m_lineLength; }
    /// Whether the current line holds a zero byte, in fixed memory.
    bool curLineContainsNulls() const;

    /// The `len` bytes at `pos`; empty when that range does not lie inside the
    /// file or no file is open. Moves neither the chunk nor the current line.
    QByteArray getBytes(int pos, int len) const;
    /// Reads up to `len` bytes from `pos` on into `to`; the count that came, 0
    /// at the end of the file or on failure. For readers with a buffer of
    /// their own; moves nothing either.
    int readBytes(int pos, char* to, int len) const;
    /// Size of the open file in bytes, 0 when none is open.
    int getFileSize() const;
    /// Whether no file is open or the open one has no bytes.
    bool empty() const;
    /// Whether the read position is at or behind the end of the file.
    bool reachedEnd() const;
    /// Whether the read position is the start of the file.
    bool reachedStart() const;
    /// Always false; kept for callers that still ask.
    bool onLine() const { return false; }

    /// Bytes of all lines that were moved to since the file was opened.
    qint64 bytesWalked() const { return m_bytesWalked; }

private:
    bool readChunk(int pos);
    bool searchForwards();
    bool searchBackwards();
    void clearLine();
    void growLineAtEnd(int from, int to);
    void growLineAtStart(int to, int from);
    void dropLongLine();
    bool finishLine();

    std::unique_ptr<QFile> m_file;
    QFileInfo m_info;
    QByteArray m_buffer;
    QByteArray m_line;
    int m_linePos = -1;
    int m_lineStart = 0; // where the bytes of the line stand
    int m_bufferStart = -1;
    int m_bufferPos = 0;
    qint64 m_lineLength = 0;
    qint64 m_bytesWalked = 0;
};

} // namespace lorix
