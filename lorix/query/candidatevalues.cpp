// SPDX-License-Identifier: BSD-3-Clause
#include <lorix/query/candidatevalues.h>

namespace lorix {

namespace {

constexpr size_t cachedRowBytes = 128 * 1024 * 1024;

bool isEquality(const QueryPlan::Literal& literal)
{
    return literal.op == QueryPlan::Operator::NotEqual ||
           (literal.op == QueryPlan::Operator::Compare &&
            literal.comparison == ComparisonOperator::Equal);
}

} // namespace

CandidateValues::CandidateValues(const QueryPlan& plan, const std::vector<Candidate>& candidates)
    : m_plan(plan), m_candidates(candidates), m_valueIds(plan.attributes.size()),
      m_known(plan.literals.size())
{}

int CandidateValues::valueId(int attribute, int candidate)
{
    std::vector<int>& ids = m_valueIds[static_cast<size_t>(attribute)];
    if (ids.empty())
        ids.assign(m_candidates.size(), -1);
    int& id = ids[static_cast<size_t>(candidate)];
    if (id >= 0)
        return id;
    const ReturnValue value = m_candidates[static_cast<size_t>(candidate)].value(
        m_plan.attributes[static_cast<size_t>(attribute)]);
    const QString key = QChar(static_cast<char16_t>(value.type)) + value.text;
    const auto known = m_poolIds.constFind(key);
    if (known != m_poolIds.cend()) {
        id = *known;
        return id;
    }
    id = static_cast<int>(m_pool.size());
    m_pool.emplace_back(value);
    m_poolIds.insert(key, id);
    return id;
}

const PreparedValue& CandidateValues::operandValue(const QueryPlan::Operand& operand, int candidate)
{
    return operand.variable < 0 ? operand.constant : value(valueId(operand.attribute, candidate));
}

bool CandidateValues::holds(int literal, int candidate)
{
    const QueryPlan::Literal& l = literalAt(literal);
    if (l.uses == 1)
        return l.holds(operandValue(l.left, candidate), operandValue(l.right, candidate));
    std::vector<quint8>& known = m_known[static_cast<size_t>(literal)];
    if (known.empty())
        known.assign(m_candidates.size(), 0);
    quint8& truth = known[static_cast<size_t>(candidate)];
    if (truth == 0)
        truth = l.holds(operandValue(l.left, candidate), operandValue(l.right, candidate)) ? 2 : 1;
    return truth == 2;
}

bool CandidateValues::holds(int literal, int left, int right)
{
    const QueryPlan::Literal& l = literalAt(literal);
    return l.holds(operandValue(l.left, left), operandValue(l.right, right));
}

const CandidateSet& CandidateValues::satisfying(int literal)
{
    const auto known = m_satisfying.find(literal);
    if (known != m_satisfying.end())
        return known->second;
    CandidateSet set(size());
    for (int i = 0; i < size(); ++i) {
        if (holds(literal, i))
            set.insert(i);
    }
    return m_satisfying.emplace(literal, std::move(set)).first->second;
}

const CandidateValues::EqualityIndex& CandidateValues::equalityIndex(int attribute)
{
    const auto known = m_equality.find(attribute);
    if (known != m_equality.end())
        return known->second;
    EqualityIndex index;
    index.strings = CandidateSet(size());
    for (int i = 0; i < size(); ++i) {
        const PreparedValue& v = value(valueId(attribute, i));
        if (!v.value().isString())
            continue;
        index.strings.insert(i);
        index.byLowerText[v.lowerText()].push_back(i);
    }
    return m_equality.emplace(attribute, std::move(index)).first->second;
}

CandidateSet CandidateValues::equalityRow(const QueryPlan::Literal& literal, bool boundLeft,
                                          int bound)
{
    const QueryPlan::Operand& boundSide = boundLeft ? literal.left : literal.right;
    const QueryPlan::Operand& freeSide = boundLeft ? literal.right : literal.left;
    const PreparedValue& boundValue = value(valueId(boundSide.attribute, bound));
    const EqualityIndex& index = equalityIndex(freeSide.attribute);
    CandidateSet row(size());
    if (boundValue.value().isString()) {
        const auto found = index.byLowerText.constFind(boundValue.lowerText());
        if (found != index.byLowerText.cend()) {
            for (const int i : *found)
                row.insert(i);
        }
        if (literal.op == QueryPlan::Operator::NotEqual) {
            row.invert();
            row.intersect(index.strings);
        }
    }
    if (literal.negated)
        row.invert();
    return row;
}

CandidateSet CandidateValues::comparisonRow(const QueryPlan::Literal& literal, bool boundLeft,
                                            int bound)
{
    const QueryPlan::Operand& boundSide = boundLeft ? literal.left : literal.right;
    const QueryPlan::Operand& freeSide = boundLeft ? literal.right : literal.left;
    const int boundId = valueId(boundSide.attribute, bound);
    CandidateSet row(size());
    m_truth.assign(m_pool.size(), 0);
    for (int i = 0; i < size(); ++i) {
        const int id = valueId(freeSide.attribute, i);
        if (static_cast<size_t>(id) >= m_truth.size())
            m_truth.resize(m_pool.size(), 0);
        quint8& truth = m_truth[static_cast<size_t>(id)];
        if (truth == 0) {
            const PreparedValue& left = value(boundLeft ? boundId : id);
            const PreparedValue& right = value(boundLeft ? id : boundId);
            truth = literal.holds(left, right) ? 2 : 1;
        }
        if (truth == 2)
            row.insert(i);
    }
    return row;
}

void CandidateValues::uniteSatisfying(int literal, bool boundLeft, int bound, CandidateSet& result)
{
    const QueryPlan::Literal& l = literalAt(literal);
    if (isEquality(l)) {
        result.unite(equalityRow(l, boundLeft, bound));
        return;
    }
    const int id = valueId((boundLeft ? l.left : l.right).attribute, bound);
    const QPair<int, int> key(literal * 2 + (boundLeft ? 1 : 0), id);
    auto row = m_rows.constFind(key);
    if (row == m_rows.cend()) {
        if (m_rowBytes > cachedRowBytes) {
            m_rows.clear();
            m_rowBytes = 0;
        }
        const CandidateSet made = comparisonRow(l, boundLeft, bound);
        m_rowBytes += made.bytes();
        row = m_rows.insert(key, made);
    }
    result.unite(*row);
}

qint64 CandidateValues::costOfRows(int literal, int count) const
{
    const qint64 words = size() / 64 + 1;
    const qint64 each = isEquality(literalAt(literal)) ? words * 2 : qint64(size()) * 16;
    return each * count;
}

} // namespace lorix
