// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <lorix/export.h>
#include <lorix/query/cnfdisjunction.h>
#include <lorix/query/cnfliteral.h>
#include <lorix/query/cnfliteralindex.h>

#include <QList>
#include <QMultiHash>
#include <QString>
#include <QStringList>

namespace lorix {

/// A query in conjunctive normal form: clauses that must all hold, each of
/// them literals of which one must.
class LORIX_EXPORT ConjunctiveNormalForm
{
public:
    void addDisjunction(const CNFDisjunction& disjunction);
    int numDisjunctions() const;
    /// The clause with this index, from 0 to numDisjunctions() - 1.
    const CNFDisjunction& disjunctionAt(int index) const;
    /// The clause added last; there must be one.
    CNFDisjunction& lastDisjunction();
    const CNFLiteral& literalAt(const CNFLiteralIndex& index) const;
    void clear();

    /// For each name, every literal that it stands in.
    QMultiHash<QString, CNFLiteralIndex> variableLocations() const;

    /// The names in the form, each once, in the order in which a search binds
    /// them: that of setVariableOrder(), then of the clauses.
    QStringList variableNames() const;

    /// Names in the order of their first appearance in the query, which the
    /// rewriting may have changed. Names that are not in the form do no harm.
    void setVariableOrder(const QStringList& names);

private:
    QList<CNFDisjunction> m_disjunctions;
    QStringList m_variableOrder;
};

} // namespace lorix
