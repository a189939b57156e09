// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <lorix/query/queryerror.h>

#include <QString>

namespace lorix::viewer {

/// What is wrong with a query, in words that say what to do about it. A
/// complaint of an unknown kind keeps the words that it came with.
QString queryWords(const QueryError& error);

} // namespace lorix::viewer
