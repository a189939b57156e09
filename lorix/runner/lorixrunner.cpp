// SPDX-License-Identifier: BSD-3-Clause
#include <lorix/runner/lorixrunner.h>

#include <lorix/runner/applicationdir.h>

#include <QDir>
#include <QFileInfo>
#include <QProcess>
#include <QStringDecoder>

#include <utility>

namespace lorix {

namespace {

constexpr int startMilliseconds = 30000;
constexpr int roundMilliseconds = 1000;

bool isLineBreak(QChar c)
{
    return c == u'\n' || c == u'\r';
}

// Length of the UTF-8 sequence that the bytes end in the middle of, or 0. In
// other encodings its bytes are at worst shown with the next ones.
qsizetype unfinishedLength(const QByteArray& bytes)
{
    for (qsizetype length = 1; length <= 3 && length <= bytes.size(); ++length) {
        const auto byte = static_cast<unsigned char>(bytes[bytes.size() - length]);
        if ((byte & 0xC0) == 0x80)
            continue;
        const int whole = byte >= 0xF0 ? 4 : byte >= 0xE0 ? 3 : byte >= 0xC0 ? 2 : 1;
        return whole > length ? length : 0;
    }
    return 0;
}

// Makes text of output that arrives in pieces, so that it does not depend on
// where the system cuts them: not within a character, nor between CR and LF.
class OutputText
{
public:
    QString next(const QByteArray& bytes)
    {
        m_bytes += bytes;
        const QByteArray unfinished = m_bytes.right(unfinishedLength(m_bytes));
        m_bytes.chop(unfinished.size());
        const QString text = last();
        m_bytes = unfinished;
        return text;
    }

    // What is left when no more bytes come.
    QString last()
    {
        // A decoder with state of its own would lose the byte after a broken sequence.
        QStringDecoder decoder(QStringDecoder::System, QStringDecoder::Flag::Stateless |
                                                           QStringDecoder::Flag::ConvertInitialBom);
        const QString text = decoder.decode(m_bytes);
        if (text.isEmpty())
            return text;
        const bool restOfLineBreak = m_endsWithReturn && text.front() == u'\n';
        m_endsWithReturn = text.back() == u'\r';
        return restOfLineBreak ? text.mid(1) : text;
    }

private:
    QByteArray m_bytes;
    bool m_endsWithReturn = false;
};

} // namespace

LorixRunner::LorixRunner(const QString& toolName, QObject* logTarget)
    : LogSource(logTarget), m_toolName(toolName), m_searchPaths(QStringLiteral("."))
{
    setUsePy2Exe(true);
}

void LorixRunner::setUsePy2Exe(bool usePy2Exe)
{
    m_usePy2Exe = usePy2Exe;
    m_executable = m_toolName + (usePy2Exe ? QStringLiteral(".exe") : QStringLiteral(".py"));
}

void LorixRunner::setSearchPaths(const QStringList& searchPaths)
{
    m_searchPaths = searchPaths;
}

QString LorixRunner::findPython() const
{
    return QStringLiteral("python");
}

QString LorixRunner::searchInPath(const QString& directory, const QString& name) const
{
    const QString path = getBinaryDir() + QDir::separator() + directory;
    const QFileInfo info(QDir(path), name);
    return info.isFile() ? info.filePath() : QString();
}

QString LorixRunner::findLorixrun() const
{
    for (const QString& path : m_searchPaths) {
        const QString found = searchInPath(path, m_executable);
        if (!found.isEmpty())
            return found;
    }
    return QString();
}

void LorixRunner::processOutput(const QString& text, bool flush)
{
    // What is pending holds no line break, so that only the new text is searched.
    qsizetype lineStart = 0;
    for (qsizetype i = 0; i < text.size(); ++i) {
        if (!isLineBreak(text[i]))
            continue;
        m_pending += QStringView(text).mid(lineStart, i - lineStart);
        m_pending += u'\n';
        if (text[i] == u'\r' && i + 1 < text.size() && text[i + 1] == u'\n')
            ++i;
        lineStart = i + 1;
        processOutputLine(std::exchange(m_pending, QString()));
    }
    m_pending += QStringView(text).mid(lineStart);
    if (flush && !m_pending.isEmpty())
        processOutputLine(std::exchange(m_pending, QString()) + u'\n');
}

void LorixRunner::processOutputLine(const QString& line)
{
    if (line.startsWith(QLatin1String("***ERROR")))
        Q_EMIT log(line.mid(8), 2);
    else if (line.startsWith(QLatin1String("***WARNING")))
        Q_EMIT log(line.mid(10), 1);
    else
        Q_EMIT log(line, 0);
}

int LorixRunner::runProcess(const QString& parameter)
{
    const QString tool = findLorixrun();
    if (tool.isEmpty()) {
        Q_EMIT log(QStringLiteral("could not find any %1 executable\n").arg(m_executable), 2);
        return ToolNotFound;
    }

    QString program = tool;
    QStringList arguments = toolArguments(parameter);
    if (!m_usePy2Exe) {
        program = findPython();
        arguments.prepend(tool);
    }

    QProcess process;
    process.setProcessChannelMode(QProcess::MergedChannels);
    process.start(program, arguments, QIODevice::ReadWrite);
    if (!process.waitForStarted(startMilliseconds)) {
        Q_EMIT log(QStringLiteral("%1 failed to start\n").arg(program), 2);
        return ToolNotStarted;
    }
    process.write(toolInput(parameter));
    process.closeWriteChannel();
    pumpOutput(process);

    const int exitCode = process.exitCode();
    Q_EMIT log(tr("Programm exited with error code: %1\n\n").arg(exitCode), 0);
    return exitCode;
}

void LorixRunner::pumpOutput(QProcess& process)
{
    OutputText output;
    while (process.state() != QProcess::NotRunning) {
        // A receiver of intercept() that handles events may have read some already.
        if (process.bytesAvailable() == 0)
            process.waitForReadyRead(roundMilliseconds);
        processOutput(output.next(process.readAllStandardOutput()), false);
        Q_EMIT intercept();
    }
    processOutput(output.next(process.readAllStandardOutput()), false);
    processOutput(output.last(), true);
}

QStringList LorixRunner::toolArguments(const QString&) const
{
    return {};
}

QByteArray LorixRunner::toolInput(const QString&) const
{
    return {};
}

} // namespace lorix
