// SPDX-License-Identifier: BSD-3-Clause
#include <lorix/tree/densetrees.h>

#include <lorix/tree/costmatrix.h>
#include <lorix/tree/pathexpander.h>
#include <lorix/tree/workflowtree.h>

#include <QHash>

#include <algorithm>

namespace lorix {

namespace {

using Numbers = QHash<int, int>; // number by id

Numbers numbersOf(const std::vector<int>& ids)
{
    Numbers result;
    result.reserve(qsizetype(ids.size()));
    for (size_t i = 0; i < ids.size(); ++i)
        result.insert(ids[i], int(i));
    return result;
}

std::vector<int> toVector(const QList<int>& list)
{
    return std::vector<int>(list.cbegin(), list.cend());
}

bool fillParents(const WorkflowTree& tree, const std::vector<int>& ids, const Numbers& numbers,
                 std::vector<int>& parents)
{
    parents.reserve(ids.size());
    for (size_t i = 0; i < ids.size(); ++i) {
        const int parent = tree.parent(ids[i]);
        if (ids[i] < 0 || parent == NULL_NODE)
            return false;
        const int unknown = parent == INVALID_NODE ? DenseTrees::absent : DenseTrees::outside;
        parents.push_back(parent == NODE_ABOVE_ROOT ? DenseTrees::root
                                                    : numbers.value(parent, unknown));
        if (parents.back() >= int(i))
            return false;
    }
    return true;
}

// Fills the partner by node. An entry that is no association of two nodes, or of
// a node of tree 1 with none, has no place in the arrays.
bool fillPartners(const QHash<int, int>& table, const Numbers& from, const Numbers& to,
                  bool mayBeNone, std::vector<int>& partners)
{
    partners.assign(size_t(from.size()), DenseTrees::absent);
    for (auto entry = table.cbegin(); entry != table.cend(); ++entry) {
        if (entry.key() == NODE_ABOVE_ROOT) {
            if (entry.value() != NODE_ABOVE_ROOT)
                return false;
            continue;
        }
        // Only a record of which node had none last; the search does not read it.
        if (!mayBeNone && entry.key() == NULL_NODE)
            continue;
        const int node = from.value(entry.key(), DenseTrees::absent);
        const int partner = mayBeNone && entry.value() == NULL_NODE
                                ? DenseTrees::none
                                : to.value(entry.value(), DenseTrees::absent);
        if (node == DenseTrees::absent || partner == DenseTrees::absent)
            return false;
        partners[size_t(node)] = partner;
    }
    return true;
}

bool fillOpen(const QLinkedList<int>& list, const Numbers& numbers,
              const std::vector<int>& partners, std::vector<int>& open)
{
    std::vector<char> seen(partners.size(), 0);
    for (const int id : list) {
        const int node = numbers.value(id, DenseTrees::absent);
        if (node < 0 || seen[size_t(node)] || partners[size_t(node)] != DenseTrees::absent)
            return false;
        seen[size_t(node)] = 1;
        open.push_back(node);
    }
    const auto absent = std::count(partners.begin(), partners.end(), DenseTrees::absent);
    return absent == std::ptrdiff_t(open.size());
}

std::vector<std::pair<int, int>> flagsAndNodes(const std::vector<int>& ids, const Numbers& numbers)
{
    std::vector<int> sorted(ids.size());
    for (size_t i = 0; i < ids.size(); ++i)
        sorted[i] = int(i);
    std::sort(sorted.begin(), sorted.end(),
              [&ids](int a, int b) { return ids[size_t(a)] < ids[size_t(b)]; });
    std::vector<std::pair<int, int>> result;
    for (size_t i = 0; i < sorted.size(); ++i) {
        // Position 0 is the node above the root, whose parent never changes.
        const int flag = numbers.value(int(i) + 1, DenseTrees::absent);
        if (flag >= 0)
            result.emplace_back(flag, sorted[i]);
    }
    return result;
}

} // namespace

std::optional<DenseTrees> DenseTrees::from(const Path& start)
{
    const PathExpander& expander = *start.expander();
    const CostMatrix& matrix = *expander.matrix();
    DenseTrees result;
    result.ids1 = toVector(expander.tree1()->nodeIds());
    result.ids2 = toVector(expander.tree2()->nodeIds());
    const Numbers numbers1 = numbersOf(result.ids1);
    const Numbers numbers2 = numbersOf(result.ids2);
    if (!fillParents(*expander.tree1(), result.ids1, numbers1, result.parents1) ||
        !fillParents(*expander.tree2(), result.ids2, numbers2, result.parents2) ||
        !fillPartners(start.assoc1to2(), numbers1, numbers2, true, result.partners1) ||
        !fillPartners(start.assoc2to1(), numbers2, numbers1, false, result.partners2) ||
        !fillOpen(start.open1(), numbers1, result.partners1, result.open1) ||
        !fillOpen(start.open2(), numbers2, result.partners2, result.open2) ||
        !std::is_sorted(result.open1.begin(), result.open1.end()))
        return std::nullopt;
    result.unmatched = matrix.costsUnmatchedNode();
    result.wrongParent = matrix.costsWrongParent();
    result.parentLater.assign(result.ids1.size(), 0);
    result.costs.reserve(result.ids1.size() * result.ids2.size());
    for (const int id1 : result.ids1) {
        result.parentLater[size_t(numbers1.value(id1))] = start.parentCostsLater().value(id1);
        for (const int id2 : result.ids2)
            result.costs.push_back(matrix.costs(id1, id2));
    }
    result.flagAndNode = flagsAndNodes(result.ids1, numbers1);
    return result;
}

DenseState::DenseState(const DenseTrees& problem)
    : trees(problem), partners1(problem.partners1), partners2(problem.partners2),
      parentLater(problem.parentLater)
{}

void DenseState::associate(int u, int v)
{
    parentLater[size_t(u)] = parentCostsLater(u);
    partners1[size_t(u)] = v;
    if (v >= 0)
        partners2[size_t(v)] = u;
}

void DenseState::dissociate(int u, int v)
{
    partners1[size_t(u)] = DenseTrees::absent;
    if (v >= 0)
        partners2[size_t(v)] = DenseTrees::absent;
}

int DenseState::expectedParent(int u) const
{
    const int parent = trees.parents1[size_t(u)];
    if (parent == DenseTrees::root)
        return DenseTrees::root;
    if (parent < 0)
        return DenseTrees::none;
    const int partner = partners1[size_t(parent)];
    return partner == DenseTrees::absent ? DenseTrees::none : partner;
}

bool DenseState::wrongParent(int expected, int v) const
{
    if (expected == DenseTrees::none)
        return false;
    const int parent = trees.parents2[size_t(v)];
    if (parent == DenseTrees::root)
        return expected != DenseTrees::root;
    return parent >= 0 && parent != expected && partners2[size_t(parent)] != DenseTrees::absent;
}

float DenseState::costForAssociation(int u, int v) const
{
    if (v == DenseTrees::none)
        return trees.unmatched;
    const float stepCosts = trees.cost(u, v);
    return wrongParent(expectedParent(u), v) ? stepCosts + trees.wrongParent : stepCosts;
}

bool DenseState::parentCostsLater(int u) const
{
    const int parent = trees.parents1[size_t(u)];
    return parent >= 0 && partners1[size_t(parent)] == DenseTrees::none;
}

int DenseState::ancestorsPartner(int u) const
{
    int ancestor = trees.parents1[size_t(u)];
    while (ancestor >= 0 && partners1[size_t(ancestor)] == DenseTrees::none)
        ancestor = trees.parents1[size_t(ancestor)];
    if (ancestor >= 0)
        return partners1[size_t(ancestor)];
    return ancestor == DenseTrees::root ? DenseTrees::root : DenseTrees::absent;
}

bool DenseState::parentChanged(int u, int partner) const
{
    const int partnersParent = partner >= 0 ? trees.parents2[size_t(partner)] : DenseTrees::absent;
    return ancestorsPartner(u) != partnersParent;
}

float DenseState::missingParentCosts() const
{
    // The same as ancestorsPartner(), for all nodes in one pass where it is
    // needed at all: in long chains without partners the walks would add up.
    std::vector<int> ancestorsPartners;
    float sum = 0.0F;
    for (const auto& [flag, node] : trees.flagAndNode) {
        if (!parentLater[size_t(flag)])
            continue;
        if (ancestorsPartners.empty())
            ancestorsPartners = allAncestorsPartners();
        const int partner = partners1[size_t(node)];
        const int partnersParent =
            partner >= 0 ? trees.parents2[size_t(partner)] : DenseTrees::absent;
        if (ancestorsPartners[size_t(node)] != partnersParent)
            sum += trees.wrongParent;
    }
    return sum;
}

std::vector<int> DenseState::allAncestorsPartners() const
{
    std::vector<int> result(trees.parents1.size());
    for (size_t u = 0; u < result.size(); ++u) {
        const int parent = trees.parents1[u];
        if (parent < 0)
            result[u] = parent == DenseTrees::root ? DenseTrees::root : DenseTrees::absent;
        else if (partners1[size_t(parent)] == DenseTrees::none)
            result[u] = result[size_t(parent)];
        else
            result[u] = partners1[size_t(parent)];
    }
    return result;
}

} // namespace lorix
