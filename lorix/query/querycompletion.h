// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <lorix/export.h>

#include <QList>
#include <QString>
#include <QStringList>

namespace lorix {

/// One attribute that a query may name after a variable's colon.
struct QueryAttribute
{
    QString name;        ///< In lower case; "user{NAME}" stands for all user attributes.
    QString type;        ///< What it reads as: "text", "number", "date" or "yes or no".
    QString description; ///< A few words, no full stop.
    bool ofSteps = false;
    bool ofFiles = false;
};

/// One operator of the query language.
struct QueryOperator
{
    QString name;
    int operands = 0;
    int precedence = 0;  ///< Higher binds tighter; 0 for brackets.
    QString description; ///< A few words, no full stop.
};

/// Every attribute, in the order in which a person would look for them. For
/// help, completion and editors.
LORIX_EXPORT QList<QueryAttribute> queryAttributes();

/// Every operator, brackets included, the tightest first.
LORIX_EXPORT QList<QueryOperator> queryOperators();

/// What may stand at the end of an unfinished query instead of its last word:
/// attributes after a colon ("a:to" gives "a:tool"), operators after a percent
/// sign. Each is the last word as it would be, in ascending order.
LORIX_EXPORT QStringList queryCompletions(const QString& unfinished);

} // namespace lorix
