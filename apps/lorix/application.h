// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <apps/lorix/command.h>

#include <QStringList>

#include <memory>
#include <vector>

namespace lorix::cli {

/// The command line tool as an object: parses arguments, runs the command that
/// they name and returns its exit code. Nothing here ends the process.
class Application
{
public:
    /// Answers through `console`, which must outlive it.
    explicit Application(Console& console);
    ~Application();

    /// Runs one call; `arguments` come without the program's name. The result
    /// is an ExitCode.
    int run(const QStringList& arguments);

    /// The table of options that help, manual page and completions are made from.
    const CLI::App& parser() const { return m_app; }

private:
    void declareGlobals();
    void declareCommands();
    QStringList withDefaultCommand(const QStringList& arguments) const;
    int runChosen();
    int report(const CLI::ParseError& error);

    Console& m_console;
    CLI::App m_app;
    GlobalOptions m_options;
    std::vector<std::unique_ptr<Command>> m_commands;
};

} // namespace lorix::cli
