// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <lorix/export.h>

#include <QString>

/// How the text of a summary's element is read as a number and as a flag.

/// The decimal number as QString::toInt() reads it (a sign and blanks around it
/// are allowed), or -1 where the text is no decimal number or does not fit into
/// 32 bits. The text "-1" gives -1 as well.
LORIX_EXPORT int str2int(const QString& text);

/// True exactly for decimal numbers other than 0. Any other text is false,
/// "true" included, and so is a number that does not fit into 32 bits.
LORIX_EXPORT bool str2bool(const QString& text);

namespace lorix {

using ::str2bool;
using ::str2int;

} // namespace lorix
