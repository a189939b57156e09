// SPDX-License-Identifier: BSD-3-Clause
#include <support/zlibstreams.h>

#include <zlib.h>

QByteArray randomZlibStream(Dice& dice, const QByteArray& content)
{
    z_stream_s stream = {};
    const int strategy =
        dice.oneOf(QList<int>{Z_DEFAULT_STRATEGY, Z_FILTERED, Z_HUFFMAN_ONLY, Z_RLE, Z_FIXED});
    if (deflateInit2(&stream, dice.between(0, 9), Z_DEFLATED, dice.between(9, 15),
                     dice.between(1, 9), strategy) != Z_OK)
        qFatal("the stream cannot be made");
    QByteArray input = content;
    stream.next_in = reinterpret_cast<Bytef*>(input.data());
    QByteArray result;
    QByteArray buffer(65536, '\0');
    int left = static_cast<int>(input.size());
    int status = Z_OK;
    while (status != Z_STREAM_END) {
        const int count = dice.once(3) ? dice.below(left + 1) : left;
        const int flush = left == 0 || (count == left && dice.once(2))
                              ? Z_FINISH
                              : dice.oneOf(QList<int>{Z_NO_FLUSH, Z_SYNC_FLUSH, Z_FULL_FLUSH,
                                                      Z_PARTIAL_FLUSH, Z_BLOCK});
        stream.avail_in = static_cast<uInt>(count);
        left -= count;
        do {
            stream.next_out = reinterpret_cast<Bytef*>(buffer.data());
            stream.avail_out = static_cast<uInt>(buffer.size());
            status = deflate(&stream, flush);
            result += buffer.left(buffer.size() - static_cast<qsizetype>(stream.avail_out));
        } while (stream.avail_out == 0);
    }
    deflateEnd(&stream);
    return result;
}

QByteArray damagedZlibStream(Dice& dice, QByteArray stream)
{
    for (int i = dice.between(1, 3); i > 0 && !stream.isEmpty(); --i) {
        const int size = static_cast<int>(stream.size());
        // The first bytes hold the headers, where most kinds of damage are told apart.
        const int place = dice.once(2) ? dice.below(qMin(size, 60)) : dice.below(size);
        switch (dice.below(8)) {
        case 0:
            stream.truncate(place);
            break;
        case 1:
            stream.remove(place, dice.between(1, 5));
            break;
        case 2:
            stream.insert(place, dice.anyBytes(dice.between(1, 5)));
            break;
        case 3:
            stream[size - 1 - dice.below(qMin(size, 4))] = static_cast<char>(dice.below(256));
            break;
        case 4:
            stream += dice.anyBytes(dice.below(20));
            break;
        case 5: {
            // Another header whose check bits are right: window, dictionary, level.
            const int method = dice.once(2) ? 0x78 : dice.below(256);
            const int flags = dice.below(8) << 5;
            stream[0] = static_cast<char>(method);
            if (size > 1)
                stream[1] = static_cast<char>(flags + (31 - (method * 256 + flags) % 31) % 31);
            break;
        }
        default:
            stream[place] = static_cast<char>(stream.at(place) ^ (1 << dice.below(8)));
        }
    }
    return stream;
}
