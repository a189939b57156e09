// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <lorix/container/filetag.h>
#include <lorix/container/sectiontag.h>
#include <lorix/export.h>
#include <lorix/queues/savedfile.h>

#include <QByteArray>
#include <QString>

namespace lorix {

/// One item of a ValidationQueue: which bytes are hashed and what is expected.
struct LORIX_EXPORT Validatee
{
    int type = 0;             ///< 0 section, 1 embedded file, 2 saved file.
    int id = 0;               ///< Section or file id; not used for saved files.
    int start = 0;            ///< 0-based offset of the first byte in the container.
    int size = 0;             ///< Number of bytes to hash.
    int tagPosition = 0;      ///< Sections: the marker's 1-based `position`; else -1.
    QByteArray validationTag; ///< Sections: fed in place of the marker line behind its "%".
    QString md5;              ///< Expected digest of the content.
    QString cmd5;             ///< Expected digest of the stored bytes; empty: not compressed.
    QString name;             ///< Title or "<no title>", file name, or path.

    /// The bytes of a section, its marker's own digest read as zeros.
    static Validatee fromSection(const SectionTag& section);

    /// The stored bytes of an embedded file: `cfilesize` of them for "flate",
    /// `filesize` for any other method.
    static Validatee fromFile(const FileTag& file);

    /// The first `size` bytes of a file on disk.
    static Validatee fromSavedFile(const SavedFile& file);
};

} // namespace lorix
