// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <lorix/export.h>
#include <lorix/query/expressiontreenode.h>
#include <lorix/query/queryerror.h>

#include <QList>
#include <QSet>
#include <QSharedPointer>
#include <QString>

/// Builds the tree of checked tokens by the operators' precedence, to which
/// each level of brackets adds 10. A node's text and position span its
/// operands, so neither "!" before them nor brackets around them.
///
/// No tokens give a null tree, and so do tokens that checkSyntax() would not
/// let pass.
LORIX_EXPORT QSharedPointer<lorix::ExpressionTreeNode>
createTree(QList<lorix::ExpressionValue> tokens, const QString& query,
           QList<lorix::QueryError>& errors);

/// The operator "EOS", which ends the tokens and binds least.
LORIX_EXPORT lorix::ExpressionValue makeEndOfStreamOperator();

/// Makes each bare string that stands where a truth value is wanted the test
/// that any attribute contains it. Changes the tree in place and gives its
/// root, which is a new node if `node` is itself such a string and
/// `booleanContext` says that a truth value is wanted there.
LORIX_EXPORT QSharedPointer<lorix::ExpressionTreeNode>
expandImplicitTreeNodes(QSharedPointer<lorix::ExpressionTreeNode> node, bool booleanContext);

/// The test ":any %contains <string>".
LORIX_EXPORT QSharedPointer<lorix::ExpressionTreeNode>
makeAnyContainsNode(const QSharedPointer<lorix::ExpressionTreeNode>& stringNode);

/// Names the unnamed variables "@unnamed-<number>", beginning with
/// `counter` + 1, and fills the nodes' sets of names. Gives the names in the
/// whole subtree.
///
/// Before each operand the number grows by how many different names the
/// operands to the left of it hold, so that numbers may skip or, where named
/// variables repeat, meet again.
///
/// In a query so large that the sets of all nodes would hold more than a
/// million names, inner nodes below the root keep empty sets.
LORIX_EXPORT QSet<QString>
expandUnnamedVariables(const QSharedPointer<lorix::ExpressionTreeNode>& node, int counter);

namespace lorix {
using ::createTree;
using ::expandImplicitTreeNodes;
using ::expandUnnamedVariables;
using ::makeAnyContainsNode;
using ::makeEndOfStreamOperator;
} // namespace lorix
