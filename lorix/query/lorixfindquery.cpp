// SPDX-License-Identifier: BSD-3-Clause
#include <lorix/container/lorixparser.h>
#include <lorix/query/candidatereader.h>
#include <lorix/query/cnfconstruction.h>
#include <lorix/query/lorixfindquery.h>
#include <lorix/query/queryparser.h>
#include <lorix/query/queryplan.h>
#include <lorix/query/querysearch.h>
#include <lorix/summary/summarycreator.h>

#include <vector>

namespace lorix {

namespace {

QueryError makeSizeError(const QString& query, const Bounds& bounds)
{
    const QString message =
        QStringLiteral("error: the normal form of the query has more than %1 clauses or %2 "
                       "literals. Use fewer \"&&\" within \"||\".")
            .arg(bounds.queryClauses)
            .arg(bounds.queryLiterals);
    return QueryError(QueryErrorFatal, message, 0, query);
}

} // namespace

LorixFindQuery::LorixFindQuery(const QString& query, const Bounds& bounds) : m_bounds(bounds)
{
    setQuery(query);
}

LorixFindQuery::~LorixFindQuery() = default;
LorixFindQuery::LorixFindQuery(const LorixFindQuery&) = default;
LorixFindQuery& LorixFindQuery::operator=(const LorixFindQuery&) = default;

bool LorixFindQuery::setQuery(const QString& query)
{
    m_form.clear();
    const QSharedPointer<ExpressionTreeNode> tree = parseQuery(query, m_errors);
    if (tree) {
        bool exceeded = false;
        m_form = constructCNF(tree, m_bounds, &exceeded);
        if (exceeded)
            m_errors.append(makeSizeError(query, m_bounds));
    }
    m_plan = QSharedPointer<const QueryPlan>::create(m_form);
    return isValid();
}

bool LorixFindQuery::isValid() const
{
    return !containsErrors(m_errors);
}

bool LorixFindQuery::matches(const QList<Summary>& summaries,
                             QHash<QString, QString>* matches) const
{
    const std::vector<Candidate> candidates = makeCandidates(summaries);
    const auto assignment = searchBindings(*m_plan, candidates);
    if (matches)
        *matches = assignment ? describeBindings(*m_plan, candidates, *assignment)
                              : QHash<QString, QString>();
    return assignment.has_value();
}

bool LorixFindQuery::matches(LorixParser& parser, QHash<QString, QString>* matches) const
{
    SummaryCreator creator;
    return this->matches(creator.createSummaries(parser), matches);
}

bool LorixFindQuery::findBindings(const QList<Summary>& summaries,
                                  QList<QueryBinding>* bindings) const
{
    const std::vector<Candidate> candidates = makeCandidates(summaries);
    const auto assignment = searchBindings(*m_plan, candidates);
    if (bindings)
        bindings->clear();
    for (size_t i = 0; bindings && assignment && i < assignment->size(); ++i) {
        const Candidate& candidate = candidates[static_cast<size_t>((*assignment)[i])];
        const auto* summary = static_cast<const Summary*>(candidate.step);
        QueryBinding binding;
        binding.variable = m_plan->variableNames[static_cast<qsizetype>(i)];
        binding.summary = static_cast<int>(summary - summaries.constData());
        if (candidate.file)
            binding.file = static_cast<int>(candidate.file - summary->files.constData());
        bindings->append(binding);
    }
    return assignment.has_value();
}

} // namespace lorix
