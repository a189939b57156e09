// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <lorix/tree/densetrees.h>

#include <vector>

namespace lorix {

/// The cheapest association of two trees when parents do not matter, found by
/// shortest augmenting paths in time that grows with the third power of the
/// number of nodes at most. Not part of the library's interface.
///
/// Its total is what every association costs at least. The shares split it up:
/// a pair costs at least the shares of its two nodes, and a node without
/// partner at least its own. So the shares of the open nodes say what remains
/// of any partial association to be paid.
struct LeastAssignment
{
    explicit LeastAssignment(const DenseTrees& problem);

    std::vector<int> partners1; ///< By node of tree 1: partner or DenseTrees::none.
    std::vector<double> shares1;
    std::vector<double> shares2;
    double total = 0.0;

private:
    struct Edge
    {
        int node2;
        double costs;
    };
    struct Reached; // the search for one augmenting path

    void assign(int root, Reached& reached);
    void relax(int node1, double distance, Reached& reached) const;
    void adjust(int root, double length, const Reached& reached);

    double m_unmatched;
    std::vector<std::vector<Edge>> m_edges;
    std::vector<int> m_partners2;
};

} // namespace lorix
