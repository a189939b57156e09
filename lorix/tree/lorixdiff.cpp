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
