// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <apps/lorix/command.h>
#include <apps/lorix/extractrun.h>
#include <apps/lorix/text.h>

namespace lorix::cli {

/// lorix extract: writes embedded files to a folder.
class ExtractCommand : public Command
{
public:
    QString name() const override { return QStringLiteral("extract"); }
    QString summary() const override;
    QString examples() const override;
    void declare(CLI::App& app) override;
    int run(Console& console, const GlobalOptions& options) override;

private:
    bool choose(const LorixParser& parser, Answer& answer, QList<ExtractItem>& items) const;
    void report(Answer& answer, const QList<ExtractItem>& items, const Paint& paint) const;
    QString outcomeOf(const ExtractItem& item) const;

    QString m_file;
    QStringList m_patterns;
    QString m_folder = QStringLiteral(".");
    bool m_dryRun = false;
    bool m_overwrite = false;
    ExtractRun::Options m_options;
};

} // namespace lorix::cli
