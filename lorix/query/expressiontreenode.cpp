// SPDX-License-Identifier: BSD-3-Clause
#include <lorix/query/expressiontreenode.h>

#include <QDebug>

#include <utility>
#include <vector>

namespace lorix {

namespace {

// Where the outermost destructor of this thread collects the nodes that are
// still to be let go, so that a deep tree is taken down in a loop.
thread_local std::vector<ExpressionTreeNode::Pointer>* abandoned = nullptr;

} // namespace

ExpressionTreeNode::ExpressionTreeNode(const ExpressionValue& token)
    : value(token), text(token.originalText()), position(token.position())
{}

ExpressionTreeNode::~ExpressionTreeNode()
{
    if (children.isEmpty())
        return;
    if (abandoned) {
        for (Pointer& child : children)
            abandoned->push_back(std::move(child));
        return;
    }
    std::vector<Pointer> waiting;
    abandoned = &waiting;
    for (Pointer& child : children)
        waiting.push_back(std::move(child));
    while (!waiting.empty()) {
        const Pointer last = std::move(waiting.back());
        waiting.pop_back();
    }
    abandoned = nullptr;
}

ExpressionTreeNode::Pointer ExpressionTreeNode::cloneTree() const
{
    Pointer root(new ExpressionTreeNode(*this));
    // The copies still point at the original children.
    std::vector<ExpressionTreeNode*> copies{root.data()};
    while (!copies.empty()) {
        ExpressionTreeNode* copy = copies.back();
        copies.pop_back();
        for (Pointer& child : copy->children) {
            if (!child)
                continue;
            child = Pointer(new ExpressionTreeNode(*child));
            copies.push_back(child.data());
        }
    }
    return root;
}

QDebug printTree(QDebug debug, const QSharedPointer<ExpressionTreeNode>& node, int indent)
{
    const QDebugStateSaver saver(debug);
    debug.nospace();
    std::vector<std::pair<QSharedPointer<ExpressionTreeNode>, int>> waiting{{node, indent}};
    while (!waiting.empty()) {
        const auto [current, level] = waiting.back();
        waiting.pop_back();
        debug << qPrintable(QString(level * 4, u' '));
        if (!current) {
            debug << "null\n";
            continue;
        }
        debug << current->value << '\n';
        for (auto child = current->children.crbegin(); child != current->children.crend(); ++child)
            waiting.emplace_back(*child, level + 1);
    }
    return debug;
}

QDebug operator<<(QDebug debug, const QSharedPointer<ExpressionTreeNode>& node)
{
    return printTree(std::move(debug), node, 0);
}

} // namespace lorix
