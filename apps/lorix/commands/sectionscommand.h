// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <apps/lorix/filecommand.h>

namespace lorix::cli {

/// `lorix sections FILE`: the section records as a table.
class SectionsCommand : public FileCommand
{
public:
    QString name() const override { return QStringLiteral("sections"); }
    QString summary() const override;
    QString examples() const override;

protected:
    Answer examine(const Input& input, const View& view, bool& skipped) const override;
};

} // namespace lorix::cli
