// SPDX-License-Identifier: BSD-3-Clause
#include <lorix/tree/path.h>

#include <lorix/tree/pathexpander.h>

#include <QDebug>

#include <algorithm>
#include <limits>

namespace lorix {

int priorityOf(float costs)
{
    // 2^31 is the least float beyond an int; the comparison is false for NaN.
    constexpr float end = 2147483648.0F;
    if (!(costs < end))
        return std::numeric_limits<int>::max();
    return costs < -end ? std::numeric_limits<int>::min() : static_cast<int>(costs);
}

Path::Path(PathExpander* expander)
    : m_expander(expander), m_assoc1to2{{NODE_ABOVE_ROOT, NODE_ABOVE_ROOT}},
      m_assoc2to1{{NODE_ABOVE_ROOT, NODE_ABOVE_ROOT}}, m_open1(expander->nodeIds(1)),
      m_open2(expander->nodeIds(2))
{}

float Path::getCosts() const
{
    return m_costs + m_expander->heuristicCosts(m_open1, m_open2);
}

void Path::associate(int u, int v)
{
    m_assoc1to2.insert(u, v);
    m_assoc2to1.insert(v, u);
    m_open1.removeOne(u);
    m_open2.removeOne(v);
    m_costs += m_expander->costForAssociation(u, v, m_assoc1to2, m_assoc2to1);
    m_parentCostsLater.insert(u, m_expander->calcParentCostsLater(u, v, m_assoc1to2, m_assoc2to1));
    if (!m_open1.isEmpty())
        return;
    m_costs += m_expander->costForUnmatchedNodes(m_open2.size());
    m_costs += m_expander->calcMissingParentCosts(m_assoc1to2, m_assoc2to1, m_parentCostsLater);
    while (!m_open2.isEmpty())
        m_assoc2to1.insert(m_open2.takeFirst(), NULL_NODE);
}

void Path::expand(PriorityQueue<QSharedPointer<Path>>& queue) const
{
    if (m_open1.isEmpty())
        return;
    const int u = m_open1.first();
    const auto push = [&](int v) {
        const auto next = QSharedPointer<Path>::create(*this);
        next->associate(u, v);
        queue.push(next, priorityOf(next->getCosts()));
    };
    for (const int v : m_open2)
        push(v);
    push(NULL_NODE);
}

bool Path::associated(int node, TreeId tree) const
{
    switch (tree) {
    case 1:
        return m_assoc1to2.value(node, NULL_NODE) == NULL_NODE;
    case 2:
        return m_assoc2to1.value(node, NULL_NODE) == NULL_NODE;
    default:
        return false;
    }
}

int Path::association(int node, TreeId tree) const
{
    switch (tree) {
    case 1:
        return m_assoc1to2.value(node, INVALID_NODE);
    case 2:
        return m_assoc2to1.value(node, INVALID_NODE);
    default:
        return INVALID_NODE;
    }
}

bool Path::parentChanged(int node, TreeId tree) const
{
    if (tree == 1 && m_assoc1to2.contains(node))
        return m_expander->parentChanged(node, m_assoc1to2, m_assoc2to1);
    if (tree == 2 && m_assoc2to1.contains(node))
        return m_expander->parentChanged(m_assoc2to1.value(node), m_assoc1to2, m_assoc2to1);
    return false;
}

void Path::printMe() const
{
    QList<int> nodes = m_assoc1to2.keys();
    std::sort(nodes.begin(), nodes.end());
    for (const int node : std::as_const(nodes))
        qDebug() << node << "->" << m_assoc1to2.value(node);
    QList<int> others = m_assoc2to1.keys();
    std::sort(others.begin(), others.end());
    for (const int node : std::as_const(others)) {
        if (m_assoc2to1.value(node) == NULL_NODE)
            qDebug() << NULL_NODE << "->" << node;
    }
    qDebug() << "costs" << m_costs << "open" << m_open1.size() << m_open2.size();
}

} // namespace lorix
