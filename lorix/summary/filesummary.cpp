// SPDX-License-Identifier: BSD-3-Clause
#include <lorix/summary/filesummary.h>

namespace lorix {

FileSummary makeFileSummaryFromFileTag(const FileTag& tag)
{
    FileSummary file;
    file.tagId = tag.id;
    file.filetype = tag.filetype;
    file.filename = tag.filename;
    file.description = tag.desc;
    file.comment = tag.comment;
    file.compressedMethod = tag.compression;
    file.compressedSize = tag.cfilesize;
    file.uncompressedSize = tag.filesize;
    file.compressedMD5 = tag.md5cfile;
    file.uncompressedMD5 = tag.md5file;
    return file;
}

QString makeFileHash(const FileSummary& file, int n)
{
    // All at once: a name may hold "%1" itself.
    return QStringLiteral("file: <%1>-<%2>-<%3>-<%4>")
        .arg(QString::number(n), file.filename, file.uncompressedMD5,
             QString::number(file.uncompressedSize));
}

} // namespace lorix
