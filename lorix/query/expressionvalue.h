// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <lorix/export.h>

#include <QString>

class QDebug;

namespace lorix {

/// What a token is. The numbers are used in comparisons and stay as they are.
enum ExpressionValueKind : int {
    NoExpressionValue = 0, ///< A default-constructed token.
    VariableValue = 1,
    StringValue = 2,
    OperatorValue = 4,
};

/// A variable of a query with the attribute that is asked for: "a:filename".
struct Variable
{
    QString name;      ///< Empty for an unnamed variable.
    QString attribute; ///< For example "filename" or "user:colour".

    bool operator==(const Variable& other) const
    {
        return name == other.name && attribute == other.attribute;
    }
};

/// One token of a query: a variable, a string, an operator or a bracket, with
/// the place that it was read from.
///
/// The accessors of one kind give an empty string for tokens of another.
class LORIX_EXPORT ExpressionValue
{
public:
    ExpressionValue() = default;

    static ExpressionValue fromVariable(const QString& name, const QString& attribute, int position,
                                        const QString& originalText);

    /// Splits a variable as it stands in a query. "a:file:size" has the name
    /// "a" and the attribute "file:size"; "a:user{my colour}" has the attribute
    /// "user:my colour", with backslashes in the braces kept. A text that ends
    /// with a brace but has no ":user{" gives a variable without name and
    /// attribute at position -1.
    static ExpressionValue fromVariable(const QString& text, int position,
                                        const QString& originalText);

    static ExpressionValue fromString(const QString& string, int position,
                                      const QString& originalText);

    /// Fills precedence, association and number of arguments from the table in
    /// operatortable.h.
    static ExpressionValue fromOperator(const QString& name, int position,
                                        const QString& originalText);

    ExpressionValueKind kind() const { return m_kind; }
    bool isVariable() const { return m_kind == VariableValue; }
    bool isString() const { return m_kind == StringValue; }
    bool isOperator() const { return m_kind == OperatorValue; }

    const Variable& variable() const { return m_variable; }
    QString variableName() const;
    QString variableAttribute() const;
    void setVariableName(const QString& name);

    /// The string after unescaping.
    QString string() const;

    /// "!", "&&", "||", "==", "!=", "<", "<=", ">", ">=", "%contains",
    /// "%matches", "%isapprox", "(", ")", "implizit &&" or "EOS".
    QString operatorName() const;

    int precedence() const;   ///< -1 unless an operator.
    int numArgs() const;      ///< -1 unless an operator.
    char association() const; ///< 'x' unless an operator.
    /// Replaces the precedence, which grows with the brackets around a token.
    void setPrecedence(int precedence);

    /// The text of the query that gave the token, exactly as it stands there.
    QString originalText() const { return m_originalText; }
    int position() const { return m_position; } ///< 0-based, in UTF-16 units; -1 when not set.
    int length() const;                         ///< Of originalText().

private:
    ExpressionValueKind m_kind = NoExpressionValue;
    Variable m_variable;
    QString m_text; // The string or the operator's name.
    int m_precedence = -1;
    char m_association = 'x';
    int m_numArgs = -1;
    QString m_originalText;
    int m_position = -1;
};

/// Writes the token for diagnostics.
LORIX_EXPORT QDebug operator<<(QDebug debug, const ExpressionValue& value);

} // namespace lorix
