// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QByteArray>

#include <memory>

struct z_stream_s;

/// Streaming inflation as its description has it, with zlib and nothing else.
class ReferenceInflater
{
public:
    ReferenceInflater();
    ~ReferenceInflater();
    ReferenceInflater(const ReferenceInflater&) = delete;
    ReferenceInflater& operator=(const ReferenceInflater&) = delete;

    int init();
    void reset();
    QByteArray inflateData(const QByteArray& input);
    bool hasFinished() const { return m_finished; }
    bool isValid() const { return m_valid; }

private:
    std::unique_ptr<z_stream_s> m_stream;
    QByteArray m_buffer;
    bool m_valid = true;
    bool m_finished = false;
};
