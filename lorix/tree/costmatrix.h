// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <lorix/export.h>

#include <QHash>
#include <QList>

namespace lorix {

class WorkflowstepCosts;
class WorkflowTree;

/// The price of every pair of nodes of two trees, asked once and then looked
/// up, and the two penalties that the search adds.
class LORIX_EXPORT CostMatrix
{
public:
    /// Asks `stepCosts` for every node of `tree1` with every node of `tree2`, in
    /// the order of their nodeIds(). Nothing given is held on to. Without
    /// `stepCosts` the pricing of WorkflowstepCosts itself is used.
    CostMatrix(const WorkflowTree& tree1, const WorkflowTree& tree2,
               const WorkflowstepCosts* stepCosts);

    /// The price of node `i` of tree 1 with node `j` of tree 2, or
    /// costsUnmatchedNode() where either is no node.
    float costs(int i, int j) const;

    /// 10: a node hangs below another parent than its partner.
    float costsWrongParent() const { return m_wrongParent; }

    /// 15: a node has no partner.
    float costsUnmatchedNode() const { return m_unmatchedNode; }

    /// Writes one line per pair to the debug stream: the pair, then its price.
    void printMe() const;

private:
    QList<int> m_ids1;
    QList<int> m_ids2;
    QHash<int, qsizetype> m_rows;    // by node id of tree 1
    QHash<int, qsizetype> m_columns; // by node id of tree 2
    QList<float> m_costs;            // row by row
    float m_unmatchedNode = 15.0F;
    float m_wrongParent = 10.0F;
};

} // namespace lorix
