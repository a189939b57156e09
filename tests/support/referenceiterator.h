// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QByteArray>
#include <QSharedPointer>
#include <QString>

/// The line iterator as its description has it, step by step, over bytes in
/// memory. Slow and plain: the iterator that reads files is compared with it.
class ReferenceIterator
{
public:
    static constexpr int chunkSize = 10240;

    void open(const QByteArray& bytes);
    void closeFile();
    bool firstLine();
    bool nextLine();
    bool lastLine();
    bool prevLine();
    bool gotoPos(qint64 pos);

    QSharedPointer<QByteArray> curLine() const;
    QSharedPointer<QString> curLineAsString() const;
    bool curLineStartsWithBytes(const char* prefix) const;
    qint64 curPos() const { return m_linePos; }
    QByteArray getBytes(qint64 pos, qint64 len) const;
    bool canRead(qint64 pos, qint64 len) const;
    qint64 getFileSize() const;
    bool empty() const;
    bool reachedEnd() const;
    bool reachedStart() const;

private:
    bool getBuffer(qint64 pos);
    bool searchForwards();
    bool searchBackwards();

    bool m_open = false;
    QByteArray m_file;
    QByteArray m_buffer;
    QByteArray m_line;
    qint64 m_linePos = -1;
    qint64 m_bufferStart = -1;
    qint64 m_bufferPos = 0;
};
