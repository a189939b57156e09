// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QString>

namespace lorix {

/// The part of a text, like QString::mid(), but sharing the text's memory
/// where that is counted: a tree over a query of n characters holds up to n
/// parts of length n. Like a string from raw data, the result does not end in
/// a NUL of its own.
QString sharedSlice(const QString& text, qsizetype position, qsizetype length);

} // namespace lorix
