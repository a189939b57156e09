// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <lorix/lorix.h>

#include <QList>
#include <QSharedPointer>

namespace reference {

using Node = QSharedPointer<lorix::ExpressionTreeNode>;

/// Numbers and dates by regular expression.
float toNumber(const QString& text, bool* ok);
QDateTime toDate(const QString& text, bool* ok);

/// The wildcard test: found, and as long as the text.
bool matches(const QString& text, const QString& pattern);

/// Tries the nine patterns at each place.
QList<lorix::ExpressionValue> lexQuery(const QString& query, QList<lorix::QueryError>& errors);

/// Checks by recursion.
QList<lorix::ExpressionValue> checkSyntax(const QList<lorix::ExpressionValue>& tokens,
                                          QList<lorix::QueryError>& errors);

/// Builds the tree by recursive descent, one level of binding after the other.
Node createTree(const QList<lorix::ExpressionValue>& tokens, const QString& query);

/// Checks types by recursion. Gives the description.
QString getTypes(const Node& node, QList<lorix::QueryError>& errors);

Node expandImplicit(const Node& node, bool booleanContext);
QSet<QString> nameVariables(const Node& node, int counter);

/// All stages; null after an error.
Node parseQuery(const QString& query, QList<lorix::QueryError>& errors);

// Texts that are equal exactly if the values are.
QString describe(const QList<lorix::ExpressionValue>& tokens);
QString describe(const QList<lorix::QueryError>& errors);
QString describe(const Node& node, int depth = 0);

} // namespace reference
