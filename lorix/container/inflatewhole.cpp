// SPDX-License-Identifier: BSD-3-Clause
#include <lorix/container/inflatewhole.h>

#include <zlib.h>

#include <memory>

namespace lorix {

namespace {

constexpr uInt pieceBytes = 256 * 1024;

struct StreamEnd
{
    void operator()(z_stream* stream) const
    {
        inflateEnd(stream);
        delete stream;
    }
};

} // namespace

bool inflateWhole(const QByteArray& data,
                  const std::function<bool(const char* bytes, qsizetype count)>& take)
{
    std::unique_ptr<z_stream, StreamEnd> stream(new z_stream());
    if (inflateInit(stream.get()) != Z_OK)
        return false;
    const std::unique_ptr<char[]> piece(new char[pieceBytes]);
    // zlib's interface lacks the const; it does not write to its input.
    stream->next_in = reinterpret_cast<Bytef*>(const_cast<char*>(data.constData()));
    stream->avail_in = static_cast<uInt>(data.size());
    for (;;) {
        stream->next_out = reinterpret_cast<Bytef*>(piece.get());
        stream->avail_out = pieceBytes;
        const int result = inflate(stream.get(), Z_NO_FLUSH);
        if (result != Z_OK && result != Z_STREAM_END)
            return false;
        if (!take(piece.get(), pieceBytes - stream->avail_out))
            return false;
        if (result == Z_STREAM_END)
            return true;
    }
}

} // namespace lorix
