// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <apps/lorix/answer.h>
#include <apps/lorix/console.h>

#include <CLI/CLI.hpp>

#include <QString>

#include <memory>
#include <vector>

namespace lorix::cli {

/// What the person asked for in front of or behind any command.
struct GlobalOptions
{
    bool json = false;
    bool quiet = false;
    int verbose = 0;
};

/// One verb of the command line. It declares its options once; help, manual
/// page and completions are made from that declaration.
class Command
{
public:
    virtual ~Command();

    /// The verb, for example "info".
    virtual QString name() const = 0;
    /// What it answers, one line without a full stop.
    virtual QString summary() const = 0;
    /// Two or three example calls with a line on each, shown at the end of help.
    virtual QString examples() const { return {}; }
    /// Adds options and positionals, bound to the command's own members.
    virtual void declare(CLI::App& app) = 0;
    /// Does the work; the result is an ExitCode.
    virtual int run(Console& console, const GlobalOptions& options) = 0;
};

/// Every command, in the order in which help lists them.
std::vector<std::unique_ptr<Command>> allCommands();

/// Adds an option that takes any text and stores it as a QString.
CLI::Option* addText(CLI::App& app, const std::string& names, QString& target,
                     const std::string& description);
/// Adds an option or positional that takes several texts.
CLI::Option* addTexts(CLI::App& app, const std::string& names, QStringList& target,
                      const std::string& description);

} // namespace lorix::cli
