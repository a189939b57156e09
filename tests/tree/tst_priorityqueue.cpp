// SPDX-License-Identifier: BSD-3-Clause
#include <lorix/tree/priorityqueue.h>

#include <QList>
#include <QRandomGenerator>
#include <QTest>

using namespace lorix;

class TestPriorityQueue : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void leastPriorityComesFirst();
    void emptyQueueGivesADefaultElement();
    void laterElementStaysBelowAnEqualHeapParent();
    void tiesMoveAsTheStandardHeapMovesThem();
};

void TestPriorityQueue::leastPriorityComesFirst()
{
    PriorityQueue<int> queue;
    for (const int priority : {5, -3, 9, 0, 7, -3})
        queue.push(priority * 10, priority);
    QCOMPARE(queue.size(), std::size_t(6));
    QList<int> popped;
    while (!queue.isEmpty())
        popped.append(queue.pop());
    QCOMPARE(popped, QList<int>({-30, -30, 0, 50, 70, 90}));
}

void TestPriorityQueue::emptyQueueGivesADefaultElement()
{
    PriorityQueue<int> queue;
    QCOMPARE(queue.pop(), 0);
    QVERIFY(queue.isEmpty());
}

void TestPriorityQueue::laterElementStaysBelowAnEqualHeapParent()
{
    PriorityQueue<char> queue;
    queue.push('a', 1);
    queue.push('b', 1);
    queue.push('c', 1);
    QCOMPARE(queue.pop(), 'a');
}

void TestPriorityQueue::tiesMoveAsTheStandardHeapMovesThem()
{
    QRandomGenerator random{1};
    PriorityQueue<int> queue;
    std::vector<std::pair<int, int>> heap;
    const auto sinksBelow = [](const auto& a, const auto& b) { return a.second > b.second; };
    for (int i = 0; i < 20000; ++i) {
        if (heap.empty() || random.bounded(3) > 0) {
            const int priority = random.bounded(5);
            queue.push(i, priority);
            heap.emplace_back(i, priority);
            std::push_heap(heap.begin(), heap.end(), sinksBelow);
        } else {
            std::pop_heap(heap.begin(), heap.end(), sinksBelow);
            QCOMPARE(queue.pop(), heap.back().first);
            heap.pop_back();
        }
        QCOMPARE(queue.size(), heap.size());
    }
}

QTEST_GUILESS_MAIN(TestPriorityQueue)
#include "tst_priorityqueue.moc"
