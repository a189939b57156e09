// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <lorix/query/candidatereader.h>
#include <lorix/query/queryplan.h>

#include <QHash>
#include <QString>

#include <optional>
#include <vector>

namespace lorix {

/// The first complete binding of the plan's variables in the order of
/// candidates, as one candidate index per variable; the same that trying
/// candidate after candidate finds. The plan must be monotone.
///
/// Candidates that a variable's own clauses rule out are dropped at the start.
/// Variables that no clause connects are searched on their own, named ones
/// together, since they may not share candidates. Every binding narrows the
/// variables that are left over in its clauses, and where one has no candidate
/// left, the search goes back to the binding that took one away.
std::optional<std::vector<int>> searchBindings(const QueryPlan& plan,
                                               const std::vector<Candidate>& candidates);

/// For each variable what getVariableValue() says of its candidate.
QHash<QString, QString> describeBindings(const QueryPlan& plan,
                                         const std::vector<Candidate>& candidates,
                                         const std::vector<int>& assignment);

} // namespace lorix
