// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <lorix/export.h>
#include <lorix/query/expressionvalue.h>

#include <QList>
#include <QSet>
#include <QSharedPointer>
#include <QString>

class QDebug;

namespace lorix {

/// One node of a query's tree: an operator with its operands, or a leaf that
/// is a variable or a string. Nodes are always held through QSharedPointer.
///
/// A tree may be as deep as a query is long; nothing here recurses into it,
/// its destruction included.
class LORIX_EXPORT ExpressionTreeNode
{
public:
    using Pointer = QSharedPointer<ExpressionTreeNode>;

    ExpressionTreeNode() = default;
    /// A leaf, or an operator whose children are to be added, that spans the
    /// token's text.
    explicit ExpressionTreeNode(const ExpressionValue& token);
    ~ExpressionTreeNode();
    ExpressionTreeNode(const ExpressionTreeNode&) = default;
    ExpressionTreeNode& operator=(const ExpressionTreeNode&) = default;

    ExpressionValue value;
    QSet<QString> variables; ///< Names in this subtree; expandUnnamedVariables() fills it.
    QList<Pointer> children; ///< Operands, left to right.
    QString text;            ///< The part of the query that the subtree spans.
    int position = -1;       ///< Where that part begins.

    /// A deep copy: new nodes for the whole subtree.
    Pointer cloneTree() const;
};

/// Writes the subtree, one node per line, each level indented by four blanks
/// more, beginning with `indent` levels.
LORIX_EXPORT QDebug printTree(QDebug debug, const QSharedPointer<ExpressionTreeNode>& node,
                              int indent);

/// Writes the tree with printTree().
LORIX_EXPORT QDebug operator<<(QDebug debug, const QSharedPointer<ExpressionTreeNode>& node);

} // namespace lorix
