// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <lorix/container/filetag.h>
#include <lorix/export.h>

#include <QString>

namespace lorix {

/// 0-based offset of an embedded file's first stored byte. Where the marker's
/// numbers lead beyond the largest offset of the format, the answer is that
/// largest offset, which no container reaches.
LORIX_EXPORT int storedStart(const FileTag& file);

/// Number of stored bytes: `cfilesize` for "flate", `filesize` for any other
/// method.
LORIX_EXPORT int storedSize(const FileTag& file);

/// Expected digest of the stored bytes: `md5cfile` for "flate", else empty.
LORIX_EXPORT QString storedDigest(const FileTag& file);

} // namespace lorix
