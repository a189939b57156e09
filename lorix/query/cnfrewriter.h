// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <lorix/query/conjunctivenormalform.h>
#include <lorix/query/expressiontreenode.h>

#include <QList>

#include <cstdint>
#include <vector>

namespace lorix {

/// Finds where passes of rewriting put clauses and literals, without the passes.
///
/// The order of the result hangs on when each part of the tree becomes a
/// conjunction: a disjunction is distributed in the pass after the first of
/// its operands has become one. That time follows from the tree's shape. So a
/// part is a node, which never changes, and its age in passes, and only those
/// parts are ever looked into that are distributed over next:
///
/// - A literal, a conjunction or a disjunction below n negations appears
///   `delay` passes after the negations above it begin to be rewritten.
/// - A disjunction with operands that become conjunctions after m and n passes
///   becomes one itself after 1 + min(m, n).
/// - Operands of a conjunction are distributed over on their own.
///
/// Nodes are shared where passes clone them, so that the work grows with the
/// literals of the result.
class CNFRewriter
{
public:
    explicit CNFRewriter(const QSharedPointer<ExpressionTreeNode>& tree);

    qint64 numClauses() const; ///< Of the result; saturates far beyond any bound.
    qint64 numLiterals() const;

    ConjunctiveNormalForm rewrite();

private:
    enum class Kind : quint8 { Literal, Conjunction, Disjunction };

    // A node at an age.
    struct Part
    {
        qint32 node;
        qint32 age;
    };

    struct Node
    {
        Kind kind;
        qint32 delay;       // Passes until the head appears.
        qint32 conjunction; // Passes until it is a conjunction, or never.
        Part left;          // Of a literal, left.node is its index.
        Part right;
    };

    struct Size
    {
        qint64 clauses;
        qint64 literals;
    };

    // A disjunction on the way down to the operand that splits.
    struct Split
    {
        bool right; // The right operand becomes the conjunction.
        bool both;  // At the same time as the left one.
        Part other; // The other operand as it is before that pass.
    };

    struct Pair
    {
        Part left;
        Part right;
    };

    struct Branch;

    void finishBranch(const Branch& branch, std::vector<qint32>& finished);
    qint32 addNode(Kind kind, qint32 delay, Part left, Part right);
    Part addDisjunction(Part left, Part right);
    qint32 timeLeft(Part part) const;
    Part older(Part part, qint32 passes) const;
    Part throughPass(Part part);
    Part asFirstUse(Part part);
    Pair becomeConjunction(Part part);
    void appendClause(Part part, ConjunctiveNormalForm& form) const;

    std::vector<Node> m_nodes;
    std::vector<Size> m_sizes; // Of the nodes made from the tree.
    QList<CNFLiteral> m_literals;
    qint32 m_root = -1;
};

} // namespace lorix
