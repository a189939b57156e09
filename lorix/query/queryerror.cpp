// SPDX-License-Identifier: BSD-3-Clause
#include <lorix/query/queryerror.h>

#include <algorithm>

using namespace lorix;

QueryError::QueryError(QueryErrorType type, const QString& errorMessage, int position,
                       const QString& originalText)
    : m_type(type), m_errorMessage(errorMessage), m_position(position), m_originalText(originalText)
{}

bool containsErrors(const QList<QueryError>& errors)
{
    return std::any_of(errors.cbegin(), errors.cend(),
                       [](const QueryError& error) { return error.isError(); });
}

bool containsWarnings(const QList<QueryError>& errors)
{
    return std::any_of(errors.cbegin(), errors.cend(),
                       [](const QueryError& error) { return error.isWarning(); });
}
