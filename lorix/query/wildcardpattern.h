// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <lorix/export.h>

#include <QRegExp>
#include <QString>

#include <optional>

namespace lorix {

/// A pattern of "*", "?" and "[...]", compiled once, that a whole text must
/// fit. It accepts what a case-sensitive QRegExp with wildcard syntax accepts;
/// a pattern that is no such expression accepts nothing.
class LORIX_EXPORT WildcardPattern
{
public:
    explicit WildcardPattern(const QString& pattern);

    bool matches(const QString& text) const;

private:
    QString m_pattern;
    // Only for patterns with brackets or backslashes, whose finer points are
    // QRegExp's own.
    std::optional<QRegExp> m_expression;
};

} // namespace lorix
