// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <apps/lorix/command.h>

#include <QStringList>

namespace lorix::cli {

/// `lorix add -- OPTIONS`: adds a step through the add tool.
class AddCommand : public Command
{
public:
    QString name() const override { return QStringLiteral("add"); }
    QString summary() const override;
    QString examples() const override;
    void declare(CLI::App& app) override;
    int run(Console& console, const GlobalOptions& options) override;

    /// The words as text of an argument file that gives exactly these words.
    static QString argumentText(const QStringList& words);

private:
    QStringList m_words;
    QStringList m_toolPaths;
};

} // namespace lorix::cli
