// SPDX-License-Identifier: BSD-3-Clause
#include <lorix/query/backjumping.h>
#include <lorix/query/querycandidate.h>
#include <lorix/query/querysearch.h>
#include <lorix/query/searchproblem.h>

#include <algorithm>
#include <numeric>

namespace lorix {

namespace {

// Puts variables together that clauses connect.
class Components
{
public:
    explicit Components(const SearchProblem& problem)
        : m_problem(problem), m_parent(problem.variables.size())
    {
        std::iota(m_parent.begin(), m_parent.end(), 0);
        for (const SearchProblem::Clause& clause : problem.clauses) {
            for (const int variable : clause.scope)
                m_parent[root(variable)] = root(clause.scope.front());
        }
    }

    /// Variables of each component, ascending, without those bound already.
    std::vector<std::vector<int>> list()
    {
        std::vector<std::vector<int>> members(m_parent.size());
        for (size_t i = 0; i < members.size(); ++i) {
            if (m_problem.variables[i].bound < 0)
                members[root(static_cast<int>(i))].push_back(static_cast<int>(i));
        }
        const auto empty = std::remove_if(members.begin(), members.end(),
                                          [](const auto& group) { return group.empty(); });
        members.erase(empty, members.end());
        return members;
    }

private:
    size_t root(int variable)
    {
        auto at = static_cast<size_t>(variable);
        while (m_parent[at] != at) {
            m_parent[at] = m_parent[m_parent[at]];
            at = m_parent[at];
        }
        return at;
    }

    const SearchProblem& m_problem;
    std::vector<size_t> m_parent;
};

bool hasName(const SearchProblem& problem, const std::vector<int>& group)
{
    return std::any_of(group.cbegin(), group.cend(),
                       [&](int variable) { return problem.variableAt(variable).named; });
}

} // namespace

std::optional<std::vector<int>> searchBindings(const QueryPlan& plan,
                                               const std::vector<Candidate>& candidates)
{
    SearchProblem problem(plan, candidates);
    if (!problem.prepare())
        return std::nullopt;
    std::vector<int> assignment;
    for (const SearchProblem::Variable& variable : problem.variables)
        assignment.push_back(variable.bound);

    const std::vector<std::vector<int>> components = Components(problem).list();
    if (components.empty())
        return assignment;
    Backjumping backjumping(problem);
    std::vector<int> named;
    int namedGroups = 0;
    for (const std::vector<int>& group : components) {
        // Groups with names are bound together below, since they may not share
        // candidates. But one that cannot be bound alone need not be met again
        // for every binding of the others.
        if (!backjumping.search(group, assignment))
            return std::nullopt;
        if (!hasName(problem, group))
            continue;
        named.insert(named.end(), group.cbegin(), group.cend());
        ++namedGroups;
    }
    std::sort(named.begin(), named.end());
    if (namedGroups > 1 && !backjumping.search(named, assignment))
        return std::nullopt;
    return assignment;
}

QHash<QString, QString> describeBindings(const QueryPlan& plan,
                                         const std::vector<Candidate>& candidates,
                                         const std::vector<int>& assignment)
{
    QHash<QString, QString> descriptions;
    for (size_t i = 0; i < assignment.size(); ++i) {
        const Candidate& candidate = candidates[static_cast<size_t>(assignment[i])];
        descriptions.insert(plan.variableNames[static_cast<qsizetype>(i)],
                            getVariableValue(candidate.table()));
    }
    return descriptions;
}

} // namespace lorix
