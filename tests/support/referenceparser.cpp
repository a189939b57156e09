// SPDX-License-Identifier: BSD-3-Clause
#include <support/referenceparser.h>

#include <support/referenceinflater.h>

#include <QCryptographicHash>
#include <QRegExp>
#include <QSet>

#include <zlib.h>

namespace {

const QString sectionPrefix = QStringLiteral("%<--! $LORIX_SECTION");
const char* const filePrefix = "%<--! $LORIX_EMBEDDEDFILE_BEGIN";

QString filled(const char* pattern)
{
    const QString text = QString::fromLatin1(R"(((?:[^\]\\]|(?:\\\\)|(?:\\\])|(?:\\n))*))");
    const QString number = QStringLiteral("([0-9]*)");
    const QString digest = QStringLiteral("((?:)|(?:[a-f0-9]{32}))");
    return QString::fromLatin1(pattern).arg(text, number, digest);
}

QRegExp sectionPattern()
{
    return QRegExp(
        filled(R"(^%<--! \$LORIX_SECTION \[version:%1\]\[creator:%1\]\[title:%1\]\[left:%2\])"
               R"(\[size:%2\]\[index:%2\]\[md5section:%3\]\[previousmd5:%3\])"
               R"(\[previousmarker:%2\]-->)"),
        Qt::CaseSensitive, QRegExp::RegExp);
}

QRegExp filePattern()
{
    return QRegExp(filled(R"(^%<--! \$LORIX_EMBEDDEDFILE_BEGIN \[filetype:%1\]\[filename:%1\])"
                          R"(\[desc:%1\]\[comment:%1\]\[compression:%1\]\[filesize:%2\])"
                          R"(\[cfilesize:%2\]\[blocksize:%2\]\[offset:%2\]\[md5file:%3\])"
                          R"(\[md5cfile:%3\]-->)"),
                   Qt::CaseSensitive, QRegExp::RegExp);
}

qint64 number(const QString& digits)
{
    return digits.isEmpty() ? -1 : digits.toInt();
}

QString hexMd5(const QByteArray& bytes)
{
    return QString::fromLatin1(QCryptographicHash::hash(bytes, QCryptographicHash::Md5).toHex());
}

QString mebibytes(qint64 bytes)
{
    return QString::number(static_cast<double>(bytes) * (1.0 / 1024) * (1.0 / 1024), 'f', 2);
}

} // namespace

bool ReferenceParser::open(const QByteArray& bytes)
{
    m_sections.clear();
    m_files.clear();
    iterator.open(bytes);
    if (!headerFound())
        return false;
    m_sections = readSections();
    m_files = findFiles();
    return true;
}

bool ReferenceParser::headerFound()
{
    if (!iterator.firstLine())
        return false;
    for (int examined = 0; examined < 10; ++examined) {
        const auto text = iterator.curLineAsString();
        if (!text)
            continue;
        if (text->startsWith(QStringLiteral("%<--! $LORIX_PDF [version:1.0]")))
            return true;
        if (!iterator.nextLine())
            return false;
    }
    return false;
}

QSharedPointer<ReferenceSection> ReferenceParser::parseSection(const QString& line) const
{
    static const QRegExp pattern = sectionPattern();
    QRegExp match = pattern;
    if (match.indexIn(line) != 0 || match.capturedTexts().size() < 10)
        return {};
    auto section = QSharedPointer<ReferenceSection>::create();
    section->position = iterator.curPos() + 1;
    section->taglen = match.matchedLength() - 1;
    section->version = match.cap(1);
    section->creator = match.cap(2);
    section->title = match.cap(3);
    section->left = number(match.cap(4));
    section->size = number(match.cap(5));
    section->index = number(match.cap(6));
    section->md5section = match.cap(7);
    section->previousmd5 = match.cap(8);
    section->previousmarker = number(match.cap(9));
    section->validationTag = makeValidationTag(section->md5section);
    return section;
}

QSharedPointer<ReferenceFile> ReferenceParser::parseFile(const QString& line) const
{
    static const QRegExp pattern = filePattern();
    QRegExp match = pattern;
    if (match.indexIn(line) != 0 || match.capturedTexts().size() < 12)
        return {};
    auto file = QSharedPointer<ReferenceFile>::create();
    file->position = iterator.curPos() + 1;
    file->taglen = match.matchedLength() - 1;
    file->filetype = match.cap(1);
    file->filename = match.cap(2);
    file->desc = match.cap(3);
    file->comment = match.cap(4);
    file->compression = match.cap(5);
    file->filesize = number(match.cap(6));
    file->cfilesize = number(match.cap(7));
    file->blocksize = number(match.cap(8));
    file->offset = number(match.cap(9));
    file->md5file = match.cap(10);
    file->md5cfile = match.cap(11);
    return file;
}

QByteArray ReferenceParser::makeValidationTag(const QString& md5section) const
{
    const auto line = iterator.curLine();
    QByteArray tag = line ? *line : QByteArray();
    tag.replace("[md5section:" + md5section.toUtf8() + "]",
                "[md5section:" + QByteArray(32, '0') + "]");
    return tag.mid(1);
}

QSharedPointer<ReferenceSection> ReferenceParser::sectionAnywhereInLine() const
{
    const auto text = iterator.curLineAsString();
    if (!text)
        return {};
    const qsizetype found = text->indexOf(sectionPrefix);
    return found < 0 ? QSharedPointer<ReferenceSection>() : parseSection(text->mid(found));
}

QSharedPointer<ReferenceSection> ReferenceParser::findLastSection()
{
    if (!iterator.lastLine())
        return {};
    do {
        const auto text = iterator.curLineAsString();
        if (!text)
            continue;
        QSharedPointer<ReferenceSection> section;
        if (text->startsWith(sectionPrefix))
            section = parseSection(*text);
        else if (m_mode == Tolerant)
            section = sectionAnywhereInLine();
        if (section)
            return section;
    } while (iterator.prevLine());
    return {};
}

QSharedPointer<ReferenceSection> ReferenceParser::findPrevSection(const ReferenceSection& section)
{
    if (section.previousmarker < 0)
        return {};
    if (iterator.gotoPos(section.position - 1 - section.previousmarker)) {
        const auto text = iterator.curLineAsString();
        const auto found = text ? parseSection(*text) : QSharedPointer<ReferenceSection>();
        if (found)
            return found;
    }
    if (m_mode == Strict)
        return {};
    for (int i = 0; i < 5; ++i)
        iterator.prevLine();
    for (int attempt = 0; attempt < 10; ++attempt) {
        const auto found = sectionAnywhereInLine();
        if (found)
            return found;
        iterator.nextLine();
    }
    return {};
}

QList<ReferenceSection> ReferenceParser::readSections()
{
    QList<ReferenceSection> result;
    auto section = findLastSection();
    while (section) {
        for (const ReferenceSection& earlier : result)
            if (earlier.position == section->position &&
                earlier.previousmarker == section->previousmarker)
                return result;
        section->id = result.size();
        result.append(*section);
        section = findPrevSection(result.last());
    }
    return result;
}

QList<ReferenceFile> ReferenceParser::findFiles()
{
    QList<ReferenceFile> result;
    for (bool more = iterator.firstLine(); more; more = iterator.nextLine()) {
        if (!iterator.curLineStartsWithBytes(filePrefix))
            continue;
        const auto text = iterator.curLineAsString();
        const auto file = text ? parseFile(*text) : QSharedPointer<ReferenceFile>();
        if (!file)
            continue;
        file->id = result.size();
        result.append(*file);
        iterator.gotoPos(file->position + file->blocksize);
    }
    return result;
}

bool ReferenceParser::fileInSection(const ReferenceFile& file, const ReferenceSection& section)
{
    return section.position - section.left <= file.position &&
           file.position + file.taglen + file.blocksize <=
               section.position - section.left + section.size;
}

QList<qint64> ReferenceParser::idsInSection(int section) const
{
    QList<qint64> result;
    if (section < 0 || section >= m_sections.size())
        return result;
    for (const ReferenceFile& file : m_files)
        if (fileInSection(file, m_sections.at(section)))
            result.append(file.id);
    return result;
}

QList<qint64> ReferenceParser::sectionlessIds() const
{
    QSet<qint64> remaining;
    for (const ReferenceFile& file : m_files)
        remaining.insert(file.id);
    for (int section = 0; section < m_sections.size(); ++section)
        for (const qint64 id : idsInSection(section))
            remaining.remove(id);
    QList<qint64> result;
    for (const ReferenceFile& file : m_files)
        if (remaining.contains(file.id))
            result.append(file.id);
    return result;
}

QByteArray ReferenceParser::storedBytes(int id) const
{
    const ReferenceFile& file = m_files.at(id);
    return iterator.getBytes(file.position + file.taglen + file.offset, file.cfilesize);
}

QByteArray ReferenceParser::inflateAll(const QByteArray& stream)
{
    z_stream_s inflating = {};
    QByteArray input = stream;
    QByteArray output;
    QByteArray buffer(65536, '\0');
    if (inflateInit(&inflating) != Z_OK)
        return {};
    inflating.next_in = reinterpret_cast<Bytef*>(input.data());
    inflating.avail_in = static_cast<uInt>(input.size());
    int result = Z_OK;
    while (result == Z_OK) {
        inflating.next_out = reinterpret_cast<Bytef*>(buffer.data());
        inflating.avail_out = static_cast<uInt>(buffer.size());
        result = inflate(&inflating, Z_NO_FLUSH);
        output += buffer.left(buffer.size() - static_cast<qsizetype>(inflating.avail_out));
    }
    inflateEnd(&inflating);
    return result == Z_STREAM_END ? output : QByteArray();
}

QSharedPointer<QByteArray> ReferenceParser::content(int id) const
{
    if (id < 0 || id >= m_files.size())
        return {};
    const ReferenceFile& file = m_files.at(id);
    if (file.compression == QStringLiteral("none"))
        return QSharedPointer<QByteArray>::create(storedBytes(id));
    if (file.compression != QStringLiteral("flate"))
        return {};
    const QByteArray inflated = inflateAll(storedBytes(id));
    if (inflated.size() != file.filesize)
        return {};
    return QSharedPointer<QByteArray>::create(inflated);
}

QPair<QString, QString> ReferenceParser::checksums(int id) const
{
    if (id < 0 || id >= m_files.size())
        return {};
    const QByteArray stored = storedBytes(id);
    if (stored.size() != m_files.at(id).cfilesize)
        return {};
    QString content;
    if (m_files.at(id).compression == QStringLiteral("flate"))
        content = hexMd5(inflateAll(stored));
    return qMakePair(hexMd5(stored), content);
}

ReferenceExtraction ReferenceParser::extract(int id, const QString& target) const
{
    ReferenceExtraction result;
    result.log.append(QStringLiteral("[writeFileToDisk] file: ") + target);
    if (id < 0 || id >= m_files.size())
        return result;
    const ReferenceFile& file = m_files.at(id);
    result.targetCreated = true;
    const bool flate = file.compression == QStringLiteral("flate");
    if (!flate && file.compression != QStringLiteral("none")) {
        result.log.append(QStringLiteral("*** ERROR: invalid compression method."));
        return result;
    }
    result.log.append(QStringLiteral("original/embedded file size: %1/%2 MB (%3/%4 bytes)")
                          .arg(mebibytes(file.filesize), mebibytes(file.cfilesize),
                               QString::number(file.filesize), QString::number(file.cfilesize)));
    ReferenceInflater inflater;
    result.inflated = flate;
    const qint64 start = file.position + file.taglen + file.offset;
    for (qint64 done = 0; done < file.cfilesize;) {
        const qint64 count = qMin<qint64>(4194304, file.cfilesize - done);
        const QByteArray chunk = iterator.getBytes(start + done, count);
        result.target += flate ? inflater.inflateData(chunk) : chunk;
        done += count;
    }
    result.log.append(QStringLiteral("[writeFileToDisk] total: "));
    result.succeeded = true;
    return result;
}
