// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <lorix/export.h>
#include <lorix/query/cnfoperand.h>

#include <QExplicitlySharedDataPointer>
#include <QSet>
#include <QString>

namespace lorix {

/// One literal of a normal form: a comparison of two operands or a boolean
/// variable, perhaps negated, or neither of them (invalid, perhaps negated).
class LORIX_EXPORT CNFLiteral
{
public:
    CNFLiteral(); ///< Invalid.
    ~CNFLiteral();
    CNFLiteral(const CNFLiteral& other);
    CNFLiteral& operator=(const CNFLiteral& other);

    /// A predicate; `op` is the operator's name, such as "==" or "%contains".
    CNFLiteral(bool negated, const CNFOperand& left, const QString& op, const CNFOperand& right);
    /// A boolean variable.
    CNFLiteral(bool negated, const CNFOperand& variable);
    static CNFLiteral fromInvalid();

    bool isNegated() const { return m_negated; }
    void setNegated(bool negated) { m_negated = negated; }
    bool isPredicate() const;
    bool isBoolVariable() const;

    // Invalid operands and an empty name unless a predicate.
    CNFOperand left() const;
    CNFOperand right() const;
    QString op() const;
    /// Invalid unless a boolean variable.
    CNFOperand boolVariable() const;

    /// Names of the operands that are variables.
    QSet<QString> variableNames() const;

private:
    struct Content;

    // Shared, since a normal form repeats its literals; null when invalid.
    QExplicitlySharedDataPointer<const Content> m_content;
    bool m_negated = false;
};

} // namespace lorix
