// SPDX-License-Identifier: BSD-3-Clause
#include <lorix/tree/costmatrix.h>

#include <lorix/tree/workflowstepcosts.h>
#include <lorix/tree/workflowtree.h>

#include <QDebug>
#include <QPair>

namespace lorix {

namespace {

QHash<int, qsizetype> positions(const QList<int>& ids)
{
    QHash<int, qsizetype> result;
    result.reserve(ids.size());
    for (qsizetype i = 0; i < ids.size(); ++i)
        result.insert(ids.at(i), i);
    return result;
}

QList<Workflowstep> stepsOf(const WorkflowTree& tree, const QList<int>& ids)
{
    QList<Workflowstep> result;
    result.reserve(ids.size());
    for (const int id : ids)
        result.append(tree.workflowStep(id));
    return result;
}

} // namespace

CostMatrix::CostMatrix(const WorkflowTree& tree1, const WorkflowTree& tree2,
                       const WorkflowstepCosts* stepCosts)
    : m_ids1(tree1.nodeIds()), m_ids2(tree2.nodeIds()), m_rows(positions(m_ids1)),
      m_columns(positions(m_ids2))
{
    const WorkflowstepCosts defaultCosts;
    const WorkflowstepCosts* pricing = stepCosts ? stepCosts : &defaultCosts;
    const QList<Workflowstep> steps1 = stepsOf(tree1, m_ids1);
    const QList<Workflowstep> steps2 = stepsOf(tree2, m_ids2);
    m_costs.reserve(steps1.size() * steps2.size());
    for (const Workflowstep& step1 : steps1) {
        for (const Workflowstep& step2 : steps2)
            m_costs.append(pricing->costs(step1, step2));
    }
}

float CostMatrix::costs(int i, int j) const
{
    const auto row = m_rows.constFind(i);
    const auto column = m_columns.constFind(j);
    if (row == m_rows.cend() || column == m_columns.cend())
        return m_unmatchedNode;
    return m_costs.at(*row * m_ids2.size() + *column);
}

void CostMatrix::printMe() const
{
    qsizetype at = 0;
    for (const int i : m_ids1) {
        for (const int j : m_ids2)
            qDebug() << qMakePair(i, j) << m_costs.at(at++);
    }
}

} // namespace lorix
