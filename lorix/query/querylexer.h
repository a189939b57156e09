// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <lorix/export.h>
#include <lorix/query/expressionvalue.h>
#include <lorix/query/queryerror.h>

#include <QList>
#include <QString>

// Cuts a query into tokens, in work linear in its length. In the order in
// which they are tried:
//
//     blanks, tabs, line ends          skipped
//     a:user{key}                      variable with a user attribute
//     a:name or a:name:name            variable; the name before the colon may be empty
//     'text' or "text"                 string; \' (or \") and \\ stand for one character
//     word                             string, up to a colon, operator, blank, quote or bracket
//     && || == != < <= > >=            binary operators
//     %contains %matches %isapprox     the same, each followed by a blank or the end
//     !                                unary operator
//     ( )                              brackets
//
// The longest text that fits a form is taken.

/// The tokens of a query in order. Where no form fits, one error is appended
/// and the result is empty.
LORIX_EXPORT QList<lorix::ExpressionValue> lexQuery(const QString& query,
                                                    QList<lorix::QueryError>& errors);

/// The inside of a single-quoted string with \' and then \\ replaced.
LORIX_EXPORT QString unescapeString1(const QString& string);

/// The inside of a double-quoted string with \" and then \\ replaced.
LORIX_EXPORT QString unescapeString2(const QString& string);

/// A bare word, which has no escapes.
LORIX_EXPORT QString unescapeString3(const QString& string);

namespace lorix {
using ::lexQuery;
using ::unescapeString1;
using ::unescapeString2;
using ::unescapeString3;
} // namespace lorix
