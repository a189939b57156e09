// SPDX-License-Identifier: BSD-3-Clause
#include <lorix/query/cnfoperand.h>

namespace lorix {

CNFOperand CNFOperand::fromString(const QString& string)
{
    CNFOperand operand;
    operand.m_kind = Kind::String;
    operand.m_text = string;
    return operand;
}

CNFOperand CNFOperand::fromVariable(const QString& name, const QString& attribute)
{
    CNFOperand operand;
    operand.m_kind = Kind::Variable;
    operand.m_text = name;
    operand.m_attribute = attribute;
    return operand;
}

CNFOperand CNFOperand::fromInvalid()
{
    return CNFOperand();
}

QString CNFOperand::string() const
{
    return isString() ? m_text : QString();
}

QString CNFOperand::variableName() const
{
    return isVariable() ? m_text : QString();
}

QString CNFOperand::variableAttribute() const
{
    return isVariable() ? m_attribute : QString();
}

} // namespace lorix
