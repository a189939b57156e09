// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <lorix/query/candidateset.h>
#include <lorix/query/candidatevalues.h>
#include <lorix/query/queryplan.h>

#include <vector>

namespace lorix {

/// What is left of a plan for one history once each variable's own clauses and
/// the literals that no candidate makes true are dealt with. It has the same
/// bindings as the plan.
class SearchProblem
{
public:
    /// Several variables, of which one makes one of the literals true.
    struct Clause
    {
        std::vector<int> literals;
        std::vector<int> scope; ///< Variables, ascending, at least two.
    };

    /// A clause and those of its literals that mention one variable.
    struct ClauseUse
    {
        int clause;
        std::vector<int> literals;
    };

    /// A variable of the query and what it may still stand for.
    struct Variable
    {
        bool named = true;
        CandidateSet candidates;
        std::vector<ClauseUse> uses;
        /// The first candidate of an unnamed variable that nothing connects to
        /// others, else -1.
        int bound = -1;
    };

    SearchProblem(const QueryPlan& plan, const std::vector<Candidate>& candidates);

    /// False if a variable has no candidate, or a clause no literal left.
    bool prepare();

    const QueryPlan::Literal& literalAt(int literal) const
    {
        return m_plan.literals[static_cast<size_t>(literal)];
    }
    const Clause& clauseAt(int clause) const { return clauses[static_cast<size_t>(clause)]; }
    Variable& variableAt(int variable) { return variables[static_cast<size_t>(variable)]; }
    const Variable& variableAt(int variable) const
    {
        return variables[static_cast<size_t>(variable)];
    }

    CandidateValues values;
    std::vector<Variable> variables;
    std::vector<Clause> clauses;

private:
    enum class Outlook : quint8 { Unknown, NeverTrue, Open, AlwaysTrue };

    bool findCandidates(int variable);
    bool satisfiesOwnClauses(int variable, int candidate);
    Outlook outlook(int literal);
    Outlook outlookOfOne(int literal);
    Outlook outlookOfTwo(int literal);
    bool addClause(const QueryPlan::Clause& clause);
    void addUses(int clause);
    bool bindFreeVariable(Variable& variable);

    const QueryPlan& m_plan;
    std::vector<Outlook> m_outlooks; // Per literal.
    qint64 m_budget;
};

} // namespace lorix
