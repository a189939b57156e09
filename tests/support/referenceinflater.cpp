// SPDX-License-Identifier: BSD-3-Clause
#include <support/referenceinflater.h>

#include <zlib.h>

ReferenceInflater::ReferenceInflater()
    : m_stream(std::make_unique<z_stream_s>()), m_buffer(1048576, '\0')
{
    init();
}

ReferenceInflater::~ReferenceInflater()
{
    inflateEnd(m_stream.get());
}

int ReferenceInflater::init()
{
    m_valid = true;
    m_finished = false;
    *m_stream = z_stream_s();
    const int result = inflateInit(m_stream.get());
    if (result != Z_OK)
        m_valid = false;
    return result;
}

void ReferenceInflater::reset()
{
    inflateEnd(m_stream.get());
    init();
}

QByteArray ReferenceInflater::inflateData(const QByteArray& input)
{
    if (input.isEmpty())
        return {};
    QByteArray bytes = input;
    m_stream->next_in = reinterpret_cast<Bytef*>(bytes.data());
    m_stream->avail_in = static_cast<uInt>(bytes.size());
    QByteArray output;
    for (;;) {
        m_stream->next_out = reinterpret_cast<Bytef*>(m_buffer.data());
        m_stream->avail_out = static_cast<uInt>(m_buffer.size());
        const int result = inflate(m_stream.get(), Z_NO_FLUSH);
        if (result != Z_OK && result != Z_STREAM_END) {
            inflateEnd(m_stream.get());
            m_valid = false;
            return {};
        }
        m_finished = result == Z_STREAM_END;
        if (m_finished || m_stream->avail_out != 0)
            break;
        output += m_buffer;
    }
    output += m_buffer.left(m_buffer.size() - static_cast<qsizetype>(m_stream->avail_out));
    return output;
}
