// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <apps/lorix/command.h>

namespace lorix::cli {

/// `lorix completion SHELL`: the script that makes a shell complete calls.
class CompletionCommand : public Command
{
public:
    QString name() const override { return QStringLiteral("completion"); }
    QString summary() const override;
    QString examples() const override;
    void declare(CLI::App& app) override;
    int run(Console& console, const GlobalOptions& options) override;

private:
    const CLI::App* m_program = nullptr;
    CLI::Option* m_queryOption = nullptr;
    QString m_shell;
    QString m_query;
};

} // namespace lorix::cli
