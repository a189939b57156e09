// SPDX-License-Identifier: BSD-3-Clause
#include <lorix/tree/associationrepair.h>

#include <algorithm>

namespace lorix {

AssociationRepair::AssociationRepair(const DenseTrees& trees, qint64 trials)
    : m_trees(trees), m_trialsLeft(trials), m_state(trees)
{}

float AssociationRepair::costOf(const std::vector<int>& partners)
{
    float costs = 0.0F;
    size_t leftOver = m_trees.ids2.size();
    for (size_t u = 0; u < partners.size(); ++u) {
        costs += m_state.costForAssociation(int(u), partners[u]);
        m_state.associate(int(u), partners[u]);
        if (partners[u] >= 0)
            --leftOver;
    }
    costs += float(int(leftOver)) * m_trees.unmatched;
    costs += m_state.missingParentCosts();
    for (size_t u = 0; u < partners.size(); ++u)
        m_state.dissociate(int(u), partners[u]);
    return costs;
}

float AssociationRepair::improve(std::vector<int>& partners)
{
    float costs = costOf(partners);
    for (bool improved = true; improved && m_trialsLeft > 0;) {
        improved = false;
        for (const int u : nodesWorthTrying(partners))
            improved |= improveNode(u, partners, costs);
    }
    return costs;
}

// Those that pay anything, or whose parent or children do, so that large
// histories do not spend their trials on what is right already.
std::vector<int> AssociationRepair::nodesWorthTrying(const std::vector<int>& partners) const
{
    std::vector<char> worth(partners.size(), 0);
    std::vector<int> partners2(m_trees.ids2.size(), DenseTrees::none);
    for (size_t u = 0; u < partners.size(); ++u) {
        if (partners[u] >= 0)
            partners2[size_t(partners[u])] = int(u);
    }
    for (size_t u = 0; u < partners.size(); ++u) {
        const int parent = m_trees.parents1[u];
        const int v = partners[u];
        const int fromParent = parent >= 0 ? partners[size_t(parent)] : parent;
        const bool pays =
            v < 0 || m_trees.cost(int(u), v) > 0.0F || fromParent != m_trees.parents2[size_t(v)];
        if (!pays)
            continue;
        worth[u] = 1;
        if (parent >= 0)
            worth[size_t(parent)] = 1;
        const int parent2 = v >= 0 ? m_trees.parents2[size_t(v)] : DenseTrees::none;
        if (parent2 >= 0 && partners2[size_t(parent2)] >= 0)
            worth[size_t(partners2[size_t(parent2)])] = 1;
    }
    std::vector<int> result;
    for (size_t u = 0; u < worth.size(); ++u) {
        if (worth[u])
            result.push_back(int(u));
    }
    return result;
}

bool AssociationRepair::improveNode(int u, std::vector<int>& partners, float& costs)
{
    bool improved = false;
    for (int v = DenseTrees::none; v < int(m_trees.ids2.size()) && m_trialsLeft > 0; ++v) {
        if ((v < 0 && v != DenseTrees::none) || partners[size_t(u)] == v)
            continue;
        const auto holder =
            v >= 0 ? std::find(partners.begin(), partners.end(), v) : partners.end();
        if (holder == partners.end()) {
            improved |= attempt(partners, u, v, u, v, costs);
            continue;
        }
        const int other = int(holder - partners.begin());
        improved |= attempt(partners, u, v, other, partners[size_t(u)], costs) ||
                    attempt(partners, u, v, other, DenseTrees::none, costs);
    }
    return improved;
}

bool AssociationRepair::attempt(std::vector<int>& partners, int u, int v, int other,
                                int othersPartner, float& costs)
{
    const int before = partners[size_t(u)];
    const int othersBefore = partners[size_t(other)];
    partners[size_t(other)] = othersPartner;
    partners[size_t(u)] = v;
    --m_trialsLeft;
    const float tried = costOf(partners);
    if (tried < costs) {
        costs = tried;
        return true;
    }
    partners[size_t(other)] = othersBefore;
    partners[size_t(u)] = before;
    return false;
}

} // namespace lorix
