// SPDX-License-Identifier: BSD-3-Clause
#include <lorix/query/cnfconstruction.h>
#include <lorix/query/cnfrewriter.h>

#include <QSet>
#include <QStringList>

#include <limits>
#include <vector>

using namespace lorix;

namespace {

QStringList namesInOrder(const ExpressionTreeNode& root)
{
    QStringList names;
    QSet<QString> known;
    std::vector<const ExpressionTreeNode*> waiting{&root};
    while (!waiting.empty()) {
        const ExpressionTreeNode* node = waiting.back();
        waiting.pop_back();
        const QString name = node->value.variableName();
        if (node->value.isVariable() && !known.contains(name)) {
            known.insert(name);
            names.append(name);
        }
        for (auto child = node->children.crbegin(); child != node->children.crend(); ++child)
            waiting.push_back(child->data());
    }
    return names;
}

} // namespace

CNFLiteral makeLiteral(QSharedPointer<ExpressionTreeNode> node)
{
    bool negated = false;
    while (node->value.operatorName() == QLatin1String("!") && !node->children.isEmpty()) {
        negated = true;
        node = node->children.first();
    }
    CNFLiteral literal;
    if (node->value.isVariable())
        literal = CNFLiteral(false, makeOperand(node));
    else if (node->value.isOperator() && node->children.size() >= 2)
        literal = CNFLiteral(false, makeOperand(node->children[0]), node->value.operatorName(),
                             makeOperand(node->children[1]));
    literal.setNegated(negated);
    return literal;
}

CNFOperand makeOperand(const QSharedPointer<ExpressionTreeNode>& node)
{
    const ExpressionValue& value = node->value;
    if (value.isVariable())
        return CNFOperand::fromVariable(value.variableName(), value.variableAttribute());
    if (value.isString())
        return CNFOperand::fromString(value.string());
    return CNFOperand::fromInvalid();
}

namespace lorix {

ConjunctiveNormalForm constructCNF(const QSharedPointer<ExpressionTreeNode>& tree)
{
    Bounds unbounded;
    unbounded.queryClauses = std::numeric_limits<int>::max();
    unbounded.queryLiterals = std::numeric_limits<int>::max();
    return constructCNF(tree, unbounded, nullptr);
}

ConjunctiveNormalForm constructCNF(const QSharedPointer<ExpressionTreeNode>& tree,
                                   const Bounds& bounds, bool* exceeded)
{
    if (exceeded)
        *exceeded = false;
    if (!tree)
        return {};
    CNFRewriter rewriter(tree);
    if (rewriter.numClauses() > bounds.queryClauses ||
        rewriter.numLiterals() > bounds.queryLiterals) {
        if (exceeded)
            *exceeded = true;
        return {};
    }
    ConjunctiveNormalForm form = rewriter.rewrite();
    form.setVariableOrder(namesInOrder(*tree));
    return form;
}

} // namespace lorix
