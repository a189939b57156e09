// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <apps/lorix/text.h>

#include <lorix/query/lorixfindquery.h>
#include <lorix/query/queryerror.h>

#include <QJsonObject>
#include <QList>
#include <QString>

namespace lorix::cli {

/// What is wrong with a query, each complaint with the line that it is about
/// and carets under the place. Printable, without a line feed at the end.
QString queryComplaints(const QString& query, const QList<QueryError>& errors, const Paint& paint);

/// How a valid query is read: its tokens, its tree and its normal form.
QString queryExplanation(const QString& query, const LorixFindQuery& compiled, const Paint& paint);

/// The same for programs: "tokens" and "clauses".
QJsonObject queryExplanationJson(const QString& query, const LorixFindQuery& compiled);

/// Attributes and operators as two tables, for the help.
QString queryLanguage();

} // namespace lorix::cli
