// SPDX-License-Identifier: BSD-3-Clause
#include <support/containerbuilder.h>

#include <QCryptographicHash>
#include <QFile>

#include <zlib.h>

namespace {

using Values = QHash<QByteArray, QByteArray>;

const QByteArray zeroDigest(32, '0');

QByteArray marker(const char* keyword, std::initializer_list<const char*> order,
                  const Values& values)
{
    QByteArray result = QByteArray("%<--! ") + keyword + ' ';
    for (const char* field : order)
        result += QByteArray("[") + field + ':' + values.value(field) + ']';
    return result + "-->";
}

void overwriteWith(Values& values, const Values& raw)
{
    for (auto it = raw.begin(); it != raw.end(); ++it)
        values.insert(it.key(), it.value());
}

} // namespace

FileSpec::FileSpec(const QString& plainName, const QByteArray& bytes)
    : name(plainName), content(bytes), stored(bytes)
{}

FileSpec& FileSpec::flate(int level)
{
    compression = "flate";
    stored = ContainerBuilder::zlibStream(content, level);
    return *this;
}

FileSpec& FileSpec::storeInstead(const QByteArray& bytes)
{
    stored = bytes;
    return *this;
}

FileSpec& FileSpec::set(const QByteArray& field, const QByteArray& value)
{
    raw.insert(field, value);
    return *this;
}

FileSpec& FileSpec::setType(const QString& text)
{
    type = text;
    return *this;
}

FileSpec& FileSpec::setDesc(const QString& text)
{
    desc = text;
    return *this;
}

FileSpec& FileSpec::setComment(const QString& text)
{
    comment = text;
    return *this;
}

FileSpec& FileSpec::setLinePrefix(const QByteArray& bytes)
{
    linePrefix = bytes;
    return *this;
}

FileSpec& FileSpec::setLineSuffix(const QByteArray& bytes)
{
    lineSuffix = bytes;
    return *this;
}

FileSpec& FileSpec::setGap(const QByteArray& bytes)
{
    gap = bytes;
    return *this;
}

FileSpec& FileSpec::setTail(const QByteArray& bytes)
{
    tail = bytes;
    return *this;
}

FileSpec& FileSpec::withoutClosingLineEnd()
{
    closingLineEnd = false;
    return *this;
}

SectionSpec::SectionSpec(const QString& plainTitle) : title(plainTitle) {}

SectionSpec& SectionSpec::file(const FileSpec& spec)
{
    files.append(spec);
    return *this;
}

SectionSpec& SectionSpec::markerFirst()
{
    return markerAfter(0);
}

SectionSpec& SectionSpec::markerAfter(int count)
{
    markerAt = count;
    return *this;
}

SectionSpec& SectionSpec::set(const QByteArray& field, const QByteArray& value)
{
    raw.insert(field, value);
    return *this;
}

SectionSpec& SectionSpec::setCreator(const QString& text)
{
    creator = text;
    return *this;
}

SectionSpec& SectionSpec::setLinePrefix(const QByteArray& bytes)
{
    linePrefix = bytes;
    return *this;
}

SectionSpec& SectionSpec::setLineSuffix(const QByteArray& bytes)
{
    lineSuffix = bytes;
    return *this;
}

SectionSpec& SectionSpec::setLeadingBytes(const QByteArray& bytes)
{
    leadingBytes = bytes;
    return *this;
}

SectionSpec& SectionSpec::setTrailingBytes(const QByteArray& bytes)
{
    trailingBytes = bytes;
    return *this;
}

QByteArray ContainerBuilder::headerText()
{
    return "%<--! $LORIX_PDF [version:1.0]";
}

QByteArray ContainerBuilder::bracketText(const QString& plain)
{
    QByteArray result;
    for (const char byte : plain.toUtf8()) {
        if (byte == '\\' || byte == ']')
            result += '\\';
        if (byte == '\n')
            result += "\\n";
        else
            result += byte;
    }
    return result;
}

QByteArray ContainerBuilder::zlibStream(const QByteArray& bytes, int level)
{
    uLongf size = compressBound(static_cast<uLong>(bytes.size()));
    QByteArray result(static_cast<qsizetype>(size), Qt::Uninitialized);
    const int status = compress2(reinterpret_cast<Bytef*>(result.data()), &size,
                                 reinterpret_cast<const Bytef*>(bytes.constData()),
                                 static_cast<uLong>(bytes.size()), level);
    if (status != Z_OK)
        qFatal("the builder cannot compress");
    result.truncate(static_cast<qsizetype>(size));
    return result;
}

QByteArray ContainerBuilder::md5(const QByteArray& bytes)
{
    return QCryptographicHash::hash(bytes, QCryptographicHash::Md5).toHex();
}

QByteArray ContainerBuilder::fileMarker(const Values& values)
{
    return marker("$LORIX_EMBEDDEDFILE_BEGIN",
                  {"filetype", "filename", "desc", "comment", "compression", "filesize",
                   "cfilesize", "blocksize", "offset", "md5file", "md5cfile"},
                  values);
}

QByteArray ContainerBuilder::sectionMarker(const Values& values)
{
    return marker("$LORIX_SECTION",
                  {"version", "creator", "title", "left", "size", "index", "md5section",
                   "previousmd5", "previousmarker"},
                  values);
}

ContainerBuilder::ContainerBuilder(const QByteArray& lineEnd) : m_lineEnd(lineEnd) {}

ContainerBuilder& ContainerBuilder::setLineEnd(const QByteArray& lineEnd)
{
    m_lineEnd = lineEnd;
    return *this;
}

ContainerBuilder& ContainerBuilder::start()
{
    header();
    for (const char* line : {"%PDF-1.4", "1 0 obj", "<< /Type /Catalog >>", "endobj", "%%EOF"})
        m_bytes += line + m_lineEnd;
    return *this;
}

ContainerBuilder& ContainerBuilder::header(int line, const QByteArray& lineSuffix)
{
    for (int filler = 1; filler < line; ++filler)
        m_bytes += "% line " + QByteArray::number(filler) + m_lineEnd;
    return text(headerText() + lineSuffix + m_lineEnd);
}

ContainerBuilder& ContainerBuilder::text(const QByteArray& bytes)
{
    m_bytes += bytes;
    return *this;
}

ContainerBuilder& ContainerBuilder::file(const FileSpec& spec)
{
    appendFile(spec, -1);
    return *this;
}

ContainerBuilder& ContainerBuilder::section(const SectionSpec& spec)
{
    const int number = static_cast<int>(m_sections.size());
    const int inFront = spec.markerAt < 0 ? static_cast<int>(spec.files.size()) : spec.markerAt;

    // The marker states the size of what comes behind it, so that is built first.
    ContainerBuilder behind(m_lineEnd);
    for (int i = inFront; i < spec.files.size(); ++i)
        behind.file(spec.files.at(i));
    const qint64 bytesBehind = behind.bytes().size() + spec.trailingBytes.size();

    PlacedSection place;
    place.start = m_bytes.size();
    m_sections.append(place);
    text(spec.leadingBytes);
    for (int i = 0; i < inFront; ++i)
        appendFile(spec.files.at(i), number);
    appendSectionMarker(spec, bytesBehind);
    for (int i = inFront; i < spec.files.size(); ++i)
        appendFile(spec.files.at(i), number);
    text(spec.trailingBytes);
    sealSection(spec);
    m_chained = true;
    return *this;
}

ContainerBuilder& ContainerBuilder::forgetChain()
{
    m_chained = false;
    return *this;
}

QString ContainerBuilder::writeTo(const QString& path) const
{
    return writeFile(path, m_bytes);
}

QString ContainerBuilder::writeFile(const QString& path, const QByteArray& bytes)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate) ||
        file.write(bytes) != bytes.size() || !file.flush())
        qFatal("the builder cannot write %s", qPrintable(path));
    return path;
}

void ContainerBuilder::appendFile(const FileSpec& spec, int section)
{
    Values values;
    values["filetype"] = bracketText(spec.type);
    values["filename"] = bracketText(spec.name);
    values["desc"] = bracketText(spec.desc);
    values["comment"] = bracketText(spec.comment);
    values["compression"] = spec.compression;
    values["filesize"] = QByteArray::number(spec.content.size());
    values["cfilesize"] = QByteArray::number(spec.stored.size());
    values["md5file"] = md5(spec.content);
    values["md5cfile"] = spec.compression == "none" ? QByteArray() : md5(spec.stored);
    overwriteWith(values, spec.raw);
    // Readers find the block by the marker's length in characters, so that the
    // bytes which these take beyond one each count as part of it.
    const QByteArray written = fileMarker(values);
    const qint64 offset = written.size() - QString::fromUtf8(written).size() +
                          spec.lineSuffix.size() + m_lineEnd.size() + spec.gap.size();
    const qint64 tail = spec.tail.size() + (spec.closingLineEnd ? m_lineEnd.size() : 0);
    values["offset"] = QByteArray::number(offset);
    values["blocksize"] = QByteArray::number(offset + spec.stored.size() + tail);
    overwriteWith(values, spec.raw);

    PlacedFile place;
    place.section = section;
    place.name = values["filename"];
    place.line = m_bytes.size();
    m_bytes += spec.linePrefix;
    place.marker = m_bytes.size();
    m_bytes += fileMarker(values);
    place.block = m_bytes.size();
    m_bytes += spec.lineSuffix + m_lineEnd + spec.gap;
    place.stored = m_bytes.size();
    place.storedSize = spec.stored.size();
    m_bytes += spec.stored + spec.tail;
    if (spec.closingLineEnd)
        m_bytes += m_lineEnd;
    place.blockEnd = m_bytes.size();
    m_files.append(place);
}

void ContainerBuilder::appendSectionMarker(const SectionSpec& spec, qint64 bytesBehind)
{
    PlacedSection& place = m_sections.last();
    place.line = m_bytes.size();
    place.marker = place.line + spec.linePrefix.size();
    const bool chained = m_chained && m_sections.size() > 1;

    // A reader takes the line's start for the marker's place, whatever stands there.
    Values values;
    values["version"] = bracketText(spec.version);
    values["creator"] = bracketText(spec.creator);
    values["title"] = bracketText(spec.title);
    values["left"] = QByteArray::number(place.line + 1 - place.start);
    values["index"] = QByteArray::number(m_sections.size() - 1);
    values["md5section"] = zeroDigest;
    if (chained) {
        const PlacedSection& previous = m_sections.at(m_sections.size() - 2);
        values["previousmd5"] = previous.md5section;
        values["previousmarker"] = QByteArray::number(place.line - previous.line);
    }
    overwriteWith(values, spec.raw);

    // The size counts its own digits, so that it is tried until it holds still.
    const qint64 around = place.line - place.start + spec.linePrefix.size() +
                          spec.lineSuffix.size() + m_lineEnd.size() + bytesBehind;
    QByteArray text = sectionMarker(values);
    for (qint64 size = -1; size != around + text.size() && !spec.raw.contains("size");) {
        size = around + text.size();
        values["size"] = QByteArray::number(size);
        text = sectionMarker(values);
    }
    const qsizetype field = text.indexOf("[md5section:" + zeroDigest + "][previousmd5:");
    m_digestAt = spec.raw.contains("md5section") ? -1 : place.marker + field + 12;
    m_bytes += spec.linePrefix + text;
    place.block = m_bytes.size();
    m_bytes += spec.lineSuffix + m_lineEnd;
}

void ContainerBuilder::sealSection(const SectionSpec& spec)
{
    PlacedSection& place = m_sections.last();
    place.end = m_bytes.size();
    QByteArray section = m_bytes.mid(static_cast<qsizetype>(place.start));
    if (m_digestAt >= 0) {
        place.md5section = md5(section);
        m_bytes.replace(static_cast<qsizetype>(m_digestAt), 32, place.md5section);
        return;
    }
    const QByteArray claimed = "[md5section:" + spec.raw.value("md5section") + "]";
    const qsizetype field =
        section.indexOf(claimed, static_cast<qsizetype>(place.marker - place.start));
    section.replace(field, claimed.size(), "[md5section:" + zeroDigest + "]");
    place.md5section = md5(section);
}
