// SPDX-License-Identifier: BSD-3-Clause
#include <lorix/tree/lorixdiff.h>

#include <lorix/tree/costmatrix.h>
#include <lorix/tree/dijkstra.h>
#include <lorix/tree/path.h>
#include <lorix/tree/pathexpander.h>

namespace lorix {

namespace {

QHash<int, bool> parentChanges(const Path& path, const QHash<int, int>& table, TreeId tree)
{
    QHash<int, bool> result;
    result.reserve(table.size());
    for (auto entry = table.cbegin(); entry != table.cend(); ++entry)
        result.insert(entry.key(), path.parentChanged(entry.key(), tree));
    return result;
}

} // namespace

LorixDiff::LorixDiff(const WorkflowTree& tree1, const WorkflowTree& tree2, WorkflowstepCosts* costs,
                     QObject* logTarget)
    : LogSource(logTarget), m_tree1(tree1), m_tree2(tree2), m_costs(costs)
{}

QList<LorixDiffResult> LorixDiff::findBestMatches(int count, const SearchLimits& limits,
                                                  SearchOutcome* outcome) const
{
    if (refused())
        return QList<LorixDiffResult>();
    const CostMatrix matrix(m_tree1, m_tree2, m_costs);
    PathExpander expander(&m_tree1, &m_tree2, &matrix);
    const auto start = QSharedPointer<Path>::create(&expander);
    QList<LorixDiffResult> results;
    for (const QSharedPointer<Path>& path :
         Dijkstra<Path>::findPaths(start, count, limits, outcome))
        results.append(convertPath(*path));
    return results;
}

QSharedPointer<LorixDiffResult> LorixDiff::findBestMatch(const SearchLimits& limits,
                                                         SearchOutcome* outcome) const
{
    const QList<LorixDiffResult> results = findBestMatches(1, limits, outcome);
    if (results.isEmpty())
        return QSharedPointer<LorixDiffResult>();
    return QSharedPointer<LorixDiffResult>::create(results.first());
}

float LorixDiff::costsOf(const LorixDiffResult& result) const
{
    if (refused())
        return 0.0F;
    const CostMatrix matrix(m_tree1, m_tree2, m_costs);
    PathExpander expander(&m_tree1, &m_tree2, &matrix);
    Path path(&expander);
    for (const int node : m_tree1.nodeIds())
        path.associate(node, result.associated(node, 1) ? NULL_NODE : result.association(node, 1));
    return path.costs();
}

bool LorixDiff::isWithinBounds() const
{
    const qint64 nodes1 = m_tree1.nodeIds().size();
    const qint64 nodes2 = m_tree2.nodeIds().size();
    return nodes1 == 0 || nodes2 <= m_bounds.comparedPairs / nodes1;
}

bool LorixDiff::refused() const
{
    if (isWithinBounds())
        return false;
    // Comparing changes nothing, but it may have something to say.
    Q_EMIT const_cast<LorixDiff*>(this)->log(
        tr("The histories have more than %1 pairs of steps and are not compared\n")
            .arg(m_bounds.comparedPairs),
        1);
    return true;
}

LorixDiffResult LorixDiff::convertPath(const Path& path) const
{
    LorixDiffResult result;
    result.assoc1to2 = path.assoc1to2();
    result.assoc2to1 = path.assoc2to1();
    result.parentChanged1 = parentChanges(path, result.assoc1to2, 1);
    result.parentChanged2 = parentChanges(path, result.assoc2to1, 2);
    return result;
}

} // namespace lorix
