// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <lorix/export.h>
#include <lorix/query/returnvalue.h>

namespace lorix {

// The operators of the query language, left operand first.
//
// Each gives a Boolean where its operands suit it. Where they do not, the
// result is the left operand if that is not a valid value, else the right one
// if that is not, else TypeMismatch with an empty text; so the cause that
// comes first travels on.

/// "==": two strings are equal but for case. "1.0" and "1" are not.
LORIX_EXPORT ReturnValue evaluateEq(const ReturnValue& left, const ReturnValue& right);

/// "!=": evaluateEq() negated where that decides.
LORIX_EXPORT ReturnValue evaluateNEq(const ReturnValue& left, const ReturnValue& right);

/// "%matches": the right string is a pattern with "*", "?" and "[...]" that
/// must fit the whole left string. Only the pattern is lower-cased, so that a
/// capital letter of the left string is met by wildcards alone.
LORIX_EXPORT ReturnValue evaluateMatches(const ReturnValue& left, const ReturnValue& right);

/// "%contains": the right string occurs in the left one, in any case.
LORIX_EXPORT ReturnValue evaluateContains(const ReturnValue& left, const ReturnValue& right);

/// "%isapprox": two numbers whose difference is less than a hundredth of the
/// greater one; any two negative numbers are.
LORIX_EXPORT ReturnValue evaluateIsApprox(const ReturnValue& left, const ReturnValue& right);

// The orderings compare two numbers, and only if one of the texts is no number
// two dates. A date that begins with its year reads as a number, the year.

/// ">"
LORIX_EXPORT ReturnValue evaluateGreater(const ReturnValue& left, const ReturnValue& right);
/// ">="
LORIX_EXPORT ReturnValue evaluateGreaterEq(const ReturnValue& left, const ReturnValue& right);
/// "<"
LORIX_EXPORT ReturnValue evaluateLess(const ReturnValue& left, const ReturnValue& right);
/// "<="
LORIX_EXPORT ReturnValue evaluateLessEq(const ReturnValue& left, const ReturnValue& right);

/// "&&": TypeMismatch if either operand is a string; a left operand that is
/// not true is the result, else the right one.
LORIX_EXPORT ReturnValue evaluateAnd(const ReturnValue& left, const ReturnValue& right);

/// "||": true if the left operand is true; else TypeMismatch for a string on
/// the right; else the right operand, whatever the left one was.
LORIX_EXPORT ReturnValue evaluateOr(const ReturnValue& left, const ReturnValue& right);

/// "!": a Boolean negated, TypeMismatch for a string, anything else unchanged.
LORIX_EXPORT ReturnValue evaluateNot(const ReturnValue& operand);

} // namespace lorix
