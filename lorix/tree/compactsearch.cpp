// SPDX-License-Identifier: BSD-3-Clause
#include <lorix/tree/compactsearch.h>

#include <QDebug>

namespace lorix {

CompactSearch::CompactSearch(const QSharedPointer<Path>& start, const DenseTrees& trees)
    : m_start(start), m_trees(trees), m_estimate(trees), m_state(trees)
{}

QList<QSharedPointer<Path>> CompactSearch::findPaths(int count, const SearchLimits& limits,
                                                     SearchOutcome& outcome)
{
    QList<QSharedPointer<Path>> found;
    m_queue.push({noParent, 0}, 0);
    while (!m_queue.isEmpty()) {
        outcome.queued = qMax(outcome.queued, qint64(m_queue.size()));
        const Waiting path = m_queue.pop();
        ++outcome.taken;
        if (depthOf(path) == m_trees.open1.size()) {
            qDebug() << "FINISHED";
            qDebug() << outcome.taken << "nodes expanded";
            found.append(completed(path));
            found.last()->printMe();
            if (found.size() >= count)
                break;
            continue;
        }
        if ((limits.expansions > 0 && outcome.expansions >= limits.expansions) ||
            (limits.queued > 0 && qint64(m_queue.size()) >= limits.queued) ||
            m_expanded.size() >= noParent || (limits.cancel && limits.cancel())) {
            outcome.stopped = true;
            break;
        }
        load(path);
        expand();
        ++outcome.expansions;
    }
    return found;
}

size_t CompactSearch::depthOf(const Waiting& path) const
{
    return path.parent == noParent ? 0 : m_expanded[path.parent].depth + 1;
}

// Makes m_state that of the path, and the path the last of m_expanded.
void CompactSearch::load(const Waiting& path)
{
    for (size_t depth = m_loaded.size(); depth-- > 0;)
        m_state.dissociate(m_trees.open1[depth], m_loaded[depth]);
    const size_t depth = depthOf(path);
    m_loaded.resize(depth);
    float costs = m_start->costs();
    if (depth > 0) {
        m_loaded[depth - 1] = path.partner;
        quint32 at = path.parent;
        for (size_t i = depth - 1; i-- > 0; at = m_expanded[at].parent)
            m_loaded[i] = m_expanded[at].partner;
        for (size_t i = 0; i + 1 < depth; ++i)
            m_state.associate(m_trees.open1[i], m_loaded[i]);
        const int u = m_trees.open1[depth - 1];
        costs = m_expanded[path.parent].costs + m_state.costForAssociation(u, path.partner);
        m_state.associate(u, path.partner);
    }
    m_expanded.push_back({path.parent, path.partner, costs, quint32(depth)});
}

void CompactSearch::expand()
{
    const Expanded& parent = m_expanded.back();
    const float costs = parent.costs;
    const int u = m_trees.open1[parent.depth];
    m_open2.clear();
    for (const int v : m_trees.open2) {
        if (m_state.partners2[size_t(v)] == DenseTrees::absent)
            m_open2.push_back(v);
    }
    m_estimate.compute(parent.depth, m_open2);
    const int expected = m_state.expectedParent(u);
    for (size_t i = 0; i < m_open2.size(); ++i) {
        const int v = m_open2[i];
        float added = m_trees.cost(u, v);
        if (m_state.wrongParent(expected, v))
            added += m_trees.wrongParent;
        pushChild(u, v, costs + added, m_estimate.withPartner(i));
    }
    pushChild(u, DenseTrees::none, costs + m_trees.unmatched, m_estimate.withoutPartner());
}

void CompactSearch::pushChild(int u, int v, float costs, float estimate)
{
    const size_t depth = m_loaded.size() + 1;
    if (depth == m_trees.open1.size()) {
        const size_t leftOver = m_open2.size() - (v == DenseTrees::none ? 0 : 1);
        m_state.associate(u, v);
        costs += float(int(leftOver)) * m_trees.unmatched;
        costs += m_state.missingParentCosts();
        m_state.dissociate(u, v);
        estimate = 0.0F;
    }
    m_queue.push({quint32(m_expanded.size() - 1), v}, priorityOf(costs + estimate));
}

QSharedPointer<Path> CompactSearch::completed(const Waiting& path) const
{
    std::vector<int> partners;
    quint32 at = path.parent;
    for (int partner = path.partner; at != noParent; at = m_expanded[at].parent) {
        partners.push_back(partner);
        partner = m_expanded[at].partner;
    }
    auto result = QSharedPointer<Path>::create(*m_start);
    for (size_t i = partners.size(); i-- > 0;) {
        const int v = partners[i];
        const int u = m_trees.open1[partners.size() - 1 - i];
        result->associate(m_trees.ids1[size_t(u)],
                          v == DenseTrees::none ? NULL_NODE : m_trees.ids2[size_t(v)]);
    }
    return result;
}

} // namespace lorix
