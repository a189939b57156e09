// SPDX-License-Identifier: BSD-3-Clause
#include <lorix/container/inflater.h>

#include <zlib.h>

namespace lorix {

namespace {
constexpr uInt outputBytes = 1024 * 1024;
} // namespace

// The buffer's bytes are always written before they are read.
Inflater::Inflater() : m_stream(std::make_unique<z_stream>()), m_output(new char[outputBytes])
{
    init();
}

Inflater::~Inflater()
{
    inflateEnd(m_stream.get());
}

int Inflater::init()
{
    // A stream that is still open would lose its memory; for others this does nothing.
    inflateEnd(m_stream.get());
    m_valid = true;
    m_finished = false;
    *m_stream = z_stream();
    const int result = inflateInit(m_stream.get());
    if (result != Z_OK)
        m_valid = false;
    return result;
}

void Inflater::reset()
{
    init();
}

QByteArray Inflater::inflateData(const QByteArray& input)
{
    QByteArray output;
    const auto append = [&output](const char* bytes, qsizetype count) {
        output.append(bytes, count);
    };
    if (!inflatePieces(input, append))
        return {};
    return output;
}

bool Inflater::inflatePieces(const QByteArray& input, const Take& take)
{
    if (input.isEmpty())
        return true;
    // zlib's interface lacks the const; it does not write to its input.
    m_stream->next_in = reinterpret_cast<Bytef*>(const_cast<char*>(input.constData()));
    m_stream->avail_in = static_cast<uInt>(input.size());
    for (;;) {
        m_stream->next_out = reinterpret_cast<Bytef*>(m_output.get());
        m_stream->avail_out = outputBytes;
        const int result = inflate(m_stream.get(), Z_NO_FLUSH);
        // Z_BUF_ERROR is damage too, even where a full buffer met the input's end.
        if (result != Z_OK && result != Z_STREAM_END) {
            inflateEnd(m_stream.get());
            m_valid = false;
            return false;
        }
        m_finished = result == Z_STREAM_END;
        take(m_output.get(), outputBytes - m_stream->avail_out);
        if (m_finished || m_stream->avail_out > 0)
            return true;
    }
}

} // namespace lorix
