// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QByteArray>
#include <QFile>
#include <QString>

namespace lorix::cli {

/// The names in a list, one after another as they arrive: from a pipe each is
/// given as soon as it is there. Empty ones are passed over.
class PathList
{
public:
    /// A longer name is cut here; no system has any.
    static constexpr qsizetype mostBytes = 64 * 1024;

    /// Reads the file at `path`, or standard input for "-". The names end in
    /// `delimiter`, which the last one may lack.
    PathList(const QString& path, char delimiter);

    /// False when the list cannot be opened.
    bool isOpen() const { return m_file.isOpen(); }
    /// Gives the next name; false at the end.
    bool next(QString& name);

private:
    bool readMore();

    QFile m_file;
    char m_delimiter;
    QByteArray m_buffer;
    qsizetype m_start = 0; // of what is not given yet in m_buffer
};

} // namespace lorix::cli
