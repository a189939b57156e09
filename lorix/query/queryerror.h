// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <lorix/export.h>

#include <QList>
#include <QString>

namespace lorix {

/// How grave a complaint about a query is.
enum QueryErrorType : int {
    QueryErrorFatal = 0,   ///< An error: the query cannot be used.
    QueryErrorWarning = 1, ///< A warning.
};

/// One complaint about a query, with the place that it is about.
class LORIX_EXPORT QueryError
{
public:
    QueryError() = default;
    QueryError(QueryErrorType type, const QString& errorMessage, int position,
               const QString& originalText);

    QueryErrorType type() const { return m_type; }
    bool isError() const { return m_type == QueryErrorFatal; }
    bool isWarning() const { return m_type == QueryErrorWarning; }

    /// The full text, which may have several lines.
    QString errorMessage() const { return m_errorMessage; }
    int position() const { return m_position; } ///< In the query, 0-based, in UTF-16 units.
    /// The piece of the query that the message is about.
    QString originalText() const { return m_originalText; }
    int length() const { return static_cast<int>(m_originalText.size()); }

private:
    QueryErrorType m_type = QueryErrorFatal;
    QString m_errorMessage;
    int m_position = 0;
    QString m_originalText;
};

} // namespace lorix

/// Whether one of the complaints is an error.
LORIX_EXPORT bool containsErrors(const QList<lorix::QueryError>& errors);

/// Whether one of the complaints is a warning.
LORIX_EXPORT bool containsWarnings(const QList<lorix::QueryError>& errors);

namespace lorix {
using ::containsErrors;
using ::containsWarnings;
} // namespace lorix
