// SPDX-License-Identifier: BSD-3-Clause
#include <lorix/query/queryoperators.h>
#include <lorix/query/queryplan.h>

#include <algorithm>
#include <iterator>

namespace lorix {

namespace {

struct NamedOperator
{
    QLatin1String name;
    QueryPlan::Operator op;
    ComparisonOperator comparison = ComparisonOperator::Equal;
};

constexpr NamedOperator namedOperators[] = {
    {QLatin1String("=="), QueryPlan::Operator::Compare, ComparisonOperator::Equal},
    {QLatin1String("!="), QueryPlan::Operator::NotEqual},
    {QLatin1String("%matches"), QueryPlan::Operator::Compare, ComparisonOperator::Matches},
    {QLatin1String("%contains"), QueryPlan::Operator::Compare, ComparisonOperator::Contains},
    {QLatin1String("%isapprox"), QueryPlan::Operator::Compare, ComparisonOperator::IsApprox},
    {QLatin1String(">"), QueryPlan::Operator::Compare, ComparisonOperator::Greater},
    {QLatin1String(">="), QueryPlan::Operator::Compare, ComparisonOperator::GreaterEqual},
    {QLatin1String("<"), QueryPlan::Operator::Compare, ComparisonOperator::Less},
    {QLatin1String("<="), QueryPlan::Operator::Compare, ComparisonOperator::LessEqual},
    {QLatin1String("&&"), QueryPlan::Operator::And},
    {QLatin1String("||"), QueryPlan::Operator::Or},
};

// Texts that are equal exactly if the operands are.
QString keyOf(const CNFOperand& operand)
{
    if (operand.isString())
        return u's' + QString::number(operand.string().size()) + u':' + operand.string();
    if (!operand.isVariable())
        return QStringLiteral("i");
    return u'v' + QString::number(operand.variableName().size()) + u':' + operand.variableName() +
           QString::number(operand.variableAttribute().size()) + u':' + operand.variableAttribute();
}

QString keyOf(const CNFLiteral& literal)
{
    const QString sign = literal.isNegated() ? QStringLiteral("!") : QString();
    if (literal.isBoolVariable())
        return sign + u'b' + keyOf(literal.boolVariable());
    return sign + u'p' + literal.op() + u' ' + keyOf(literal.left()) + keyOf(literal.right());
}

} // namespace

bool QueryPlan::Literal::holds(const PreparedValue& leftValue,
                               const PreparedValue& rightValue) const
{
    bool result = false;
    switch (op) {
    case Operator::Flag:
        result = leftValue.value().toBool();
        break;
    case Operator::Compare:
        result = compare(comparison, leftValue, rightValue) == Comparison::True;
        break;
    case Operator::NotEqual:
        result = compare(ComparisonOperator::Equal, leftValue, rightValue) == Comparison::False;
        break;
    case Operator::And:
        result = evaluateAnd(leftValue.value(), rightValue.value()).toBool();
        break;
    case Operator::Or:
        result = evaluateOr(leftValue.value(), rightValue.value()).toBool();
        break;
    case Operator::None:
        break;
    }
    return result != negated;
}

QueryPlan::QueryPlan(const ConjunctiveNormalForm& form) : variableNames(form.variableNames())
{
    for (const QString& name : std::as_const(variableNames)) {
        m_variableNumbers.insert(name, static_cast<int>(variables.size()));
        variables.emplace_back();
        variables.back().named = !name.startsWith(u'@');
    }
    for (int i = 0; i < form.numDisjunctions(); ++i)
        addClause(form.disjunctionAt(i));
}

void QueryPlan::addClause(const CNFDisjunction& disjunction)
{
    Clause clause;
    bool neverFalse = disjunction.numLiterals() == 0;
    for (int i = 0; i < disjunction.numLiterals(); ++i) {
        const CNFLiteral& literal = disjunction.literalAt(i);
        const bool evaluated = literal.left().isVariable() || literal.right().isVariable() ||
                               literal.boolVariable().isVariable();
        if (!evaluated) {
            neverFalse = true;
            continue;
        }
        const int number = addLiteral(literal);
        clause.literals.push_back(number);
        const Literal& added = literals[static_cast<size_t>(number)];
        for (const int variable : {added.left.variable, added.right.variable}) {
            if (variable >= 0)
                clause.scope.push_back(variable);
        }
    }
    if (neverFalse)
        return;
    std::sort(clause.scope.begin(), clause.scope.end());
    clause.scope.erase(std::unique(clause.scope.begin(), clause.scope.end()), clause.scope.end());
    const auto number = static_cast<int>(clauses.size());
    for (const int variable : clause.scope) {
        VariableUse& use = variables[static_cast<size_t>(variable)];
        if (clause.scope.size() == 1)
            use.ownClauses.push_back(number);
        else
            use.hasSharedClauses = true;
    }
    clauses.push_back(std::move(clause));
}

int QueryPlan::addLiteral(const CNFLiteral& literal)
{
    const QString key = keyOf(literal);
    const auto known = m_literalNumbers.constFind(key);
    if (known != m_literalNumbers.cend()) {
        ++literals[static_cast<size_t>(*known)].uses;
        return *known;
    }
    Literal added;
    added.uses = 1;
    added.negated = literal.isNegated();
    if (literal.isBoolVariable()) {
        added.op = Operator::Flag;
        added.left = makeOperand(literal.boolVariable());
    } else {
        const QString name = literal.op();
        const auto* const op =
            std::find_if(std::begin(namedOperators), std::end(namedOperators),
                         [&](const NamedOperator& candidate) { return name == candidate.name; });
        if (op != std::end(namedOperators)) {
            added.op = op->op;
            added.comparison = op->comparison;
        }
        added.left = makeOperand(literal.left());
        added.right = makeOperand(literal.right());
    }
    if (!added.isUnary() && (added.op == Operator::And || added.op == Operator::Or))
        m_monotone = false;
    const auto number = static_cast<int>(literals.size());
    literals.push_back(std::move(added));
    m_literalNumbers.insert(key, number);
    return number;
}

QueryPlan::Operand QueryPlan::makeOperand(const CNFOperand& operand)
{
    Operand result;
    if (operand.isString())
        result.constant = PreparedValue(ReturnValue::fromString(operand.string()));
    if (!operand.isVariable())
        return result;
    result.variable = m_variableNumbers.value(operand.variableName());
    const AttributeReader reader(operand.variableAttribute());
    const auto known = m_attributeNumbers.constFind(reader.key);
    if (known != m_attributeNumbers.cend()) {
        result.attribute = *known;
    } else {
        result.attribute = static_cast<int>(attributes.size());
        attributes.push_back(reader);
        m_attributeNumbers.insert(reader.key, result.attribute);
    }
    return result;
}

} // namespace lorix
