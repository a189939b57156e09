// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <lorix/export.h>

#include <QByteArray>

namespace lorix {

/// Appends src[start, start + len) to `dst`; `len` -1 means to the end of `src`.
/// What lies outside `src` is left out.
LORIX_EXPORT void appendToBuffer(QByteArray& dst, const QByteArray& src, int start, int len);

/// Puts the `len` bytes of `src` that end before index `end` in front of `dst`;
/// `len` -1 means all bytes before `end`. What lies outside `src` is left out.
LORIX_EXPORT void prependToBuffer(QByteArray& dst, const QByteArray& src, int end, int len);

/// The last index below `from` at which `ch` stands in `array`, or -1.
LORIX_EXPORT int findLastIndexOf(const QByteArray& array, char ch, int from);

} // namespace lorix
