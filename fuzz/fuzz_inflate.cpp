// SPDX-License-Identifier: BSD-3-Clause
// A zlib stream, fed in pieces, whole, and with any claimed size. The first
// byte says whether the rest is the stream itself or is to be compressed, the
// second how long the pieces are, the third what is spoiled in a compressed
// stream.
#include "fuzzing.h"

#include <lorix/container/inflater.h>
#include <lorix/container/inflatewhole.h>
#include <lorix/container/lorixparser.h>
#include <support/referenceinflater.h>

#include <zlib.h>

#include <algorithm>

using namespace lorix;

namespace {

// Enough for two full buffers; more takes time and finds nothing new.
constexpr qsizetype mostOutput = 2 * 1024 * 1024 + 4096;

// zlib's own answer for a whole stream, in one call with room for everything.
struct OneShot
{
    explicit OneShot(const QByteArray& stream)
    {
        z_stream z = z_stream();
        require(inflateInit(&z) == Z_OK, "zlib cannot start");
        QByteArray in = stream;
        z.next_in = reinterpret_cast<Bytef*>(in.data());
        z.avail_in = static_cast<uInt>(in.size());
        for (qsizetype room = 64 * 1024; !ended && !damaged && !tooMuch; room *= 2) {
            const qsizetype before = content.size();
            content.resize(before + room);
            z.next_out = reinterpret_cast<Bytef*>(content.data() + before);
            z.avail_out = static_cast<uInt>(room);
            const int result = inflate(&z, Z_NO_FLUSH);
            content.resize(content.size() - z.avail_out);
            ended = result == Z_STREAM_END;
            damaged = result != Z_OK && !ended;
            tooMuch = content.size() > mostOutput;
        }
        inflateEnd(&z);
    }

    QByteArray content;
    bool ended = false;
    bool damaged = false; // or cut off
    bool tooMuch = false;
};

QByteArray compressed(const QByteArray& content, int level, int spoiled)
{
    uLongf size = compressBound(static_cast<uLong>(content.size()));
    QByteArray stream(static_cast<qsizetype>(size), Qt::Uninitialized);
    require(compress2(reinterpret_cast<Bytef*>(stream.data()), &size,
                      reinterpret_cast<const Bytef*>(content.constData()),
                      static_cast<uLong>(content.size()), level) == Z_OK,
            "zlib cannot compress");
    stream.truncate(static_cast<qsizetype>(size));
    if (spoiled >= 128) // its end
        stream.chop(std::min<qsizetype>(spoiled - 127, stream.size()));
    else if (spoiled >= 64) // a byte from the end: most of the stream is good
        stream[stream.size() - 1 - (spoiled - 64) % stream.size()] ^= 0x10;
    else if (spoiled >= 48)
        stream.append(content.left(spoiled - 47));
    return stream;
}

// Feeds all pieces to the inflater and to the plain one; what comes out together.
QByteArray fedInPieces(const QByteArray& stream, int pieces, Inflater& inflater)
{
    static ReferenceInflater plain; // its buffer takes the time of many a stream
    plain.reset();
    inflater.reset();
    QByteArray content;
    quint32 random = static_cast<quint32>(pieces) * 2654435761U + 1;
    for (qsizetype at = 0; at < stream.size();) {
        random = random * 1664525U + 1013904223U;
        const qsizetype piece = pieces == 0 ? stream.size() : 1 + (random >> 8) % (4 * pieces);
        const QByteArray input = stream.mid(at, piece);
        const QByteArray output = inflater.inflateData(input);
        require(output == plain.inflateData(input), "a piece inflates otherwise");
        require(inflater.isValid() == plain.isValid(), "damage is seen otherwise");
        require(inflater.hasFinished() == plain.hasFinished(), "the end is seen otherwise");
        content += output;
        at += piece;
    }
    return content;
}

void checkWhole(const QByteArray& stream, const OneShot& expected, unsigned int size)
{
    const QByteArray right = expected.ended ? expected.content : QByteArray();
    QByteArray content;
    const bool whole = inflateWhole(stream, [&content](const char* bytes, qsizetype count) {
        content.append(bytes, count);
        return true;
    });
    require(whole == expected.ended && (!whole || content == right), "inflates otherwise whole");
    QByteArray data = stream;
    static const LorixParser parser;
    require(parser.decompressBytes(data, size) == right, "decompresses otherwise");
    QByteArray head(4, '\0');
    for (int i = 0; i < 4; ++i)
        head[i] = static_cast<char>(size >> (24 - 8 * i));
    require(data == head + stream, "the size stands otherwise in front");
}

void checkStream(const QByteArray& stream, int pieces)
{
    const OneShot expected(stream);
    if (expected.tooMuch)
        return;
    static Inflater inflater;
    const QByteArray content = fedInPieces(stream, pieces, inflater);
    if (inflater.isValid())
        require(content == expected.content && inflater.hasFinished() == expected.ended,
                "all pieces together differ from the whole");
    // A full buffer that meets the end of a piece counts as damage.
    else
        require(!expected.ended || expected.content.size() >= 1024 * 1024, "no damage was there");
    checkWhole(stream, expected,
               hashOf(reinterpret_cast<const std::uint8_t*>(stream.constData()),
                      static_cast<std::size_t>(stream.size())));
    inflater.reset();
    require(inflater.isValid() && !inflater.hasFinished(), "not like new after the reset");
    qsizetype handedOut = 0;
    const bool good = inflater.inflatePieces(stream, [&](const char*, qsizetype count) {
        require(count <= 1024 * 1024, "a piece is too long");
        handedOut += count;
    });
    if (good && !stream.isEmpty())
        require(handedOut == expected.content.size(), "the pieces differ from the whole");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    silence();
    if (size < 3)
        return 0;
    const QByteArray rest(reinterpret_cast<const char*>(data + 3),
                          static_cast<qsizetype>(size - 3));
    const int level = data[0] % 12;
    checkStream(level > 9 ? rest : compressed(rest, level, data[2]), data[1]);
    return 0;
}
