// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <lorix/export.h>
#include <lorix/query/expressiontreenode.h>
#include <lorix/query/queryerror.h>

#include <QList>
#include <QSharedPointer>
#include <QString>

namespace lorix {

/// Compiles a query to its tree: tokens, syntax, tree, types; then bare strings
/// become tests and unnamed variables get names. `errors` is cleared first; a
/// stage that finds errors is the last one, and the result is null.
LORIX_EXPORT QSharedPointer<ExpressionTreeNode> parseQuery(const QString& query,
                                                           QList<QueryError>& errors);

} // namespace lorix
