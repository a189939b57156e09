// SPDX-License-Identifier: BSD-3-Clause
// How LorixParser reads, inflates, digests and writes the bytes of a file.
#include <lorix/container/lorixparser.h>

#include <lorix/container/inflater.h>
#include <lorix/container/inflatewhole.h>
#include <lorix/container/markerline.h>
#include <lorix/container/md5generator.h>

#include <QDebug>
#include <QFile>

#include <algorithm>
#include <ctime>
#include <limits>

namespace lorix {

namespace {

constexpr qint64 copyBytes = 4 * 1024 * 1024;
// Not CLOCKS_PER_SEC: receivers of the message count on this unit.
constexpr double ticksPerSecond = 100.0;

bool isFlate(const FileTag& tag)
{
    return tag.compression == QLatin1String("flate");
}

bool isStored(const FileTag& tag)
{
    return tag.compression == QLatin1String("none");
}

QString asMebibytes(int bytes)
{
    return QString::number(bytes * (1.0 / 1024) * (1.0 / 1024), 'f', 2);
}

} // namespace

QByteArray LorixParser::getBytes(int pos, int len) const
{
    return m_iterator.getBytes(pos, len);
}

qint64 LorixParser::storedStart(const FileTag& tag) const
{
    return qint64(tag.position) + tag.taglen + tag.offset;
}

QSharedPointer<QByteArray> LorixParser::getCompressedFile(int id) const
{
    const auto tag = getFile(id);
    if (!tag)
        return {};
    const qint64 start = storedStart(*tag);
    auto bytes = QSharedPointer<QByteArray>::create();
    if (start <= std::numeric_limits<int>::max())
        *bytes = getBytes(static_cast<int>(start), tag->cfilesize);
    return bytes;
}

QByteArray LorixParser::decompressBytes(QByteArray& data, unsigned int size) const
{
    char header[4];
    for (int i = 0; i < 4; ++i)
        header[i] = static_cast<char>((size >> (24 - 8 * i)) & 0xff);
    // Not qUncompress(), which gives the same but allocates whatever is claimed.
    QByteArray content;
    const bool whole = inflateWhole(data, [&content](const char* bytes, qsizetype count) {
        content.append(bytes, count);
        return true;
    });
    data.prepend(header, 4);
    return whole ? content : QByteArray();
}

QSharedPointer<QByteArray> LorixParser::getFileContent(int id) const
{
    const auto tag = getFile(id);
    if (!tag)
        return {};
    if (isStored(*tag))
        return getCompressedFile(id);
    if (!isFlate(*tag))
        return {};
    // Stops as soon as more comes out than is expected, however much that
    // would be. Only where nothing is expected does it matter how it ends.
    auto content = QSharedPointer<QByteArray>::create();
    bool tooLong = false;
    const bool whole = inflateWhole(*getCompressedFile(id), [&](const char* bytes, qsizetype n) {
        tooLong = tooLong || content->size() + n > tag->filesize;
        if (!tooLong)
            content->append(bytes, n);
        return !tooLong || tag->filesize == 0;
    });
    // A broken stream has no bytes, which is just what an empty file has.
    if (!whole)
        content->clear();
    const bool asExpected = whole ? !tooLong : tag->filesize == 0;
    return asExpected && content->size() == tag->filesize ? content : QSharedPointer<QByteArray>();
}

QPair<QString, QString> LorixParser::calcChecksumsForFile(int id) const
{
    const auto tag = getFile(id);
    if (!tag)
        return {};
    const auto stored = getCompressedFile(id);
    if (stored->size() != tag->cfilesize)
        return {};
    QPair<QString, QString> digests(MD5Generator(*stored).getHexDigest(), QString());
    if (isFlate(*tag)) {
        MD5Generator content;
        const bool whole = inflateWhole(*stored, [&](const char* bytes, qsizetype n) {
            content.update(QByteArray::fromRawData(bytes, n));
            return true;
        });
        if (!whole)
            content.reset();
        digests.second = content.getHexDigest();
    }
    return digests;
}

QByteArray LorixParser::makeValidationTag(const QString& md5section) const
{
    const auto line = m_iterator.curLine();
    return line ? zeroedMarkerLine(*line, md5section) : QByteArray();
}

bool LorixParser::writeFileToDisk(int id, const QString& target)
{
    const std::clock_t startTicks = std::clock();
    Q_EMIT log(QStringLiteral("[writeFileToDisk] file: %1").arg(target), 0);
    const auto tag = getFile(id);
    if (!tag)
        return false;
    QFile file(target);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Unbuffered))
        return false;
    if (!isFlate(*tag) && !isStored(*tag)) {
        Q_EMIT log(QStringLiteral("*** ERROR: invalid compression method."), 0);
        return false;
    }
    Q_EMIT log(QStringLiteral("original/embedded file size: %1/%2 MB (%3/%4 bytes)")
                   .arg(asMebibytes(tag->filesize), asMebibytes(tag->cfilesize),
                        QString::number(tag->filesize), QString::number(tag->cfilesize)),
               0);
    if (isFlate(*tag))
        qDebug().noquote() << "unextract" << '"' + target + '"' << tag->filesize << tag->cfilesize;
    if (!(isFlate(*tag) ? copyInflated(*tag, file) : copyStored(*tag, file))) {
        Q_EMIT log(QStringLiteral("*** ERROR: IO Error."), 0);
        return false;
    }
    const double seconds = static_cast<double>(std::clock() - startTicks) / ticksPerSecond;
    Q_EMIT log(QStringLiteral("[writeFileToDisk] total: %1s.").arg(seconds), 0);
    return true;
}

// The next stored bytes of a file behind `done`, up to copyBytes; empty when
// not all of them lie inside the container.
QByteArray LorixParser::storedChunk(const FileTag& tag, qint64 done) const
{
    const qint64 start = storedStart(tag) + done;
    if (start > std::numeric_limits<int>::max())
        return {};
    return getBytes(static_cast<int>(start),
                    static_cast<int>(std::min(copyBytes, tag.cfilesize - done)));
}

bool LorixParser::copyStored(const FileTag& tag, QFile& target)
{
    for (qint64 done = 0; done < tag.cfilesize; done += copyBytes) {
        const QByteArray chunk = storedChunk(tag, done);
        if (target.write(chunk) != chunk.size())
            return false;
    }
    return true;
}

bool LorixParser::copyInflated(const FileTag& tag, QFile& target)
{
    Inflater inflater;
    Inflater probe;
    for (qint64 done = 0; done < tag.cfilesize; done += copyBytes) {
        const QByteArray chunk = storedChunk(tag, done);
        // What went into a pipe cannot be taken back: there, try it out first.
        if (target.isSequential() && !probe.inflatePieces(chunk, [](const char*, qsizetype) {}))
            return true;
        const qint64 before = target.pos();
        bool written = true;
        const bool whole = inflater.inflatePieces(chunk, [&](const char* bytes, qsizetype count) {
            written = written && target.write(bytes, count) == count;
        });
        // What a damaged chunk inflated to never counts, a failed write of it
        // included, and nothing comes after it.
        if (!whole)
            return target.pos() == before || (target.resize(before) && target.seek(before));
        if (!written)
            return false;
    }
    return true;
}

} // namespace lorix
