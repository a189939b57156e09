// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <apps/lorix/optiontable.h>

namespace lorix::cli {

/// The manual page lorix(1), in the man macros of troff, all commands and
/// options in it. `exitStatus` is the text on exit codes that help shows.
QString manualPage(const OptionTable& table, const QString& exitStatus);

} // namespace lorix::cli
