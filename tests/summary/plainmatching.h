// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <lorix/container/lorixparser.h>
#include <lorix/summary/summary.h>
#include <summary/plainsummary.h>

#include <QList>
#include <QString>

#include <algorithm>

/// A slow and plain way of tying summaries to embedded files: one list of
/// entries that every search walks from end to end.
namespace plain {

struct Entry
{
    QString key;
    lorix::FileTag tag;
    int section = 0;
};

/// The entry inserted last comes first.
using Entries = QList<Entry>;

inline QString key(const QString& name, const QString& md5, int size, int section)
{
    return QLatin1String("file: <") + QString::number(section) + QLatin1String(">-<") + name +
           QLatin1String(">-<") + md5 + QLatin1String(">-<") + QString::number(size) +
           QLatin1Char('>');
}

inline int apart(const lorix::FileTag& t, const lorix::FileSummary& f)
{
    int d = 0;
    if (t.filename != f.filename)
        d += 20;
    if (t.md5file != f.uncompressedMD5)
        d += 20;
    if (t.filesize != f.uncompressedSize)
        d += 20;
    if (t.filetype != f.filetype)
        d += 1;
    if (t.desc != f.description)
        d += 1;
    if (t.comment != f.comment)
        d += 1;
    if (t.md5cfile != f.compressedMD5)
        d += 2;
    if (t.cfilesize != f.compressedSize)
        d += 2;
    if (t.compression != f.compressedMethod)
        d += 2;
    return d;
}

inline lorix::FileSummary fileFromTag(const lorix::FileTag& t)
{
    lorix::FileSummary f;
    f.tagId = t.id;
    f.filetype = t.filetype;
    f.filename = t.filename;
    f.description = t.desc;
    f.comment = t.comment;
    f.compressedMethod = t.compression;
    f.compressedSize = t.cfilesize;
    f.uncompressedSize = t.filesize;
    f.compressedMD5 = t.md5cfile;
    f.uncompressedMD5 = t.md5file;
    f.filePurpose = QStringLiteral("Undefined");
    f.fromTags = true;
    return f;
}

inline lorix::Summary augment(lorix::Summary s, int section, Entries& entries)
{
    s.tagId = section;
    for (lorix::FileSummary& f : s.files) {
        if (!f.embedded)
            continue;
        const QString wanted = key(f.filename, f.uncompressedMD5, f.uncompressedSize, section);
        int best = 1000000;
        qsizetype bestAt = -1;
        for (qsizetype i = 0; i < entries.size(); ++i) {
            if (entries[i].key != wanted)
                continue;
            const int d = apart(entries[i].tag, f);
            if (d < best) {
                best = d;
                bestAt = i;
            }
        }
        if (best < 15) {
            f.tagId = entries[bestAt].tag.id;
            entries.removeAt(bestAt);
        }
    }
    QList<lorix::FileTag> left;
    for (const Entry& entry : entries) {
        if (entry.section == section)
            left.append(entry.tag);
    }
    std::stable_sort(left.begin(), left.end(),
                     [](const auto& a, const auto& b) { return a.id < b.id; });
    for (const lorix::FileTag& tag : left)
        s.files.append(fileFromTag(tag));
    return s;
}

inline QList<lorix::Summary> createSummaries(lorix::LorixParser& parser)
{
    Entries entries;
    for (const lorix::SectionTag& section : parser.getSections()) {
        for (const lorix::FileTag& t : parser.getFilesInSection(section.id))
            entries.prepend({key(t.filename, t.md5file, t.filesize, section.id), t, section.id});
    }
    QList<lorix::Summary> result;
    const QList<lorix::SectionTag> sections = parser.getSections();
    for (int i = int(sections.size()) - 1; i >= 0; --i) {
        const lorix::SectionTag& section = sections[i];
        const QList<lorix::FileTag> files = parser.getFilesInSection(section.id);
        QSharedPointer<QByteArray> content;
        if (!files.isEmpty() && files.last().filename == QLatin1String("ws_summary.xml"))
            content = parser.getFileContent(files.last().id);
        lorix::Summary s;
        if (content) {
            QStringList unknown;
            s = augment(readSummary(QString::fromUtf8(*content), unknown), section.id, entries);
        } else {
            s.tagId = section.id;
            s.title = section.title;
            s.creator = section.creator;
            for (const lorix::FileTag& tag : files)
                s.files.append(fileFromTag(tag));
        }
        result.append(s);
    }
    lorix::Summary outside;
    outside.title = QStringLiteral("<unmatched files>");
    for (const lorix::FileTag& tag : parser.getSectionlessFiles())
        outside.files.append(fileFromTag(tag));
    if (!outside.files.isEmpty())
        result.append(outside);
    return result;
}

/// Every member of a file, in a fixed order.
inline QStringList members(const lorix::FileSummary& f)
{
    QStringList all{QString::number(f.tagId),
                    f.filename,
                    f.filepath,
                    f.filetype,
                    f.description,
                    f.comment,
                    f.lastModified};
    for (const bool flag : {f.generateMD5, f.embedded, f.preview, f.previewWS, f.thumbnail,
                            f.thumbnailOnly, f.fromTags})
        all.append(QString::number(flag));
    all.append({QString::number(f.uncompressedSize), f.uncompressedMD5, f.compressedMethod,
                QString::number(f.compressedSize), f.compressedMD5, f.filePurpose});
    for (const QString& k : f.userAttributeKeys)
        all.append({k, f.userAttributes.value(k), f.userAttributeUnits.value(k)});
    return all;
}

/// Every member of a summary and of its files, in a fixed order.
inline QList<QStringList> members(const lorix::Summary& s)
{
    QStringList all{QString::number(s.tagId),
                    s.lorixRootFile,
                    s.timestamp,
                    s.title,
                    s.description,
                    s.comment,
                    s.command,
                    s.tool,
                    s.toolPath,
                    s.host,
                    s.user,
                    s.creator,
                    s.pdfTitle,
                    s.pdfAuthor,
                    s.pdfSubject,
                    s.pdfKeywords,
                    s.pdfProducer,
                    s.pdfCreator,
                    s.md5,
                    QString::number(s.fromXml)};
    for (const QString& k : s.userAttributeKeys)
        all.append({k, s.userAttributes.value(k), s.userAttributeUnits.value(k)});
    QList<QStringList> result{all};
    for (const lorix::FileSummary& f : s.files)
        result.append(members(f));
    return result;
}

inline QList<QList<QStringList>> members(const QList<lorix::Summary>& summaries)
{
    QList<QList<QStringList>> result;
    for (const lorix::Summary& s : summaries)
        result.append(members(s));
    return result;
}

} // namespace plain
