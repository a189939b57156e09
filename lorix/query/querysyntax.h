// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <lorix/export.h>
#include <lorix/query/expressionvalue.h>
#include <lorix/query/queryerror.h>

#include <QList>
#include <QPair>

// The syntax of queries: operands and operators take turns, brackets match.
// Operands that stand side by side are joined by the operator "implizit &&".

/// The tokens with implicit conjunctions inserted. The first place that breaks
/// the syntax appends one error and makes the result empty.
LORIX_EXPORT QList<lorix::ExpressionValue> checkSyntax(const QList<lorix::ExpressionValue>& tokens,
                                                       QList<lorix::QueryError>& errors);

/// Checks from the token with the index `start` to the end of the list, or, if
/// `insideBracket`, to the bracket that closes. Gives the tokens read, with
/// implicit conjunctions, and the index where that ended: of the closing
/// bracket, which is the last token then, or the number of tokens. On an error
/// there are no tokens and the index is the complement (~) of the one that
/// fails.
LORIX_EXPORT QPair<QList<lorix::ExpressionValue>, int>
checkSubExpressionCorrectness(const QList<lorix::ExpressionValue>& tokens, int start,
                              bool insideBracket, QList<lorix::QueryError>& errors);

/// The operator "implizit &&", which has no text of its own.
LORIX_EXPORT lorix::ExpressionValue createImplizitAnd(int position);

namespace lorix {
using ::checkSubExpressionCorrectness;
using ::checkSyntax;
using ::createImplizitAnd;
} // namespace lorix
