// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <lorix/export.h>

#include <QString>

namespace lorix {

/// One embedded-file marker line, as read from a container.
///
/// The block that follows the marker is found by the numbers alone. With
/// P = position + taglen, the 0-based offset of the first byte after "-->", the
/// block is [P, P + blocksize) and the stored bytes begin at P + offset. All
/// sizes are in bytes; an empty number reads as -1, one beyond 32 bits as 0.
/// Text is kept as it stands between the brackets, with its escapes.
struct FileTag
{
    int id = 0;          ///< Number given by the parser: 0 is the first file from the start.
    int position = 0;    ///< 1-based offset of the marker line's first byte.
    int taglen = 0;      ///< Characters from "%" to "-->", less one.
    QString filetype;    ///< Field filetype.
    QString filename;    ///< Field filename.
    QString desc;        ///< Field desc.
    QString comment;     ///< Field comment.
    QString compression; ///< "none" or "flate"; anything else is no known method.
    int filesize = 0;    ///< Size of the content, after inflating.
    int cfilesize = 0;   ///< Size of the stored bytes.
    int blocksize = 0;   ///< Length of the block behind "-->".
    int offset = 0;      ///< From the first byte behind "-->" to the first stored byte.
    QString md5file;     ///< MD5 of the content.
    QString md5cfile;    ///< MD5 of the stored bytes; used for "flate" only.
};

/// Writes every member to the debug stream, one labelled value a line.
LORIX_EXPORT void printFileTag(const FileTag& tag);

/// The text that names one file content within section `n`:
/// "file: <n>-<filename>-<md5file>-<filesize>".
LORIX_EXPORT QString makeFileHash(const FileTag& tag, int n);

} // namespace lorix

Q_DECLARE_TYPEINFO(lorix::FileTag, Q_RELOCATABLE_TYPE);
