// SPDX-License-Identifier: BSD-3-Clause
#include <lorix/query/cnfconstruction.h>
#include <lorix/query/cnfrewriter.h>

#include <algorithm>
#include <limits>

namespace lorix {

namespace {

constexpr qint32 never = std::numeric_limits<qint32>::max();

// Products of two numbers up to this, and sums of two such products, fit.
constexpr qint64 saturated = 1000000000;

bool isNegation(const ExpressionTreeNode& node)
{
    return node.value.isOperator() && node.value.operatorName() == QLatin1String("!") &&
           !node.children.isEmpty();
}

// A substring test, so that "implizit &&" is a conjunction.
bool joins(const ExpressionTreeNode& node, QLatin1String symbol)
{
    return node.value.isOperator() && node.value.operatorName().contains(symbol) &&
           node.children.size() >= 2;
}

// Passes drop double negations wherever they stand, operands of comparisons
// included, which makes "!!a" an operand again.
QSharedPointer<ExpressionTreeNode> afterPasses(QSharedPointer<ExpressionTreeNode> operand)
{
    while (isNegation(*operand) && isNegation(*operand->children.first()))
        operand = operand->children.first()->children.first();
    return operand;
}

CNFLiteral literalAfterPasses(const QSharedPointer<ExpressionTreeNode>& core)
{
    if (std::none_of(core->children.cbegin(), core->children.cend(),
                     [](const auto& operand) { return isNegation(*operand); }))
        return makeLiteral(core);
    const QSharedPointer<ExpressionTreeNode> rewritten(new ExpressionTreeNode(*core));
    for (QSharedPointer<ExpressionTreeNode>& operand : rewritten->children)
        operand = afterPasses(operand);
    return makeLiteral(rewritten);
}

} // namespace

// A part of the tree without the negations above it.
struct CNFRewriter::Branch
{
    Branch(const QSharedPointer<ExpressionTreeNode>& node, bool negated) : core(node)
    {
        qint32 negations = negated ? 1 : 0;
        while (isNegation(*core)) {
            core = core->children.first();
            ++negations;
        }
        negative = negations % 2 != 0;
        const bool conjunction = joins(*core, QLatin1String("&&"));
        if (!conjunction && !joins(*core, QLatin1String("||")))
            return;
        kind = conjunction != negative ? Kind::Conjunction : Kind::Disjunction;
        // Two negations go in one pass, and one turns the operator in another.
        delay = negations / 2 + (negative ? 1 : 0);
    }

    QSharedPointer<ExpressionTreeNode> core;
    bool negative = false;
    Kind kind = Kind::Literal;
    qint32 delay = 0;
    bool operandsBuilt = false;
};

CNFRewriter::CNFRewriter(const QSharedPointer<ExpressionTreeNode>& tree)
{
    std::vector<Branch> waiting{Branch(tree, false)};
    std::vector<qint32> finished;
    while (!waiting.empty()) {
        Branch& branch = waiting.back();
        if (branch.kind == Kind::Literal || branch.operandsBuilt) {
            finishBranch(branch, finished);
            waiting.pop_back();
            continue;
        }
        branch.operandsBuilt = true;
        const Branch left(branch.core->children[0], branch.negative);
        const Branch right(branch.core->children[1], branch.negative);
        waiting.push_back(right);
        waiting.push_back(left);
    }
    m_root = finished.back();
}

void CNFRewriter::finishBranch(const Branch& branch, std::vector<qint32>& finished)
{
    if (branch.kind == Kind::Literal) {
        CNFLiteral literal = literalAfterPasses(branch.core);
        if (branch.negative)
            literal.setNegated(true);
        m_literals.append(literal);
        const auto index = static_cast<qint32>(m_literals.size() - 1);
        finished.push_back(addNode(Kind::Literal, 0, {index, 0}, {index, 0}));
        m_sizes.push_back({1, 1});
        return;
    }
    const qint32 right = finished.back();
    finished.pop_back();
    const qint32 left = finished.back();
    finished.back() = addNode(branch.kind, branch.delay, {left, 0}, {right, 0});
    const Size a = m_sizes[static_cast<size_t>(left)];
    const Size b = m_sizes[static_cast<size_t>(right)];
    Size size{a.clauses + b.clauses, a.literals + b.literals};
    if (branch.kind == Kind::Disjunction)
        size = {a.clauses * b.clauses, a.literals * b.clauses + b.literals * a.clauses};
    m_sizes.push_back({std::min(size.clauses, saturated), std::min(size.literals, saturated)});
}

qint64 CNFRewriter::numClauses() const
{
    return m_sizes[static_cast<size_t>(m_root)].clauses;
}

qint64 CNFRewriter::numLiterals() const
{
    return m_sizes[static_cast<size_t>(m_root)].literals;
}

qint32 CNFRewriter::addNode(Kind kind, qint32 delay, Part left, Part right)
{
    qint32 conjunction = kind == Kind::Conjunction ? delay : never;
    if (kind == Kind::Disjunction) {
        const qint32 first = std::min(timeLeft(left), timeLeft(right));
        if (first != never)
            conjunction = delay + first + 1;
    }
    m_nodes.push_back({kind, delay, conjunction, left, right});
    return static_cast<qint32>(m_nodes.size() - 1);
}

CNFRewriter::Part CNFRewriter::addDisjunction(Part left, Part right)
{
    return {addNode(Kind::Disjunction, 0, left, right), 0};
}

qint32 CNFRewriter::timeLeft(Part part) const
{
    const qint32 conjunction = m_nodes[static_cast<size_t>(part.node)].conjunction;
    return conjunction == never ? never : conjunction - part.age;
}

// What never becomes a conjunction has one order of literals at every age.
CNFRewriter::Part CNFRewriter::older(Part part, qint32 passes) const
{
    if (timeLeft(part) == never)
        return part;
    return {part.node, part.age + passes};
}

// An operand after the pass that distributes over the other one, unless that
// pass finds it a conjunction, too, and leaves it alone.
CNFRewriter::Part CNFRewriter::throughPass(Part part)
{
    return timeLeft(part) == 0 ? part : older(part, 1);
}

// When the left operand is distributed over, the pass goes on into the right
// one. What it changes within that operand shows in the half that uses the
// operand itself (not in the one that uses a clone), but what it puts in the
// operand's place is lost.
CNFRewriter::Part CNFRewriter::asFirstUse(Part part)
{
    const Node node = m_nodes[static_cast<size_t>(part.node)];
    const bool stillNegated = part.age < node.delay;
    if (timeLeft(part) == never || stillNegated)
        return part;
    if (timeLeft(part) > 1)
        return older(part, 1);
    const qint32 age = part.age - node.delay;
    return addDisjunction(throughPass(older(node.left, age)), throughPass(older(node.right, age)));
}

CNFRewriter::Pair CNFRewriter::becomeConjunction(Part part)
{
    std::vector<Split> splits;
    Node node = m_nodes[static_cast<size_t>(part.node)];
    while (node.kind == Kind::Disjunction) {
        const qint32 age = std::max(part.age - node.delay, 0);
        const Part left = older(node.left, age);
        const Part right = older(node.right, age);
        const qint32 leftTime = timeLeft(left);
        const qint32 rightTime = timeLeft(right);
        if (rightTime <= leftTime) {
            splits.push_back({true, leftTime == rightTime, older(left, rightTime)});
            part = right;
        } else {
            splits.push_back({false, false, older(right, leftTime)});
            part = left;
        }
        node = m_nodes[static_cast<size_t>(part.node)];
    }
    Pair pair{node.left, node.right};
    for (auto split = splits.crbegin(); split != splits.crend(); ++split) {
        if (split->right) {
            const Part other = split->both ? split->other : throughPass(split->other);
            pair = {addDisjunction(pair.left, other), addDisjunction(pair.right, other)};
        } else {
            const Part first = asFirstUse(split->other);
            pair = {addDisjunction(pair.left, first), addDisjunction(pair.right, split->other)};
        }
    }
    return pair;
}

void CNFRewriter::appendClause(Part part, ConjunctiveNormalForm& form) const
{
    CNFDisjunction clause;
    std::vector<qint32> waiting{part.node};
    while (!waiting.empty()) {
        const Node& node = m_nodes[static_cast<size_t>(waiting.back())];
        waiting.pop_back();
        if (node.kind == Kind::Literal) {
            clause.addLiteral(m_literals[node.left.node]);
        } else {
            waiting.push_back(node.right.node);
            waiting.push_back(node.left.node);
        }
    }
    form.addDisjunction(clause);
}

ConjunctiveNormalForm CNFRewriter::rewrite()
{
    ConjunctiveNormalForm form;
    std::vector<Part> waiting{{m_root, 0}};
    while (!waiting.empty()) {
        const Part part = waiting.back();
        waiting.pop_back();
        if (timeLeft(part) == never) {
            appendClause(part, form);
            continue;
        }
        const Pair pair = becomeConjunction(part);
        waiting.push_back(pair.right);
        waiting.push_back(pair.left);
    }
    return form;
}

} // namespace lorix
