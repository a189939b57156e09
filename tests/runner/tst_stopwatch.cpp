// SPDX-License-Identifier: BSD-3-Clause
#include <lorix/runner/stopwatch.h>
#include <support/logrecorder.h>

#include <QTest>

#include <ctime>

using namespace lorix;

namespace {
std::clock_t ticks = 0;
using Messages = QList<QPair<QString, int>>;
} // namespace

// Stands in for the system's clock, in the library as well.
extern "C" __attribute__((visibility("default"))) std::clock_t clock() noexcept
{
    return ticks;
}

class TestStopWatch : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { ticks = 1000; }
    void neverStartedReportsNothing();
    void reportsNameAndSeconds_data();
    void reportsNameAndSeconds();
    void stopsOnlyOnce();
    void stopWithoutReportEndsTheMeasurement();
    void startReportsTheRunningMeasurement();
    void silentStartReportsNothing();
    void destructorReports();
    void measuresAgainFromTheSecondStart();
};

void TestStopWatch::neverStartedReportsNothing()
{
    LogRecorder log;
    {
        StopWatch watch(&log);
        watch.stop(true);
        watch.stop(false);
    }
    QCOMPARE(log.messages, Messages());
}

void TestStopWatch::reportsNameAndSeconds_data()
{
    QTest::addColumn<int>("elapsed");
    QTest::addColumn<QString>("message");
    QTest::newRow("none") << 0 << QStringLiteral("load: 0.00s\n");
    QTest::newRow("one tick") << 1 << QStringLiteral("load: 0.01s\n");
    QTest::newRow("250 ticks") << 250 << QStringLiteral("load: 2.50s\n");
    QTest::newRow("a second of the usual clock") << 1000000 << QStringLiteral("load: 10000.00s\n");
    QTest::newRow("clock that ran backwards") << -150 << QStringLiteral("load: -1.50s\n");
}

void TestStopWatch::reportsNameAndSeconds()
{
    QFETCH(int, elapsed);
    LogRecorder log;
    StopWatch watch(&log);
    watch.start(QStringLiteral("load"), false);
    ticks += elapsed;
    watch.stop(true);
    QCOMPARE(log.messages.size(), 1);
    QTEST(log.messages.first().first, "message");
    QCOMPARE(log.messages.first().second, 0);
}

void TestStopWatch::stopsOnlyOnce()
{
    LogRecorder log;
    StopWatch watch(&log);
    watch.start(QStringLiteral("a"), false);
    watch.stop(true);
    watch.stop(true);
    QCOMPARE(log.messages.size(), 1);
}

void TestStopWatch::stopWithoutReportEndsTheMeasurement()
{
    LogRecorder log;
    {
        StopWatch watch(&log);
        watch.start(QStringLiteral("a"), false);
        watch.stop(false);
        watch.stop(true);
        watch.start(QStringLiteral("b"), false);
        watch.stop(false);
    }
    QCOMPARE(log.messages, Messages());
}

void TestStopWatch::startReportsTheRunningMeasurement()
{
    LogRecorder log;
    StopWatch watch(&log);
    watch.start(QStringLiteral("a"), false);
    QCOMPARE(log.messages, Messages());
    ticks += 30;
    watch.start(QStringLiteral("a"), false);
    QCOMPARE(log.messages, Messages({{QStringLiteral("a: 0.30s\n"), 0}}));
}

void TestStopWatch::silentStartReportsNothing()
{
    LogRecorder log;
    StopWatch watch(&log);
    watch.start(QStringLiteral("a"), true);
    watch.start(QStringLiteral("b"), true);
    QCOMPARE(log.messages, Messages());
    watch.stop(true);
    QCOMPARE(log.texts(), QStringList({QStringLiteral("b: 0.00s\n")}));
}

void TestStopWatch::destructorReports()
{
    LogRecorder log;
    {
        StopWatch watch(&log);
        watch.start(QStringLiteral("%1"), false);
        ticks += 199;
    }
    QCOMPARE(log.messages, Messages({{QStringLiteral("%1: 1.99s\n"), 0}}));
}

void TestStopWatch::measuresAgainFromTheSecondStart()
{
    LogRecorder log;
    StopWatch watch(&log);
    watch.start(QStringLiteral("a"), false);
    ticks += 500;
    watch.start(QStringLiteral("b"), true);
    ticks += 25;
    watch.stop(true);
    QCOMPARE(log.texts(), QStringList({QStringLiteral("b: 0.25s\n")}));
}

QTEST_GUILESS_MAIN(TestStopWatch)
#include "tst_stopwatch.moc"
