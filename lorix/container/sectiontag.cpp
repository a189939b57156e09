// SPDX-License-Identifier: BSD-3-Clause
#include <lorix/container/sectiontag.h>

#include <QDebug>

namespace lorix {

void printSectionTag(const SectionTag& tag)
{
    qDebug() << "id" << tag.id;
    qDebug() << "position" << tag.position;
    qDebug() << "taglen" << tag.taglen;
    qDebug() << "version" << tag.version;
    qDebug() << "creator" << tag.creator;
    qDebug() << "title" << tag.title;
    qDebug() << "left" << tag.left;
    qDebug() << "size" << tag.size;
    qDebug() << "index" << tag.index;
    qDebug() << "md5section" << tag.md5section;
    qDebug() << "previousmd5" << tag.previousmd5;
    qDebug() << "previousmarker" << tag.previousmarker;
    qDebug() << "validationTag" << tag.validationTag;
}

} // namespace lorix
