// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <lorix/export.h>
#include <lorix/tree/path.h>
#include <lorix/tree/priorityqueue.h>
#include <lorix/tree/searchlimits.h>

#include <QDebug>
#include <QList>
#include <QSharedPointer>

namespace lorix {

/// Best-first search for the cheapest complete paths.
///
/// P offers reachedGoal(), expand(PriorityQueue<QSharedPointer<P>>&) and
/// printMe(). For Path itself the search keeps the waiting paths in a compact
/// form; it takes the same paths in the same order and returns the same ones,
/// provided that the trees and the matrix stay as they were when the start was
/// made.
template <typename P>
class Dijkstra
{
public:
    /// Up to `count` complete paths that `start` leads to, cheapest first, and
    /// at least one if there is one. For each it writes the lines "FINISHED" and
    /// "N nodes expanded", and the path, to the debug stream. What a limit cuts
    /// short is told in `outcome`.
    static QList<QSharedPointer<P>> findPaths(const QSharedPointer<P>& start, int count,
                                              const SearchLimits& limits = SearchLimits(),
                                              SearchOutcome* outcome = nullptr);
};

/// The search step by step, for any P; what Dijkstra does.
template <typename P>
QList<QSharedPointer<P>> findPathsStepwise(const QSharedPointer<P>& start, int count,
                                           const SearchLimits& limits, SearchOutcome& outcome)
{
    QList<QSharedPointer<P>> found;
    PriorityQueue<QSharedPointer<P>> queue;
    queue.push(start, 0);
    while (!queue.isEmpty()) {
        outcome.queued = qMax(outcome.queued, qint64(queue.size()));
        const QSharedPointer<P> path = queue.pop();
        ++outcome.taken;
        if (path->reachedGoal()) {
            qDebug() << "FINISHED";
            qDebug() << outcome.taken << "nodes expanded";
            path->printMe();
            found.append(path);
            if (found.size() >= count)
                break;
            continue;
        }
        if ((limits.expansions > 0 && outcome.expansions >= limits.expansions) ||
            (limits.queued > 0 && qint64(queue.size()) >= limits.queued) ||
            (limits.cancel && limits.cancel())) {
            outcome.stopped = true;
            break;
        }
        path->expand(queue);
        ++outcome.expansions;
    }
    return found;
}

template <typename P>
QList<QSharedPointer<P>> Dijkstra<P>::findPaths(const QSharedPointer<P>& start, int count,
                                                const SearchLimits& limits, SearchOutcome* outcome)
{
    SearchOutcome ignored;
    return findPathsStepwise(start, count, limits, outcome ? *outcome : ignored);
}

template <>
LORIX_EXPORT QList<QSharedPointer<Path>>
Dijkstra<Path>::findPaths(const QSharedPointer<Path>& start, int count, const SearchLimits& limits,
                          SearchOutcome* outcome);

} // namespace lorix
