// SPDX-License-Identifier: BSD-3-Clause
#include <apps/lorix/console.h>

#include <unistd.h>

namespace lorix::cli {

namespace {
constexpr qsizetype bufferBytes = 64 * 1024;
} // namespace

Console::Console(std::FILE* out, std::FILE* err) : m_out(out), m_err(err) {}

Console::~Console()
{
    progress(QString());
    flush();
}

void Console::write(const QString& text)
{
    writeBytes(text.toUtf8());
}

void Console::writeBytes(const QByteArray& bytes)
{
    m_buffer.append(bytes);
    if (m_buffer.size() >= bufferBytes)
        flush();
}

bool Console::flush()
{
    if (!m_buffer.isEmpty()) {
        const auto size = static_cast<size_t>(m_buffer.size());
        if (std::fwrite(m_buffer.constData(), 1, size, m_out) != size)
            m_failed = true;
        m_buffer.clear();
    }
    if (std::fflush(m_out) != 0)
        m_failed = true;
    return !m_failed;
}

void Console::note(const QString& text)
{
    if (!m_quiet)
        message(text);
}

void Console::error(const QString& text)
{
    message(text);
}

void Console::message(const QString& text)
{
    const QString shown = m_progressLine;
    progress(QString());
    // The answer so far comes first where both go to the same terminal.
    flush();
    const QByteArray line = "lorix: " + text.toUtf8() + '\n';
    std::fwrite(line.constData(), 1, static_cast<size_t>(line.size()), m_err);
    std::fflush(m_err);
    progress(shown);
}

void Console::progress(const QString& text)
{
    if (!showsProgress() || text == m_progressLine)
        return;
    m_progressLine = text;
    // Back to the line's start and clear to its end.
    const QByteArray line = "\r\x1b[K" + text.toUtf8();
    std::fwrite(line.constData(), 1, static_cast<size_t>(line.size()), m_err);
    std::fflush(m_err);
}

bool Console::showsProgress() const
{
    return !m_quiet && isatty(fileno(m_err)) != 0;
}

bool Console::colored() const
{
    return colorsFit(m_out);
}

bool Console::messagesColored() const
{
    return colorsFit(m_err);
}

bool Console::colorsFit(std::FILE* stream) const
{
    if (m_color != Color::Auto)
        return m_color == Color::Always;
    return isatty(fileno(stream)) != 0 && qEnvironmentVariableIsEmpty("NO_COLOR") &&
           qgetenv("TERM") != "dumb";
}

} // namespace lorix::cli
