// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <apps/lorix/filecommand.h>

namespace lorix::cli {

/// `lorix files FILE`: the embedded-file records as a table, each with its section.
class FilesCommand : public FileCommand
{
public:
    QString name() const override { return QStringLiteral("files"); }
    QString summary() const override;
    QString examples() const override;

protected:
    Answer examine(const Input& input, const View& view, bool& skipped) const override;
};

} // namespace lorix::cli
