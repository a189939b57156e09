// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <apps/lorix/checkrun.h>
#include <apps/lorix/filecommand.h>

#include <atomic>

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
    bool check(CheckRun& run, const QString& label, bool alone) const;

    QString m_savedList;
    mutable std::atomic<int> m_busy = 0; // threads that compute digests
    Console* m_console = nullptr;
};

} // namespace lorix::cli
