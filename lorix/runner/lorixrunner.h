// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <lorix/export.h>
#include <lorix/runner/logsource.h>

#include <QByteArray>
#include <QString>
#include <QStringList>

class QProcess;

namespace lorix {

/// Runs one of the external tools that change containers: finds it, starts it,
/// feeds it, turns each line of its output into a log message and answers its
/// exit code. LorixaddRunner and LorixdelRunner are the two that are used; this
/// class alone runs a tool without arguments and without input.
///
///     LorixaddRunner runner(&window);
///     runner.setUsePy2Exe(false);
///     runner.setSearchPaths({".", "../share/tools"});
///     connect(&runner, &LorixRunner::intercept, [] { QCoreApplication::processEvents(); });
///     int exitCode = runner.runProcess(step.toCommandline(false));
///
/// No thread is used: runProcess() blocks its caller and pumps input and output
/// itself, so that neither side can wait for the other for ever. There is no
/// limit to how long a tool may run.
class LORIX_EXPORT LorixRunner : public LogSource
{
    Q_OBJECT

public:
    /// Results of runProcess() that are no exit codes.
    enum Failure { ToolNotFound = -1000, ToolNotStarted = -1001 };

    /// A runner for the tool called `toolName`, as a frozen program, searched
    /// for beside the running binary. Messages go to `logTarget` (see LogSource).
    explicit LorixRunner(const QString& toolName, QObject* logTarget = nullptr);

    /// Whether the tool is a program of its own, named with ".exe" (the
    /// default), or a script for the Python interpreter, named with ".py".
    void setUsePy2Exe(bool usePy2Exe);

    /// The folders that are searched for the tool, in order. Each is relative
    /// to getBinaryDir(), whatever it looks like; the default is ".".
    void setSearchPaths(const QStringList& searchPaths);

    /// The interpreter, "python": the system finds it when it is started.
    QString findPython() const;

    /// The path of the file `name` in `directory` (relative to getBinaryDir()),
    /// or empty when there is no such file.
    QString searchInPath(const QString& directory, const QString& name) const;

    /// The path of the tool in the first search path that holds it, or empty.
    QString findLorixrun() const;

    /// Takes a piece of output. Every line that it completes is passed to
    /// processOutputLine() with "\n" for its line break, which may be "\n",
    /// "\r" or "\r\n"; what follows the last break is kept for the next call, or
    /// passed on like a line with `flush`.
    void processOutput(const QString& text, bool flush);

    /// Emits one line as a message: of type 2 without its first 8 characters
    /// where it begins with "***ERROR", of type 1 without its first 10 where it
    /// begins with "***WARNING", else of type 0.
    void processOutputLine(const QString& line);

    /// Runs the tool to its end and returns its exit code (where a signal ended
    /// it, the signal's number), after logging it, or ToolNotFound or
    /// ToolNotStarted (within 30 seconds) after a message of type 2. What
    /// `parameter` is depends on the tool. Output, errors included, is read as
    /// text in the local encoding.
    int runProcess(const QString& parameter);

Q_SIGNALS:
    /// Emitted once in each round of the loop that pumps the output, that is,
    /// at least once a second while the tool runs.
    void intercept();

protected:
    /// The arguments that the tool is started with; none unless overridden.
    virtual QStringList toolArguments(const QString& parameter) const;

    /// What the tool reads from its standard input; nothing unless overridden.
    virtual QByteArray toolInput(const QString& parameter) const;

private:
    void pumpOutput(QProcess& process);

    QString m_executable;
    QString m_toolName;
    QString m_pending;
    bool m_usePy2Exe = true;
    QStringList m_searchPaths;
};

} // namespace lorix
