// SPDX-License-Identifier: BSD-3-Clause
#include <lorix/query/cnfliteral.h>

#include <QSharedData>

namespace lorix {

struct CNFLiteral::Content : QSharedData
{
    Content(bool predicate, const CNFOperand& leftOperand, const QString& name,
            const CNFOperand& rightOperand)
        : isPredicate(predicate), left(leftOperand), op(name), right(rightOperand)
    {}

    bool isPredicate;
    CNFOperand left; // The variable of a boolean variable.
    QString op;
    CNFOperand right;
};

CNFLiteral::CNFLiteral() = default;
CNFLiteral::~CNFLiteral() = default;
CNFLiteral::CNFLiteral(const CNFLiteral& other) = default;
CNFLiteral& CNFLiteral::operator=(const CNFLiteral& other) = default;

CNFLiteral::CNFLiteral(bool negated, const CNFOperand& left, const QString& op,
                       const CNFOperand& right)
    : m_content(new Content(true, left, op, right)), m_negated(negated)
{}

CNFLiteral::CNFLiteral(bool negated, const CNFOperand& variable)
    : m_content(new Content(false, variable, QString(), CNFOperand())), m_negated(negated)
{}

CNFLiteral CNFLiteral::fromInvalid()
{
    return CNFLiteral();
}

bool CNFLiteral::isPredicate() const
{
    return m_content && m_content->isPredicate;
}

bool CNFLiteral::isBoolVariable() const
{
    return m_content && !m_content->isPredicate;
}

CNFOperand CNFLiteral::left() const
{
    return isPredicate() ? m_content->left : CNFOperand();
}

CNFOperand CNFLiteral::right() const
{
    return isPredicate() ? m_content->right : CNFOperand();
}

QString CNFLiteral::op() const
{
    return isPredicate() ? m_content->op : QString();
}

CNFOperand CNFLiteral::boolVariable() const
{
    return isBoolVariable() ? m_content->left : CNFOperand();
}

QSet<QString> CNFLiteral::variableNames() const
{
    QSet<QString> names;
    for (const CNFOperand& operand : {left(), right(), boolVariable()}) {
        if (operand.isVariable())
            names.insert(operand.variableName());
    }
    return names;
}

} // namespace lorix
