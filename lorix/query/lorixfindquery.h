// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <lorix/bounds.h>
#include <lorix/export.h>
#include <lorix/query/conjunctivenormalform.h>
#include <lorix/query/queryerror.h>
#include <lorix/summary/summary.h>

#include <QHash>
#include <QList>
#include <QSharedPointer>
#include <QString>

namespace lorix {

class LorixParser;
class QueryPlan;

/// What one variable of a query is bound to.
struct QueryBinding
{
    QString variable; ///< Its name; "@unnamed-<number>" if the query gives none.
    int summary = -1; ///< Index of the step in the list of summaries.
    int file = -1;    ///< Index in that step's files, -1 for the step itself.

    bool operator==(const QueryBinding& other) const
    {
        return variable == other.variable && summary == other.summary && file == other.file;
    }
};

/// A find query: compiled once, then matched against any number of histories.
///
///     LorixFindQuery query("a:tool == 'python' && a:user == b:user");
///     if (!query.isValid())
///         show(query.getErrors());
///     else if (query.matches(summaries, &bindings))
///         show(bindings);
///
/// Matching changes nothing in the object but caches, which copies share: make
/// an object of its own for every thread.
class LORIX_EXPORT LorixFindQuery
{
public:
    /// Compiles the query under the bounds, as setQuery() does it.
    explicit LorixFindQuery(const QString& query, const Bounds& bounds = Bounds());
    ~LorixFindQuery();
    LorixFindQuery(const LorixFindQuery&);
    LorixFindQuery& operator=(const LorixFindQuery&);

    /// Compiles a query in place of the present one. On a mistake, or when the
    /// normal form would pass Bounds::queryClauses or Bounds::queryLiterals,
    /// the result is false, getErrors() tells why, and the query is empty.
    bool setQuery(const QString& query);

    /// Bounds for the next setQuery().
    void setBounds(const Bounds& bounds) { m_bounds = bounds; }

    QList<QueryError> getErrors() const { return m_errors; }

    /// There are no errors.
    bool isValid() const;

    /// Whether the history matches, as evaluateCNF() decides it; an empty query
    /// matches every history. `matches`, if not null, is set to a description
    /// per variable, or emptied where there is no match.
    bool matches(const QList<Summary>& summaries, QHash<QString, QString>* matches = nullptr) const;

    /// The same for the history of an open container.
    bool matches(LorixParser& parser, QHash<QString, QString>* matches = nullptr) const;

    /// The same search, which tells what each variable is bound to, in the
    /// order of their first appearance in the query.
    bool findBindings(const QList<Summary>& summaries, QList<QueryBinding>* bindings) const;

    /// The compiled query.
    const ConjunctiveNormalForm& normalForm() const { return m_form; }

private:
    Bounds m_bounds;
    ConjunctiveNormalForm m_form;
    QSharedPointer<const QueryPlan> m_plan;
    QList<QueryError> m_errors;
};

} // namespace lorix
