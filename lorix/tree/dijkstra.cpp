// SPDX-License-Identifier: BSD-3-Clause
#include <lorix/tree/dijkstra.h>

#include <lorix/tree/compactsearch.h>
#include <lorix/tree/densetrees.h>

namespace lorix {

template <>
QList<QSharedPointer<Path>> Dijkstra<Path>::findPaths(const QSharedPointer<Path>& start, int count,
                                                      const SearchLimits& limits,
                                                      SearchOutcome* outcome)
{
    SearchOutcome ignored;
    SearchOutcome& told = outcome ? *outcome : ignored;
    if (!start->reachedGoal()) {
        if (const std::optional<DenseTrees> trees = DenseTrees::from(*start))
            return CompactSearch(start, *trees).findPaths(count, limits, told);
    }
    return findPathsStepwise(start, count, limits, told);
}

} // namespace lorix
