// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <lorix/export.h>

#include <QString>

namespace lorix {

// The operators of the query language by name, tightest first:
//
//     !                                  9  one operand, right-associative
//     %contains %matches %isapprox       6  two operands, left-associative
//     < <= > >=                          5
//     == !=                              4
//     ||                                 3
//     && and "implizit &&"               2
//     ( )                                0  no operand
//     EOS                             -100  the end of the query
//
// "||" binds tighter than "&&" on purpose. "implizit &&" is the conjunction
// between two operands that stand side by side; its name is spelled so.

/// The precedence of an operator, higher binds tighter; -1 for other texts.
LORIX_EXPORT int getPrecedence(const QString& operatorName);

/// The number of operands, 0 for brackets and "EOS"; -1 for other texts.
LORIX_EXPORT int getNumArguments(const QString& operatorName);

/// 'l', 'r', or 'x' for brackets, "EOS" and other texts.
LORIX_EXPORT char getAssociation(const QString& operatorName);

} // namespace lorix
