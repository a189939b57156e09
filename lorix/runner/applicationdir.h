// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <lorix/export.h>

#include <QString>

/// The folder that holds the running program, as a canonical path. Asks for a
/// QCoreApplication; without one the answer is the current folder.
LORIX_EXPORT QString getBinaryDir();

/// The folder in which the application is installed, as an absolute path:
/// getBinaryDir(), or, when that ends with "/Contents/MacOS", the folder that
/// holds the application bundle, three levels up.
LORIX_EXPORT QString getApplicationDir();

namespace lorix {
using ::getApplicationDir;
using ::getBinaryDir;
} // namespace lorix
