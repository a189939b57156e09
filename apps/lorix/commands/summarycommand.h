// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <apps/lorix/filecommand.h>

namespace lorix::cli {

/// `lorix summary FILE`: what happened to the document, newest step first.
class SummaryCommand : public FileCommand
{
public:
    QString name() const override { return QStringLiteral("summary"); }
    QString summary() const override;
    QString examples() const override;
    void declare(CLI::App& app) override;

protected:
    Answer examine(const Input& input, const View& view, bool& skipped) const override;

private:
    bool m_files = false;
    int m_step = -1;
};

} // namespace lorix::cli
