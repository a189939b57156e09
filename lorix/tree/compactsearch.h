// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <lorix/tree/densetrees.h>
#include <lorix/tree/path.h>
#include <lorix/tree/priorityqueue.h>
#include <lorix/tree/remainingestimate.h>
#include <lorix/tree/searchlimits.h>

#include <QList>
#include <QSharedPointer>

#include <vector>

namespace lorix {

/// The association search with waiting paths of a few bytes each: the path that
/// one was expanded from, and the partner that it adds. Not part of the
/// library's interface; Dijkstra<Path> is.
///
/// It pushes what Path::expand() pushes, in the same order and with the same
/// priorities, so that the queue moves in the same way.
class CompactSearch
{
public:
    CompactSearch(const QSharedPointer<Path>& start, const DenseTrees& trees);

    QList<QSharedPointer<Path>> findPaths(int count, const SearchLimits& limits,
                                          SearchOutcome& outcome);

private:
    // An expanded path. What it has associated is read by following `parent`.
    struct Expanded
    {
        quint32 parent;
        int partner; // of open1[depth - 1]
        float costs;
        quint32 depth;
    };
    struct Waiting
    {
        quint32 parent = 0; // in m_expanded
        int partner = 0;
    };

    static constexpr quint32 noParent = 0xFFFFFFFF;

    size_t depthOf(const Waiting& path) const;
    void load(const Waiting& path);
    void expand();
    void pushChild(int u, int v, float costs, float estimate);
    QSharedPointer<Path> completed(const Waiting& path) const;

    QSharedPointer<Path> m_start;
    const DenseTrees& m_trees;
    RemainingEstimate m_estimate;
    DenseState m_state;
    std::vector<Expanded> m_expanded;
    std::vector<int> m_loaded; // partners of open1's first nodes, as m_state has them
    std::vector<int> m_open2;
    PriorityQueue<Waiting> m_queue;
};

} // namespace lorix
