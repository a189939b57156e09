// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <apps/lorix/checkrun.h>
#include <apps/lorix/filecommand.h>

namespace lorix::cli {

/// lorix validate: checks every digest of a container, its chain, and files on
/// disk against a list of digests.
class ValidateCommand : public FileCommand
{
public:
    QString name() const override { return QStringLiteral("validate"); }
    QString summary() const override;
    QString examples() const override;
    void declare(CLI::App& app) override;
    int run(Console& console, const GlobalOptions& options) override;

protected:
    Answer examine(const Input& input, const View& view, bool& skipped) const override;

private:
    Answer examineList(const View& view, bool& skipped) const;
    bool check(CheckRun& run, const QString& label) const;

    QString m_savedList;
    int m_queues = 1;
    Console* m_console = nullptr;
};

} // namespace lorix::cli
