// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <lorix/export.h>

#include <QByteArray>

#include <functional>
#include <memory>

struct z_stream_s;

namespace lorix {

/// Inflates one zlib stream (RFC 1950) that is fed in pieces of any size.
class LORIX_EXPORT Inflater
{
public:
    /// Called with each piece of output, at most 1 MiB of it.
    using Take = std::function<void(const char* bytes, qsizetype count)>;

    /// Ready for the first bytes of a stream; isValid() tells whether that worked.
    Inflater();
    ~Inflater();
    Inflater(const Inflater&) = delete;
    Inflater& operator=(const Inflater&) = delete;

    /// Starts the stream state without the allocation; 0 (Z_OK) or zlib's error.
    int init();
    /// Ends the stream and starts a new one.
    void reset();

    /// Feeds `input` and returns what it inflates to. Input behind the end of
    /// the stream is ignored. On damage the result is empty, whatever this call
    /// had inflated before, and the inflater is invalid until reset().
    QByteArray inflateData(const QByteArray& input);

    /// The same, for output that may not fit in memory: hands out the pieces as
    /// they come. False on damage; what this call had handed out by then counts
    /// as never produced, and the caller takes it back.
    bool inflatePieces(const QByteArray& input, const Take& take);

    /// Whether the end of the stream has been reached.
    bool hasFinished() const { return m_finished; }
    /// Whether no damage has been met.
    bool isValid() const { return m_valid; }

private:
    std::unique_ptr<z_stream_s> m_stream;
    std::unique_ptr<char[]> m_output;
    bool m_valid = true;
    bool m_finished = false;
};

} // namespace lorix
