// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <apps/lorix/command.h>
#include <apps/lorix/messages.h>

#include <lorix/runner/lorixrunner.h>

namespace lorix::cli {

/// One run of an external tool: its lines are shown while it works, plain ones
/// as the answer, warnings and errors marked on standard error. With JSON they
/// are gathered and printed as one object at the end.
class ToolRun
{
public:
    /// `command` is the verb, `file` what the run is about; both are for JSON
    /// and messages. `toolPaths` are folders searched before the program's own.
    ToolRun(const QString& command, const QString& file, const QStringList& toolPaths,
            Console& console, const GlobalOptions& options);

    /// Runs a LorixaddRunner or LorixdelRunner and returns the tool's exit code,
    /// or Failed when it could not be run at all. As a script where there is
    /// one, else as a frozen program.
    template <typename Runner>
    int run(const QString& parameter)
    {
        Messages messages([this](const Message& message) { show(message); });
        Runner runner(&messages);
        return run(runner, parameter);
    }

private:
    int run(LorixRunner& runner, const QString& parameter);
    void show(const Message& message);

    QString m_file;
    QStringList m_toolPaths;
    Console& m_console;
    bool m_json;
    Answer m_answer;
    QJsonArray m_messages;
};

} // namespace lorix::cli
