// SPDX-License-Identifier: BSD-3-Clause
#include <lorix/query/cnfliteral.h>

namespace lorix {

CNFLiteral::CNFLiteral(bool negated, const CNFOperand& left, const QString& op,
                       const CNFOperand& right)
    : m_kind(Kind::Predicate), m_negated(negated), m_left(left), m_op(op), m_right(right)
{}

CNFLiteral::CNFLiteral(bool negated, const CNFOperand& variable)
    : m_kind(Kind::BoolVariable), m_negated(negated), m_left(variable)
{}

CNFLiteral CNFLiteral::fromInvalid()
{
    return CNFLiteral();
}

CNFOperand CNFLiteral::left() const
{
    return isPredicate() ? m_left : CNFOperand();
}

CNFOperand CNFLiteral::right() const
{
    return isPredicate() ? m_right : CNFOperand();
}

QString CNFLiteral::op() const
{
    return isPredicate() ? m_op : QString();
}

CNFOperand CNFLiteral::boolVariable() const
{
    return isBoolVariable() ? m_left : CNFOperand();
}

QSet<QString> CNFLiteral::variableNames() const
{
    QSet<QString> names;
    for (const CNFOperand* operand : {&m_left, &m_right}) {
        if (operand->isVariable())
            names.insert(operand->variableName());
    }
    return names;
}

} // namespace lorix
