// SPDX-License-Identifier: BSD-3-Clause
#include <apps/lorix/progressline.h>

#include <QTest>

using lorix::cli::ProgressLine;

class TestProgressLine : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void saysShareRateAndTimeLeft_data();
    void saysShareRateAndTimeLeft();
    void writesNothingWithoutATerminal();
};

void TestProgressLine::saysShareRateAndTimeLeft_data()
{
    QTest::addColumn<qint64>("done");
    QTest::addColumn<qint64>("total");
    QTest::addColumn<qint64>("elapsed");
    QTest::addColumn<QString>("line");
    const qint64 mib = 1024 * 1024;
    QTest::newRow("start") << qint64(0) << 100 * mib << qint64(0) << "f  0 %";
    QTest::newRow("too early for a rate") << 10 * mib << 100 * mib << qint64(400) << "f  10 %";
    QTest::newRow("middle") << 50 * mib << 100 * mib << qint64(1000)
                            << "f  50 %  50.0 MiB/s  0:01 left";
    QTest::newRow("minutes") << mib << 100 * mib << qint64(1000) << "f  1 %  1.0 MiB/s  1:39 left";
    QTest::newRow("end") << 100 * mib << 100 * mib << qint64(2000)
                         << "f  100 %  50.0 MiB/s  0:00 left";
    QTest::newRow("no total") << mib << qint64(0) << qint64(1000) << "f  1.0 MiB/s";
    QTest::newRow("more than all") << 3 * mib << 2 * mib << qint64(1000) << "f  100 %  3.0 MiB/s";
}

void TestProgressLine::saysShareRateAndTimeLeft()
{
    QFETCH(qint64, done);
    QFETCH(qint64, total);
    QFETCH(qint64, elapsed);
    QTEST(ProgressLine::lineFor(QStringLiteral("f"), done, total, elapsed), "line");
}

void TestProgressLine::writesNothingWithoutATerminal()
{
    std::FILE* err = std::tmpfile();
    {
        lorix::cli::Console console(err, err);
        ProgressLine progress(console, QStringLiteral("f"), 10);
        progress.update(5);
    }
    QCOMPARE(std::ftell(err), 0L);
    std::fclose(err);
}

QTEST_GUILESS_MAIN(TestProgressLine)
#include "tst_progressline.moc"
