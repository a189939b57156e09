// SPDX-License-Identifier: BSD-3-Clause
#include <lorix/tree/beamsearch.h>

#include <algorithm>
#include <cmath>
#include <tuple>

namespace lorix {

BeamSearch::BeamSearch(const DenseTrees& trees, const LeastAssignment& least, size_t width)
    : m_trees(trees), m_least(least), m_width(width), m_certainAt(trees.ids1.size())
{
    for (const auto& [flag, node] : trees.flagAndNode)
        m_certainAt[size_t(std::max(flag, node))].emplace_back(flag, node);
}

std::vector<std::vector<int>> BeamSearch::findBest(size_t count)
{
    m_kept.clear();
    m_kept.push_back({DenseState(m_trees), 0.0});
    std::vector<Child> children;
    for (const int u : m_trees.open1) {
        children.clear();
        for (size_t parent = 0; parent < m_kept.size(); ++parent)
            addChildren(int(parent), u, children);
        keepBest(u, children);
    }
    std::vector<std::vector<int>> result;
    for (size_t i = 0; i < std::min(count, m_kept.size()); ++i)
        result.push_back(m_kept[i].state.partners1);
    return result;
}

// The penalties that associating u makes certain, those of u itself left aside.
double BeamSearch::certainPenalties(const DenseState& state, int u, bool later) const
{
    double sum = 0.0;
    for (const auto& [flag, node] : m_certainAt[size_t(u)]) {
        const bool flagged = flag == u ? later : bool(state.parentLater[size_t(flag)]);
        if (node != u && flagged && state.parentChanged(node, state.partners1[size_t(node)]))
            sum += double(m_trees.wrongParent);
    }
    return sum;
}

void BeamSearch::addChildren(int parent, int u, std::vector<Child>& children) const
{
    const DenseState& state = m_kept[size_t(parent)].state;
    const bool later = state.parentCostsLater(u);
    bool ownFlag = false;
    for (const auto& [flag, node] : m_certainAt[size_t(u)])
        ownFlag |= node == u && (flag == u ? later : bool(state.parentLater[size_t(flag)]));
    const double before = m_kept[size_t(parent)].excess + certainPenalties(state, u, later) -
                          m_least.shares1[size_t(u)];
    const int expected = state.expectedParent(u);
    const int ancestorsPartner = state.ancestorsPartner(u);
    const auto add = [&](int v, double costs) {
        const int partnersParent = v >= 0 ? m_trees.parents2[size_t(v)] : DenseTrees::absent;
        if (ownFlag && ancestorsPartner != partnersParent)
            costs += double(m_trees.wrongParent);
        if (!std::isnan(costs))
            children.push_back({before + costs, parent, v});
    };
    for (const int v : m_trees.open2) {
        if (state.partners2[size_t(v)] != DenseTrees::absent)
            continue;
        double costs = double(m_trees.cost(u, v)) - m_least.shares2[size_t(v)];
        if (state.wrongParent(expected, v))
            costs += double(m_trees.wrongParent);
        add(v, costs);
    }
    add(DenseTrees::none, double(m_trees.unmatched));
}

void BeamSearch::keepBest(int u, std::vector<Child>& children)
{
    const auto better = [](const Child& a, const Child& b) {
        return std::tie(a.excess, a.parent, a.partner) < std::tie(b.excess, b.parent, b.partner);
    };
    if (children.size() > m_width) {
        std::nth_element(children.begin(), children.begin() + std::ptrdiff_t(m_width),
                         children.end(), better);
        children.resize(m_width);
    }
    std::sort(children.begin(), children.end(), better);
    std::vector<Kept> kept;
    kept.reserve(children.size());
    for (const Child& child : children) {
        kept.push_back({m_kept[size_t(child.parent)].state, child.excess});
        kept.back().state.associate(u, child.partner);
    }
    m_kept.swap(kept);
}

} // namespace lorix
