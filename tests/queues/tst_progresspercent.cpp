// SPDX-License-Identifier: BSD-3-Clause
#include <lorix/queues/progresspercent.h>

#include <QTest>

#include <limits>

using namespace lorix;

class TestProgressPercent : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void isCutToAWholeNumber_data();
    void isCutToAWholeNumber();
};

void TestProgressPercent::isCutToAWholeNumber_data()
{
    QTest::addColumn<qint64>("done");
    QTest::addColumn<qint64>("total");
    QTest::addColumn<int>("percent");
    const qint64 big = 50000000000LL;
    QTest::newRow("nothing of nothing") << qint64(0) << qint64(0) << 0;
    QTest::newRow("something of nothing") << qint64(7) << qint64(0) << 0;
    QTest::newRow("start") << qint64(0) << qint64(3) << 0;
    QTest::newRow("a third") << qint64(1) << qint64(3) << 33;
    QTest::newRow("two thirds") << qint64(2) << qint64(3) << 66;
    QTest::newRow("end") << qint64(3) << qint64(3) << 100;
    QTest::newRow("just below the end") << qint64(999) << qint64(1000) << 99;
    QTest::newRow("beyond 32 bits") << big / 4 << big << 25;
    QTest::newRow("less than nothing") << qint64(-1) << qint64(3) << -33;
    QTest::newRow("both below zero") << qint64(-1) << qint64(-1) << 100;
    QTest::newRow("too large for int") << big << qint64(1) << std::numeric_limits<int>::max();
    QTest::newRow("too small for int") << big << qint64(-1) << std::numeric_limits<int>::min();
}

void TestProgressPercent::isCutToAWholeNumber()
{
    QFETCH(qint64, done);
    QFETCH(qint64, total);
    QTEST(progressPercent(done, total), "percent");
}

QTEST_GUILESS_MAIN(TestProgressPercent)
#include "tst_progresspercent.moc"
