// SPDX-License-Identifier: BSD-3-Clause
#include <lorix/query/cnfdisjunction.h>

namespace lorix {

void CNFDisjunction::addLiteral(const CNFLiteral& literal)
{
    m_literals.append(literal);
}

int CNFDisjunction::numLiterals() const
{
    return static_cast<int>(m_literals.size());
}

const CNFLiteral& CNFDisjunction::literalAt(int index) const
{
    return m_literals.at(index);
}

QMultiHash<QString, int> CNFDisjunction::variableLocations() const
{
    QMultiHash<QString, int> locations;
    for (int i = 0; i < numLiterals(); ++i) {
        for (const QString& name : literalAt(i).variableNames())
            locations.insert(name, i);
    }
    return locations;
}

} // namespace lorix
