// SPDX-License-Identifier: BSD-3-Clause
#include <lorix/tree/workflowtree.h>
#include <tree/randomtrees.h>

#include <QTest>

using namespace lorix;

class TestWorkflowTree : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void addedNodesAreNumberedFromZero();
    void nodeAddedUnderItsOwnNumberLeavesTheCounter();
    void nodeAddedTwiceIsReplacedAndListedTwiceBelowItsParent();
    void unknownNumbersGiveEmptyAnswers();
    void rootIsTheFirstTopNode();
    void parentsStandBeforeChildrenInNodeIds();
    void serializedTreeGoesDownFirst();
    void circlesEndEveryWalk();
    void copyHasItsOwnNodes();
    void clearedTreeIsLikeANewOne();
};

void TestWorkflowTree::addedNodesAreNumberedFromZero()
{
    WorkflowTree tree;
    const QString file = QStringLiteral("a.lorix");
    const QString disk = QStringLiteral("/tmp/a");
    QCOMPARE(tree.addTreeNode(NODE_ABOVE_ROOT, makeStep(QStringLiteral("one")), file, disk), 0);
    QCOMPARE(tree.addTreeNode(0, makeStep(QStringLiteral("two")), file, disk), 1);
    QCOMPARE(tree.addTreeNode(0, makeStep(QStringLiteral("three")), QStringLiteral("b"), disk), 2);
    QCOMPARE(tree.nodeIds(), QList<int>({0, 1, 2}));
    QCOMPARE(tree.nodeIdsLinked(), QLinkedList<int>({0, 1, 2}));
    QCOMPARE(tree.children(0), QList<int>({1, 2}));
    QCOMPARE(tree.children(NODE_ABOVE_ROOT), QList<int>({0}));
    QCOMPARE(tree.children(1), QList<int>());
    QCOMPARE(tree.parent(0), -1);
    QCOMPARE(tree.parent(2), 0);
    QCOMPARE(tree.root(), 0);
    QCOMPARE(tree.workflowStep(1).title, QStringLiteral("two"));
    QCOMPARE(tree.lorixfile(1), file);
    QCOMPARE(tree.lorixfile(2), QStringLiteral("b"));
    QCOMPARE(tree.fileOnDisk(2), disk);
}

void TestWorkflowTree::nodeAddedUnderItsOwnNumberLeavesTheCounter()
{
    WorkflowTree tree;
    tree.addTreeNode(WorkflowTreeNode(7, NODE_ABOVE_ROOT, makeStep(QStringLiteral("seven")),
                                      QString(), QString()));
    QCOMPARE(tree.addTreeNode(7, makeStep(QStringLiteral("zero")), QString(), QString()), 0);
    QCOMPARE(tree.nodeIds(), QList<int>({7, 0}));
    QCOMPARE(tree.parent(0), 7);
}

void TestWorkflowTree::nodeAddedTwiceIsReplacedAndListedTwiceBelowItsParent()
{
    WorkflowTree tree;
    tree.addTreeNode(NODE_ABOVE_ROOT, makeStep(QStringLiteral("a")), QString(), QString());
    tree.addTreeNode(
        WorkflowTreeNode(0, NODE_ABOVE_ROOT, makeStep(QStringLiteral("b")), QString(), QString()));
    QCOMPARE(tree.nodeIds(), QList<int>({0}));
    QCOMPARE(tree.workflowStep(0).title, QStringLiteral("b"));
    QCOMPARE(tree.children(NODE_ABOVE_ROOT), QList<int>({0, 0}));
    QCOMPARE(tree.serializedTree(), QList<int>({0}));
}

void TestWorkflowTree::unknownNumbersGiveEmptyAnswers()
{
    WorkflowTree tree;
    QCOMPARE(tree.root(), -2);
    QCOMPARE(tree.nodeIds(), QList<int>());
    QCOMPARE(tree.serializedTree(), QList<int>());
    for (const int id : {-3, -2, -1, 0, 42}) {
        QCOMPARE(tree.parent(id), -2);
        QCOMPARE(tree.children(id), QList<int>());
        QCOMPARE(tree.workflowStep(id).title, QString());
        QCOMPARE(tree.lorixfile(id), QString());
        QCOMPARE(tree.fileOnDisk(id), QString());
        QVERIFY(tree.lorixParser(id).isNull());
        QCOMPARE(tree.serializeFromRoot(id), QList<int>());
    }
}

void TestWorkflowTree::rootIsTheFirstTopNode()
{
    WorkflowTree tree;
    tree.addTreeNode(99, makeStep(QStringLiteral("a")), QString(), QString());
    QCOMPARE(tree.root(), -2);
    tree.addTreeNode(NODE_ABOVE_ROOT, makeStep(QStringLiteral("b")), QString(), QString());
    tree.addTreeNode(NODE_ABOVE_ROOT, makeStep(QStringLiteral("c")), QString(), QString());
    QCOMPARE(tree.root(), 1);
    QCOMPARE(tree.children(NODE_ABOVE_ROOT), QList<int>({1, 2}));
}

void TestWorkflowTree::parentsStandBeforeChildrenInNodeIds()
{
    WorkflowTree tree;
    const auto add = [&tree](int id, int parent) {
        tree.addTreeNode(WorkflowTreeNode(id, parent, Workflowstep(), QString(), QString()));
    };
    add(3, 5);
    add(4, 3);
    add(5, 9);
    add(1, -1);
    add(9, 1);
    QCOMPARE(tree.nodeIds(), QList<int>({1, 9, 5, 3, 4}));
    QCOMPARE(tree.nodeIdsLinked(), QLinkedList<int>({1, 9, 5, 3, 4}));
}

void TestWorkflowTree::serializedTreeGoesDownFirst()
{
    WorkflowTree tree;
    for (const int parent : {-1, 0, 0, 1, 2, 1})
        tree.addTreeNode(parent, Workflowstep(), QString(), QString());
    QCOMPARE(tree.serializedTree(), QList<int>({0, 1, 3, 5, 2, 4}));
    QCOMPARE(tree.serializeFromRoot(1), QList<int>({1, 3, 5}));
}

void TestWorkflowTree::circlesEndEveryWalk()
{
    WorkflowTree tree;
    const auto add = [&tree](int id, int parent) {
        tree.addTreeNode(WorkflowTreeNode(id, parent, Workflowstep(), QString(), QString()));
    };
    add(0, 1);
    add(1, 2);
    add(2, 0);
    add(3, 3);
    QList<int> ids = tree.nodeIds();
    std::sort(ids.begin(), ids.end());
    QCOMPARE(ids, QList<int>({0, 1, 2, 3}));
    QCOMPARE(tree.serializeFromRoot(0), QList<int>({0, 2, 1}));
    QCOMPARE(tree.serializeFromRoot(3), QList<int>({3}));
    QCOMPARE(tree.root(), -2);
}

void TestWorkflowTree::copyHasItsOwnNodes()
{
    WorkflowTree tree = makeChain({QStringLiteral("a"), QStringLiteral("b")});
    WorkflowTree copy(tree);
    tree.addTreeNode(1, makeStep(QStringLiteral("c")), QString(), QString());
    QCOMPARE(copy.nodeIds(), QList<int>({0, 1}));
    QCOMPARE(copy.addTreeNode(0, makeStep(QStringLiteral("d")), QString(), QString()), 2);
    QCOMPARE(tree.workflowStep(2).title, QStringLiteral("c"));
    tree = copy;
    QCOMPARE(tree.workflowStep(2).title, QStringLiteral("d"));
    QCOMPARE(tree.children(0), QList<int>({1, 2}));
}

void TestWorkflowTree::clearedTreeIsLikeANewOne()
{
    WorkflowTree tree = makeChain({QStringLiteral("a"), QStringLiteral("b")});
    tree.clear();
    QCOMPARE(tree.nodeIds(), QList<int>());
    QCOMPARE(tree.children(NODE_ABOVE_ROOT), QList<int>());
    QCOMPARE(tree.addTreeNode(NODE_ABOVE_ROOT, Workflowstep(), QString(), QString()), 0);
}

QTEST_GUILESS_MAIN(TestWorkflowTree)
#include "tst_workflowtree.moc"
