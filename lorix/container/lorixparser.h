// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <lorix/bounds.h>
#include <lorix/container/fileiterator.h>
#include <lorix/container/filetag.h>
#include <lorix/container/parsemode.h>
#include <lorix/container/sectiontag.h>
#include <lorix/export.h>
#include <lorix/runner/logsource.h>

#include <QByteArray>
#include <QList>
#include <QPair>
#include <QSharedPointer>
#include <QString>

#include <vector>

namespace lorix {

/// Opens one container, lists its sections and embedded files, and reads their
/// bytes.
///
///     LorixParser parser(Tolerant);
///     if (!parser.open(path))
///         return; // not a container, or not readable
///     for (const FileTag& file : parser.getFilesInSection(0))
///         parser.writeFileToDisk(file.id, target(file));
///
/// Sections are numbered from the newest (0) back along the chain, files from
/// the start of the container (0) on. These ids are what every operation below
/// takes. Opening reads no content: a section or file that is listed may still
/// be damaged, which the validation queue finds out.
///
/// The file stays open until the parser is destroyed or opens another. One
/// parser belongs to one thread.
class LORIX_EXPORT LorixParser : public LogSource
{
    Q_OBJECT

public:
    /// A parser without a file. `parent` receives the log messages (see
    /// LogSource); it does not own the parser.
    explicit LorixParser(ParseMode mode = Tolerant, QObject* parent = nullptr);
    ~LorixParser() override;

    /// Opens a container in place of the one open before. False, with both
    /// lists empty, when the file cannot be read, is larger than the bound
    /// `fileBytes`, or has no header among its first ten lines. A container
    /// without markers opens with empty lists.
    bool open(const QString& path);

    /// Bounds for the next open(); see Bounds.
    void setBounds(const Bounds& bounds) { m_bounds = bounds; }
    /// The bounds in force.
    const Bounds& bounds() const { return m_bounds; }

    /// Whether one of the first ten lines is a container header. A line that
    /// holds a zero byte ends the search.
    bool headerFound();
    /// The newest section, searched from the end of the file; null when there
    /// is none. Its id is 0.
    QSharedPointer<SectionTag> findLastSection();
    /// The section that `section` names as its predecessor; null when it names
    /// none or none is found there. Its id is 0.
    QSharedPointer<SectionTag> findPrevSection(const SectionTag& section);
    /// The chain of sections, newest first, with ids. A chain that leads back
    /// to a section already read ends there.
    QList<SectionTag> readSections();
    /// The embedded files in file order, with ids.
    QList<FileTag> findFiles();

    /// Reads a section marker from the start of `line`, taking its position and
    /// raw bytes from the line that was read last; null when it is none.
    QSharedPointer<SectionTag> parseSection(const QString& line);
    /// Reads an embedded-file marker from the start of `line`, likewise.
    QSharedPointer<FileTag> parseFile(const QString& line);

    int getNumSections() const;
    int getNumFiles() const;
    /// A copy of the record; null for an unknown id.
    QSharedPointer<SectionTag> getSection(int id) const;
    /// A copy of the record; null for an unknown id.
    QSharedPointer<FileTag> getFile(int id) const;
    QList<SectionTag> getSections() const;
    QList<FileTag> getFiles() const;

    /// The files that lie wholly inside a section, in file order; none for an
    /// unknown id. Looks only at these and the ends of the others near them.
    QList<FileTag> getFilesInSection(int id) const;
    /// Whether marker and block of `file` lie inside the bytes of `section`.
    bool fileInSection(const FileTag& file, const SectionTag& section) const;
    /// The files that lie in no section, in file order.
    QList<FileTag> getSectionlessFiles() const;

    /// The `len` bytes at the 0-based offset `pos`; empty when that range does
    /// not lie inside the file.
    QByteArray getBytes(int pos, int len) const;
    /// The stored bytes of a file as they are: `cfilesize` bytes, an empty
    /// array when they do not lie inside the container, null for an unknown id.
    QSharedPointer<QByteArray> getCompressedFile(int id) const;
    /// Inflates a whole zlib stream of which `size` bytes are expected. Puts
    /// these as four bytes, most significant first, in front of `data` itself.
    /// Empty when the stream is broken.
    QByteArray decompressBytes(QByteArray& data, unsigned int size) const;
    /// The content of a file, for files that fit in memory. Null for an unknown
    /// id, an unknown compression, and a stream that does not inflate to
    /// exactly `filesize` bytes.
    QSharedPointer<QByteArray> getFileContent(int id) const;
    /// MD5 of the stored bytes and, for "flate", of the content, as 32
    /// lower-case hexadecimal digits; the second is empty otherwise. Both are
    /// empty for an unknown id and where the bytes cannot be read.
    QPair<QString, QString> calcChecksumsForFile(int id) const;
    /// The line that a section's digest is taken over in place of its marker
    /// line, made from the line that was read last.
    QByteArray makeValidationTag(const QString& md5section) const;

    /// Writes a file's content to `target`, which is replaced, in memory of a
    /// few MiB. False when there is no such file, the target cannot be opened,
    /// the compression is unknown or writing fails. True does not say that the
    /// content is right: a damaged stream leaves what came before the damage.
    bool writeFileToDisk(int id, const QString& target);

private:
    bool curLineMayBeMarker() const;
    QSharedPointer<SectionTag> searchAround();
    qint64 storedStart(const FileTag& tag) const;
    QByteArray storedChunk(const FileTag& tag, qint64 done) const;
    bool copyStored(const FileTag& tag, QFile& target);
    bool copyInflated(const FileTag& tag, QFile& target);

    FileIterator m_iterator;
    QList<SectionTag> m_sections;
    QList<FileTag> m_files;
    std::vector<qint64> m_blockEnds; // of m_files, as a tree of least numbers
    ParseMode m_mode;
    Bounds m_bounds;
};

} // namespace lorix
