// SPDX-License-Identifier: BSD-3-Clause
#include <lorix/query/searchproblem.h>

#include <algorithm>
#include <utility>

namespace lorix {

namespace {

// Words that looking at literals of two variables may touch, some tenths of a
// second; what is not looked at stays in the search.
constexpr qint64 outlookBudget = 200 * 1000 * 1000;

} // namespace

SearchProblem::SearchProblem(const QueryPlan& plan, const std::vector<Candidate>& candidates)
    : values(plan, candidates), variables(plan.variables.size()), m_plan(plan),
      m_outlooks(plan.literals.size(), Outlook::Unknown), m_budget(outlookBudget)
{}

bool SearchProblem::prepare()
{
    for (size_t i = 0; i < variables.size(); ++i) {
        if (!findCandidates(static_cast<int>(i)))
            return false;
    }
    for (const QueryPlan::Clause& clause : m_plan.clauses) {
        if (clause.scope.size() > 1 && !addClause(clause))
            return false;
    }
    return std::all_of(variables.begin(), variables.end(),
                       [this](Variable& variable) { return bindFreeVariable(variable); });
}

bool SearchProblem::satisfiesOwnClauses(int variable, int candidate)
{
    const auto& own = m_plan.variables[static_cast<size_t>(variable)].ownClauses;
    return std::all_of(own.cbegin(), own.cend(), [&](int clause) {
        const auto& literals = m_plan.clauses[static_cast<size_t>(clause)].literals;
        return std::any_of(literals.cbegin(), literals.cend(),
                           [&](int literal) { return values.holds(literal, candidate); });
    });
}

bool SearchProblem::findCandidates(int variable)
{
    const QueryPlan::VariableUse& use = m_plan.variables[static_cast<size_t>(variable)];
    Variable& found = variableAt(variable);
    found.named = use.named;
    if (use.named || use.hasSharedClauses)
        found.candidates = CandidateSet(values.size());
    bool any = false;
    for (int candidate = 0; candidate < values.size(); ++candidate) {
        if (!satisfiesOwnClauses(variable, candidate))
            continue;
        any = true;
        if (!use.named && !use.hasSharedClauses) {
            found.bound = candidate;
            break;
        }
        found.candidates.insert(candidate);
    }
    return any;
}

SearchProblem::Outlook SearchProblem::outlook(int literal)
{
    Outlook& known = m_outlooks[static_cast<size_t>(literal)];
    if (known == Outlook::Unknown)
        known = literalAt(literal).isUnary() ? outlookOfOne(literal) : outlookOfTwo(literal);
    return known;
}

SearchProblem::Outlook SearchProblem::outlookOfOne(int literal)
{
    const CandidateSet& candidates = variableAt(literalAt(literal).onlyVariable()).candidates;
    CandidateSet left = values.satisfying(literal);
    left.intersect(candidates);
    if (left.isEmpty())
        return Outlook::NeverTrue;
    return left == candidates ? Outlook::AlwaysTrue : Outlook::Open;
}

SearchProblem::Outlook SearchProblem::outlookOfTwo(int literal)
{
    const CandidateSet& left = variableAt(literalAt(literal).left.variable).candidates;
    const CandidateSet& right = variableAt(literalAt(literal).right.variable).candidates;
    const qint64 cost = values.costOfRows(literal, 1);
    for (int c = left.next(-1); c >= 0; c = left.next(c)) {
        m_budget -= cost;
        if (m_budget < 0)
            return Outlook::Open;
        CandidateSet row(values.size());
        values.uniteSatisfying(literal, true, c, row);
        row.intersect(right);
        if (!row.isEmpty())
            return Outlook::Open;
    }
    return Outlook::NeverTrue;
}

bool SearchProblem::addClause(const QueryPlan::Clause& clause)
{
    Clause open;
    for (const int number : clause.literals) {
        const Outlook expected = outlook(number);
        if (expected == Outlook::AlwaysTrue)
            return true;
        if (expected == Outlook::NeverTrue)
            continue;
        open.literals.push_back(number);
        for (const int variable :
             {literalAt(number).left.variable, literalAt(number).right.variable}) {
            if (variable >= 0)
                open.scope.push_back(variable);
        }
    }
    std::sort(open.scope.begin(), open.scope.end());
    open.scope.erase(std::unique(open.scope.begin(), open.scope.end()), open.scope.end());
    if (open.scope.empty())
        return false;
    if (open.scope.size() > 1) {
        clauses.push_back(std::move(open));
        addUses(static_cast<int>(clauses.size() - 1));
        return true;
    }
    CandidateSet satisfying(values.size());
    for (const int number : open.literals)
        satisfying.unite(values.satisfying(number));
    CandidateSet& candidates = variableAt(open.scope.front()).candidates;
    candidates.intersect(satisfying);
    return !candidates.isEmpty();
}

void SearchProblem::addUses(int clause)
{
    for (const int number : clauseAt(clause).literals) {
        const QueryPlan::Literal& literal = literalAt(number);
        for (const int variable : {literal.left.variable, literal.right.variable}) {
            if (variable < 0)
                continue;
            auto& uses = variableAt(variable).uses;
            if (uses.empty() || uses.back().clause != clause)
                uses.push_back({clause, {}});
            if (uses.back().literals.empty() || uses.back().literals.back() != number)
                uses.back().literals.push_back(number);
        }
    }
}

bool SearchProblem::bindFreeVariable(Variable& variable)
{
    if (variable.bound >= 0)
        return true;
    const int first = variable.candidates.next(-1);
    if (!variable.named && variable.uses.empty())
        variable.bound = first;
    return first >= 0;
}

} // namespace lorix
