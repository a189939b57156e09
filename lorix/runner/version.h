// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <lorix/export.h>

#include <QString>

/// The library's name, version and release date in one line:
/// "lorixlib 1.83.0.2990 of Jun 21 2013".
LORIX_EXPORT QString getVersion();

/// The release date alone: "Jun 21 2013". Callers rely on the name's spelling.
LORIX_EXPORT QString getReleaseData();

namespace lorix {
using ::getReleaseData;
using ::getVersion;
} // namespace lorix
