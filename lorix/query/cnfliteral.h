// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <lorix/export.h>
#include <lorix/query/cnfoperand.h>

#include <QSet>
#include <QString>

namespace lorix {

/// One literal of a normal form: a comparison of two operands or a boolean
/// variable, perhaps negated, or neither of them (invalid, perhaps negated).
class LORIX_EXPORT CNFLiteral
{
public:
    CNFLiteral() = default; ///< Invalid.

    /// A predicate; `op` is the operator's name, such as "==" or "%contains".
    CNFLiteral(bool negated, const CNFOperand& left, const QString& op, const CNFOperand& right);
    /// A boolean variable.
    CNFLiteral(bool negated, const CNFOperand& variable);
    static CNFLiteral fromInvalid();

    bool isNegated() const { return m_negated; }
    void setNegated(bool negated) { m_negated = negated; }
    bool isPredicate() const { return m_kind == Kind::Predicate; }
    bool isBoolVariable() const { return m_kind == Kind::BoolVariable; }

    // Invalid operands and an empty name unless a predicate.
    CNFOperand left() const;
    CNFOperand right() const;
    QString op() const;
    /// Invalid unless a boolean variable.
    CNFOperand boolVariable() const;

    /// Names of the operands that are variables.
    QSet<QString> variableNames() const;

private:
    enum class Kind { Invalid, Predicate, BoolVariable };

    Kind m_kind = Kind::Invalid;
    bool m_negated = false;
    CNFOperand m_left; // The variable of a boolean variable.
    QString m_op;
    CNFOperand m_right;
};

} // namespace lorix
