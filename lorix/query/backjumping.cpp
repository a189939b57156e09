// SPDX-License-Identifier: BSD-3-Clause
#include <lorix/query/backjumping.h>

#include <algorithm>
#include <deque>
#include <iterator>

namespace lorix {

namespace {

// Words that narrowing pairs of variables before the search may touch: some
// tenths of a second. It saves time, the answer does not need it.
constexpr qint64 pairBudget = 400 * 1000 * 1000;

void addLevel(std::vector<int>& levels, int level)
{
    const auto at = std::lower_bound(levels.begin(), levels.end(), level);
    if (at == levels.end() || *at != level)
        levels.insert(at, level);
}

void addLevels(std::vector<int>& levels, const std::vector<int>& more)
{
    std::vector<int> all;
    all.reserve(levels.size() + more.size());
    std::set_union(levels.cbegin(), levels.cend(), more.cbegin(), more.cend(),
                   std::back_inserter(all));
    levels.swap(all);
}

} // namespace

Backjumping::Backjumping(SearchProblem& problem)
    : m_problem(problem), m_levelOf(problem.variables.size(), -1),
      m_bound(problem.variables.size(), -1), m_domains(problem.variables.size()),
      m_clauses(problem.clauses.size()), m_queued(problem.clauses.size(), false),
      m_used(problem.values.size()), m_usedBy(static_cast<size_t>(problem.values.size()), -1),
      m_distinctness(problem.variables.size(), problem.values.size()), m_pairBudget(pairBudget)
{}

bool Backjumping::search(const std::vector<int>& group, std::vector<int>& assignment)
{
    enterGroup(group);
    const bool found = narrowPairs() && namedStayDistinct() && bindGroup();
    for (const int variable : group) {
        if (found)
            assignment[static_cast<size_t>(variable)] = boundTo(variable);
        domainOf(variable) = Domain();
    }
    // Groups may be searched again, as parts of larger ones.
    for (size_t level = found ? group.size() : 0; level > 0; --level)
        unbind(level - 1);
    return found;
}

void Backjumping::enterGroup(const std::vector<int>& group)
{
    m_group = group;
    m_named.clear();
    m_levels.assign(group.size(), Level());
    for (size_t level = 0; level < group.size(); ++level) {
        const int variable = group[level];
        const SearchProblem::Variable& source = m_problem.variableAt(variable);
        m_levelOf[static_cast<size_t>(variable)] = static_cast<int>(level);
        domainOf(variable) = {source.candidates, source.candidates.count(), {}};
        if (source.named)
            m_named.push_back(variable);
        for (const SearchProblem::ClauseUse& use : source.uses)
            m_clauses[static_cast<size_t>(use.clause)] = {
                static_cast<int>(m_problem.clauseAt(use.clause).scope.size()), false};
    }
}

bool Backjumping::bindGroup()
{
    size_t level = 0;
    while (level < m_group.size()) {
        const int candidate = nextCandidate(level);
        if (candidate >= 0) {
            bind(level, candidate);
            if (!propagate(level, m_levels[level].conflicts))
                unbind(level);
            else if (++level < m_group.size())
                m_levels[level] = Level();
            continue;
        }
        Levels conflicts = std::move(m_levels[level].conflicts);
        addLevels(conflicts, domainOf(m_group[level]).pruners);
        const size_t culprit = conflicts.empty() ? 0 : static_cast<size_t>(conflicts.back());
        const bool hopeless = conflicts.empty();
        while (level > culprit)
            unbind(--level);
        if (hopeless)
            return false;
        conflicts.pop_back();
        addLevels(m_levels[level].conflicts, conflicts);
    }
    return true;
}

// The next candidate of the level's variable; who holds those that others have
// goes to the level's conflicts.
int Backjumping::nextCandidate(size_t level)
{
    Level& current = m_levels[level];
    const bool named = m_problem.variableAt(m_group[level]).named;
    const CandidateSet& candidates = domainOf(m_group[level]).candidates;
    int candidate = candidates.next(current.candidate);
    while (candidate >= 0 && named && m_used.contains(candidate)) {
        addLevel(current.conflicts, m_usedBy[static_cast<size_t>(candidate)]);
        candidate = candidates.next(candidate);
    }
    return candidate;
}

void Backjumping::bind(size_t level, int candidate)
{
    Level& current = m_levels[level];
    current.candidate = candidate;
    current.clauseChanges = m_clauseChanges.size();
    current.domainChanges = m_domainChanges.size();
    boundTo(m_group[level]) = candidate;
    if (m_problem.variableAt(m_group[level]).named) {
        m_used.insert(candidate);
        m_usedBy[static_cast<size_t>(candidate)] = static_cast<int>(level);
    }
}

void Backjumping::unbind(size_t level)
{
    const Level& current = m_levels[level];
    for (; m_clauseChanges.size() > current.clauseChanges; m_clauseChanges.pop_back())
        m_clauses[static_cast<size_t>(m_clauseChanges.back().first)] =
            m_clauseChanges.back().second;
    for (; m_domainChanges.size() > current.domainChanges; m_domainChanges.pop_back())
        domainOf(m_domainChanges.back().first) = std::move(m_domainChanges.back().second);
    if (m_problem.variableAt(m_group[level]).named)
        m_used.remove(current.candidate);
    boundTo(m_group[level]) = -1;
}

// Carries a new binding to the clauses of its variable. On a failure, adds the
// earlier levels that it is owed to.
bool Backjumping::propagate(size_t level, Levels& conflicts)
{
    const SearchProblem::Variable& variable = m_problem.variableAt(m_group[level]);
    bool possible = std::all_of(variable.uses.cbegin(), variable.uses.cend(),
                                [&](const auto& use) { return propagateClause(use, conflicts); });
    if (possible && variable.named && !namedStayDistinct()) {
        // Which of the bindings leave too few candidates is not worth finding out.
        conflicts.clear();
        for (size_t i = 0; i < level; ++i)
            conflicts.push_back(static_cast<int>(i));
        possible = false;
    }
    const auto self = std::lower_bound(conflicts.begin(), conflicts.end(), static_cast<int>(level));
    conflicts.erase(self, conflicts.end());
    return possible;
}

bool Backjumping::propagateClause(const SearchProblem::ClauseUse& use, Levels& conflicts)
{
    ClauseState& state = m_clauses[static_cast<size_t>(use.clause)];
    m_clauseChanges.emplace_back(use.clause, state);
    --state.unbound;
    if (state.satisfied)
        return true;
    state.satisfied = isSatisfied(use.literals);
    if (state.satisfied || state.unbound != 1)
        return true;
    const std::vector<int>& scope = m_problem.clauseAt(use.clause).scope;
    const auto left = std::find_if(scope.cbegin(), scope.cend(),
                                   [&](int variable) { return boundTo(variable) < 0; });
    return narrow(use.clause, *left, conflicts);
}

// Whether one of the literals is decided, and true.
bool Backjumping::isSatisfied(const std::vector<int>& literals)
{
    return std::any_of(literals.cbegin(), literals.cend(), [&](int number) {
        const QueryPlan::Literal& literal = m_problem.literalAt(number);
        if (literal.isUnary()) {
            const int only = boundTo(literal.onlyVariable());
            return only >= 0 && m_problem.values.holds(number, only);
        }
        const int left = boundTo(literal.left.variable);
        const int right = boundTo(literal.right.variable);
        return left >= 0 && right >= 0 && m_problem.values.holds(number, left, right);
    });
}

// The candidates for a clause's only unbound variable that make it true, when
// nothing that is bound does.
CandidateSet Backjumping::satisfying(int clause, int variable)
{
    CandidateSet result(m_problem.values.size());
    for (const int number : m_problem.clauseAt(clause).literals) {
        const QueryPlan::Literal& literal = m_problem.literalAt(number);
        if (!literal.mentions(variable))
            continue;
        if (literal.isUnary()) {
            result.unite(m_problem.values.satisfying(number));
        } else {
            const bool boundLeft = literal.right.variable == variable;
            const int other = boundLeft ? literal.left.variable : literal.right.variable;
            m_problem.values.uniteSatisfying(number, boundLeft, boundTo(other), result);
        }
    }
    return result;
}

bool Backjumping::narrow(int clause, int variable, Levels& conflicts)
{
    Domain& domain = domainOf(variable);
    CandidateSet left = satisfying(clause, variable);
    left.intersect(domain.candidates);
    if (left == domain.candidates)
        return true;
    m_domainChanges.emplace_back(variable, domain);
    domain.candidates = std::move(left);
    domain.count = domain.candidates.count();
    for (const int other : m_problem.clauseAt(clause).scope) {
        if (other != variable)
            addLevel(domain.pruners, m_levelOf[static_cast<size_t>(other)]);
    }
    if (domain.count > 0)
        return true;
    addLevels(conflicts, domain.pruners);
    return false;
}

// Whether the named variables that are unbound can still be bound to different
// candidates. Those with as many candidates as there are named variables can.
bool Backjumping::namedStayDistinct()
{
    std::vector<int> tight;
    std::vector<const CandidateSet*> domains;
    for (const int variable : m_named) {
        const Domain& domain = domainOf(variable);
        if (boundTo(variable) >= 0 || domain.count >= static_cast<int>(m_named.size()))
            continue;
        tight.push_back(variable);
        domains.push_back(&domain.candidates);
    }
    return tight.empty() || m_distinctness.isPossible(tight, domains, m_used);
}

// Makes pairs of variables arc consistent. False if one has no candidate left.
bool Backjumping::narrowPairs()
{
    std::deque<int> queue;
    const auto enqueue = [&](int variable) {
        for (const SearchProblem::ClauseUse& use : m_problem.variableAt(variable).uses) {
            const auto clause = static_cast<size_t>(use.clause);
            if (m_problem.clauses[clause].scope.size() == 2 && !m_queued[clause]) {
                m_queued[clause] = true;
                queue.push_back(use.clause);
            }
        }
    };
    for (const int variable : m_group)
        enqueue(variable);
    bool possible = true;
    while (!queue.empty()) {
        const int clause = queue.front();
        queue.pop_front();
        m_queued[static_cast<size_t>(clause)] = false;
        bool changed = false;
        possible = possible && narrowPair(clause, changed);
        for (const int variable : m_problem.clauseAt(clause).scope) {
            if (possible && changed)
                enqueue(variable);
        }
    }
    return possible;
}

// Drops the candidates of a clause's two variables that no candidate of the
// other one goes with.
bool Backjumping::narrowPair(int clause, bool& changed)
{
    const SearchProblem::Clause& pair = m_problem.clauseAt(clause);
    const int first = pair.scope.front();
    const int second = pair.scope.back();
    Domain& a = domainOf(first);
    Domain& b = domainOf(second);
    qint64 cost = 0;
    for (const int number : pair.literals)
        cost += m_problem.values.costOfRows(number, a.count);
    if (cost > m_pairBudget)
        return true;
    m_pairBudget -= cost;
    const bool distinct = m_problem.variableAt(first).named && m_problem.variableAt(second).named;
    CandidateSet keptA(m_problem.values.size());
    CandidateSet keptB(m_problem.values.size());
    for (int c = a.candidates.next(-1); c >= 0; c = a.candidates.next(c)) {
        boundTo(first) = c;
        CandidateSet row = b.candidates;
        if (!isSatisfied(pair.literals))
            row.intersect(satisfying(clause, second));
        if (distinct)
            row.remove(c);
        if (row.isEmpty())
            continue;
        keptA.insert(c);
        keptB.unite(row);
    }
    boundTo(first) = -1;
    changed = !(keptA == a.candidates) || !(keptB == b.candidates);
    a = {keptA, keptA.count(), {}};
    b = {keptB, keptB.count(), {}};
    return a.count > 0 && b.count > 0;
}

} // namespace lorix
