// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <apps/lorix/filecommand.h>

namespace lorix::cli {

/// `lorix info FILE`: what a document carries, at a glance.
class InfoCommand : public FileCommand
{
public:
    QString name() const override { return QStringLiteral("info"); }
    QString summary() const override;
    QString examples() const override;

protected:
    Answer examine(const Input& input, const View& view, bool& skipped) const override;
};

} // namespace lorix::cli
