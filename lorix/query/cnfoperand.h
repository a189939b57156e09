// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <lorix/export.h>

#include <QString>

namespace lorix {

/// One operand of a literal: a text of the query, or a variable with an
/// attribute. Anything else, and a default-constructed one, is invalid.
class LORIX_EXPORT CNFOperand
{
public:
    CNFOperand() = default;

    static CNFOperand fromString(const QString& string);
    static CNFOperand fromVariable(const QString& name, const QString& attribute);
    static CNFOperand fromInvalid();

    bool isString() const { return m_kind == Kind::String; }
    bool isVariable() const { return m_kind == Kind::Variable; }
    bool isInvalid() const { return m_kind == Kind::Invalid; }

    // Empty for operands of another kind.
    QString string() const;
    QString variableName() const;
    QString variableAttribute() const;

private:
    enum class Kind { Invalid, String, Variable };

    Kind m_kind = Kind::Invalid;
    QString m_text; // The string or the variable's name.
    QString m_attribute;
};

} // namespace lorix
