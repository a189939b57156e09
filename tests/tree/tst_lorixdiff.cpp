// SPDX-License-Identifier: BSD-3-Clause
#include <lorix/tree/costmatrix.h>
#include <lorix/tree/dijkstra.h>
#include <lorix/tree/lorixdiff.h>
#include <lorix/tree/path.h>
#include <lorix/tree/pathexpander.h>
#include <lorix/tree/workflowstepcosts.h>
#include <support/logrecorder.h>
#include <tree/randomtrees.h>

#include <QTest>

#include <limits>

using namespace lorix;

using Table = QHash<int, int>;
using Flags = QHash<int, bool>;

namespace {

QStringList letters(const char* text)
{
    return QString::fromLatin1(text).split(QString(), Qt::SkipEmptyParts);
}

QList<LorixDiffResult> matches(const WorkflowTree& tree1, const WorkflowTree& tree2, int count)
{
    WorkflowstepCosts costs;
    return LorixDiff(tree1, tree2, &costs).findBestMatches(count);
}

void silence(QtMsgType, const QMessageLogContext&, const QString&) {}

} // namespace

class TestLorixDiff : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { qInstallMessageHandler(silence); }
    void cleanupTestCase() { qInstallMessageHandler(nullptr); }

    void identicalStepsAreAssociated();
    void nodeWithoutCounterpartCostsFifteen();
    void emptyFirstTreeIsCompleteAtOnce();
    void leftOverNodesHaveNoPartner();
    void everyPathPaysForWhatIsLeftOver();
    void allPathsComeWhenMoreAreWanted();
    void countBelowOneStillGivesOne();
    void nodeWithoutPartnerCountsAsMoved();
    void movedNodeIsFlaggedOnBothSides();
    void penaltyIsLookedUpByPosition();
    void unknownTreesGiveNoAnswers();
    void ownPricingIsUsed();
    void missingPricingIsTheDefault();
    void treesAndPricingCanBeExchanged();
    void limitsEndTheSearch();
    void cancelEndsTheSearch();
    void pairsAreBounded();
    void costsOfAnAssociation();
    void prioritiesAreCutTowardZero();
};

void TestLorixDiff::identicalStepsAreAssociated()
{
    const WorkflowTree tree = makeChain(letters("a"));
    WorkflowstepCosts costs;
    const LorixDiff diff(tree, tree, &costs);
    const QSharedPointer<LorixDiffResult> best = diff.findBestMatch();
    QVERIFY(best);
    QCOMPARE(best->association(0, 1), 0);
    QCOMPARE(best->association(0, 2), 0);
    QCOMPARE(best->association(42, 3), -2);
    QVERIFY(!best->associated(0, 1));
    QVERIFY(!best->associated(0, 2));
    QVERIFY(!best->parentChanged(0, 1));
    QCOMPARE(best->assoc1to2, Table({{-1, -1}, {0, 0}}));
    QCOMPARE(best->assoc2to1, Table({{-1, -1}, {0, 0}}));
    QCOMPARE(best->parentChanged1, Flags({{-1, false}, {0, false}}));
    QCOMPARE(best->parentChanged2, Flags({{-1, false}, {0, false}}));
}

void TestLorixDiff::nodeWithoutCounterpartCostsFifteen()
{
    const WorkflowTree tree1 = makeChain(letters("a"));
    const WorkflowTree tree2;
    const CostMatrix matrix(tree1, tree2, nullptr);
    PathExpander expander(&tree1, &tree2, &matrix);
    const auto paths = Dijkstra<Path>::findPaths(QSharedPointer<Path>::create(&expander), 5);
    QCOMPARE(paths.size(), 1);
    QCOMPARE(paths.first()->getCosts(), 15.0F);
    QCOMPARE(paths.first()->association(0, 1), NULL_NODE);
    QVERIFY(paths.first()->associated(0, 1));
    // The table of tree 2 keeps which node had no partner last.
    QCOMPARE(paths.first()->assoc2to1(), Table({{-1, -1}, {-3, 0}}));
}

void TestLorixDiff::emptyFirstTreeIsCompleteAtOnce()
{
    const QList<LorixDiffResult> results = matches(WorkflowTree(), makeChain(letters("ab")), 3);
    QCOMPARE(results.size(), 1);
    QCOMPARE(results.first().assoc2to1, Table({{-1, -1}}));
    QVERIFY(results.first().associated(1, 2));
    QCOMPARE(results.first().association(1, 2), INVALID_NODE);
}

void TestLorixDiff::leftOverNodesHaveNoPartner()
{
    const QList<LorixDiffResult> results =
        matches(makeChain(letters("a")), makeChain(letters("ab")), 1);
    QCOMPARE(results.size(), 1);
    const LorixDiffResult best = results.first();
    QCOMPARE(best.association(1, 2), NULL_NODE);
    QVERIFY(best.associated(1, 2));
    QVERIFY(!best.associated(0, 2));
    QCOMPARE(best.assoc1to2, Table({{-1, -1}, {0, 0}}));
    QCOMPARE(best.assoc2to1, Table({{-1, -1}, {0, 0}, {1, -3}}));
    QCOMPARE(best.parentChanged2, Flags({{-1, false}, {0, false}, {1, false}}));
}

void TestLorixDiff::everyPathPaysForWhatIsLeftOver()
{
    const WorkflowTree tree1 = makeChain(letters("ab"));
    const WorkflowTree tree2 = makeChain(letters("abcde"));
    const CostMatrix matrix(tree1, tree2, nullptr);
    PathExpander expander(&tree1, &tree2, &matrix);
    const auto paths = Dijkstra<Path>::findPaths(QSharedPointer<Path>::create(&expander), 1000);
    // Two partners of five, one of five, or none at all.
    QCOMPARE(paths.size(), 5 * 4 + 5 + 5 + 1);
    QCOMPARE(paths.first()->costs(), 45.0F);
    for (int i = 0; i < int(paths.size()); ++i) {
        QVERIFY(paths.at(i)->costs() >= 45.0F);
        QVERIFY(i == 0 || paths.at(i)->costs() >= paths.at(i - 1)->costs());
    }
}

void TestLorixDiff::allPathsComeWhenMoreAreWanted()
{
    QCOMPARE(matches(makeChain(letters("a")), makeChain(letters("a")), 100).size(), 2);
    QCOMPARE(matches(WorkflowTree(), WorkflowTree(), 100).size(), 1);
}

void TestLorixDiff::countBelowOneStillGivesOne()
{
    QCOMPARE(matches(makeChain(letters("a")), makeChain(letters("a")), 0).size(), 1);
    QCOMPARE(matches(makeChain(letters("a")), makeChain(letters("a")), -5).size(), 1);
}

void TestLorixDiff::nodeWithoutPartnerCountsAsMoved()
{
    const LorixDiffResult best =
        matches(makeChain(letters("ab")), makeChain(letters("b")), 1).first();
    QCOMPARE(best.assoc1to2, Table({{-1, -1}, {0, -3}, {1, 0}}));
    QCOMPARE(best.assoc2to1, Table({{-1, -1}, {0, 1}, {-3, 0}}));
    // b hangs below nothing in both trees once a is passed over.
    QCOMPARE(best.parentChanged1, Flags({{-1, false}, {0, true}, {1, false}}));
    QCOMPARE(best.parentChanged2, Flags({{-1, false}, {0, false}, {-3, true}}));
}

void TestLorixDiff::movedNodeIsFlaggedOnBothSides()
{
    WorkflowTree tree1 = makeChain(letters("ab"));
    WorkflowTree tree2 = makeChain(letters("ab"));
    tree1.addTreeNode(1, makeStep(QStringLiteral("c")), QString(), QString());
    tree2.addTreeNode(0, makeStep(QStringLiteral("c")), QString(), QString());
    WorkflowstepCosts costs;
    const CostMatrix matrix(tree1, tree2, &costs);
    PathExpander expander(&tree1, &tree2, &matrix);
    const auto path = Dijkstra<Path>::findPaths(QSharedPointer<Path>::create(&expander), 1).first();
    QCOMPARE(path->costs(), 10.0F);
    const LorixDiffResult best = LorixDiff(tree1, tree2, &costs).convertPath(*path);
    QCOMPARE(best.assoc1to2, Table({{-1, -1}, {0, 0}, {1, 1}, {2, 2}}));
    QCOMPARE(best.parentChanged1, Flags({{-1, false}, {0, false}, {1, false}, {2, true}}));
    QCOMPARE(best.parentChanged2, Flags({{-1, false}, {0, false}, {1, false}, {2, true}}));
}

void TestLorixDiff::penaltyIsLookedUpByPosition()
{
    // The list of associated nodes is -1, 0, 1, 2: the flag of node 1 stands
    // under position 1, where node 0 is, and that of node 2 under node 1's.
    const WorkflowTree tree1 = makeChain(letters("abc"));
    const WorkflowTree tree2 = makeChain(letters("c"));
    const CostMatrix matrix(tree1, tree2, nullptr);
    PathExpander expander(&tree1, &tree2, &matrix);
    Path path(&expander);
    path.associate(0, NULL_NODE);
    path.associate(1, NULL_NODE);
    QCOMPARE(path.costs(), 30.0F);
    path.associate(2, 0);
    QCOMPARE(path.parentCostsLater(), Flags({{0, false}, {1, true}, {2, true}}));
    // Nodes 0 and 1 have no partner and count as moved; node 2 is where it was.
    QVERIFY(!path.parentChanged(2, 1));
    QCOMPARE(path.costs(), 30.0F + 20.0F);
}

void TestLorixDiff::unknownTreesGiveNoAnswers()
{
    const LorixDiffResult best =
        matches(makeChain(letters("ab")), makeChain(letters("b")), 1).first();
    for (const TreeId tree : {-1, 0, 3}) {
        QCOMPARE(best.association(0, tree), INVALID_NODE);
        QVERIFY(!best.associated(0, tree));
        QVERIFY(!best.associated(42, tree));
        QVERIFY(!best.parentChanged(0, tree));
    }
    QCOMPARE(best.association(42, 1), INVALID_NODE);
    QVERIFY(best.associated(42, 1));
    QVERIFY(best.associated(42, 2));
    QVERIFY(!best.parentChanged(42, 1));
    const WorkflowTree tree = makeChain(letters("a"));
    const CostMatrix matrix(tree, tree, nullptr);
    QCOMPARE(PathExpander(&tree, &tree, &matrix).nodeIds(3), QLinkedList<int>());
}

void TestLorixDiff::ownPricingIsUsed()
{
    class OppositeCosts : public WorkflowstepCosts
    {
    public:
        float costs(const Workflowstep& a, const Workflowstep& b) const override
        {
            return a.title == b.title ? 29.5F : 0.25F;
        }
    };
    OppositeCosts costs;
    WorkflowTree tree;
    tree.addTreeNode(-1, makeStep(QStringLiteral("a")), QString(), QString());
    tree.addTreeNode(-1, makeStep(QStringLiteral("b")), QString(), QString());
    const LorixDiffResult best = LorixDiff(tree, tree, &costs).findBestMatches(1).first();
    QCOMPARE(best.association(0, 1), 1);
    QCOMPARE(best.association(1, 1), 0);
}

void TestLorixDiff::missingPricingIsTheDefault()
{
    const WorkflowTree tree = makeChain(letters("abc"));
    QCOMPARE(LorixDiff(tree, tree, nullptr).findBestMatches(1).first().association(2, 1), 2);
}

void TestLorixDiff::treesAndPricingCanBeExchanged()
{
    WorkflowstepCosts costs;
    LorixDiff diff(WorkflowTree(), WorkflowTree(), nullptr);
    diff.setTree1(makeChain(letters("ab")));
    diff.setTree2(makeChain(letters("xb")));
    diff.setCosts(&costs);
    QCOMPARE(diff.costs(), &costs);
    QCOMPARE(diff.tree1().nodeIds().size(), 2);
    QCOMPARE(diff.tree2().workflowStep(0).title, QStringLiteral("x"));
    QCOMPARE(diff.findBestMatch()->association(1, 1), 1);
}

void TestLorixDiff::limitsEndTheSearch()
{
    const WorkflowTree tree1 = makeChain(letters("abcdef"));
    const WorkflowTree tree2 = makeChain(letters("uvwxyz"));
    WorkflowstepCosts costs;
    const LorixDiff diff(tree1, tree2, &costs);
    SearchOutcome whole;
    QVERIFY(diff.findBestMatch(SearchLimits(), &whole));
    QVERIFY(!whole.stopped);

    SearchLimits limits;
    limits.expansions = whole.expansions;
    SearchOutcome outcome;
    QVERIFY(diff.findBestMatch(limits, &outcome));
    QCOMPARE(outcome.taken, whole.taken);

    limits.expansions = whole.expansions - 1;
    outcome = SearchOutcome();
    QVERIFY(!diff.findBestMatch(limits, &outcome));
    QVERIFY(outcome.stopped);
    QCOMPARE(outcome.expansions, limits.expansions);

    limits = SearchLimits();
    limits.queued = whole.queued / 2;
    outcome = SearchOutcome();
    QVERIFY(!diff.findBestMatch(limits, &outcome));
    QVERIFY(outcome.stopped);
}

void TestLorixDiff::cancelEndsTheSearch()
{
    const WorkflowTree tree = makeChain(letters("abcdef"));
    SearchLimits limits;
    int asked = 0;
    limits.cancel = [&asked] { return ++asked == 3; };
    SearchOutcome outcome;
    QVERIFY(LorixDiff(tree, tree, nullptr).findBestMatches(1, limits, &outcome).isEmpty());
    QVERIFY(outcome.stopped);
    QCOMPARE(outcome.expansions, 2);
}

void TestLorixDiff::pairsAreBounded()
{
    QCOMPARE(Bounds().comparedPairs, 25000000);
    LogRecorder recorder;
    LorixDiff diff(makeChain(letters("abc")), makeChain(letters("abcd")), nullptr, &recorder);
    Bounds bounds;
    bounds.comparedPairs = 12;
    diff.setBounds(bounds);
    QVERIFY(diff.isWithinBounds());
    QCOMPARE(diff.findBestMatches(1).size(), 1);
    QCOMPARE(recorder.messages.size(), 0);

    bounds.comparedPairs = 11;
    diff.setBounds(bounds);
    QVERIFY(!diff.isWithinBounds());
    QCOMPARE(diff.findBestMatches(1).size(), 0);
    QVERIFY(diff.findBestMatch().isNull());
    QVERIFY(diff.findQuickMatch().result.assoc1to2.isEmpty());
    QCOMPARE(recorder.messages.size(), 3);
    QCOMPARE(recorder.messages.first().second, 1);
}

void TestLorixDiff::costsOfAnAssociation()
{
    const LorixDiff diff(makeChain(letters("abc")), makeChain(letters("axc")), nullptr);
    const QList<LorixDiffResult> results = diff.findBestMatches(100);
    float before = 0.0F;
    for (const LorixDiffResult& result : results) {
        QVERIFY(diff.costsOf(result) >= before);
        before = diff.costsOf(result);
    }
    QCOMPARE(diff.costsOf(results.first()), 40.0F);
}

void TestLorixDiff::prioritiesAreCutTowardZero()
{
    QCOMPARE(priorityOf(0.99F), 0);
    QCOMPARE(priorityOf(-0.99F), 0);
    QCOMPARE(priorityOf(-1.5F), -1);
    QCOMPARE(priorityOf(15.999F), 15);
    QCOMPARE(priorityOf(2147483520.0F), 2147483520);
    QCOMPARE(priorityOf(2147483648.0F), std::numeric_limits<int>::max());
    QCOMPARE(priorityOf(-2147483648.0F), std::numeric_limits<int>::min());
    QCOMPARE(priorityOf(-1.0e30F), std::numeric_limits<int>::min());
    QCOMPARE(priorityOf(std::numeric_limits<float>::quiet_NaN()), std::numeric_limits<int>::max());
}

QTEST_GUILESS_MAIN(TestLorixDiff)
#include "tst_lorixdiff.moc"
