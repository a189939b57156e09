// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <apps/lorix/argfilecheck.h>
#include <apps/lorix/command.h>
#include <apps/lorix/text.h>

#include <QHash>
#include <QStringList>

namespace lorix::cli {

/// `lorix args FILE`: an argument file as the invocation that it holds, or what
/// is wrong with it.
class ArgsCommand : public Command
{
public:
    QString name() const override { return QStringLiteral("args"); }
    QString summary() const override;
    QString examples() const override;
    void declare(CLI::App& app) override;
    int run(Console& console, const GlobalOptions& options) override;

private:
    Answer examine(const QString& file, const Paint& paint) const;
    bool prepareVariables(Console& console);

    QStringList m_files;
    QStringList m_definitions;
    bool m_keepVariables = false;
    QHash<QString, QString> m_variables;
};

} // namespace lorix::cli
