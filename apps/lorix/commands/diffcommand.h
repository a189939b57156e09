// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <apps/lorix/command.h>
#include <apps/lorix/historydiff.h>

namespace lorix::cli {

/// `lorix diff A B`: what two histories share, and what they do not.
class DiffCommand : public Command
{
public:
    QString name() const override { return QStringLiteral("diff"); }
    QString summary() const override;
    QString examples() const override;
    void declare(CLI::App& app) override;
    int run(Console& console, const GlobalOptions& options) override;

    /// Compares two containers.
    Answer examine(const QString& left, const QString& right, const Paint& paint) const;

private:
    QString m_left;
    QString m_right;
    HistoryDiff m_diff; // as the options set it
};

} // namespace lorix::cli
