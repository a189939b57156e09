// SPDX-License-Identifier: BSD-3-Clause
#include <lorix/container/filetag.h>

#include <QDebug>

namespace lorix {

void printFileTag(const FileTag& tag)
{
    qDebug() << "id" << tag.id;
    qDebug() << "position" << tag.position;
    qDebug() << "taglen" << tag.taglen;
    qDebug() << "filetype" << tag.filetype;
    qDebug() << "filename" << tag.filename;
    qDebug() << "desc" << tag.desc;
    qDebug() << "comment" << tag.comment;
    qDebug() << "compression" << tag.compression;
    qDebug() << "filesize" << tag.filesize;
    qDebug() << "cfilesize" << tag.cfilesize;
    qDebug() << "blocksize" << tag.blocksize;
    qDebug() << "offset" << tag.offset;
    qDebug() << "md5file" << tag.md5file;
    qDebug() << "md5cfile" << tag.md5cfile;
}

QString makeFileHash(const FileTag& tag, int n)
{
    // One call with all arguments: a "%2" inside a file name must stay as it is.
    return QStringLiteral("file: <%1>-<%2>-<%3>-<%4>")
        .arg(QString::number(n), tag.filename, tag.md5file, QString::number(tag.filesize));
}

} // namespace lorix
