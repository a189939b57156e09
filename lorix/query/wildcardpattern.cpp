// SPDX-License-Identifier: BSD-3-Clause
#include <lorix/query/wildcardpattern.h>

#include <QStringView>

#include <algorithm>

namespace lorix {

namespace {

bool isSpecial(QChar c)
{
    return c == u'[' || c == u']' || c == u'\\';
}

// Goes back to the last "*" only: what earlier ones take need never change.
bool fits(QStringView pattern, QStringView text)
{
    qsizetype p = 0;
    qsizetype t = 0;
    qsizetype star = -1;
    qsizetype starText = 0;
    while (t < text.size()) {
        if (p < pattern.size() && pattern[p] == u'*') {
            star = p++;
            starText = t;
        } else if (p < pattern.size() && (pattern[p] == u'?' || pattern[p] == text[t])) {
            ++p;
            ++t;
        } else if (star >= 0) {
            p = star + 1;
            t = ++starText;
        } else {
            return false;
        }
    }
    while (p < pattern.size() && pattern[p] == u'*')
        ++p;
    return p == pattern.size();
}

} // namespace

WildcardPattern::WildcardPattern(const QString& pattern) : m_pattern(pattern)
{
    if (std::any_of(pattern.cbegin(), pattern.cend(), isSpecial))
        m_expression.emplace(pattern, Qt::CaseSensitive, QRegExp::Wildcard);
}

bool WildcardPattern::matches(const QString& text) const
{
    if (m_expression)
        return m_expression->exactMatch(text);
    return fits(m_pattern, text);
}

} // namespace lorix
