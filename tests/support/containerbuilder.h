// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QByteArray>
#include <QDir>
#include <QHash>
#include <QList>
#include <QString>

/// One embedded file to be built: what it is, and what shall be wrong with it.
///
///     FileSpec("mesh.txt", "1 2 3\n").flate().set("filesize", "99999999999")
struct FileSpec
{
    /// `plainName` is the name as people see it; "\", "]" and line feeds are
    /// escaped when the marker is written. Stored as it is ("none").
    explicit FileSpec(const QString& plainName, const QByteArray& bytes = QByteArray());

    QString name;
    QByteArray content;
    QString type = QStringLiteral("text/plain");
    QString desc;
    QString comment;
    QByteArray compression = "none";
    QByteArray stored;          ///< What stands in the block: `content`, or its zlib stream.
    QByteArray linePrefix;      ///< Bytes in front of the marker on its line.
    QByteArray lineSuffix;      ///< Bytes between "-->" and the line end.
    QByteArray gap;             ///< Bytes between the line end and the stored bytes.
    QByteArray tail;            ///< Bytes behind the stored ones, in front of the closing line end.
    bool closingLineEnd = true; ///< Whether the block ends with a line end of its own.
    QHash<QByteArray, QByteArray> raw; ///< Field name to the bytes that replace its value.

    /// Stores the content as a zlib stream.
    FileSpec& flate(int level = 6);

    /// Stores these bytes instead; cfilesize, blocksize and md5cfile follow,
    /// filesize and md5file stay those of the content.
    FileSpec& storeInstead(const QByteArray& bytes);

    /// Puts exactly these bytes between "[field:" and "]". The other fields
    /// keep the values that are right without the change.
    FileSpec& set(const QByteArray& field, const QByteArray& value);
    FileSpec& setType(const QString& text);
    FileSpec& setDesc(const QString& text);
    FileSpec& setComment(const QString& text);
    FileSpec& setLinePrefix(const QByteArray& bytes);
    FileSpec& setLineSuffix(const QByteArray& bytes);
    FileSpec& setGap(const QByteArray& bytes);
    FileSpec& setTail(const QByteArray& bytes);
    FileSpec& withoutClosingLineEnd();
};

/// One section to be built: its files and the place of its marker among them.
///
///     SectionSpec("Meshing").file(FileSpec("a.txt", "a")).markerFirst()
struct SectionSpec
{
    explicit SectionSpec(const QString& plainTitle = QString());

    QString version = QStringLiteral("1.0");
    QString creator = QStringLiteral("builder");
    QString title;
    QList<FileSpec> files;
    int markerAt = -1;                 ///< Number of files in front of the marker; -1: all of them.
    QByteArray leadingBytes;           ///< Whole lines (or not) at the section's start.
    QByteArray trailingBytes;          ///< The same at its end; they belong to the section.
    QByteArray linePrefix;             ///< Bytes in front of the marker on its line.
    QByteArray lineSuffix;             ///< Bytes between "-->" and the line end.
    QHash<QByteArray, QByteArray> raw; ///< Field name to the bytes that replace its value.

    SectionSpec& file(const FileSpec& spec);

    /// Places the marker in front of all files, or behind the first `count`.
    SectionSpec& markerFirst();
    SectionSpec& markerAfter(int count);

    /// Puts exactly these bytes between "[field:" and "]". All other numbers
    /// and the digest are those of the section that really stands there, so
    /// that only the named field is wrong.
    SectionSpec& set(const QByteArray& field, const QByteArray& value);
    SectionSpec& setCreator(const QString& text);
    SectionSpec& setLinePrefix(const QByteArray& bytes);
    SectionSpec& setLineSuffix(const QByteArray& bytes);
    SectionSpec& setLeadingBytes(const QByteArray& bytes);
    SectionSpec& setTrailingBytes(const QByteArray& bytes);
};

/// Where the builder put a file. All offsets are 0-based bytes.
struct PlacedFile
{
    QByteArray name;       ///< The bytes between the brackets of the field filename.
    qint64 line = 0;       ///< First byte of the marker's line.
    qint64 marker = 0;     ///< The "%" of the marker; beyond `line` by the prefix.
    qint64 block = 0;      ///< First byte behind "-->".
    qint64 stored = 0;     ///< First stored byte.
    qint64 storedSize = 0; ///< Number of stored bytes.
    qint64 blockEnd = 0;   ///< First byte behind the block.
    int section = -1;      ///< Number of its section, oldest 0; -1: none.
};

/// Where the builder put a section. All offsets are 0-based bytes.
struct PlacedSection
{
    qint64 start = 0;      ///< First byte of the section.
    qint64 line = 0;       ///< First byte of the marker's line.
    qint64 marker = 0;     ///< The "%" of the marker; beyond `line` by the prefix.
    qint64 block = 0;      ///< First byte behind "-->".
    qint64 end = 0;        ///< First byte behind the section.
    QByteArray md5section; ///< The right digest, whatever the marker says.
};

/// Composes containers byte by byte, from front to back.
///
/// It knows the format from its description and uses neither the library nor
/// the tools, so that what they do is checked by a second hand. Everything is
/// appended at once; numbers, digests and the chain are right unless a spec
/// says otherwise.
///
///     ContainerBuilder builder;
///     builder.start();
///     builder.section(SectionSpec("one").file(FileSpec("a.txt", "aaa").flate()));
///     builder.section(SectionSpec("two").file(FileSpec("b.txt", "b")));
///     const QString path = builder.writeTo(dir.filePath("two.lorix"));
///
/// The library numbers sections from the newest; here the oldest is 0.
class ContainerBuilder
{
public:
    /// The text with which a header line begins.
    static QByteArray headerText();

    /// `plain` as it stands between brackets: UTF-8, with "\\", "\]" and "\n".
    static QByteArray bracketText(const QString& plain);

    /// `bytes` as a zlib stream.
    static QByteArray zlibStream(const QByteArray& bytes, int level = 6);

    /// The MD5 of `bytes` as 32 lower-case hexadecimal digits.
    static QByteArray md5(const QByteArray& bytes);

    /// An embedded-file marker from "%" to "-->", from values as they stand
    /// between the brackets; fields that are not given are empty.
    static QByteArray fileMarker(const QHash<QByteArray, QByteArray>& values);

    /// A section marker from "%" to "-->"; as above.
    static QByteArray sectionMarker(const QHash<QByteArray, QByteArray>& values);

    /// An empty file. `lineEnd` is put behind every line that the builder writes.
    explicit ContainerBuilder(const QByteArray& lineEnd = "\n");

    /// Changes the line end for what follows.
    ContainerBuilder& setLineEnd(const QByteArray& lineEnd);

    /// A header on the first line and a document of a few lines.
    ContainerBuilder& start();

    /// A header on the given line, counted from 1, if the file is still empty;
    /// comment lines stand in front of it.
    ContainerBuilder& header(int line = 1, const QByteArray& lineSuffix = QByteArray());

    /// These bytes, with nothing added.
    ContainerBuilder& text(const QByteArray& bytes);

    /// A file outside of any section. As readers take the length of a marker in
    /// characters, offset and blocksize also count the bytes beyond one that
    /// its non-ASCII characters take.
    ContainerBuilder& file(const FileSpec& spec);

    /// A section that is chained to the one appended before it, if any.
    ContainerBuilder& section(const SectionSpec& spec);

    /// Lets the next section begin a chain of its own.
    ContainerBuilder& forgetChain();

    /// What has been built.
    const QByteArray& bytes() const { return m_bytes; }
    const QList<PlacedFile>& files() const { return m_files; }
    const QList<PlacedSection>& sections() const { return m_sections; }

    /// Writes the container to `path` and returns it; aborts the program when
    /// that fails.
    QString writeTo(const QString& path) const;

    /// Writes any bytes to `path`, as above.
    static QString writeFile(const QString& path, const QByteArray& bytes);

private:
    void appendFile(const FileSpec& spec, int section);
    void appendSectionMarker(const SectionSpec& spec, qint64 bytesBehind);
    void sealSection(const SectionSpec& spec);

    QByteArray m_lineEnd;
    QByteArray m_bytes;
    QList<PlacedFile> m_files;
    QList<PlacedSection> m_sections;
    bool m_chained = false;
    qint64 m_digestAt = -1; // of the marker just written; -1 where the digits are not ours
};
