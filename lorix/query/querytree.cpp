// SPDX-License-Identifier: BSD-3-Clause
#include <lorix/query/querytree.h>
#include <lorix/query/sharedslice.h>

#include <QStack>

#include <algorithm>
#include <utility>
#include <vector>

using namespace lorix;

namespace {

using Node = QSharedPointer<ExpressionTreeNode>;

constexpr int bracketPrecedence = 10;

// Names that the sets of all nodes together may hold; about 100 bytes each.
constexpr qsizetype storedNames = 1000000;

class TreeBuilder
{
public:
    explicit TreeBuilder(const QString& query) : m_query(query)
    {
        m_operators.push(makeEndOfStreamOperator());
    }

    void addLeaf(const ExpressionValue& token) { m_operands.push(Node::create(token)); }

    void addOperator(const ExpressionValue& token)
    {
        while (!m_operators.isEmpty() && bindsBefore(m_operators.top(), token))
            reduce(m_operators.pop());
        m_operators.push(token);
    }

    Node root() const { return m_complete && m_operands.size() == 1 ? m_operands.top() : Node(); }

private:
    static bool bindsBefore(const ExpressionValue& top, const ExpressionValue& token)
    {
        return top.precedence() > token.precedence() ||
               (top.precedence() == token.precedence() && token.association() == 'l');
    }

    void reduce(const ExpressionValue& op)
    {
        const int count = std::max(op.numArgs(), 0);
        if (count == 0 || m_operands.size() < count) {
            m_complete = false;
            return;
        }
        Node node = Node::create(op);
        node->children = m_operands.mid(m_operands.size() - count);
        m_operands.resize(m_operands.size() - count);
        qsizetype begin = node->children.first()->position;
        qsizetype end = 0;
        for (const Node& child : std::as_const(node->children)) {
            begin = std::min<qsizetype>(begin, child->position);
            end = std::max(end, child->position + child->text.size());
        }
        node->position = static_cast<int>(begin);
        node->text = sharedSlice(m_query, begin, end - begin);
        m_operands.push(node);
    }

    QString m_query;
    QStack<ExpressionValue> m_operators;
    QStack<Node> m_operands;
    bool m_complete = true;
};

bool takesTruthValues(const ExpressionValue& value)
{
    const QString name = value.operatorName();
    return name.contains(QLatin1String("&&")) || name.contains(QLatin1String("||")) ||
           name == QLatin1String("!");
}

// Names the variables of a tree in one walk, and then fills the sets.
class VariableNamer
{
public:
    QSet<QString> name(const Node& root, int counter)
    {
        std::vector<Frame> frames{{root.data(), counter, 0, 0, {}}};
        for (;;) {
            Frame& frame = frames.back();
            if (frame.nextChild < frame.node->children.size()) {
                const Node& child = frame.node->children[frame.nextChild++];
                if (child)
                    frames.push_back({child.data(), frame.counter, 0, 0, {}});
                continue;
            }
            QSet<QString> names = finish(frame);
            frames.pop_back();
            if (frames.empty()) {
                store(root, names);
                return names;
            }
            unite(frames.back(), std::move(names));
        }
    }

private:
    struct Frame
    {
        ExpressionTreeNode* node;
        int counter;
        qsizetype nextChild;
        qsizetype largestChild; // Size of the largest set of a child.
        QSet<QString> names;
    };

    QSet<QString> finish(Frame& frame)
    {
        ExpressionValue& value = frame.node->value;
        if (value.isVariable()) {
            if (value.variableName().isEmpty())
                value.setVariableName(QStringLiteral("@unnamed-%1").arg(frame.counter + 1));
            frame.names.insert(value.variableName());
        }
        // A set as large as a child's is that child's and costs nothing.
        if (frame.names.size() != frame.largestChild)
            m_stored += frame.names.size();
        m_nodes.push_back(frame.node);
        return std::move(frame.names);
    }

    static void unite(Frame& frame, QSet<QString>&& names)
    {
        frame.counter += static_cast<int>(names.size());
        frame.largestChild = std::max(frame.largestChild, names.size());
        // The smaller set goes into the larger one, whichever is whose.
        if (frame.names.size() < names.size())
            frame.names.swap(names);
        frame.names.unite(names);
    }

    void store(const Node& root, const QSet<QString>& names) const
    {
        const bool everywhere = m_stored <= storedNames;
        for (ExpressionTreeNode* node : m_nodes) {
            node->variables.clear();
            if (node->value.isVariable())
                node->variables.insert(node->value.variableName());
            if (everywhere)
                uniteChildren(*node);
        }
        root->variables = names;
    }

    static void uniteChildren(ExpressionTreeNode& node)
    {
        for (const Node& child : std::as_const(node.children)) {
            if (!child)
                continue;
            QSet<QString> names = child->variables;
            if (names.size() > node.variables.size())
                names.swap(node.variables);
            if (!node.variables.contains(names))
                node.variables.unite(names);
        }
    }

    qsizetype m_stored = 0;
    std::vector<ExpressionTreeNode*> m_nodes; // Children before their parents.
};

} // namespace

QSharedPointer<ExpressionTreeNode> createTree(QList<ExpressionValue> tokens, const QString& query,
                                              QList<QueryError>& errors)
{
    // Tokens that passed the syntax check always make a tree.
    Q_UNUSED(errors)
    if (tokens.isEmpty())
        return {};
    tokens.append(makeEndOfStreamOperator());
    TreeBuilder builder(query);
    int offset = 0;
    for (ExpressionValue& token : tokens) {
        const QString name = token.operatorName();
        if (!token.isOperator()) {
            builder.addLeaf(token);
        } else if (name == QLatin1String("(")) {
            offset += bracketPrecedence;
        } else if (name == QLatin1String(")")) {
            offset -= bracketPrecedence;
        } else {
            token.setPrecedence(token.precedence() + offset);
            builder.addOperator(token);
        }
    }
    return builder.root();
}

ExpressionValue makeEndOfStreamOperator()
{
    return ExpressionValue::fromOperator(QStringLiteral("EOS"), -1, QString());
}

QSharedPointer<ExpressionTreeNode> expandImplicitTreeNodes(QSharedPointer<ExpressionTreeNode> node,
                                                           bool booleanContext)
{
    if (!node)
        return node;
    if (booleanContext && node->value.isString())
        return makeAnyContainsNode(node);
    std::vector<ExpressionTreeNode*> waiting{node.data()};
    while (!waiting.empty()) {
        ExpressionTreeNode* current = waiting.back();
        waiting.pop_back();
        if (!takesTruthValues(current->value))
            continue;
        for (Node& child : current->children) {
            if (child && child->value.isString())
                child = makeAnyContainsNode(child);
            else if (child)
                waiting.push_back(child.data());
        }
    }
    return node;
}

QSharedPointer<ExpressionTreeNode>
makeAnyContainsNode(const QSharedPointer<ExpressionTreeNode>& stringNode)
{
    const int position = stringNode->position;
    Node node = Node::create(
        ExpressionValue::fromOperator(QStringLiteral("%contains"), position, stringNode->text));
    const Node variable =
        Node::create(ExpressionValue::fromVariable(QStringLiteral(":any"), position, QString()));
    node->children = {variable, stringNode};
    return node;
}

QSet<QString> expandUnnamedVariables(const QSharedPointer<ExpressionTreeNode>& node, int counter)
{
    return node ? VariableNamer().name(node, counter) : QSet<QString>();
}
