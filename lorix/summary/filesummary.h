// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <lorix/container/filetag.h>
#include <lorix/export.h>

#include <QHash>
#include <QString>
#include <QStringList>

namespace lorix {

/// One file of a workflow step, as the step's XML summary or, where there is
/// none, the file's marker describes it. Sizes are in bytes, -1 when unknown.
struct FileSummary
{
    int tagId = -1;       ///< Number of the matching embedded file (FileTag::id), or -1.
    QString filename;     ///< "Filename"
    QString filepath;     ///< "Filepath"
    QString filetype;     ///< "Filetype"
    QString description;  ///< "Description"
    QString comment;      ///< "Comment"
    QString lastModified; ///< "LastModified", kept as text.
    bool generateMD5 = false;
    bool embedded = false; ///< The file's bytes are in the container.
    bool preview = false;
    bool previewWS = false;
    bool thumbnail = false;
    bool thumbnailOnly = false;
    int uncompressedSize = -1;
    QString uncompressedMD5;  ///< 32 lower-case hexadecimal digits.
    QString compressedMethod; ///< For example "flate".
    int compressedSize = -1;
    QString compressedMD5;
    QHash<QString, QString> userAttributes;            ///< Value by key.
    QHash<QString, QString> userAttributeUnits;        ///< Unit by key, where there is one.
    QStringList userAttributeKeys;                     ///< Keys in document order.
    QString filePurpose = QStringLiteral("Undefined"); ///< Or "InFile", "OutFile".
    bool fromTags = true; ///< Made from a marker alone, without an XML summary.
};

/// What the marker alone tells of a file: tagId, type, name, description,
/// comment, compression, sizes and digests; the rest keeps its default.
LORIX_EXPORT FileSummary makeFileSummaryFromFileTag(const FileTag& tag);

/// The text that names one file content within section `n`:
/// "file: <n>-<filename>-<uncompressedMD5>-<uncompressedSize>".
LORIX_EXPORT QString makeFileHash(const FileSummary& file, int n);

} // namespace lorix

Q_DECLARE_TYPEINFO(lorix::FileSummary, Q_RELOCATABLE_TYPE);
