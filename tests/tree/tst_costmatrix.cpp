// SPDX-License-Identifier: BSD-3-Clause
#include <lorix/tree/costmatrix.h>
#include <lorix/tree/workflowstepcosts.h>
#include <tree/randomtrees.h>

#include <QDebug>
#include <QTest>

using namespace lorix;

namespace {

// Notes the order in which it is asked.
class NotingCosts : public WorkflowstepCosts
{
public:
    float costs(const Workflowstep& a, const Workflowstep& b) const override
    {
        asked.append(a.title + b.title);
        return float(asked.size()) + 0.5F;
    }
    float wrongParentCosts() const override { return 1.0F; }
    float unmatchedNodeCosts() const override { return 2.0F; }

    mutable QStringList asked;
};

} // namespace

class TestCostMatrix : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void stepCostsAddUpWhatDiffers_data();
    void stepCostsAddUpWhatDiffers();
    void fixedCosts();
    void everyPairIsAskedOnceInTreeOrder();
    void pairsOfNoNodesCostAnUnmatchedOne();
    void emptyTreeGivesEmptyMatrix();
    void printingTellsEveryPair();
};

void TestCostMatrix::stepCostsAddUpWhatDiffers_data()
{
    QTest::addColumn<Workflowstep>("other");
    QTest::addColumn<float>("costs");
    const auto step = [](const char* title, const char* tool, const char* description) {
        return makeStep(QLatin1String(title), QLatin1String(tool), QLatin1String(description));
    };
    QTest::newRow("same") << step("t", "o", "d") << 0.0F;
    QTest::newRow("title") << step("x", "o", "d") << 50.0F;
    QTest::newRow("title in another case") << step("T", "o", "d") << 50.0F;
    QTest::newRow("tool") << step("t", "x", "d") << 30.0F;
    QTest::newRow("description") << step("t", "o", "d ") << 20.0F;
    QTest::newRow("title and tool") << step("x", "x", "d") << 80.0F;
    QTest::newRow("title and description") << step("x", "o", "x") << 70.0F;
    QTest::newRow("tool and description") << step("t", "", "") << 50.0F;
    QTest::newRow("all") << step("", "", "") << 100.0F;
    Workflowstep rest = step("t", "o", "d");
    rest.user = QStringLiteral("somebody");
    rest.comment = QStringLiteral("something");
    rest.tagId = 9;
    QTest::newRow("anything else") << rest << 0.0F;
}

void TestCostMatrix::stepCostsAddUpWhatDiffers()
{
    QFETCH(Workflowstep, other);
    QFETCH(float, costs);
    const Workflowstep one =
        makeStep(QStringLiteral("t"), QStringLiteral("o"), QStringLiteral("d"));
    QCOMPARE(WorkflowstepCosts().costs(one, other), costs);
    QCOMPARE(WorkflowstepCosts().costs(other, one), costs);
}

void TestCostMatrix::fixedCosts()
{
    QCOMPARE(WorkflowstepCosts().wrongParentCosts(), 18.0F);
    QCOMPARE(WorkflowstepCosts().unmatchedNodeCosts(), 15.0F);
    // The matrix has penalties of its own, whatever the pricing says.
    const NotingCosts pricing;
    const CostMatrix matrix{WorkflowTree(), WorkflowTree(), &pricing};
    QCOMPARE(matrix.costsWrongParent(), 10.0F);
    QCOMPARE(matrix.costsUnmatchedNode(), 15.0F);
}

void TestCostMatrix::everyPairIsAskedOnceInTreeOrder()
{
    const WorkflowTree tree1 = makeChain({QStringLiteral("a"), QStringLiteral("b")});
    const WorkflowTree tree2 =
        makeChain({QStringLiteral("1"), QStringLiteral("2"), QStringLiteral("3")});
    const NotingCosts pricing;
    const CostMatrix matrix(tree1, tree2, &pricing);
    const QStringList asked = QStringLiteral("a1 a2 a3 b1 b2 b3").split(QLatin1Char(' '));
    QCOMPARE(pricing.asked, asked);
    QCOMPARE(matrix.costs(0, 0), 1.5F);
    QCOMPARE(matrix.costs(0, 2), 3.5F);
    QCOMPARE(matrix.costs(1, 0), 4.5F);
    QCOMPARE(pricing.asked, asked);
}

void TestCostMatrix::pairsOfNoNodesCostAnUnmatchedOne()
{
    const WorkflowTree tree = makeChain({QStringLiteral("a")});
    const WorkflowstepCosts pricing;
    const CostMatrix matrix(tree, tree, &pricing);
    QCOMPARE(matrix.costs(0, 0), 0.0F);
    for (const int id : {NODE_ABOVE_ROOT, INVALID_NODE, NULL_NODE, 1}) {
        QCOMPARE(matrix.costs(0, id), 15.0F);
        QCOMPARE(matrix.costs(id, 0), 15.0F);
        QCOMPARE(matrix.costs(id, id), 15.0F);
    }
}

void TestCostMatrix::emptyTreeGivesEmptyMatrix()
{
    const WorkflowTree tree = makeChain({QStringLiteral("a")});
    const NotingCosts pricing;
    QCOMPARE(CostMatrix(tree, WorkflowTree(), &pricing).costs(0, 0), 15.0F);
    QCOMPARE(CostMatrix(WorkflowTree(), tree, &pricing).costs(0, 0), 15.0F);
    QCOMPARE(pricing.asked, QStringList());
}

void TestCostMatrix::printingTellsEveryPair()
{
    const WorkflowTree tree = makeChain({QStringLiteral("a"), QStringLiteral("b")});
    const WorkflowstepCosts pricing;
    for (const int i : {0, 1}) {
        for (const int j : {0, 1}) {
            QString line;
            QDebug(&line) << qMakePair(i, j) << (i == j ? 0 : 50);
            QTest::ignoreMessage(QtDebugMsg, qPrintable(line.trimmed()));
        }
    }
    CostMatrix(tree, tree, &pricing).printMe();
}

QTEST_GUILESS_MAIN(TestCostMatrix)
#include "tst_costmatrix.moc"
