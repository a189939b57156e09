// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <lorix/query/candidateset.h>
#include <lorix/query/distinctness.h>
#include <lorix/query/searchproblem.h>

#include <utility>
#include <vector>

namespace lorix {

/// The search over groups of variables that clauses, or being named, connect.
///
/// Variables are bound in ascending order, each to its candidates in order; so
/// the first binding found is the first there is, and skipping what is known
/// to fail does not change it. Every binding narrows the variables that are
/// left over in its clauses; where one has no candidate left, the search goes
/// back to the last binding that took one away.
class Backjumping
{
public:
    explicit Backjumping(SearchProblem& problem);

    /// Writes the candidates of the variables of `group` (ascending); false if
    /// they cannot be bound. No clause may reach outside the group.
    bool search(const std::vector<int>& group, std::vector<int>& assignment);

private:
    using Levels = std::vector<int>; // Ascending.

    struct Domain
    {
        CandidateSet candidates;
        int count = 0;
        Levels pruners; ///< Levels whose bindings took candidates away.
    };

    struct ClauseState
    {
        int unbound = 0;
        bool satisfied = false;
    };

    struct Level
    {
        int candidate = -1;
        Levels conflicts; ///< Earlier levels that failures here are owed to.
        size_t clauseChanges = 0;
        size_t domainChanges = 0;
    };

    int& boundTo(int variable) { return m_bound[static_cast<size_t>(variable)]; }
    Domain& domainOf(int variable) { return m_domains[static_cast<size_t>(variable)]; }

    void enterGroup(const std::vector<int>& group);
    bool bindGroup();
    bool narrowPairs();
    bool narrowPair(int clause, bool& changed);
    int nextCandidate(size_t level);
    bool propagate(size_t level, Levels& conflicts);
    bool propagateClause(const SearchProblem::ClauseUse& use, Levels& conflicts);
    bool narrow(int clause, int variable, Levels& conflicts);
    bool isSatisfied(const std::vector<int>& literals);
    CandidateSet satisfying(int clause, int variable);
    bool namedStayDistinct();
    void bind(size_t level, int candidate);
    void unbind(size_t level);

    SearchProblem& m_problem;
    std::vector<int> m_group;
    std::vector<int> m_named; // Those of the group.
    std::vector<Level> m_levels;
    std::vector<int> m_levelOf;         // Per variable.
    std::vector<int> m_bound;           // Candidate per variable, -1 while unbound.
    std::vector<Domain> m_domains;      // Per variable.
    std::vector<ClauseState> m_clauses; // Per clause.
    std::vector<bool> m_queued;         // Per clause.
    std::vector<std::pair<int, ClauseState>> m_clauseChanges;
    std::vector<std::pair<int, Domain>> m_domainChanges;
    CandidateSet m_used;       // By named variables.
    std::vector<int> m_usedBy; // Level, per candidate.
    Distinctness m_distinctness;
    qint64 m_pairBudget;
};

} // namespace lorix
