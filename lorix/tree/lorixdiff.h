// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <lorix/bounds.h>
#include <lorix/export.h>
#include <lorix/runner/logsource.h>
#include <lorix/tree/lorixdiffresult.h>
#include <lorix/tree/quickmatch.h>
#include <lorix/tree/searchlimits.h>
#include <lorix/tree/workflowtree.h>

#include <QList>
#include <QSharedPointer>

namespace lorix {

class Path;
class WorkflowstepCosts;

/// Compares two histories: which step of one is which step of the other.
///
///     WorkflowstepCosts costs;
///     LorixDiff diff(tree1, tree2, &costs);
///     if (const QSharedPointer<LorixDiffResult> best = diff.findBestMatch())
///         show(best->association(node, 1));
///
/// That search is exact, and takes time that grows exponentially with the
/// number of differences. findQuickMatch() answers for histories of any size.
class LORIX_EXPORT LorixDiff : public LogSource
{
    Q_OBJECT

public:
    /// Copies the trees. `costs` is not owned and must outlive the object; when
    /// it is null, the pricing of WorkflowstepCosts itself is used.
    LorixDiff(const WorkflowTree& tree1, const WorkflowTree& tree2, WorkflowstepCosts* costs,
              QObject* logTarget = nullptr);

    void setTree1(const WorkflowTree& tree1) { m_tree1 = tree1; }
    void setTree2(const WorkflowTree& tree2) { m_tree2 = tree2; }
    void setCosts(WorkflowstepCosts* costs) { m_costs = costs; }
    const WorkflowTree& tree1() const { return m_tree1; }
    const WorkflowTree& tree2() const { return m_tree2; }
    WorkflowstepCosts* costs() const { return m_costs; }

    /// Up to `count` complete associations, cheapest first; fewer when there are
    /// no more, or when a limit ends the search, which `outcome` tells.
    QList<LorixDiffResult> findBestMatches(int count, const SearchLimits& limits = SearchLimits(),
                                           SearchOutcome* outcome = nullptr) const;

    /// The cheapest association; null when a limit ended the search before it
    /// was found.
    QSharedPointer<LorixDiffResult> findBestMatch(const SearchLimits& limits = SearchLimits(),
                                                  SearchOutcome* outcome = nullptr) const;

    /// A cheap association in a time that grows with the third power of the
    /// number of steps at most, whatever the differences. It is often the
    /// cheapest, and never claims to be without being it. The same trees give
    /// the same association every time.
    QuickMatch findQuickMatch() const;

    /// What an association of all nodes of tree 1 costs.
    float costsOf(const LorixDiffResult& result) const;

    /// Whether the trees are small enough to be compared. Where they are not,
    /// the operations above warn and give empty results.
    bool isWithinBounds() const;

    /// Bounds for the comparison: `comparedPairs`.
    void setBounds(const Bounds& bounds) { m_bounds = bounds; }
    /// The bounds in force.
    const Bounds& bounds() const { return m_bounds; }

    /// What a complete path says, as a value of its own.
    LorixDiffResult convertPath(const Path& path) const;

private:
    bool refused() const;

    WorkflowTree m_tree1;
    WorkflowTree m_tree2;
    WorkflowstepCosts* m_costs;
    Bounds m_bounds;
};

} // namespace lorix
