// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <lorix/export.h>

#include <QByteArray>

#include <functional>

namespace lorix {

/// Inflates one zlib stream (RFC 1950) that is in memory as a whole, as
/// qUncompress() does, but hands its output to `take` in pieces of at most
/// 256 KiB, so that no claimed size decides what is allocated. Ends early when
/// `take` returns false. True when the end of the stream was reached; bytes
/// behind it are ignored.
LORIX_EXPORT bool inflateWhole(const QByteArray& data,
                               const std::function<bool(const char* bytes, qsizetype count)>& take);

} // namespace lorix
