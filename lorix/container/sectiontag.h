// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <lorix/export.h>

#include <QByteArray>
#include <QString>

namespace lorix {

/// One section marker line, as read from a container.
///
/// A section is what one workflow step appended to the document: the blocks of
/// its files and this marker. All positions and sizes are in bytes; an empty
/// number in the marker reads as -1, one beyond 32 bits as 0. Text is kept as
/// it stands between the brackets, with the escapes `\\`, `\]` and `\n` in it.
struct SectionTag
{
    int id = 0;             ///< Number given by the parser: 0 is the newest section.
    int position = 0;       ///< 1-based offset of the marker line's first byte.
    int taglen = 0;         ///< Characters from "%" to "-->", less one.
    QString version;        ///< Field version.
    QString creator;        ///< Field creator.
    QString title;          ///< Field title; may be empty.
    int left = 0;           ///< The section begins at the 0-based offset position - left.
    int size = 0;           ///< Length of the section, counted from position - left.
    int index = 0;          ///< Field index, as read; the parser numbers by `id`.
    QString md5section;     ///< MD5 of the section with this field's digits read as zeros.
    QString previousmd5;    ///< The predecessor's digest as recorded; the parser does not check it.
    int previousmarker = 0; ///< Distance back to the predecessor's marker line; negative: none.
    QByteArray validationTag; ///< The raw line with md5section zeroed and without its "%".
};

/// Writes every member to the debug stream, one labelled value a line.
LORIX_EXPORT void printSectionTag(const SectionTag& tag);

} // namespace lorix
