// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QByteArray>
#include <QString>

#include <cstdio>

namespace lorix::cli {

enum class Color { Auto, Always, Never };

/// Where answers and messages go. Standard output is the answer and nothing
/// else; messages and progress go to standard error.
class Console
{
public:
    /// Writes to two open streams, which must outlive it. Flushes at its end.
    Console(std::FILE* out, std::FILE* err);
    ~Console();
    Console(const Console&) = delete;
    Console& operator=(const Console&) = delete;

    /// Part of the answer, as UTF-8. Text that comes from a container must have
    /// gone through printable() before, unless the answer is JSON.
    void write(const QString& text);
    /// Part of the answer, byte for byte.
    void writeBytes(const QByteArray& bytes);
    /// Hands all that was written to the system. False when any write has
    /// failed since the start, a full disk or a closed pipe for example.
    bool flush();

    /// A message for the person on a line of its own: "lorix: text". Not with quiet.
    void note(const QString& text);
    /// The same for what went wrong; comes even with quiet.
    void error(const QString& text);

    /// Rewrites the progress line; an empty text removes it. Does nothing unless
    /// showsProgress().
    void progress(const QString& text);
    /// Whether there is a person who sees a progress line: standard error is a
    /// terminal and nobody asked for quiet.
    bool showsProgress() const;

    void setQuiet(bool quiet) { m_quiet = quiet; }
    bool quiet() const { return m_quiet; }
    void setColor(Color color) { m_color = color; }
    /// Whether the answer may hold colours: asked for, or standard output is a
    /// terminal that is not "dumb", NO_COLOR is unset and nobody forbade it.
    bool colored() const;
    /// The same for messages, which go to standard error.
    bool messagesColored() const;

private:
    void message(const QString& text);
    bool colorsFit(std::FILE* stream) const;

    std::FILE* m_out;
    std::FILE* m_err;
    QByteArray m_buffer;
    QString m_progressLine;
    bool m_failed = false;
    bool m_quiet = false;
    Color m_color = Color::Auto;
};

} // namespace lorix::cli
