// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <lorix/query/returnvalue.h>
#include <lorix/query/wildcardpattern.h>

#include <QDateTime>
#include <QString>

#include <optional>

namespace lorix {

/// The operators that compare two values.
enum class ComparisonOperator {
    Equal,
    Matches,
    Contains,
    IsApprox,
    Greater,
    GreaterEqual,
    Less,
    LessEqual,
};

/// What a comparison says: unsuitable when the operands' types do not fit.
enum class Comparison { False, True, Unsuitable };

/// A value whose other readings (lower case, number, date, pattern) are made
/// at most once, when an operator first asks for them. Not thread-safe.
class PreparedValue
{
public:
    PreparedValue() = default;
    explicit PreparedValue(const ReturnValue& value) : m_value(value) {}

    const ReturnValue& value() const { return m_value; }
    const QString& lowerText() const;
    const std::optional<float>& number() const;
    const std::optional<QDateTime>& date() const;
    const WildcardPattern& pattern() const; ///< Of the lower-cased text.

private:
    template <typename T>
    using Lazy = std::optional<T>;

    ReturnValue m_value;
    mutable Lazy<QString> m_lowerText;
    mutable Lazy<std::optional<float>> m_number;
    mutable Lazy<std::optional<QDateTime>> m_date;
    mutable Lazy<WildcardPattern> m_pattern;
};

/// Compares as the operator functions of queryoperators.h do.
Comparison compare(ComparisonOperator op, const PreparedValue& left, const PreparedValue& right);

} // namespace lorix
