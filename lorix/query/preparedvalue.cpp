// SPDX-License-Identifier: BSD-3-Clause
#include <lorix/query/preparedvalue.h>

#include <algorithm>
#include <cmath>

namespace lorix {

namespace {

Comparison decided(bool b)
{
    return b ? Comparison::True : Comparison::False;
}

// Single precision throughout, the bound included: 99 and 100 differ by exactly
// one hundredth and are not approximately equal.
bool isApprox(float a, float b)
{
    return std::fabs(a - b) / std::max(a, b) < 0.01F;
}

template <typename T>
bool isOrdered(ComparisonOperator op, const T& a, const T& b)
{
    switch (op) {
    case ComparisonOperator::Greater:
        return b < a;
    case ComparisonOperator::GreaterEqual:
        return a >= b;
    case ComparisonOperator::Less:
        return a < b;
    default:
        return a <= b;
    }
}

} // namespace

const QString& PreparedValue::lowerText() const
{
    if (!m_lowerText)
        m_lowerText = m_value.text.toLower();
    return *m_lowerText;
}

const std::optional<float>& PreparedValue::number() const
{
    if (!m_number) {
        bool ok = false;
        const float value = m_value.toNumber(&ok);
        m_number.emplace(ok ? std::optional<float>(value) : std::nullopt);
    }
    return *m_number;
}

const std::optional<QDateTime>& PreparedValue::date() const
{
    if (!m_date) {
        bool ok = false;
        const QDateTime value = m_value.toDate(&ok);
        m_date.emplace(ok ? std::optional<QDateTime>(value) : std::nullopt);
    }
    return *m_date;
}

const WildcardPattern& PreparedValue::pattern() const
{
    if (!m_pattern)
        m_pattern.emplace(lowerText());
    return *m_pattern;
}

Comparison compare(ComparisonOperator op, const PreparedValue& left, const PreparedValue& right)
{
    switch (op) {
    case ComparisonOperator::Equal:
    case ComparisonOperator::Matches:
    case ComparisonOperator::Contains:
        if (!left.value().isString() || !right.value().isString())
            return Comparison::Unsuitable;
        if (op == ComparisonOperator::Equal)
            return decided(left.lowerText() == right.lowerText());
        if (op == ComparisonOperator::Matches)
            return decided(right.pattern().matches(left.value().text));
        return decided(left.lowerText().contains(right.lowerText()));
    default:
        break;
    }
    if (left.number() && right.number()) {
        if (op == ComparisonOperator::IsApprox)
            return decided(isApprox(*left.number(), *right.number()));
        return decided(isOrdered(op, *left.number(), *right.number()));
    }
    if (op != ComparisonOperator::IsApprox && left.date() && right.date())
        return decided(isOrdered(op, *left.date(), *right.date()));
    return Comparison::Unsuitable;
}

} // namespace lorix
