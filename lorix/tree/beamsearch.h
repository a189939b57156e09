// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <lorix/tree/densetrees.h>
#include <lorix/tree/leastassignment.h>

#include <utility>
#include <vector>

namespace lorix {

/// The association search with at most so many paths kept for each node of
/// tree 1. Not part of the library's interface.
///
/// What a path has cost beyond the LeastAssignment decides; penalties for
/// changed parents that the search charges at its end are charged as soon as
/// they are certain.
class BeamSearch
{
public:
    BeamSearch(const DenseTrees& trees, const LeastAssignment& least, size_t width);

    /// The partner or DenseTrees::none by node of tree 1, for the cheapest
    /// complete paths that were kept, cheapest first.
    std::vector<std::vector<int>> findBest(size_t count);

private:
    struct Kept
    {
        DenseState state;
        double excess;
    };
    struct Child
    {
        double excess;
        int parent;
        int partner;
    };

    void addChildren(int parent, int u, std::vector<Child>& children) const;
    double certainPenalties(const DenseState& state, int u, bool later) const;
    void keepBest(int u, std::vector<Child>& children);

    const DenseTrees& m_trees;
    const LeastAssignment& m_least;
    size_t m_width;
    std::vector<std::vector<std::pair<int, int>>> m_certainAt; // flag and node, by the later one
    std::vector<Kept> m_kept;
};

} // namespace lorix
