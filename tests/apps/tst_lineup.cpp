// SPDX-License-Identifier: BSD-3-Clause
// Several threads at work, one order on the outside.
#include <apps/lorix/lineup.h>

#include <QTest>

#include <atomic>
#include <random>

using namespace lorix::cli;

namespace {

Input numbered(int number)
{
    return {QString::number(number), true, false};
}

Printout text(const Input& input)
{
    Printout printout;
    printout.out = input.path.toLatin1() + ' ';
    return printout;
}

} // namespace

class TestLineup : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void orderIsThatOfTheInputs_data();
    void orderIsThatOfTheInputs();
    void oneJobStaysOnTheCallingThread();
    void slowInputHoldsBackABoundedNumber();
    void slowInputHoldsBackABoundedNumberOfBytes();
    void answersDoNotWaitForTheNextInput();
    void refusedAnswerEndsTheWork();
};

void TestLineup::orderIsThatOfTheInputs_data()
{
    QTest::addColumn<int>("jobs");
    for (const int jobs : {1, 2, 3, 16})
        QTest::addRow("%d", jobs) << jobs;
}

void TestLineup::orderIsThatOfTheInputs()
{
    QFETCH(int, jobs);
    QByteArray shown;
    QByteArray expected;
    const auto spin = [](const Input& input) {
        std::minstd_rand random(static_cast<unsigned>(input.path.toInt() + 1));
        volatile unsigned sum = 0;
        for (unsigned i = random() % 4096; i > 0; --i)
            sum = sum + i;
        return text(input);
    };
    Lineup lineup(jobs, spin, [&](const Input&, const Printout& printout) {
        shown += printout.out;
        return true;
    });
    for (int i = 0; i < 2000; ++i) {
        QVERIFY(lineup.add(numbered(i)));
        expected += QByteArray::number(i) + ' ';
    }
    QVERIFY(lineup.finish());
    QCOMPARE(shown, expected);
}

void TestLineup::oneJobStaysOnTheCallingThread()
{
    const std::thread::id here = std::this_thread::get_id();
    int shown = 0;
    const auto work = [&](const Input& input) {
        return std::this_thread::get_id() == here ? text(input) : Printout();
    };
    Lineup lineup(1, work, [&](const Input&, const Printout& printout) {
        shown += printout.out.isEmpty() || std::this_thread::get_id() != here ? 0 : 1;
        return true;
    });
    for (int i = 0; i < 3; ++i) {
        lineup.add(numbered(i));
        QCOMPARE(shown, i + 1);
    }
    QVERIFY(lineup.finish());
}

// The first input ends only when as many others are done as may wait behind it.
void TestLineup::slowInputHoldsBackABoundedNumber()
{
    const int mostWaiting = static_cast<int>(Lineup::mostWaiting(2));
    std::mutex mutex;
    std::condition_variable changed;
    int done = 0;
    int shown = 0;
    std::atomic<bool> tooMany = false;
    const auto work = [&](const Input& input) {
        std::unique_lock<std::mutex> lock(mutex);
        if (input.path == u"0")
            changed.wait(lock, [&] { return done == mostWaiting - 1; });
        if (shown == 0 && input.path.toInt() >= mostWaiting)
            tooMany = true;
        ++done;
        changed.notify_all();
        return text(input);
    };
    Lineup lineup(2, work, [&](const Input&, const Printout&) {
        const std::lock_guard<std::mutex> lock(mutex);
        ++shown;
        return true;
    });
    for (int i = 0; i < 5 * mostWaiting; ++i)
        QVERIFY(lineup.add(numbered(i)));
    QVERIFY(lineup.finish());
    QVERIFY(!tooMany);
    QCOMPARE(shown, 5 * mostWaiting);
}

// Two printouts of 40 MiB are more than may wait, so that the first input,
// which waits for them, sees no third.
void TestLineup::slowInputHoldsBackABoundedNumberOfBytes()
{
    const QByteArray large(40 * 1024 * 1024, 'x');
    QVERIFY(large.size() < Lineup::mostBytes && 2 * large.size() > Lineup::mostBytes);
    std::mutex mutex;
    std::condition_variable changed;
    int begun = 0;
    int atFirst = 0;
    const auto work = [&](const Input& input) {
        std::unique_lock<std::mutex> lock(mutex);
        ++begun;
        changed.notify_all();
        Printout printout;
        if (input.path == u"0") {
            changed.wait(lock, [&] { return begun == 3; });
            // The other thread comes to wait, or shows that it does not.
            changed.wait_for(lock, std::chrono::milliseconds(50), [&] { return begun > 3; });
            atFirst = begun;
        } else {
            printout.out = large;
        }
        return printout;
    };
    qsizetype bytes = 0;
    Lineup lineup(2, work, [&](const Input&, const Printout& printout) {
        bytes += printout.out.size();
        return true;
    });
    for (int i = 0; i < 6; ++i)
        QVERIFY(lineup.add(numbered(i)));
    QVERIFY(lineup.finish());
    QCOMPARE(atFirst, 3);
    QCOMPARE(bytes, 5 * large.size());
}

// Who writes one name into our pipe and waits for its answer gets it.
void TestLineup::answersDoNotWaitForTheNextInput()
{
    std::mutex mutex;
    std::condition_variable changed;
    int shown = 0;
    Lineup lineup(2, text, [&](const Input&, const Printout&) {
        const std::lock_guard<std::mutex> lock(mutex);
        ++shown;
        changed.notify_all();
        return true;
    });
    for (int i = 1; i <= 20; ++i) {
        lineup.add(numbered(i));
        std::unique_lock<std::mutex> lock(mutex);
        QVERIFY(changed.wait_for(lock, std::chrono::seconds(60), [&] { return shown == i; }));
    }
    QVERIFY(lineup.finish());
}

void TestLineup::refusedAnswerEndsTheWork()
{
    for (const int jobs : {1, 4}) {
        std::atomic<int> shown = 0;
        Lineup lineup(jobs, text, [&](const Input&, const Printout&) { return ++shown < 10; });
        int added = 0;
        while (added < 100000 && lineup.add(numbered(added)))
            ++added;
        QVERIFY(added < 100000);
        QCOMPARE(int(shown), 10);
        if (jobs > 1)
            QVERIFY(!lineup.finish());
    }
}

QTEST_GUILESS_MAIN(TestLineup)
#include "tst_lineup.moc"
