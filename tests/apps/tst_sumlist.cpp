// SPDX-License-Identifier: BSD-3-Clause
#include <apps/lorix/sumlist.h>

#include <QTest>

using namespace lorix::cli;

namespace {
const QByteArray digest = "900150983cd24fb0d6963f7d28e17f72";
} // namespace

class TestSumList : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void linesAreRead_data();
    void linesAreRead();
    void otherLinesAreCounted_data();
    void otherLinesAreCounted();
    void linesKeepTheirOrderAndNumbers();
};

void TestSumList::linesAreRead_data()
{
    QTest::addColumn<QByteArray>("line");
    QTest::addColumn<QString>("path");
    QTest::newRow("text") << digest + "  a b.txt"
                          << "a b.txt";
    QTest::newRow("binary") << digest + " *a.txt"
                            << "a.txt";
    QTest::newRow("upper case") << digest.toUpper() + "  a"
                                << "a";
    QTest::newRow("carriage return") << digest + "  a\r"
                                     << "a";
    QTest::newRow("leading blank") << digest + "   a"
                                   << " a";
    QTest::newRow("backslash as it is") << digest + "  a\\nb"
                                        << "a\\nb";
    QTest::newRow("escaped") << "\\" + digest + "  a\\nb\\\\c\\rd"
                             << "a\nb\\c\rd";
    QTest::newRow("tagged") << "MD5 (a b) = " + digest << "a b";
    QTest::newRow("tagged with bracket") << "MD5 (a) = b) = " + digest << "a) = b";
    QTest::newRow("utf-8") << digest + "  \xc3\xa4" << QString(QChar(0xe4));
}

void TestSumList::linesAreRead()
{
    QFETCH(QByteArray, line);
    const SumList list = SumList::parse(line + '\n');
    QCOMPARE(list.entries.size(), 1);
    QVERIFY(list.badLines.isEmpty());
    QTEST(list.entries.first().path, "path");
    QCOMPARE(list.entries.first().md5, QString::fromLatin1(digest));
}

void TestSumList::otherLinesAreCounted_data()
{
    QTest::addColumn<QByteArray>("line");
    QTest::newRow("words") << QByteArray("no digest here");
    QTest::newRow("no name") << digest;
    QTest::newRow("empty name") << digest + "  ";
    QTest::newRow("one blank") << digest + " a";
    QTest::newRow("31 digits") << digest.mid(1) + "  a";
    QTest::newRow("33 digits") << "0" + digest + "  a";
    QTest::newRow("not hexadecimal") << "g" + digest.mid(1) + "  a";
    QTest::newRow("other digest") << "SHA1 (a) = " + digest;
    QTest::newRow("zero byte") << QByteArray("\0", 1);
}

void TestSumList::otherLinesAreCounted()
{
    QFETCH(QByteArray, line);
    const SumList list = SumList::parse(line);
    QVERIFY(list.entries.isEmpty());
    QCOMPARE(list.badLines, QList<int>({1}));
}

void TestSumList::linesKeepTheirOrderAndNumbers()
{
    const SumList list =
        SumList::parse("# made by hand\n\n" + digest + "  b\nwhat\n" + digest + "  a");
    QCOMPARE(list.entries.size(), 2);
    QCOMPARE(list.entries.at(0).line, 3);
    QCOMPARE(list.entries.at(0).path, QStringLiteral("b"));
    QCOMPARE(list.entries.at(1).line, 5);
    QCOMPARE(list.entries.at(1).path, QStringLiteral("a"));
    QCOMPARE(list.badLines, QList<int>({4}));
}

QTEST_GUILESS_MAIN(TestSumList)
#include "tst_sumlist.moc"
