// SPDX-License-Identifier: BSD-3-Clause
#include <lorix/query/preparedvalue.h>
#include <lorix/query/queryoperators.h>

namespace lorix {

namespace {

ReturnValue passThrough(const ReturnValue& left, const ReturnValue& right)
{
    if (!left.isValid())
        return left;
    if (!right.isValid())
        return right;
    return ReturnValue(TypeMismatch, QString());
}

ReturnValue evaluate(ComparisonOperator op, const ReturnValue& left, const ReturnValue& right)
{
    switch (compare(op, PreparedValue(left), PreparedValue(right))) {
    case Comparison::True:
        return ReturnValue::fromBool(true);
    case Comparison::False:
        return ReturnValue::fromBool(false);
    case Comparison::Unsuitable:
        break;
    }
    return passThrough(left, right);
}

} // namespace

ReturnValue evaluateEq(const ReturnValue& left, const ReturnValue& right)
{
    return evaluate(ComparisonOperator::Equal, left, right);
}

ReturnValue evaluateNEq(const ReturnValue& left, const ReturnValue& right)
{
    const ReturnValue equal = evaluateEq(left, right);
    return equal.isBool() ? evaluateNot(equal) : equal;
}

ReturnValue evaluateMatches(const ReturnValue& left, const ReturnValue& right)
{
    return evaluate(ComparisonOperator::Matches, left, right);
}

ReturnValue evaluateContains(const ReturnValue& left, const ReturnValue& right)
{
    return evaluate(ComparisonOperator::Contains, left, right);
}

ReturnValue evaluateIsApprox(const ReturnValue& left, const ReturnValue& right)
{
    return evaluate(ComparisonOperator::IsApprox, left, right);
}

ReturnValue evaluateGreater(const ReturnValue& left, const ReturnValue& right)
{
    return evaluate(ComparisonOperator::Greater, left, right);
}

ReturnValue evaluateGreaterEq(const ReturnValue& left, const ReturnValue& right)
{
    return evaluate(ComparisonOperator::GreaterEqual, left, right);
}

ReturnValue evaluateLess(const ReturnValue& left, const ReturnValue& right)
{
    return evaluate(ComparisonOperator::Less, left, right);
}

ReturnValue evaluateLessEq(const ReturnValue& left, const ReturnValue& right)
{
    return evaluate(ComparisonOperator::LessEqual, left, right);
}

ReturnValue evaluateAnd(const ReturnValue& left, const ReturnValue& right)
{
    if (left.isString() || right.isString())
        return ReturnValue(TypeMismatch, QString());
    return left.toBool() ? right : left;
}

ReturnValue evaluateOr(const ReturnValue& left, const ReturnValue& right)
{
    if (left.toBool())
        return left;
    if (right.isString())
        return ReturnValue(TypeMismatch, QString());
    return right;
}

ReturnValue evaluateNot(const ReturnValue& operand)
{
    if (operand.isBool())
        return ReturnValue::fromBool(!operand.toBool());
    if (operand.isString())
        return ReturnValue(TypeMismatch, QString());
    return operand;
}

} // namespace lorix
