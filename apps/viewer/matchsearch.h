// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <apps/viewer/history.h>

#include <QList>
#include <QPair>
#include <QString>

#include <functional>

namespace lorix::viewer {

/// One way in which a query matches: its variables and what they stand for.
struct FoundMatch
{
    QList<QPair<QString, Place>> bindings;
    bool operator==(const FoundMatch& other) const { return bindings == other.bindings; }
};

/// What a query has found in a history.
struct FoundMatches
{
    QList<FoundMatch> matches;
    bool more = false; ///< There are more than are listed.
};

/// Where a query matches: for each document the first match over all its steps,
/// then every match that lies within one step. May be called on any thread.
FoundMatches findMatches(const History& history, const QString& query,
                         const std::function<bool()>& cancelled);

} // namespace lorix::viewer
