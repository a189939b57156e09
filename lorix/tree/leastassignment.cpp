// SPDX-License-Identifier: BSD-3-Clause
#include <lorix/tree/leastassignment.h>

#include <cmath>
#include <limits>

namespace lorix {

namespace {
constexpr double infinite = std::numeric_limits<double>::infinity();
} // namespace

struct LeastAssignment::Reached
{
    explicit Reached(size_t size2) : distances(size2, infinite), from(size2, -1), settled(size2, 0)
    {}

    std::vector<double> distances; // by node of tree 2
    std::vector<int> from;         // the node of tree 1 that leads there
    std::vector<char> settled;
    std::vector<int> touched; // the nodes of tree 2 with a distance
    double toNone = infinite; // to leaving a node of tree 1 without partner
    int noneFrom = -1;        // which one
};

LeastAssignment::LeastAssignment(const DenseTrees& problem)
    : partners1(problem.ids1.size(), DenseTrees::none), shares1(problem.ids1.size(), 0.0),
      shares2(problem.ids2.size(), double(problem.unmatched)),
      m_unmatched(double(problem.unmatched)), m_edges(problem.ids1.size()),
      m_partners2(problem.ids2.size(), DenseTrees::none)
{
    for (size_t u = 0; u < m_edges.size(); ++u) {
        for (size_t v = 0; v < shares2.size(); ++v) {
            // A pair that costs more than leaving both alone is never wanted.
            const double costs = double(problem.cost(int(u), int(v)));
            if (std::isfinite(costs) && costs < 2.0 * m_unmatched)
                m_edges[u].push_back({int(v), costs});
        }
    }
    Reached reached(shares2.size());
    for (size_t u = 0; u < m_edges.size(); ++u)
        assign(int(u), reached);
    for (const double share : shares1)
        total += share;
    for (const double share : shares2)
        total += share;
}

// Extends the distances by the edges of one node of tree 1.
void LeastAssignment::relax(int node1, double distance, Reached& reached) const
{
    const double share = shares1[size_t(node1)];
    for (const Edge& edge : m_edges[size_t(node1)]) {
        const size_t v = size_t(edge.node2);
        const double length = distance + edge.costs - share - shares2[v];
        if (reached.settled[v] || length >= reached.distances[v])
            continue;
        if (reached.distances[v] == infinite)
            reached.touched.push_back(edge.node2);
        reached.distances[v] = length;
        reached.from[v] = node1;
    }
    if (distance + m_unmatched - share < reached.toNone) {
        reached.toNone = distance + m_unmatched - share;
        reached.noneFrom = node1;
    }
}

void LeastAssignment::assign(int root, Reached& reached)
{
    double length = 0.0;
    int end = DenseTrees::none; // the free node of tree 2 that the path ends in
    for (int node1 = root; node1 >= 0;) {
        relax(node1, length, reached);
        int nearest = DenseTrees::none;
        double least = reached.toNone;
        for (const int v : reached.touched) {
            if (!reached.settled[size_t(v)] && reached.distances[size_t(v)] < least) {
                least = reached.distances[size_t(v)];
                nearest = v;
            }
        }
        length = least;
        end = nearest;
        node1 = DenseTrees::none;
        if (nearest >= 0 && m_partners2[size_t(nearest)] >= 0) {
            reached.settled[size_t(nearest)] = 1;
            node1 = m_partners2[size_t(nearest)];
        }
    }
    adjust(root, length, reached);
    // Along the path each node of tree 1 hands on the partner that it had.
    int node1 = end >= 0 ? reached.from[size_t(end)] : reached.noneFrom;
    for (int partner = end; node1 >= 0;) {
        const int former = partners1[size_t(node1)];
        partners1[size_t(node1)] = partner;
        if (partner >= 0)
            m_partners2[size_t(partner)] = node1;
        if (node1 == root)
            break;
        partner = former;
        node1 = reached.from[size_t(former)];
    }
    for (const int v : reached.touched) {
        reached.distances[size_t(v)] = infinite;
        reached.settled[size_t(v)] = 0;
    }
    reached.touched.clear();
    reached.toNone = infinite;
}

// Keeps every pair at least as dear as the shares of its nodes, and those that
// are associated exactly so.
void LeastAssignment::adjust(int root, double length, const Reached& reached)
{
    shares1[size_t(root)] += length;
    for (const int v : reached.touched) {
        if (!reached.settled[size_t(v)])
            continue;
        const double shift = length - reached.distances[size_t(v)];
        shares2[size_t(v)] -= shift;
        shares1[size_t(m_partners2[size_t(v)])] += shift;
    }
}

} // namespace lorix
