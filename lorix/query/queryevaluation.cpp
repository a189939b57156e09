// SPDX-License-Identifier: BSD-3-Clause
#include <lorix/query/candidatereader.h>
#include <lorix/query/querycandidate.h>
#include <lorix/query/queryevaluation.h>
#include <lorix/query/queryoperators.h>
#include <lorix/query/querysearch.h>

#include <algorithm>
#include <vector>

using namespace lorix;

namespace {

using BinaryOperator = ReturnValue (*)(const ReturnValue&, const ReturnValue&);

BinaryOperator operatorNamed(const QString& name)
{
    static const QHash<QString, BinaryOperator> table = {
        {QStringLiteral("=="), evaluateEq},
        {QStringLiteral("!="), evaluateNEq},
        {QStringLiteral("%matches"), evaluateMatches},
        {QStringLiteral("%contains"), evaluateContains},
        {QStringLiteral("%isapprox"), evaluateIsApprox},
        {QStringLiteral(">"), evaluateGreater},
        {QStringLiteral(">="), evaluateGreaterEq},
        {QStringLiteral("<"), evaluateLess},
        {QStringLiteral("<="), evaluateLessEq},
        {QStringLiteral("&&"), evaluateAnd},
        {QStringLiteral("||"), evaluateOr},
    };
    return table.value(name, nullptr);
}

EvaluationResult toResult(const ReturnValue& value)
{
    if (value.isUnassignedVariable())
        return EvaluationUndecided;
    return value.toBool() ? EvaluationTrue : EvaluationFalse;
}

// The plain search with one state and a record of what to restore, so that the
// number of variables costs no stack.
class PlainSearch
{
public:
    PlainSearch(const StaticParams& statics, DynamicParams& dynamics)
        : m_statics(statics), m_dynamics(dynamics)
    {}

    /// False if a clause became false.
    bool evaluate(int variable)
    {
        const auto range =
            m_statics.variableLocations.equal_range(m_statics.variableNames.at(variable));
        for (auto it = range.first; it != range.second; ++it) {
            const CNFLiteralIndex& place = it.value();
            QList<EvaluationResult>& clause = m_dynamics.results[place.disjunctionIndex()];
            EvaluationResult& result = clause[place.literalIndex()];
            m_changes.push_back({place, result});
            result = evaluateLiteral(m_statics, m_dynamics, m_statics.cnf.literalAt(place));
            if (!disjunctionIsSatisfiable(clause))
                return false;
        }
        return true;
    }

    bool bindAll()
    {
        if (!enter(0))
            return true;
        while (!m_levels.empty()) {
            release();
            Level& level = m_levels.back();
            if (!bindNext(level)) {
                m_levels.pop_back();
            } else if (evaluate(level.variable) && !enter(level.variable + 1)) {
                return true;
            }
        }
        return false;
    }

private:
    struct Change
    {
        CNFLiteralIndex place;
        EvaluationResult before;
    };

    struct Level
    {
        int variable;
        int candidate;
        size_t changes; // Made before this level bound anything.
    };

    // False if no variable from `first` on is unbound.
    bool enter(int first)
    {
        const auto begin = m_dynamics.assignment.cbegin();
        const auto end = m_dynamics.assignment.cend();
        const auto next = std::find_if(begin + first, end, [](int c) { return c < 0; });
        if (next == end)
            return false;
        m_levels.push_back({static_cast<int>(next - begin), -1, m_changes.size()});
        return true;
    }

    bool isNamed(int variable) const
    {
        return !m_statics.variableNames.at(variable).startsWith(u'@');
    }

    // Undoes what the innermost level did last.
    void release()
    {
        const Level& level = m_levels.back();
        while (m_changes.size() > level.changes) {
            const auto [place, before] = m_changes.back();
            m_changes.pop_back();
            m_dynamics.results[place.disjunctionIndex()][place.literalIndex()] = before;
        }
        if (level.candidate < 0)
            return;
        if (isNamed(level.variable))
            m_dynamics.candidateUsed[level.candidate] = false;
        m_dynamics.assignment[level.variable] = -1;
    }

    bool bindNext(Level& level)
    {
        const bool named = isNamed(level.variable);
        const auto count = static_cast<int>(m_statics.candidates.size());
        do {
            ++level.candidate;
        } while (level.candidate < count && named && m_dynamics.candidateUsed[level.candidate]);
        if (level.candidate >= count)
            return false;
        if (named)
            m_dynamics.candidateUsed[level.candidate] = true;
        m_dynamics.assignment[level.variable] = level.candidate;
        return true;
    }

    const StaticParams& m_statics;
    DynamicParams& m_dynamics;
    std::vector<Change> m_changes;
    std::vector<Level> m_levels;
};

} // namespace

bool davisPutnam(const StaticParams& statics, DynamicParams dynamics,
                 QHash<QString, QString>& matches)
{
    if (!PlainSearch(statics, dynamics).bindAll())
        return false;
    matches = getVariableAssociations(statics, dynamics);
    return true;
}

bool evaluateVariables(const StaticParams& statics, DynamicParams dynamics, int variable,
                       QHash<QString, QString>& matches)
{
    if (!PlainSearch(statics, dynamics).evaluate(variable))
        return false;
    return davisPutnam(statics, std::move(dynamics), matches);
}

int findNextVariableIndex(const DynamicParams& dynamics)
{
    for (int i = 0; i < dynamics.assignment.size(); ++i) {
        if (dynamics.assignment[i] < 0)
            return i;
    }
    return -1;
}

bool disjunctionIsSatisfiable(const QList<EvaluationResult>& results)
{
    return std::any_of(results.cbegin(), results.cend(),
                       [](EvaluationResult result) { return result != EvaluationFalse; });
}

EvaluationResult evaluateLiteral(const StaticParams& statics, const DynamicParams& dynamics,
                                 const CNFLiteral& literal)
{
    EvaluationResult result = EvaluationFalse;
    if (literal.isPredicate())
        result = evaluatePredicate(statics, dynamics, literal);
    else if (literal.isBoolVariable())
        result = evaluateBoolVariable(statics, dynamics, literal);
    if (!literal.isNegated() || result == EvaluationUndecided)
        return result;
    return result == EvaluationTrue ? EvaluationFalse : EvaluationTrue;
}

EvaluationResult evaluateBoolVariable(const StaticParams& statics, const DynamicParams& dynamics,
                                      const CNFLiteral& literal)
{
    return toResult(operandToReturnValue(statics, dynamics, literal.boolVariable()));
}

EvaluationResult evaluatePredicate(const StaticParams& statics, const DynamicParams& dynamics,
                                   const CNFLiteral& literal)
{
    const BinaryOperator op = operatorNamed(literal.op());
    if (!op)
        return EvaluationFalse;
    return toResult(op(operandToReturnValue(statics, dynamics, literal.left()),
                       operandToReturnValue(statics, dynamics, literal.right())));
}

ReturnValue operandToReturnValue(const StaticParams& statics, const DynamicParams& dynamics,
                                 const CNFOperand& operand)
{
    if (operand.isString())
        return ReturnValue::fromString(operand.string());
    if (!operand.isVariable())
        return ReturnValue(InvalidOperand, QString());
    const qsizetype variable = statics.variableNames.indexOf(operand.variableName());
    const int candidate = variable < 0 ? -1 : dynamics.assignment.at(variable);
    if (candidate < 0)
        return ReturnValue(UnassignedVariable, QString());
    return statics.candidates.at(candidate).value(operand.variableAttribute().toLower(),
                                                  ReturnValue(NoSuchAttribute, QString()));
}

QHash<QString, QString> getVariableAssociations(const StaticParams& statics,
                                                const DynamicParams& dynamics)
{
    QHash<QString, QString> associations;
    for (int i = 0; i < statics.variableNames.size(); ++i) {
        const int candidate = dynamics.assignment.at(i);
        associations.insert(statics.variableNames.at(i),
                            candidate < 0 ? QStringLiteral("invalid")
                                          : getVariableValue(statics.candidates.at(candidate)));
    }
    return associations;
}

namespace lorix {

static StaticParams makeStaticParams(const QList<Summary>& summaries,
                                     const ConjunctiveNormalForm& cnf)
{
    StaticParams statics;
    for (const Candidate& candidate : makeCandidates(summaries))
        statics.candidates.append(candidate.table());
    statics.cnf = cnf;
    statics.variableLocations = cnf.variableLocations();
    statics.variableNames = cnf.variableNames();
    return statics;
}

static DynamicParams makeDynamicParams(const StaticParams& statics)
{
    DynamicParams dynamics;
    dynamics.candidateUsed.fill(false, statics.candidates.size());
    dynamics.assignment.fill(-1, statics.variableNames.size());
    for (int i = 0; i < statics.cnf.numDisjunctions(); ++i) {
        const int literals = statics.cnf.disjunctionAt(i).numLiterals();
        dynamics.results.append(QList<EvaluationResult>(literals, EvaluationUndecided));
    }
    return dynamics;
}

bool evaluateCNF(const QList<Summary>& summaries, const ConjunctiveNormalForm& cnf,
                 QHash<QString, QString>& matches)
{
    const QueryPlan plan(cnf);
    if (!plan.isMonotone()) {
        const StaticParams statics = makeStaticParams(summaries, cnf);
        return davisPutnam(statics, makeDynamicParams(statics), matches);
    }
    const std::vector<Candidate> candidates = makeCandidates(summaries);
    const std::optional<std::vector<int>> assignment = searchBindings(plan, candidates);
    if (!assignment)
        return false;
    matches = describeBindings(plan, candidates, *assignment);
    return true;
}

} // namespace lorix
