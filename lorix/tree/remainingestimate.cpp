// SPDX-License-Identifier: BSD-3-Clause
#include <lorix/tree/remainingestimate.h>

#include <algorithm>
#include <cmath>

namespace lorix {

RemainingEstimate::RemainingEstimate(const DenseTrees& trees)
    : m_trees(trees), m_exact(sumsAreExact()), m_positions(trees.ids2.size(), -1)
{
    rankCandidates();
    fillColumnMinima();
}

// A float holds every integer up to 2^24. Costs that are whole multiples of
// 1/256 and whose sum stays within that many of them add up without rounding.
bool RemainingEstimate::sumsAreExact() const
{
    constexpr float parts = 256.0F;
    const float terms = float(m_trees.open1.size() + m_trees.open2.size());
    float largest = m_trees.unmatched;
    for (const float cost : m_trees.costs) {
        if (!(cost < m_trees.unmatched))
            continue;
        if (!std::isfinite(cost) || cost * parts != std::nearbyint(cost * parts))
            return false;
        largest = std::max(largest, std::fabs(cost));
    }
    return largest * terms * parts < 16777216.0F;
}

float RemainingEstimate::unmatchedCosts(size_t longer, size_t shorter) const
{
    return float(int(longer) - int(shorter)) * m_trees.unmatched;
}

void RemainingEstimate::rankCandidates()
{
    m_firstCandidate.push_back(0);
    for (const int u : m_trees.open1) {
        for (const int v : m_trees.open2) {
            if (m_trees.cost(u, v) < m_trees.unmatched)
                m_candidates.push_back({m_trees.cost(u, v), v});
        }
        const auto first = m_candidates.begin() + std::ptrdiff_t(m_firstCandidate.back());
        std::stable_sort(first, m_candidates.end(),
                         [](const Candidate& a, const Candidate& b) { return a.cost < b.cost; });
        m_firstCandidate.push_back(m_candidates.size());
    }
}

void RemainingEstimate::fillColumnMinima()
{
    const size_t columns = m_trees.ids2.size();
    m_columnMinima.assign((m_trees.open1.size() + 1) * columns, m_trees.unmatched);
    for (size_t depth = m_trees.open1.size(); depth-- > 0;) {
        for (size_t v = 0; v < columns; ++v) {
            m_columnMinima[depth * columns + v] =
                std::min(m_columnMinima[(depth + 1) * columns + v],
                         m_trees.cost(m_trees.open1[depth], int(v)));
        }
    }
}

const float* RemainingEstimate::columnMinima(size_t depth) const
{
    return m_columnMinima.data() + depth * m_trees.ids2.size();
}

void RemainingEstimate::findLeast(size_t depth, const std::vector<int>& open2)
{
    std::fill(m_positions.begin(), m_positions.end(), -1);
    for (size_t position = 0; position < open2.size(); ++position)
        m_positions[size_t(open2[position])] = int(position);
    m_least.clear();
    for (size_t place = depth + 1; place < m_trees.open1.size(); ++place) {
        Least least{m_trees.unmatched, -1, m_trees.unmatched};
        for (size_t i = m_firstCandidate[place]; i < m_firstCandidate[place + 1]; ++i) {
            const int position = m_positions[size_t(m_candidates[i].partner)];
            if (position < 0)
                continue;
            if (least.position >= 0) {
                least.next = m_candidates[i].cost;
                break;
            }
            least.cost = m_candidates[i].cost;
            least.position = position;
        }
        m_least.push_back(least);
    }
}

// For the children whose tree 1 has fewer open nodes left than their tree 2.
void RemainingEstimate::childrenOverOpen1(size_t open1Left, size_t open2Left)
{
    const float start = unmatchedCosts(open2Left, open1Left);
    if (m_exact) {
        float sum = start;
        for (const Least& least : m_least)
            sum += least.cost;
        std::fill(m_children.begin(), m_children.end(), sum);
        for (const Least& least : m_least) {
            if (least.position >= 0)
                m_children[size_t(least.position)] += least.next - least.cost;
        }
        return;
    }
    std::fill(m_children.begin(), m_children.end(), start);
    for (const Least& least : m_least) {
        const float before = least.position >= 0 ? m_children[size_t(least.position)] : 0.0F;
        for (float& child : m_children)
            child += least.cost;
        if (least.position >= 0)
            m_children[size_t(least.position)] = before + least.next;
    }
}

// For the other children. What a node of tree 2 can cost at least depends on the
// depth alone, so that only the node that is gone makes the difference.
void RemainingEstimate::childrenOverOpen2(size_t depth, const std::vector<int>& open2,
                                          size_t open1Left)
{
    const float* minima = columnMinima(depth + 1);
    float sum = unmatchedCosts(open1Left, open2.size() - 1);
    if (m_exact) {
        for (const int v : open2)
            sum += minima[v];
        for (size_t position = 0; position < open2.size(); ++position)
            m_children[position] = sum - minima[open2[position]];
        return;
    }
    for (size_t position = 0; position < open2.size(); ++position) {
        const float least = minima[open2[position]];
        for (size_t child = 0; child < position; ++child)
            m_children[child] += least;
        m_children[position] = sum;
        sum += least;
    }
}

void RemainingEstimate::compute(size_t depth, const std::vector<int>& open2)
{
    const size_t open1Left = m_trees.open1.size() - depth - 1;
    m_children.resize(open2.size());
    if (open1Left < open2.size())
        findLeast(depth, open2);
    if (!open2.empty()) {
        if (open1Left < open2.size() - 1)
            childrenOverOpen1(open1Left, open2.size() - 1);
        else
            childrenOverOpen2(depth, open2, open1Left);
    }
    if (open1Left < open2.size()) {
        m_withoutPartner = unmatchedCosts(open2.size(), open1Left);
        for (const Least& least : m_least)
            m_withoutPartner += least.cost;
    } else {
        m_withoutPartner = unmatchedCosts(open1Left, open2.size());
        for (const int v : open2)
            m_withoutPartner += columnMinima(depth + 1)[v];
    }
}

} // namespace lorix
