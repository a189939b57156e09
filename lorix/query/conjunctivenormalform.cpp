// SPDX-License-Identifier: BSD-3-Clause
#include <lorix/query/conjunctivenormalform.h>

#include <QSet>

namespace lorix {

void ConjunctiveNormalForm::addDisjunction(const CNFDisjunction& disjunction)
{
    m_disjunctions.append(disjunction);
}

int ConjunctiveNormalForm::numDisjunctions() const
{
    return static_cast<int>(m_disjunctions.size());
}

const CNFDisjunction& ConjunctiveNormalForm::disjunctionAt(int index) const
{
    return m_disjunctions.at(index);
}

CNFDisjunction& ConjunctiveNormalForm::lastDisjunction()
{
    return m_disjunctions.last();
}

const CNFLiteral& ConjunctiveNormalForm::literalAt(const CNFLiteralIndex& index) const
{
    return disjunctionAt(index.disjunctionIndex()).literalAt(index.literalIndex());
}

void ConjunctiveNormalForm::clear()
{
    m_disjunctions.clear();
    m_variableOrder.clear();
}

QMultiHash<QString, CNFLiteralIndex> ConjunctiveNormalForm::variableLocations() const
{
    QMultiHash<QString, CNFLiteralIndex> locations;
    for (int d = 0; d < numDisjunctions(); ++d) {
        const QMultiHash<QString, int> inClause = disjunctionAt(d).variableLocations();
        for (auto it = inClause.cbegin(); it != inClause.cend(); ++it)
            locations.insert(it.key(), CNFLiteralIndex(d, it.value()));
    }
    return locations;
}

QStringList ConjunctiveNormalForm::variableNames() const
{
    QStringList inClauses;
    QSet<QString> present;
    for (const CNFDisjunction& clause : m_disjunctions) {
        for (int i = 0; i < clause.numLiterals(); ++i) {
            const CNFLiteral& literal = clause.literalAt(i);
            for (const CNFOperand& operand :
                 {literal.left(), literal.right(), literal.boolVariable()}) {
                const QString name = operand.variableName();
                if (operand.isVariable() && !present.contains(name)) {
                    present.insert(name);
                    inClauses.append(name);
                }
            }
        }
    }
    QStringList names;
    for (const QStringList& list : {m_variableOrder, inClauses}) {
        for (const QString& name : list) {
            if (present.remove(name))
                names.append(name);
        }
    }
    return names;
}

void ConjunctiveNormalForm::setVariableOrder(const QStringList& names)
{
    m_variableOrder = names;
}

} // namespace lorix
