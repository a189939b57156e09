// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <lorix/export.h>

#include <QDateTime>
#include <QString>

/// The date that ReturnValue::toDate() reads: year, month, day.
extern LORIX_EXPORT const QString dateRegstr;

/// The time that ReturnValue::toDate() reads: hour, minute, optional second.
extern LORIX_EXPORT const QString timeRegstr;

namespace lorix {

using ::dateRegstr;
using ::timeRegstr;

/// What kind of value a ReturnValue is. The numbers are compared directly and
/// stay as they are; 4 is not used.
enum ReturnValueType : int {
    Boolean = 0,            ///< A truth value, its text "true" or "false".
    String = 1,             ///< A string; numbers and dates are strings too.
    NoSuchAttribute = 2,    ///< The bound step or file has no such attribute.
    TypeMismatch = 3,       ///< An operator got operands of unsuitable types.
    InvalidOperand = 5,     ///< The operand is neither a string nor a variable.
    UnassignedVariable = 6, ///< The operand is a variable that is not bound yet.
};

/// One value of the query evaluator: a literal of the query, an attribute's
/// value, or the result of an operator.
///
/// Numbers and dates have no type of their own: they are strings that happen
/// to read as a number or a date. Values of the other kinds than Boolean and
/// String say why there is no value; operators pass them on unchanged.
struct LORIX_EXPORT ReturnValue
{
    ReturnValueType type = InvalidOperand;
    QString text; ///< "true" or "false", the string, or empty.

    ReturnValue() = default;
    ReturnValue(ReturnValueType valueType, const QString& valueText);

    static ReturnValue fromBool(bool b);
    static ReturnValue fromString(const QString& s);
    /// A string in general format with six significant digits: 1234567 becomes
    /// "1.23457e+06".
    static ReturnValue fromNumber(float f);

    bool isBool() const;
    bool isString() const;
    bool isUnassignedVariable() const;
    bool isValid() const;  ///< Boolean or String.
    bool isNumber() const; ///< toNumber() succeeds.
    bool isDate() const;   ///< toDate() succeeds.

    /// The text of a String, otherwise an empty string and `*ok` false.
    QString toString(bool* ok = nullptr) const;

    /// True for a Boolean with the text "true"; `*ok` tells whether it is a
    /// Boolean.
    bool toBool(bool* ok = nullptr) const;

    /// The number that the text begins with, whatever the type: "12abc" reads
    /// as 12, "1.5KB" as 1536 (kb, mb and gb, in any case, end the text and
    /// stand for powers of 1024). Without a number, or with one that a float
    /// cannot hold, `*ok` is false. Commas are looked for but never convert.
    float toNumber(bool* ok = nullptr) const;

    /// The local date and time that the text begins with, whatever the type:
    /// "2013-05-01 12:30:15", "2013-5-1" (midnight) or "12:30" (today). A year
    /// of two digits is taken as it stands. Otherwise a null date-time and
    /// `*ok` false.
    QDateTime toDate(bool* ok = nullptr) const;

    /// Identity of values: same type and the same text. Not the query's "==".
    bool operator==(const ReturnValue& other) const;
    bool operator!=(const ReturnValue& other) const { return !(*this == other); }
};

} // namespace lorix
