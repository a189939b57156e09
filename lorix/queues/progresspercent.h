// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <lorix/export.h>

#include <QtGlobal>

namespace lorix {

/// `done` as a percentage of `total`, cut to a whole number. 0 when the total
/// is 0, and never outside the range of int.
LORIX_EXPORT int progressPercent(qint64 done, qint64 total);

} // namespace lorix
