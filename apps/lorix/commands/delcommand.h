// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <apps/lorix/command.h>

#include <QStringList>

namespace lorix::cli {

/// `lorix del FILE`: removes the newest step through the delete tool.
class DelCommand : public Command
{
public:
    QString name() const override { return QStringLiteral("del"); }
    QString summary() const override;
    QString examples() const override;
    void declare(CLI::App& app) override;
    int run(Console& console, const GlobalOptions& options) override;

private:
    QStringList m_files;
    QStringList m_toolPaths;
};

} // namespace lorix::cli
