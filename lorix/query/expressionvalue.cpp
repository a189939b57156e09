// SPDX-License-Identifier: BSD-3-Clause
#include <lorix/query/expressionvalue.h>
#include <lorix/query/operatortable.h>

#include <QDebug>
#include <QStringList>

namespace lorix {

ExpressionValue ExpressionValue::fromVariable(const QString& name, const QString& attribute,
                                              int position, const QString& originalText)
{
    ExpressionValue value;
    value.m_kind = VariableValue;
    value.m_variable = {name, attribute};
    value.m_position = position;
    value.m_originalText = originalText;
    return value;
}

ExpressionValue ExpressionValue::fromVariable(const QString& text, int position,
                                              const QString& originalText)
{
    if (text.endsWith(u'}')) {
        const QString opening = QStringLiteral(":user{");
        const qsizetype at = text.indexOf(opening);
        if (at < 0)
            return fromVariable(QString(), QString(), -1, QString());
        const qsizetype begin = at + opening.size();
        return fromVariable(text.left(at),
                            QStringLiteral("user:") + text.mid(begin, text.size() - begin - 1),
                            position, originalText);
    }
    const qsizetype colon = text.indexOf(u':');
    if (colon < 0)
        return fromVariable(text, QString(), position, originalText);
    return fromVariable(text.left(colon), text.mid(colon + 1), position, originalText);
}

ExpressionValue ExpressionValue::fromString(const QString& string, int position,
                                            const QString& originalText)
{
    ExpressionValue value;
    value.m_kind = StringValue;
    value.m_text = string;
    value.m_position = position;
    value.m_originalText = originalText;
    return value;
}

ExpressionValue ExpressionValue::fromOperator(const QString& name, int position,
                                              const QString& originalText)
{
    ExpressionValue value;
    value.m_kind = OperatorValue;
    value.m_text = name;
    value.m_precedence = getPrecedence(name);
    value.m_association = getAssociation(name);
    value.m_numArgs = getNumArguments(name);
    value.m_position = position;
    value.m_originalText = originalText;
    return value;
}

QString ExpressionValue::variableName() const
{
    return isVariable() ? m_variable.name : QString();
}

QString ExpressionValue::variableAttribute() const
{
    return isVariable() ? m_variable.attribute : QString();
}

void ExpressionValue::setVariableName(const QString& name)
{
    m_variable.name = name;
}

QString ExpressionValue::string() const
{
    return isString() ? m_text : QString();
}

QString ExpressionValue::operatorName() const
{
    return isOperator() ? m_text : QString();
}

int ExpressionValue::precedence() const
{
    return isOperator() ? m_precedence : -1;
}

int ExpressionValue::numArgs() const
{
    return isOperator() ? m_numArgs : -1;
}

char ExpressionValue::association() const
{
    return isOperator() ? m_association : 'x';
}

void ExpressionValue::setPrecedence(int precedence)
{
    m_precedence = precedence;
}

int ExpressionValue::length() const
{
    return static_cast<int>(m_originalText.size());
}

QDebug operator<<(QDebug debug, const ExpressionValue& value)
{
    const QDebugStateSaver saver(debug);
    debug.nospace();
    if (value.isVariable())
        debug << "variable " << value.variableName() << ":" << value.variableAttribute();
    else if (value.isString())
        debug << "string " << value.string();
    else if (value.isOperator())
        debug << "operator " << value.operatorName();
    else
        debug << "invalid";
    debug << " at " << value.position();
    return debug;
}

} // namespace lorix
