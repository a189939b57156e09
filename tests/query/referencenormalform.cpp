// SPDX-License-Identifier: BSD-3-Clause
#include <query/referencenormalform.h>

using namespace lorix;

namespace reference {

namespace {

bool isNegation(const Node& node)
{
    return node->value.isOperator() && node->value.operatorName() == QLatin1String("!");
}

bool isConjunction(const Node& node)
{
    return node->value.isOperator() && node->value.operatorName().contains(QLatin1String("&&"));
}

bool isDisjunction(const Node& node)
{
    return node->value.isOperator() && node->value.operatorName().contains(QLatin1String("||"));
}

Node makeNode(const char* name, const QList<Node>& children)
{
    Node node(new ExpressionTreeNode);
    node->value = ExpressionValue::fromOperator(QString::fromLatin1(name), -1, QString());
    node->children = children;
    return node;
}

Node handleDeMorgan(const Node& node, const char* newOperator)
{
    return makeNode(newOperator,
                    {makeNode("!", {node->children[0]}), makeNode("!", {node->children[1]})});
}

Node handleDistributive(const Node& a, const Node& b, const Node& c)
{
    return makeNode("&&", {makeNode("||", {a, c}), makeNode("||", {b, c->cloneTree()})});
}

// By value: a node stays what it is in the call while its place is overwritten.
bool transformChildren(Node grandparent, Node parent, int parentIndex);

bool transformTreeNode(Node grandparent, Node parent, Node node, int parentIndex, int childIndex)
{
    Node& place = grandparent->children[parentIndex];
    if (isNegation(parent) && isNegation(node)) {
        place = node->children[0];
        return true;
    }
    if (isNegation(parent) && isConjunction(node)) {
        place = handleDeMorgan(node, "||");
        return true;
    }
    if (isNegation(parent) && isDisjunction(node)) {
        place = handleDeMorgan(node, "&&");
        return true;
    }
    if (isDisjunction(parent) && isConjunction(node)) {
        place = handleDistributive(node->children[0], node->children[1],
                                   parent->children[childIndex == 0 ? 1 : 0]);
        return true;
    }
    return transformChildren(parent, node, childIndex);
}

bool transformChildren(Node grandparent, Node parent, int parentIndex)
{
    bool changed = false;
    for (int i = 0; i < parent->children.size(); ++i) {
        const Node child = parent->children[i];
        if (transformTreeNode(grandparent, parent, child, parentIndex, i))
            changed = true;
    }
    return changed;
}

CNFOperand makeOperand(const Node& node)
{
    if (node->value.isVariable())
        return CNFOperand::fromVariable(node->value.variableName(),
                                        node->value.variableAttribute());
    if (node->value.isString())
        return CNFOperand::fromString(node->value.string());
    return CNFOperand::fromInvalid();
}

CNFLiteral makeLiteral(const Node& node)
{
    if (isNegation(node)) {
        CNFLiteral literal = reference::makeLiteral(node->children[0]);
        literal.setNegated(true);
        return literal;
    }
    if (node->value.isOperator())
        return CNFLiteral(false, reference::makeOperand(node->children[0]),
                          node->value.operatorName(), reference::makeOperand(node->children[1]));
    if (node->value.isVariable())
        return CNFLiteral(false, reference::makeOperand(node));
    return CNFLiteral::fromInvalid();
}

void createCNFStructure(const Node& node, int level, ConjunctiveNormalForm& form)
{
    if (level == 0) {
        if (isConjunction(node)) {
            for (const Node& child : node->children)
                createCNFStructure(child, 0, form);
            return;
        }
        form.addDisjunction(CNFDisjunction());
    }
    if (isDisjunction(node)) {
        for (const Node& child : node->children)
            createCNFStructure(child, 1, form);
        return;
    }
    form.lastDisjunction().addLiteral(reference::makeLiteral(node));
}

QString describeOperand(const CNFOperand& operand)
{
    if (operand.isVariable())
        return operand.variableName() + u':' + operand.variableAttribute();
    return operand.isString() ? u'\'' + operand.string() + u'\'' : QStringLiteral("invalid");
}

} // namespace

ConjunctiveNormalForm constructCNF(const Node& tree)
{
    ConjunctiveNormalForm form;
    if (!tree)
        return form;
    const Node fakeRoot = makeNode("fakeRoot", {tree->cloneTree()});
    while (transformChildren(fakeRoot, fakeRoot->children[0], 0))
        ;
    createCNFStructure(fakeRoot->children[0], 0, form);
    return form;
}

QString describe(const ConjunctiveNormalForm& form)
{
    QString result;
    for (int d = 0; d < form.numDisjunctions(); ++d) {
        const CNFDisjunction& clause = form.disjunctionAt(d);
        QStringList literals;
        for (int i = 0; i < clause.numLiterals(); ++i) {
            const CNFLiteral& literal = clause.literalAt(i);
            QString text = QStringLiteral("invalid");
            if (literal.isPredicate())
                text = describeOperand(literal.left()) + u' ' + literal.op() + u' ' +
                       describeOperand(literal.right());
            else if (literal.isBoolVariable())
                text = describeOperand(literal.boolVariable());
            literals += literal.isNegated() ? u'!' + text : text;
        }
        result += u'[' + literals.join(QStringLiteral(", ")) + QStringLiteral("]\n");
    }
    return result;
}

} // namespace reference
