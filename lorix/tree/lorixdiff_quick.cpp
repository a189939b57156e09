// SPDX-License-Identifier: BSD-3-Clause
#include <lorix/tree/lorixdiff.h>

#include <lorix/tree/associationrepair.h>
#include <lorix/tree/beamsearch.h>
#include <lorix/tree/costmatrix.h>
#include <lorix/tree/leastassignment.h>
#include <lorix/tree/path.h>
#include <lorix/tree/pathexpander.h>

#include <algorithm>

namespace lorix {

namespace {

// Pairs of nodes times paths kept: small trees are searched broadly, large ones
// in time that stays within their number of pairs times a constant.
constexpr size_t beamWork = 4000000;
constexpr size_t leastWidth = 64;
constexpr size_t mostWidth = 2000;

constexpr size_t candidates = 4;

size_t beamWidth(const DenseTrees& trees)
{
    const size_t pairs = (trees.ids1.size() + 1) * (trees.ids2.size() + 1);
    return std::clamp(beamWork / pairs, leastWidth, mostWidth);
}

qint64 trialsFor(const DenseTrees& trees)
{
    return 5000 + 50 * qint64(trees.ids1.size() + trees.ids2.size());
}

std::vector<int> cheapAssociation(const DenseTrees& trees, const LeastAssignment& least)
{
    std::vector<std::vector<int>> found =
        BeamSearch(trees, least, beamWidth(trees)).findBest(candidates);
    found.push_back(least.partners1);
    AssociationRepair repair(trees, trialsFor(trees));
    std::vector<int> best;
    float bestCosts = 0.0F;
    for (std::vector<int>& partners : found) {
        const float costs = repair.improve(partners);
        if (best.empty() || costs < bestCosts) {
            best = partners;
            bestCosts = costs;
        }
    }
    return best;
}

// For trees that the arrays cannot hold: each node takes what is cheapest now.
void associateOneByOne(Path& path)
{
    while (!path.reachedGoal()) {
        const int u = path.open1().first();
        int best = NULL_NODE;
        float least = path.expander()->matrix()->costsUnmatchedNode();
        for (const int v : path.open2()) {
            const float costs =
                path.expander()->costForAssociation(u, v, path.assoc1to2(), path.assoc2to1());
            if (costs < least) {
                least = costs;
                best = v;
            }
        }
        path.associate(u, best);
    }
}

} // namespace

QuickMatch LorixDiff::findQuickMatch() const
{
    if (refused())
        return QuickMatch();
    const CostMatrix matrix(m_tree1, m_tree2, m_costs);
    PathExpander expander(&m_tree1, &m_tree2, &matrix);
    Path path(&expander);
    double lowerBound = 0.0;
    if (!path.reachedGoal()) {
        if (const std::optional<DenseTrees> trees = DenseTrees::from(path)) {
            const LeastAssignment least(*trees);
            lowerBound = least.total;
            const std::vector<int> partners = cheapAssociation(*trees, least);
            for (size_t u = 0; u < partners.size(); ++u)
                path.associate(trees->ids1[u],
                               partners[u] >= 0 ? trees->ids2[size_t(partners[u])] : NULL_NODE);
        } else {
            lowerBound = double(path.getCosts());
            associateOneByOne(path);
        }
    }
    return {convertPath(path), path.costs(), std::min(float(lowerBound), path.costs())};
}

} // namespace lorix
