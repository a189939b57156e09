// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <CLI/CLI.hpp>

#include <QList>
#include <QString>
#include <QStringList>

namespace lorix::cli {

/// One option or positional of the command line.
struct OptionEntry
{
    QStringList shortNames;        ///< As typed, "-q"; both lists are empty for a positional.
    QStringList longNames;         ///< As typed, "--quiet".
    QString value;                 ///< What stands for the value, "FILE"; empty for a flag.
    QString description;           ///< One sentence without a full stop.
    QStringList choices;           ///< All values that are allowed, where they are few.
    QString range;                 ///< Which numbers are allowed, "1 to 1000", or empty.
    QString defaultValue;          ///< What holds without the option, or empty.
    QChar separator = QChar::Null; ///< Between several values in one word, or null.
    bool required = false;
    bool repeats = false; ///< May be given more than once.

    bool takesValue() const { return !value.isEmpty(); }
    /// Short names first, then long ones.
    QStringList names() const { return shortNames + longNames; }
};

/// What one command takes, or the program itself in front of any command.
struct CommandEntry
{
    QString name;
    QString summary;
    QString examples; ///< Lines as help shows them, or empty.
    QList<OptionEntry> options;
    QList<OptionEntry> positionals;
};

/// All that the command line takes, as the commands declared it. Manual page
/// and completions are written from this, so that they cannot tell otherwise.
struct OptionTable
{
    CommandEntry program;
    QList<CommandEntry> commands;
};

/// Reads the declarations of a parser and of its commands, in their order.
OptionTable readOptionTable(const CLI::App& parser);

} // namespace lorix::cli
