// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <apps/lorix/command.h>

namespace lorix::cli {

/// `lorix cat FILE ID`: one embedded file's content on standard output.
class CatCommand : public Command
{
public:
    QString name() const override { return QStringLiteral("cat"); }
    QString summary() const override;
    QString examples() const override;
    void declare(CLI::App& app) override;
    int run(Console& console, const GlobalOptions& options) override;

private:
    QString m_file;
    int m_id = -1;
};

} // namespace lorix::cli
