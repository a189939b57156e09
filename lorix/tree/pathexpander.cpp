// SPDX-License-Identifier: BSD-3-Clause
#include <lorix/tree/pathexpander.h>

#include <lorix/tree/costmatrix.h>
#include <lorix/tree/workflowtree.h>

#include <QList>

#include <algorithm>

namespace lorix {

namespace {

// The nearest ancestor that is not known to be without partner. Callers' trees
// may lead in circles, so that the walk is no longer than there are entries.
int associatedAncestor(const WorkflowTree& tree, int node, const QHash<int, int>& partners)
{
    int ancestor = tree.parent(node);
    for (qsizetype steps = partners.size();
         steps > 0 && partners.value(ancestor, INVALID_NODE) == NULL_NODE; --steps)
        ancestor = tree.parent(ancestor);
    return ancestor;
}

QList<int> keysInOrder(const QHash<int, int>& table)
{
    QList<int> keys = table.keys();
    std::sort(keys.begin(), keys.end(), [](int a, int b) {
        if (a == NODE_ABOVE_ROOT || b == NODE_ABOVE_ROOT)
            return a == NODE_ABOVE_ROOT && b != NODE_ABOVE_ROOT;
        return a < b;
    });
    return keys;
}

} // namespace

PathExpander::PathExpander(const WorkflowTree* tree1, const WorkflowTree* tree2,
                           const CostMatrix* matrix)
    : m_tree1(tree1), m_tree2(tree2), m_matrix(matrix)
{}

QLinkedList<int> PathExpander::nodeIds(TreeId tree) const
{
    switch (tree) {
    case 1:
        return m_tree1->nodeIdsLinked();
    case 2:
        return m_tree2->nodeIdsLinked();
    default:
        return QLinkedList<int>();
    }
}

float PathExpander::costForAssociation(int u, int v, const QHash<int, int>& assoc1to2,
                                       const QHash<int, int>& assoc2to1) const
{
    const float stepCosts = m_matrix->costs(u, v);
    if (u == NULL_NODE || v == NULL_NODE)
        return stepCosts;
    const int parent1 = m_tree1->parent(u);
    const int parent2 = m_tree2->parent(v);
    const int partnerOfParent1 = assoc1to2.value(parent1, NULL_NODE);
    const int partnerOfParent2 = assoc2to1.value(parent2, NULL_NODE);
    if (partnerOfParent1 == NULL_NODE || partnerOfParent2 == NULL_NODE)
        return stepCosts;
    if (parent1 == INVALID_NODE || parent2 == INVALID_NODE)
        return stepCosts + m_matrix->costsWrongParent();
    return partnerOfParent1 == parent2 ? stepCosts : stepCosts + m_matrix->costsWrongParent();
}

float PathExpander::costForUnmatchedNodes(int count) const
{
    return static_cast<float>(count) * m_matrix->costsUnmatchedNode();
}

bool PathExpander::calcParentCostsLater(int u, int v, const QHash<int, int>& assoc1to2,
                                        const QHash<int, int>& assoc2to1) const
{
    return assoc1to2.value(m_tree1->parent(u), INVALID_NODE) == NULL_NODE ||
           assoc2to1.value(m_tree2->parent(v), INVALID_NODE) == NULL_NODE;
}

float PathExpander::calcMissingParentCosts(const QHash<int, int>& assoc1to2,
                                           const QHash<int, int>& assoc2to1,
                                           const QHash<int, bool>& parentCostsLater) const
{
    const QList<int> nodes = keysInOrder(assoc1to2);
    float sum = 0.0F;
    for (int i = 0; i < static_cast<int>(nodes.size()); ++i) {
        // Results rely on the flag being that of the node numbered i, which is
        // not the node at position i.
        if (parentCostsLater.value(i, false) && parentChanged(nodes.at(i), assoc1to2, assoc2to1))
            sum += m_matrix->costsWrongParent();
    }
    return sum;
}

bool PathExpander::parentChanged(int u, const QHash<int, int>& assoc1to2,
                                 const QHash<int, int>& assoc2to1) const
{
    const int partner = assoc1to2.value(u, INVALID_NODE);
    if (u == INVALID_NODE || partner == INVALID_NODE)
        return false;
    const int ancestor1 = associatedAncestor(*m_tree1, u, assoc1to2);
    const int ancestor2 = associatedAncestor(*m_tree2, partner, assoc2to1);
    return assoc1to2.value(ancestor1, INVALID_NODE) != ancestor2;
}

float PathExpander::heuristicCosts(const QLinkedList<int>& open1,
                                   const QLinkedList<int>& open2) const
{
    const bool firstIsShorter = open1.size() < open2.size();
    const QLinkedList<int>& shorter = firstIsShorter ? open1 : open2;
    const QLinkedList<int>& longer = firstIsShorter ? open2 : open1;
    float sum = costForUnmatchedNodes(longer.size() - shorter.size());
    for (const int node : shorter) {
        float least = m_matrix->costsUnmatchedNode();
        for (const int other : longer) {
            const float costs =
                firstIsShorter ? m_matrix->costs(node, other) : m_matrix->costs(other, node);
            if (costs < least)
                least = costs;
        }
        sum += least;
    }
    return sum;
}

} // namespace lorix
