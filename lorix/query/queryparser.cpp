// SPDX-License-Identifier: BSD-3-Clause
#include <lorix/query/querylexer.h>
#include <lorix/query/queryparser.h>
#include <lorix/query/querysyntax.h>
#include <lorix/query/querytree.h>
#include <lorix/query/querytypes.h>

namespace lorix {

QSharedPointer<ExpressionTreeNode> parseQuery(const QString& query, QList<QueryError>& errors)
{
    errors.clear();
    const QList<ExpressionValue> tokens = lexQuery(query, errors);
    if (containsErrors(errors))
        return {};
    const QList<ExpressionValue> checked = checkSyntax(tokens, errors);
    if (containsErrors(errors))
        return {};
    QSharedPointer<ExpressionTreeNode> tree = createTree(checked, query, errors);
    if (containsErrors(errors) || !checkQueryTypes(tree, errors))
        return {};
    tree = expandImplicitTreeNodes(tree, true);
    expandUnnamedVariables(tree, 0);
    return tree;
}

} // namespace lorix
