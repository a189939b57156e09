// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QtGlobal>

#include <functional>

namespace lorix {

/// When a search shall give up. By default it never does.
struct SearchLimits
{
    qint64 expansions = 0;        ///< Paths that may be expanded; 0 means any number.
    qint64 queued = 0;            ///< Paths that may wait at once (some 12 bytes each); 0 likewise.
    std::function<bool()> cancel; ///< Asked before each expansion; true ends the search.
};

/// How a search went.
struct SearchOutcome
{
    qint64 taken = 0;      ///< Paths taken from the queue, complete ones included.
    qint64 expansions = 0; ///< Paths expanded.
    qint64 queued = 0;     ///< Most paths that waited at once.
    bool stopped = false;  ///< A limit ended it: there may be more, and better, results.
};

} // namespace lorix
