// SPDX-License-Identifier: BSD-3-Clause
// Trees from bytes. Where the first byte is even, the rest is a container: it
// becomes a tree, with what is nested in it. Where it is odd, two small trees
// and their pricing are made of the rest, and the exact search, which must take
// the very paths of the plain one, and the quick match compare them.
#include "fuzzing.h"

#include <lorix/tree/costmatrix.h>
#include <lorix/tree/dijkstra.h>
#include <lorix/tree/lorixdiff.h>
#include <lorix/tree/path.h>
#include <lorix/tree/pathexpander.h>
#include <lorix/tree/workflowstepcosts.h>
#include <lorix/tree/workflowtree.h>
#include <tree/plainsearch.h>

#include <QDir>
#include <QSet>

#include <cstring>

using namespace lorix;

namespace {

constexpr int mostNodes = 200;
constexpr int mostExpansions = 300;

// Hands out the input byte by byte, then zeros.
class Source
{
public:
    Source(const std::uint8_t* data, std::size_t size) : m_data(data), m_left(size) {}

    int next()
    {
        if (m_left == 0)
            return 0;
        --m_left;
        return *m_data++;
    }

private:
    const std::uint8_t* m_data;
    std::size_t m_left;
};

// A pricing by the steps' titles: whole numbers, eighths, and below zero.
class GivenCosts : public WorkflowstepCosts
{
public:
    explicit GivenCosts(Source& source)
    {
        const int kind = source.next() % 3;
        for (float& price : m_table) {
            const int byte = source.next();
            price = kind == 0   ? static_cast<float>(byte % 64)
                    : kind == 1 ? static_cast<float>(byte) / 8.0F
                                : static_cast<float>(byte) / 7.0F - 4.0F;
        }
    }

    float costs(const Workflowstep& a, const Workflowstep& b) const override
    {
        return m_table[a.title.toInt() * letters + b.title.toInt()];
    }

    static constexpr int letters = 4;

private:
    float m_table[letters * letters] = {};
};

Workflowstep givenStep(Source& source)
{
    const int byte = source.next();
    Workflowstep step;
    step.title = QString::number(byte % GivenCosts::letters);
    step.tool = QString::number((byte >> 2) % 4);
    step.description = QString::number((byte >> 4) % 4);
    return step;
}

WorkflowTree givenTree(Source& source, bool strange)
{
    WorkflowTree tree;
    const int nodes = source.next() % 7;
    for (int i = 0; i < nodes; ++i) {
        const int parent = source.next();
        if (strange) // gaps, several tops, no such parents, circles
            tree.addTreeNode(WorkflowTreeNode(source.next() % 16 - 2, parent % 20 - 3,
                                              givenStep(source), QString(), QString()));
        else
            tree.addTreeNode(i == 0 ? NODE_ABOVE_ROOT : parent % i, givenStep(source), QString(),
                             QString());
    }
    return tree;
}

plain::Tree toPlain(const WorkflowTree& tree)
{
    plain::Tree result;
    result.ids = tree.nodeIds();
    for (const int id : std::as_const(result.ids))
        result.parents.insert(id, tree.parent(id));
    return result;
}

bool sameBits(float a, float b)
{
    return std::memcmp(&a, &b, sizeof a) == 0;
}

void checkPath(const Path& path, const plain::Path& expected)
{
    require(path.assoc1to2() == expected.assoc1to2 && path.assoc2to1() == expected.assoc2to1,
            "associated otherwise than the plain way");
    require(path.parentCostsLater() == expected.parentCostsLater &&
                path.open1() == expected.open1 && path.open2() == expected.open2,
            "left open otherwise than the plain way");
    require(sameBits(path.costs(), expected.costs), "costs otherwise than the plain way");
}

void checkExactSearch(const LorixDiff& diff, int count)
{
    const CostMatrix matrix(diff.tree1(), diff.tree2(), diff.costs());
    PathExpander expander(&diff.tree1(), &diff.tree2(), &matrix);
    SearchLimits limits;
    limits.expansions = mostExpansions;
    SearchOutcome outcome;
    const auto paths =
        Dijkstra<Path>::findPaths(QSharedPointer<Path>::create(&expander), count, limits, &outcome);
    const plain::Problem problem(toPlain(diff.tree1()), toPlain(diff.tree2()), [&](int i, int j) {
        return diff.costs()->costs(diff.tree1().workflowStep(i), diff.tree2().workflowStep(j));
    });
    const plain::Outcome expected = plain::findPaths(plain::Path(problem), count, mostExpansions);
    require(outcome.taken == expected.taken && outcome.stopped == expected.stopped &&
                outcome.queued == expected.queued && paths.size() == expected.found.size(),
            "searched otherwise than the plain way");
    for (qsizetype i = 0; i < paths.size(); ++i)
        checkPath(*paths.at(i), expected.found.at(i));
}

void checkQuickMatch(const LorixDiff& diff)
{
    const QuickMatch match = diff.findQuickMatch();
    QSet<int> partners;
    for (const int id : diff.tree1().nodeIds()) {
        const int partner = match.result.association(id, 1);
        require(partner == NULL_NODE ||
                    (!partners.contains(partner) && match.result.association(partner, 2) == id),
                "two steps have one partner");
        partners.insert(partner);
    }
    require(sameBits(match.costs, diff.costsOf(match.result)), "the match has another price");
    require(match.lowerBound <= match.costs, "cheaper than the lower bound");
    SearchLimits limits;
    limits.expansions = mostExpansions;
    const QSharedPointer<LorixDiffResult> best = diff.findBestMatch(limits);
    if (best)
        require(match.lowerBound <= diff.costsOf(*best) + 0.01F, "the lower bound is none");
}

void checkPair(Source source)
{
    const int choice = source.next();
    WorkflowstepCosts usual;
    GivenCosts given(source);
    const WorkflowTree tree1 = givenTree(source, (choice & 1) != 0);
    const WorkflowTree tree2 = givenTree(source, (choice & 1) != 0);
    const LorixDiff diff(tree1, tree2, (choice & 2) != 0 ? &given : &usual);
    checkExactSearch(diff, 1 + (choice >> 2) % 6);
    checkQuickMatch(diff);
}

void checkOrder(const WorkflowTree& tree)
{
    QSet<int> before{NODE_ABOVE_ROOT};
    for (const int id : tree.nodeIds()) {
        require(!before.contains(id) && before.contains(tree.parent(id)),
                "a step comes before its parent");
        before.insert(id);
        tree.workflowStep(id);
        require(tree.children(tree.parent(id)).contains(id), "a step is not its parent's child");
        require(!tree.lorixfile(id).isEmpty(), "a step comes from nowhere");
    }
    QList<int> walked;
    for (const int top : tree.children(NODE_ABOVE_ROOT))
        walked += tree.serializeFromRoot(top);
    require(walked.size() == before.size() - 1, "a step cannot be reached");
    require(tree.serializedTree() == tree.serializeFromRoot(tree.root()), "walked otherwise");
}

/// Where the library puts its temporary files: a folder that nobody else uses.
QString ownTemporaryPath()
{
    static const QString path = [] {
        const QString own = scratch().path(QStringLiteral("temporary"));
        require(QDir().mkpath(own) && qputenv("TMPDIR", QFile::encodeName(own)),
                "no folder for temporary files");
        return own;
    }();
    return path;
}

void checkContainer(const QByteArray& bytes)
{
    const QString path = scratch().write(QStringLiteral("container.lorix"), bytes);
    const QDir temporary(ownTemporaryPath());
    {
        WorkflowTree tree;
        Bounds bounds;
        bounds.treeDepth = 5;
        bounds.treeNodes = mostNodes;
        bounds.treeExtractedBytes = 4 * 1024 * 1024;
        tree.setBounds(bounds);
        if (!tree.treeFromLorixFile(path))
            require(tree.nodeIds().isEmpty(), "no tree, but steps");
        require(tree.nodeIds().size() <= mostNodes, "more steps than allowed");
        checkOrder(tree);
        const WorkflowTree copy = tree; // NOLINT(performance-unnecessary-copy-initialization)
        tree.clear();
        require(tree.nodeIds().isEmpty() && tree.root() == INVALID_NODE, "not clear");
        checkOrder(copy);
        if (copy.nodeIds().size() <= 40) {
            WorkflowstepCosts costs;
            checkQuickMatch(LorixDiff(copy, copy, &costs));
        }
    }
    require(
        temporary.isEmpty(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot),
        "a temporary file stays");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    silence();
    if (size == 0)
        return 0;
    if (data[0] % 2 == 0)
        checkContainer(
            QByteArray(reinterpret_cast<const char*>(data + 1), static_cast<qsizetype>(size - 1)));
    else
        checkPair(Source(data + 1, size - 1));
    return 0;
}
