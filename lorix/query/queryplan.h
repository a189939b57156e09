// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <lorix/query/candidatereader.h>
#include <lorix/query/conjunctivenormalform.h>
#include <lorix/query/preparedvalue.h>

#include <QHash>
#include <QString>
#include <QStringList>

#include <vector>

namespace lorix {

/// A normal form prepared for searching any number of histories: names are
/// numbers, equal literals are one, constants are read once.
class QueryPlan
{
public:
    enum class Operator { Flag, Compare, NotEqual, And, Or, None };

    /// One side of a literal: an attribute of a variable, or a constant.
    struct Operand
    {
        int variable = -1; ///< -1 for a constant.
        int attribute = -1;
        PreparedValue constant;
    };

    /// A test of one attribute or two, possibly negated.
    struct Literal
    {
        Operator op = Operator::None;
        ComparisonOperator comparison = ComparisonOperator::Equal;
        bool negated = false;
        int uses = 0; ///< In how many places of the form it stands.
        Operand left;
        Operand right;

        bool isUnary() const { return left.variable < 0 || right.variable < 0 || isReflexive(); }
        bool isReflexive() const { return left.variable == right.variable; }
        /// Of a literal with one variable.
        int onlyVariable() const { return left.variable < 0 ? right.variable : left.variable; }
        bool mentions(int v) const { return left.variable == v || right.variable == v; }
        /// With all variables bound.
        bool holds(const PreparedValue& leftValue, const PreparedValue& rightValue) const;
    };

    /// Tests of which one at least must hold.
    struct Clause
    {
        std::vector<int> literals;
        std::vector<int> scope; ///< Variables, ascending.
    };

    /// Where a variable is mentioned.
    struct VariableUse
    {
        bool named = true;
        std::vector<int> ownClauses; ///< Clauses of this variable alone.
        bool hasSharedClauses = false;
    };

    explicit QueryPlan(const ConjunctiveNormalForm& form);

    /// False if a literal can be decided and change again while variables are
    /// bound, which no query's form has: then only the plain search will do.
    bool isMonotone() const { return m_monotone; }

    QStringList variableNames;
    std::vector<VariableUse> variables;
    std::vector<AttributeReader> attributes;
    std::vector<Literal> literals;
    /// Those that can become false: without literals that are never evaluated.
    std::vector<Clause> clauses;

private:
    void addClause(const CNFDisjunction& disjunction);
    int addLiteral(const CNFLiteral& literal);
    Operand makeOperand(const CNFOperand& operand);

    bool m_monotone = true;
    QHash<QString, int> m_variableNumbers;
    QHash<QString, int> m_attributeNumbers;
    QHash<QString, int> m_literalNumbers;
};

} // namespace lorix
