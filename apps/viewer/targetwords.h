// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QString>

namespace lorix::viewer {

/// Why a file cannot be written to its place, in the person's language and with
/// what can be done about it. `problem` is what TargetFolder says.
QString targetWords(const QString& problem);

} // namespace lorix::viewer
