// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <lorix/container/filetag.h>
#include <lorix/export.h>

#include <QString>

namespace lorix {

/// One item of an ExtractionQueue: which stored bytes go where.
struct LORIX_EXPORT Extractee
{
    int id = 0;     ///< File id.
    int start = 0;  ///< 0-based offset of the first stored byte.
    int size = 0;   ///< Number of stored bytes.
    QString md5;    ///< Digest of the content, for the caller; not checked by the queue.
    QString cmd5;   ///< Digest of the stored bytes; the bytes are inflated when it is not empty.
    QString target; ///< Path of the file to write.

    /// The stored bytes of `file`, to be written to `target`: `cfilesize` of
    /// them for "flate", `filesize` for any other method.
    static Extractee fromFile(const FileTag& file, const QString& target);
};

} // namespace lorix
