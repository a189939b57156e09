// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <lorix/export.h>
#include <lorix/query/expressiontreenode.h>
#include <lorix/query/queryerror.h>
#include <lorix/query/returnvalue.h>

#include <QHash>
#include <QList>
#include <QSharedPointer>
#include <QString>

// Static types of queries. A type description is a list of words with commas
// between them, out of "string", "number", "date", "boolean" and the same with
// "no" before: the value is one, or cannot be one; a kind that is not mentioned
// is possible.
//
// Whatever is doubtful is recorded as an error, even where its text says
// "warning". "==" and "!=" take operands of any type.

/// The description of every attribute, by its name in lower case.
LORIX_EXPORT QHash<QString, QString> getAttributeTypes();

/// The description of a subtree; what is wrong below and in it is appended,
/// operands first. Checking ends early when the messages pass 16 Mi characters.
LORIX_EXPORT QString getTypes(QSharedPointer<lorix::ExpressionTreeNode> node,
                              const QHash<QString, QString>& attributeTypes,
                              QList<lorix::QueryError>& errors);

/// The description of a literal: a string, perhaps a test, and a number or a
/// date if it reads as one.
LORIX_EXPORT QString getTypesOfString(const lorix::ReturnValue& value);

/// Whether a type fits a description: 4 (does not fit) if `description` holds "no" and the type,
/// else 1 (fits) if it holds the type, else 2 (may fit).
LORIX_EXPORT int checkIfTypeFits(const QString& type, const QString& description);

/// "\n'%1' is not a %2."
LORIX_EXPORT QString wrongTypeStr(const QString& text, const QString& type);

/// "\n'%1' may not be a %2."
LORIX_EXPORT QString maybeWrongTypeStr(const QString& text, const QString& type);

/// Complains about operands that are not, or may not be, of one type.
LORIX_EXPORT void createErrorOneType(const QSharedPointer<lorix::ExpressionTreeNode>& node,
                                     const QString& left, const QString& right, const QString& type,
                                     QList<lorix::QueryError>& errors);

/// Complains about operands that are not, or may not be, both of the one or
/// both of the other type.
LORIX_EXPORT void createErrorTwoTypes(const QSharedPointer<lorix::ExpressionTreeNode>& node,
                                      const QString& left, const QString& right,
                                      const QString& typeA, const QString& typeB,
                                      QList<lorix::QueryError>& errors);

namespace lorix {

using ::checkIfTypeFits;
using ::createErrorOneType;
using ::createErrorTwoTypes;
using ::getAttributeTypes;
using ::getTypes;
using ::getTypesOfString;
using ::maybeWrongTypeStr;
using ::wrongTypeStr;

/// Checks a tree as createTree() gives it. True when the query may be
/// evaluated: nothing was recorded as an error, and the root is a boolean.
LORIX_EXPORT bool checkQueryTypes(const QSharedPointer<ExpressionTreeNode>& root,
                                  QList<QueryError>& errors);

/// "implizit &&", "&&" and "||": two booleans.
LORIX_EXPORT void checkLogicalOperators(const QSharedPointer<ExpressionTreeNode>& node,
                                        const QString& left, const QString& right,
                                        QList<QueryError>& errors);

/// The orderings: two numbers or two dates. Callers rely on the spelling.
LORIX_EXPORT void checkComparissonOperators(const QSharedPointer<ExpressionTreeNode>& node,
                                            const QString& left, const QString& right,
                                            QList<QueryError>& errors);

/// "%matches" and "%contains": two strings.
LORIX_EXPORT void checkStringOperators(const QSharedPointer<ExpressionTreeNode>& node,
                                       const QString& left, const QString& right,
                                       QList<QueryError>& errors);

/// "%isapprox": two numbers.
LORIX_EXPORT void checkNumberOperators(const QSharedPointer<ExpressionTreeNode>& node,
                                       const QString& left, const QString& right,
                                       QList<QueryError>& errors);

/// "!": one boolean.
LORIX_EXPORT void checkUnaryLogicalOperators(const QSharedPointer<ExpressionTreeNode>& node,
                                             const QString& description, QList<QueryError>& errors);

} // namespace lorix
