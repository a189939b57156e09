// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <apps/lorix/command.h>

namespace lorix::cli {

/// `lorix help [TOPIC]`: the help of a command, a page of its own, or all of it
/// as a manual page.
class HelpCommand : public Command
{
public:
    QString name() const override { return QStringLiteral("help"); }
    QString summary() const override;
    void declare(CLI::App& app) override;
    int run(Console& console, const GlobalOptions& options) override;

private:
    const CLI::App* m_program = nullptr;
    QString m_topic;
    bool m_manual = false;
};

} // namespace lorix::cli
