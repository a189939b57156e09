// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <support/referenceiterator.h>

#include <QList>
#include <QPair>
#include <QStringList>

/// A section marker as the reference reads it; the members are those of the
/// library's record, in the same order.
struct ReferenceSection
{
    qint64 id = 0;
    qint64 position = 0;
    qint64 taglen = 0;
    QString version;
    QString creator;
    QString title;
    qint64 left = 0;
    qint64 size = 0;
    qint64 index = 0;
    QString md5section;
    QString previousmd5;
    qint64 previousmarker = 0;
    QByteArray validationTag;
};

/// An embedded-file marker, likewise.
struct ReferenceFile
{
    qint64 id = 0;
    qint64 position = 0;
    qint64 taglen = 0;
    QString filetype;
    QString filename;
    QString desc;
    QString comment;
    QString compression;
    qint64 filesize = 0;
    qint64 cfilesize = 0;
    qint64 blocksize = 0;
    qint64 offset = 0;
    QString md5file;
    QString md5cfile;
};

/// What an extraction did, without a disk.
struct ReferenceExtraction
{
    bool succeeded = false;
    bool targetCreated = false;
    bool inflated = false; ///< Whether an inflater was made, which leaves a debugging line.
    QByteArray target;
    QStringList log; ///< Without the last line's time: "[writeFileToDisk] total: ".
};

/// The parser as its description has it, with its patterns given to QRegExp as
/// they stand there, over a container in memory. Slow and plain; the library's
/// parser is compared with it, record by record and byte by byte.
class ReferenceParser
{
public:
    enum Mode { Strict, Tolerant };

    explicit ReferenceParser(Mode mode) : m_mode(mode) {}

    /// False where there is no header. Reads both lists otherwise.
    bool open(const QByteArray& bytes);

    bool headerFound();
    QSharedPointer<ReferenceSection> findLastSection();
    QSharedPointer<ReferenceSection> findPrevSection(const ReferenceSection& section);
    QList<ReferenceSection> readSections();
    QList<ReferenceFile> findFiles();
    QSharedPointer<ReferenceSection> parseSection(const QString& line) const;
    QSharedPointer<ReferenceFile> parseFile(const QString& line) const;
    QByteArray makeValidationTag(const QString& md5section) const;

    const QList<ReferenceSection>& sections() const { return m_sections; }
    const QList<ReferenceFile>& files() const { return m_files; }
    static bool fileInSection(const ReferenceFile& file, const ReferenceSection& section);
    QList<qint64> idsInSection(int section) const;
    QList<qint64> sectionlessIds() const;

    /// The stored bytes; empty where the range is not inside the file.
    QByteArray storedBytes(int id) const;

    /// The content; null where there is none.
    QSharedPointer<QByteArray> content(int id) const;
    QPair<QString, QString> checksums(int id) const;
    ReferenceExtraction extract(int id, const QString& target) const;

    /// One complete zlib stream, whatever follows it; empty where it is broken.
    static QByteArray inflateAll(const QByteArray& stream);

    ReferenceIterator iterator;

private:
    QSharedPointer<ReferenceSection> sectionAnywhereInLine() const;

    Mode m_mode;
    QList<ReferenceSection> m_sections;
    QList<ReferenceFile> m_files;
};

/// All members of a section or file record in one text, so that records of both
/// hands can be compared and differences read.
template <typename Section>
QString describeSection(const Section& s)
{
    return QStringLiteral("id %1 position %2 taglen %3 left %4 size %5 index %6 previousmarker %7 ")
               .arg(s.id)
               .arg(s.position)
               .arg(s.taglen)
               .arg(s.left)
               .arg(s.size)
               .arg(s.index)
               .arg(s.previousmarker) +
           QStringLiteral("version <") + s.version + QStringLiteral("> creator <") + s.creator +
           QStringLiteral("> title <") + s.title + QStringLiteral("> md5section <") + s.md5section +
           QStringLiteral("> previousmd5 <") + s.previousmd5 + QStringLiteral("> validationTag ") +
           QString::fromLatin1(s.validationTag.toHex());
}

template <typename File>
QString describeFile(const File& f)
{
    return QStringLiteral(
               "id %1 position %2 taglen %3 filesize %4 cfilesize %5 blocksize %6 offset %7 ")
               .arg(f.id)
               .arg(f.position)
               .arg(f.taglen)
               .arg(f.filesize)
               .arg(f.cfilesize)
               .arg(f.blocksize)
               .arg(f.offset) +
           QStringLiteral("filetype <") + f.filetype + QStringLiteral("> filename <") + f.filename +
           QStringLiteral("> desc <") + f.desc + QStringLiteral("> comment <") + f.comment +
           QStringLiteral("> compression <") + f.compression + QStringLiteral("> md5file <") +
           f.md5file + QStringLiteral("> md5cfile <") + f.md5cfile + QStringLiteral(">");
}
