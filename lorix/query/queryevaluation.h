// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <lorix/export.h>
#include <lorix/query/cnfliteralindex.h>
#include <lorix/query/conjunctivenormalform.h>
#include <lorix/query/returnvalue.h>
#include <lorix/summary/summary.h>

#include <QHash>
#include <QList>
#include <QMultiHash>
#include <QString>

namespace lorix {

/// What is known of a literal.
enum EvaluationResult : int {
    EvaluationUndecided = 0, ///< Some operand is an unbound variable.
    EvaluationTrue = 1,
    EvaluationFalse = 2,
};

/// What stays the same during a search.
struct StaticParams
{
    /// All steps and files, each step followed by its files.
    QList<QHash<QString, ReturnValue>> candidates;
    ConjunctiveNormalForm cnf;
    /// For each variable every literal that mentions it.
    QMultiHash<QString, CNFLiteralIndex> variableLocations;
    /// Each variable once; its index is the variable's number.
    QList<QString> variableNames;
};

/// What a search changes.
struct DynamicParams
{
    QList<bool> candidateUsed;              ///< Bound to a named variable, per candidate.
    QList<int> assignment;                  ///< Candidate per variable, -1 while unbound.
    QList<QList<EvaluationResult>> results; ///< Per clause and literal.
};

/// Searches a history for the first binding of the form's variables that leaves
/// no clause false: candidates in order of the history, earlier ones preferred
/// for earlier variables (see ConjunctiveNormalForm::variableNames()). Named
/// variables are bound to different candidates; those whose names begin with
/// "@" may share theirs. On success `matches` is set to what
/// getVariableAssociations() gives, else it stays as it is.
///
/// A literal without variables is never evaluated: its clause cannot become
/// false. A form without variables holds for every history.
LORIX_EXPORT bool evaluateCNF(const QList<Summary>& summaries, const ConjunctiveNormalForm& cnf,
                              QHash<QString, QString>& matches);

} // namespace lorix

// The search in its plain form, step by step, from any state. It tries
// candidate after candidate; evaluateCNF() finds the same binding without.

/// Binds the variables that are unbound, and returns whether that succeeds.
LORIX_EXPORT bool davisPutnam(const lorix::StaticParams& statics, lorix::DynamicParams dynamics,
                              QHash<QString, QString>& matches);

/// Evaluates the literals of the variable with this number, which is bound, and
/// goes on with davisPutnam() unless that makes a clause false.
LORIX_EXPORT bool evaluateVariables(const lorix::StaticParams& statics,
                                    lorix::DynamicParams dynamics, int variable,
                                    QHash<QString, QString>& matches);

/// Number of the first unbound variable, or -1.
LORIX_EXPORT int findNextVariableIndex(const lorix::DynamicParams& dynamics);

/// True unless every entry is false, so false for no entries.
LORIX_EXPORT bool disjunctionIsSatisfiable(const QList<lorix::EvaluationResult>& results);

/// The literal under the present bindings. One that is neither predicate nor
/// boolean variable is false before negation.
LORIX_EXPORT lorix::EvaluationResult evaluateLiteral(const lorix::StaticParams& statics,
                                                     const lorix::DynamicParams& dynamics,
                                                     const lorix::CNFLiteral& literal);

/// A boolean variable, its negation left out of account.
LORIX_EXPORT lorix::EvaluationResult evaluateBoolVariable(const lorix::StaticParams& statics,
                                                          const lorix::DynamicParams& dynamics,
                                                          const lorix::CNFLiteral& literal);

/// A comparison, its negation left out of account.
LORIX_EXPORT lorix::EvaluationResult evaluatePredicate(const lorix::StaticParams& statics,
                                                       const lorix::DynamicParams& dynamics,
                                                       const lorix::CNFLiteral& literal);

/// The operand's value under the present bindings.
LORIX_EXPORT lorix::ReturnValue operandToReturnValue(const lorix::StaticParams& statics,
                                                     const lorix::DynamicParams& dynamics,
                                                     const lorix::CNFOperand& operand);

/// For each variable what getVariableValue() says of its candidate, "invalid"
/// while it is unbound.
LORIX_EXPORT QHash<QString, QString> getVariableAssociations(const lorix::StaticParams& statics,
                                                             const lorix::DynamicParams& dynamics);

namespace lorix {
using ::davisPutnam;
using ::disjunctionIsSatisfiable;
using ::evaluateBoolVariable;
using ::evaluateLiteral;
using ::evaluatePredicate;
using ::evaluateVariables;
using ::findNextVariableIndex;
using ::getVariableAssociations;
using ::operandToReturnValue;
} // namespace lorix
