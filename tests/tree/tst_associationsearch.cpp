// SPDX-License-Identifier: BSD-3-Clause
#include <lorix/tree/costmatrix.h>
#include <lorix/tree/dijkstra.h>
#include <lorix/tree/lorixdiff.h>
#include <lorix/tree/path.h>
#include <lorix/tree/pathexpander.h>
#include <tree/plainsearch.h>
#include <tree/randomtrees.h>

#include <QTest>

using namespace lorix;

namespace {

// The bits, so that what is no number compares as well.
quint32 bits(float value)
{
    quint32 result = 0;
    memcpy(&result, &value, sizeof result);
    return result;
}

bool sameCosts(float a, float b)
{
    return bits(a) == bits(b) || (a != a && b != b);
}

bool sameState(const Path& path, const plain::Path& expected)
{
    return path.assoc1to2() == expected.assoc1to2 && path.assoc2to1() == expected.assoc2to1 &&
           path.parentCostsLater() == expected.parentCostsLater && path.open1() == expected.open1 &&
           path.open2() == expected.open2 && sameCosts(path.costs(), expected.costs);
}

bool sameParentsChanged(const Path& path, const plain::Path& expected)
{
    for (int node = -7; node < 30; ++node) {
        for (const int tree : {1, 2, 3}) {
            if (path.parentChanged(node, tree) != expected.parentChanged(node, tree))
                return false;
        }
    }
    return true;
}

// What the search writes about itself.
QStringList debugLines;

void collectDebug(QtMsgType, const QMessageLogContext&, const QString& text)
{
    debugLines.append(text);
}

struct RandomPair
{
    explicit RandomPair(quint32 seed) : random(seed)
    {
        RandomShape shape;
        shape.alphabet = 1 + random.bounded(4);
        shape.chain = random.bounded(3) == 0;
        shape.strange = random.bounded(8) == 0;
        shape.nodes = random.bounded(6);
        tree1 = makeRandomTree(random, shape);
        shape.nodes = random.bounded(6);
        tree2 = makeRandomTree(random, shape);
        const int kind = random.bounded(TableCosts::kinds * 2);
        if (kind < TableCosts::kinds)
            costs.reset(new TableCosts(random, shape.alphabet, kind));
        else
            costs.reset(new WorkflowstepCosts);
        count = 1 + random.bounded(4) * random.bounded(6);
    }

    QRandomGenerator random;
    WorkflowTree tree1;
    WorkflowTree tree2;
    QSharedPointer<WorkflowstepCosts> costs;
    int count;
};

} // namespace

class TestAssociationSearch : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void searchTakesTheSamePathsAsThePlainOne();
    void searchFromAnyPathTakesTheSamePaths();
    void associatingAnythingGivesThePlainState();
    void stepwiseSearchTakesTheSamePaths();
    void editedHistoriesTakeTheSamePaths();
};

void TestAssociationSearch::searchTakesTheSamePathsAsThePlainOne()
{
    qInstallMessageHandler(collectDebug);
    const int runs = randomRuns(50000);
    qint64 found = 0;
    for (int run = 0; run < runs; ++run) {
        const RandomPair pair{quint32(run)};
        const CostMatrix matrix(pair.tree1, pair.tree2, pair.costs.data());
        PathExpander expander(&pair.tree1, &pair.tree2, &matrix);
        SearchLimits limits;
        limits.expansions = 1000;
        SearchOutcome outcome;
        debugLines.clear();
        const auto paths = Dijkstra<Path>::findPaths(QSharedPointer<Path>::create(&expander),
                                                     pair.count, limits, &outcome);
        const plain::Problem problem(toPlain(pair.tree1), toPlain(pair.tree2),
                                     toPlain(pair.tree1, pair.tree2, *pair.costs));
        const plain::Outcome expected =
            plain::findPaths(plain::Path(problem), pair.count, limits.expansions);
        bool same = paths.size() == expected.found.size() && outcome.taken == expected.taken &&
                    outcome.expansions == expected.expansions &&
                    outcome.queued == expected.queued && outcome.stopped == expected.stopped;
        for (int i = 0; same && i < int(paths.size()); ++i)
            same = sameState(*paths.at(i), expected.found.at(i)) &&
                   sameParentsChanged(*paths.at(i), expected.found.at(i));
        if (same && !paths.isEmpty() && !outcome.stopped && paths.size() == pair.count)
            same = debugLines.contains(QString::number(expected.taken) +
                                       QStringLiteral(" nodes expanded"));
        found += paths.size();
        if (!same)
            qInstallMessageHandler(nullptr);
        QVERIFY2(same, qPrintable(QStringLiteral("pair %1").arg(run)));
    }
    qInstallMessageHandler(nullptr);
    QVERIFY(found > runs);
}

void TestAssociationSearch::searchFromAnyPathTakesTheSamePaths()
{
    qInstallMessageHandler(collectDebug);
    const int runs = randomRuns(3000);
    for (int run = 0; run < runs; ++run) {
        RandomPair pair{quint32(run)};
        const CostMatrix matrix(pair.tree1, pair.tree2, pair.costs.data());
        PathExpander expander(&pair.tree1, &pair.tree2, &matrix);
        const plain::Problem problem(toPlain(pair.tree1), toPlain(pair.tree2),
                                     toPlain(pair.tree1, pair.tree2, *pair.costs));
        const auto start = QSharedPointer<Path>::create(&expander);
        plain::Path plainStart(problem);
        for (int i = pair.random.bounded(3); i > 0 && !plainStart.open1.isEmpty(); --i) {
            const QList<int> ids1(plainStart.open1.begin(), plainStart.open1.end());
            const QList<int> ids2(plainStart.open2.begin(), plainStart.open2.end());
            const int u = ids1.at(pair.random.bounded(int(ids1.size())));
            const int v = ids2.isEmpty() || pair.random.bounded(3) == 0
                              ? NULL_NODE
                              : ids2.at(pair.random.bounded(int(ids2.size())));
            start->associate(u, v);
            plainStart.associate(u, v);
        }
        SearchLimits limits;
        limits.expansions = 300;
        SearchOutcome outcome;
        const auto paths = Dijkstra<Path>::findPaths(start, pair.count, limits, &outcome);
        const plain::Outcome expected = plain::findPaths(plainStart, pair.count, limits.expansions);
        bool same = paths.size() == expected.found.size() && outcome.taken == expected.taken &&
                    outcome.queued == expected.queued;
        for (int i = 0; same && i < int(paths.size()); ++i)
            same = sameState(*paths.at(i), expected.found.at(i));
        if (!same)
            qInstallMessageHandler(nullptr);
        QVERIFY2(same, qPrintable(QStringLiteral("pair %1").arg(run)));
    }
    qInstallMessageHandler(nullptr);
}

void TestAssociationSearch::associatingAnythingGivesThePlainState()
{
    const int runs = randomRuns(5000);
    for (int run = 0; run < runs; ++run) {
        RandomPair pair{quint32(run)};
        const CostMatrix matrix(pair.tree1, pair.tree2, pair.costs.data());
        PathExpander expander(&pair.tree1, &pair.tree2, &matrix);
        const plain::Problem problem(toPlain(pair.tree1), toPlain(pair.tree2),
                                     toPlain(pair.tree1, pair.tree2, *pair.costs));
        Path path(&expander);
        plain::Path expected(problem);
        for (int i = 0; i < 8; ++i) {
            QVERIFY(sameState(path, expected));
            QVERIFY(sameParentsChanged(path, expected));
            QVERIFY(sameCosts(path.getCosts(), expected.costs + expected.heuristic()));
            QCOMPARE(path.reachedGoal(), expected.open1.isEmpty());
            const int u = pair.random.bounded(16) - 6;
            const int v = pair.random.bounded(16) - 6;
            path.associate(u, v);
            expected.associate(u, v);
        }
    }
}

void TestAssociationSearch::stepwiseSearchTakesTheSamePaths()
{
    qInstallMessageHandler(collectDebug);
    const int runs = randomRuns(2000);
    for (int run = 0; run < runs; ++run) {
        const RandomPair pair{quint32(run)};
        const CostMatrix matrix(pair.tree1, pair.tree2, pair.costs.data());
        PathExpander expander(&pair.tree1, &pair.tree2, &matrix);
        SearchLimits limits;
        limits.expansions = 300;
        const auto start = QSharedPointer<Path>::create(&expander);
        SearchOutcome outcome;
        const auto paths = Dijkstra<Path>::findPaths(start, pair.count, limits, &outcome);
        SearchOutcome stepwise;
        const auto expected = findPathsStepwise(start, pair.count, limits, stepwise);
        bool same = paths.size() == expected.size() && outcome.taken == stepwise.taken &&
                    outcome.queued == stepwise.queued && outcome.stopped == stepwise.stopped;
        for (int i = 0; same && i < int(paths.size()); ++i)
            same = paths.at(i)->assoc1to2() == expected.at(i)->assoc1to2();
        if (!same)
            qInstallMessageHandler(nullptr);
        QVERIFY2(same, qPrintable(QStringLiteral("pair %1").arg(run)));
    }
    qInstallMessageHandler(nullptr);
}

void TestAssociationSearch::editedHistoriesTakeTheSamePaths()
{
    qInstallMessageHandler(collectDebug);
    int complete = 0;
    for (int run = 0; run < randomRuns(100); ++run) {
        QRandomGenerator random{quint32(run)};
        RandomShape shape;
        shape.nodes = 10 + random.bounded(12);
        shape.alphabet = 40;
        shape.chain = random.bounded(2) == 0;
        const WorkflowTree tree1 = makeRandomTree(random, shape);
        const WorkflowTree tree2 = editTree(random, tree1, random.bounded(4));
        const WorkflowstepCosts defaultCosts;
        const TableCosts tableCosts(random, shape.alphabet, run % TableCosts::kinds);
        const WorkflowstepCosts& costs = random.bounded(2) == 0
                                             ? defaultCosts
                                             : static_cast<const WorkflowstepCosts&>(tableCosts);
        const CostMatrix matrix(tree1, tree2, &costs);
        PathExpander expander(&tree1, &tree2, &matrix);
        SearchLimits limits;
        limits.expansions = 200;
        SearchOutcome outcome;
        const auto paths =
            Dijkstra<Path>::findPaths(QSharedPointer<Path>::create(&expander), 3, limits, &outcome);
        const plain::Problem problem(toPlain(tree1), toPlain(tree2), toPlain(tree1, tree2, costs));
        const plain::Outcome expected =
            plain::findPaths(plain::Path(problem), 3, limits.expansions);
        bool same = paths.size() == expected.found.size() && outcome.taken == expected.taken &&
                    outcome.queued == expected.queued;
        for (int i = 0; same && i < int(paths.size()); ++i)
            same = sameState(*paths.at(i), expected.found.at(i));
        complete += int(paths.size());
        if (!same)
            qInstallMessageHandler(nullptr);
        QVERIFY2(same, qPrintable(QStringLiteral("pair %1").arg(run)));
    }
    qInstallMessageHandler(nullptr);
    QVERIFY(complete > 40);
}

QTEST_GUILESS_MAIN(TestAssociationSearch)
#include "tst_associationsearch.moc"
