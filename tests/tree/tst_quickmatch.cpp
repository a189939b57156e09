// SPDX-License-Identifier: BSD-3-Clause
#include <lorix/tree/costmatrix.h>
#include <lorix/tree/dijkstra.h>
#include <lorix/tree/lorixdiff.h>
#include <lorix/tree/path.h>
#include <lorix/tree/pathexpander.h>
#include <lorix/tree/workflowstepcosts.h>
#include <tree/randomtrees.h>

#include <QTest>

using namespace lorix;

namespace {

// What an association costs when it is made step by step.
float replayedCosts(const LorixDiff& diff, const LorixDiffResult& result)
{
    const CostMatrix matrix(diff.tree1(), diff.tree2(), diff.costs());
    PathExpander expander(&diff.tree1(), &diff.tree2(), &matrix);
    Path path(&expander);
    for (const int u : diff.tree1().nodeIds())
        path.associate(u, result.association(u, 1));
    return path.costs();
}

// A node of tree 2 has the partner that has it, and no partner twice.
bool isAssociation(const LorixDiff& diff, const LorixDiffResult& result)
{
    for (const int u : diff.tree1().nodeIds()) {
        const int v = result.association(u, 1);
        if (v != NULL_NODE && result.association(v, 2) != u)
            return false;
    }
    for (const int v : diff.tree2().nodeIds()) {
        const int u = result.association(v, 2);
        if (u != NULL_NODE && result.association(u, 1) != v)
            return false;
    }
    return true;
}

struct ExactCosts
{
    bool found;
    float costs;
};

ExactCosts exactCosts(const LorixDiff& diff, qint64 expansions)
{
    SearchLimits limits;
    limits.expansions = expansions;
    const QSharedPointer<LorixDiffResult> best = diff.findBestMatch(limits);
    return {!best.isNull(), best ? replayedCosts(diff, *best) : 0.0F};
}

} // namespace

class TestQuickMatch : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) {});
    }

    void emptyTreesAreAssociated();
    void sameHistoriesAreKnownToBeBest();
    void costsAreThoseOfTheAssociation();
    void mostlyAsGoodAsTheExactSearch_data();
    void mostlyAsGoodAsTheExactSearch();
    void sameTreesGiveTheSameAssociation();
    void strangeTreesAreAssociatedToo();
    void firstOfEqualPartnersIsTaken();
    void editedTreesStayAsCheapAsTheyAre_data();
    void editedTreesStayAsCheapAsTheyAre();
    void longHistoriesAreCompared();
};

void TestQuickMatch::emptyTreesAreAssociated()
{
    const WorkflowTree none;
    const WorkflowTree one = makeChain({QStringLiteral("a")});
    QCOMPARE(LorixDiff(none, none, nullptr).findQuickMatch().costs, 0.0F);
    QVERIFY(LorixDiff(none, one, nullptr).findQuickMatch().isBest());
    const QuickMatch alone = LorixDiff(one, none, nullptr).findQuickMatch();
    QCOMPARE(alone.costs, 15.0F);
    QCOMPARE(alone.lowerBound, 15.0F);
    QVERIFY(alone.result.associated(0, 1));
}

void TestQuickMatch::sameHistoriesAreKnownToBeBest()
{
    QStringList titles;
    for (int i = 0; i < 50; ++i)
        titles.append(QString::number(i));
    const WorkflowTree tree = makeChain(titles);
    const QuickMatch match = LorixDiff(tree, tree, nullptr).findQuickMatch();
    QCOMPARE(match.costs, 0.0F);
    QVERIFY(match.isBest());
    for (int i = 0; i < 50; ++i)
        QCOMPARE(match.result.association(i, 1), i);
}

void TestQuickMatch::costsAreThoseOfTheAssociation()
{
    for (int run = 0; run < randomRuns(300); ++run) {
        QRandomGenerator random{quint32(run)};
        RandomShape shape;
        shape.alphabet = 1 + random.bounded(5);
        shape.nodes = random.bounded(12);
        const WorkflowTree tree1 = makeRandomTree(random, shape);
        shape.nodes = random.bounded(12);
        const WorkflowTree tree2 = makeRandomTree(random, shape);
        TableCosts costs(random, shape.alphabet, random.bounded(5));
        const LorixDiff diff(tree1, tree2, &costs);
        const QuickMatch match = diff.findQuickMatch();
        QVERIFY(tree1.nodeIds().isEmpty() || isAssociation(diff, match.result));
        QCOMPARE(match.costs, replayedCosts(diff, match.result));
        QVERIFY(match.lowerBound <= match.costs);
        // The lower bound holds for any association; the exact search, which cuts
        // its costs to whole numbers, comes within one of the best.
        const ExactCosts exact = exactCosts(diff, 3000);
        if (exact.found)
            QVERIFY(match.lowerBound <= exact.costs + 0.01F && match.costs > exact.costs - 1.0F);
    }
}

void TestQuickMatch::mostlyAsGoodAsTheExactSearch_data()
{
    QTest::addColumn<int>("nodes");
    QTest::addColumn<int>("alphabet");
    QTest::addColumn<bool>("chain");
    QTest::addColumn<int>("edits"); // -1: the second tree is made afresh
    QTest::newRow("small trees") << 6 << 3 << false << -1;
    QTest::newRow("small trees, many texts") << 6 << 8 << false << -1;
    QTest::newRow("small trees, few texts") << 7 << 2 << false << -1;
    QTest::newRow("small chains") << 7 << 3 << true << -1;
    QTest::newRow("trees") << 9 << 4 << false << -1;
    QTest::newRow("edited trees") << 14 << 20 << false << 4;
    QTest::newRow("edited chains") << 16 << 40 << true << 4;
    QTest::newRow("edited chains, few texts") << 12 << 3 << true << 3;
}

void TestQuickMatch::mostlyAsGoodAsTheExactSearch()
{
    QFETCH(int, nodes);
    QFETCH(int, alphabet);
    QFETCH(bool, chain);
    QFETCH(int, edits);
    int compared = 0;
    int close = 0;
    for (int run = 0; run < randomRuns(60); ++run) {
        QRandomGenerator random{quint32(run)};
        RandomShape shape;
        shape.alphabet = alphabet;
        shape.chain = chain;
        shape.nodes = nodes - random.bounded(3);
        const WorkflowTree tree1 = makeRandomTree(random, shape);
        shape.nodes = nodes - random.bounded(3);
        const WorkflowTree tree2 =
            edits < 0 ? makeRandomTree(random, shape) : editTree(random, tree1, edits);
        const LorixDiff diff(tree1, tree2, nullptr);
        const ExactCosts exact = exactCosts(diff, 100000);
        if (!exact.found)
            continue;
        const QuickMatch match = diff.findQuickMatch();
        QVERIFY(match.costs >= exact.costs);
        QVERIFY(match.lowerBound <= exact.costs);
        ++compared;
        if (match.costs <= exact.costs * 1.05F)
            ++close;
    }
    QVERIFY(compared >= randomRuns(60) * 3 / 4);
    if (qEnvironmentVariableIsSet("LORIX_SHOW"))
        fprintf(stderr, "%s: %d of %d\n", QTest::currentDataTag(), close, compared);
    QVERIFY2(close * 10 >= compared * 9,
             qPrintable(QStringLiteral("%1 of %2").arg(close).arg(compared)));
}

void TestQuickMatch::sameTreesGiveTheSameAssociation()
{
    QRandomGenerator random{5};
    RandomShape shape;
    shape.nodes = 30;
    const WorkflowTree tree1 = makeRandomTree(random, shape);
    const WorkflowTree tree2 = makeRandomTree(random, shape);
    const QuickMatch first = LorixDiff(tree1, tree2, nullptr).findQuickMatch();
    for (int i = 0; i < 3; ++i) {
        const QuickMatch again = LorixDiff(tree1, tree2, nullptr).findQuickMatch();
        QCOMPARE(again.result.assoc1to2, first.result.assoc1to2);
        QCOMPARE(again.costs, first.costs);
    }
}

void TestQuickMatch::strangeTreesAreAssociatedToo()
{
    for (int run = 0; run < randomRuns(300); ++run) {
        QRandomGenerator random{quint32(run)};
        RandomShape shape;
        shape.strange = true;
        shape.nodes = 1 + random.bounded(8);
        const WorkflowTree tree1 = makeRandomTree(random, shape);
        const WorkflowTree tree2 = makeRandomTree(random, shape);
        const LorixDiff diff(tree1, tree2, nullptr);
        const QuickMatch match = diff.findQuickMatch();
        QVERIFY(match.lowerBound <= match.costs);
        QCOMPARE(match.costs, replayedCosts(diff, match.result));
        const ExactCosts exact = exactCosts(diff, 300);
        if (exact.found)
            QVERIFY(match.costs >= exact.costs);
    }
}

// Where an order is free, it is that of the tree.
void TestQuickMatch::firstOfEqualPartnersIsTaken()
{
    const Workflowstep step = makeStep(QStringLiteral("a"));
    WorkflowTree equal;
    for (int i = 0; i < 3; ++i)
        equal.addTreeNode(NODE_ABOVE_ROOT, step, QString(), QString());
    // A negative number makes a tree a strange one, which is compared otherwise.
    for (const int id : {0, -7}) {
        WorkflowTree one;
        one.addTreeNode(WorkflowTreeNode(id, NODE_ABOVE_ROOT, step, QString(), QString()));
        const QuickMatch match = LorixDiff(one, equal, nullptr).findQuickMatch();
        QCOMPARE(match.result.association(id, 1), 0);
        QCOMPARE(match.costs, 30.0F);
    }
}

// Pairs that come out dearer where partners are not exchanged, or not with every
// node, or where ancestors are looked up wrongly. Cheaper would be welcome.
void TestQuickMatch::editedTreesStayAsCheapAsTheyAre_data()
{
    QTest::addColumn<quint32>("seed");
    QTest::addColumn<float>("most");
    QTest::newRow("27") << 27U << 80.0F;
    QTest::newRow("33") << 33U << 160.0F;
    QTest::newRow("61") << 61U << 240.0F;
}

void TestQuickMatch::editedTreesStayAsCheapAsTheyAre()
{
    QFETCH(const quint32, seed);
    QFETCH(const float, most);
    QRandomGenerator random{seed};
    RandomShape shape;
    shape.nodes = 8 + int(seed % 40);
    shape.alphabet = 2 + int(seed % 3);
    const WorkflowTree tree1 = makeRandomTree(random, shape);
    const WorkflowTree tree2 = editTree(random, tree1, 3 + int(seed % 9));
    const float costs = LorixDiff(tree1, tree2, nullptr).findQuickMatch().costs;
    QVERIFY2(costs <= most, qPrintable(QString::number(costs)));
}

void TestQuickMatch::longHistoriesAreCompared()
{
    QRandomGenerator random{1};
    RandomShape shape;
    shape.nodes = 200;
    shape.alphabet = 1000;
    shape.chain = true;
    const WorkflowTree tree1 = makeRandomTree(random, shape);
    const WorkflowTree tree2 = editTree(random, tree1, 40);
    const LorixDiff diff(tree1, tree2, nullptr);
    const QuickMatch match = diff.findQuickMatch();
    QVERIFY(isAssociation(diff, match.result));
    // Forty edits cost at most 40 each: two nodes alone, and a penalty.
    QVERIFY(match.costs <= 1600.0F);
    QVERIFY(match.lowerBound > 0.0F);
}

QTEST_GUILESS_MAIN(TestQuickMatch)
#include "tst_quickmatch.moc"
