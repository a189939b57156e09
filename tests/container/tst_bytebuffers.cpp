// SPDX-License-Identifier: BSD-3-Clause
#include <lorix/container/bytebuffers.h>

#include <QTest>

using namespace lorix;

class TestByteBuffers : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void append_data();
    void append();
    void prepend_data();
    void prepend();
    void findLast_data();
    void findLast();
};

void TestByteBuffers::append_data()
{
    QTest::addColumn<int>("start");
    QTest::addColumn<int>("len");
    QTest::addColumn<QByteArray>("result");
    QTest::newRow("middle") << 1 << 2 << QByteArray("xybc");
    QTest::newRow("all") << 0 << 5 << QByteArray("xyabcde");
    QTest::newRow("to the end") << 2 << -1 << QByteArray("xycde");
    QTest::newRow("clipped") << 3 << 100 << QByteArray("xyde");
    QTest::newRow("far too long") << 3 << 2147483647 << QByteArray("xyde");
    QTest::newRow("nothing") << 2 << 0 << QByteArray("xy");
    QTest::newRow("from the end") << 5 << -1 << QByteArray("xy");
    QTest::newRow("from behind the end") << 7 << 2 << QByteArray("xy");
    QTest::newRow("rest from behind the end") << 7 << -1 << QByteArray("xy");
}

void TestByteBuffers::append()
{
    QFETCH(int, start);
    QFETCH(int, len);
    QByteArray dst = "xy";
    appendToBuffer(dst, "abcde", start, len);
    QTEST(dst, "result");
}

void TestByteBuffers::prepend_data()
{
    QTest::addColumn<int>("end");
    QTest::addColumn<int>("len");
    QTest::addColumn<QByteArray>("result");
    QTest::newRow("middle") << 3 << 2 << QByteArray("bcxy");
    QTest::newRow("all") << 5 << 5 << QByteArray("abcdexy");
    QTest::newRow("from the start") << 2 << -1 << QByteArray("abxy");
    QTest::newRow("clipped") << 2 << 100 << QByteArray("abxy");
    QTest::newRow("far too long") << 2 << 2147483647 << QByteArray("abxy");
    QTest::newRow("nothing") << 2 << 0 << QByteArray("xy");
    QTest::newRow("to the start") << 0 << -1 << QByteArray("xy");
}

void TestByteBuffers::prepend()
{
    QFETCH(int, end);
    QFETCH(int, len);
    QByteArray dst = "xy";
    prependToBuffer(dst, "abcde", end, len);
    QTEST(dst, "result");
}

void TestByteBuffers::findLast_data()
{
    QTest::addColumn<int>("from");
    QTest::addColumn<int>("index");
    QTest::newRow("behind the last") << 6 << 4;
    QTest::newRow("just behind the last") << 5 << 4;
    QTest::newRow("at the last") << 4 << 1;
    QTest::newRow("behind the first") << 2 << 1;
    QTest::newRow("at the first") << 1 << -1;
    QTest::newRow("at the start") << 0 << -1;
    QTest::newRow("before the start") << -1 << -1;
}

void TestByteBuffers::findLast()
{
    QFETCH(int, from);
    QTEST(findLastIndexOf("ax--x-", 'x', from), "index");
}

QTEST_GUILESS_MAIN(TestByteBuffers)
#include "tst_bytebuffers.moc"
