// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <lorix/bounds.h>
#include <lorix/export.h>
#include <lorix/query/cnfliteral.h>
#include <lorix/query/cnfoperand.h>
#include <lorix/query/conjunctivenormalform.h>
#include <lorix/query/expressiontreenode.h>

#include <QSharedPointer>

/// The literal that a node stands for: a comparison, a variable, or one of
/// these below any number of negations, which together negate once. A bare
/// string gives an invalid literal.
LORIX_EXPORT lorix::CNFLiteral makeLiteral(QSharedPointer<lorix::ExpressionTreeNode> node);

/// The operand that a node stands for, invalid unless a variable or a string.
LORIX_EXPORT lorix::CNFOperand makeOperand(const QSharedPointer<lorix::ExpressionTreeNode>& node);

namespace lorix {

using ::makeLiteral;
using ::makeOperand;

/// Nesting level while clauses are read off a tree.
enum CNFLevel : int {
    ConjunctionLevel = 0, ///< Outside any clause.
    DisjunctionLevel = 1, ///< Inside a clause.
};

/// The conjunctive normal form of a tree, which stays as it is. A null tree
/// gives a form without clauses.
///
/// Clauses and literals stand where these rules, applied in passes from the
/// root down until nothing changes, put them; where two rules meet in one
/// pass, the one of the right operand wins:
///
///     !!x         ->  x
///     !(x && y)   ->  !x || !y
///     !(x || y)   ->  !x && !y
///     (x && y) || z  and  z || (x && y)   ->  (x || z) && (y || z)
///
/// The result may be exponentially larger than the tree; see the overload for
/// queries of unknown origin.
LORIX_EXPORT ConjunctiveNormalForm constructCNF(const QSharedPointer<ExpressionTreeNode>& tree);

/// The same under Bounds::queryClauses and Bounds::queryLiterals. What passes
/// them is not built: the result is empty and `*exceeded` true.
LORIX_EXPORT ConjunctiveNormalForm constructCNF(const QSharedPointer<ExpressionTreeNode>& tree,
                                                const Bounds& bounds, bool* exceeded);

} // namespace lorix
