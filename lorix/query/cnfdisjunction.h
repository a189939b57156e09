// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <lorix/export.h>
#include <lorix/query/cnfliteral.h>

#include <QList>
#include <QMultiHash>
#include <QString>

namespace lorix {

/// One clause of a normal form: literals of which one must hold.
class LORIX_EXPORT CNFDisjunction
{
public:
    void addLiteral(const CNFLiteral& literal);
    int numLiterals() const;
    /// The literal with this index, from 0 to numLiterals() - 1.
    const CNFLiteral& literalAt(int index) const;

    /// For each literal and each name in it, name to the literal's index.
    QMultiHash<QString, int> variableLocations() const;

private:
    QList<CNFLiteral> m_literals;
};

} // namespace lorix
