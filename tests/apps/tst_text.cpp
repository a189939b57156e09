// SPDX-License-Identifier: BSD-3-Clause
#include <apps/lorix/text.h>

#include <QTest>

using namespace lorix::cli;

class TestText : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void printableEscapesWhatMovesTheCursor_data();
    void printableEscapesWhatMovesTheCursor();
    void fieldEscapesAreUndone_data();
    void fieldEscapesAreUndone();
    void entitiesAreUndoneOnce_data();
    void entitiesAreUndoneOnce();
    void sizesReadWell_data();
    void sizesReadWell();
    void paintIsInvisibleWithoutColours();
};

void TestText::printableEscapesWhatMovesTheCursor_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("shown");
    QTest::newRow("plain") << "mesh 1.txt"
                           << "mesh 1.txt";
    QTest::newRow("umlaut") << QString::fromUtf8("größe") << QString::fromUtf8("größe");
    QTest::newRow("line feed") << "a\nb"
                               << "a\\nb";
    QTest::newRow("return and tab") << "a\r\tb"
                                    << "a\\r\\tb";
    QTest::newRow("escape") << "\x1b[2J"
                            << "\\x1b[2J";
    QTest::newRow("delete") << "a\x7f"
                            << "a\\x7f";
    QTest::newRow("control of the second set") << QString(QChar(0x9b)) << "\\x9b";
    QTest::newRow("zero") << QString(QChar(0)) << "\\x00";
    QTest::newRow("override") << QString(QChar(0x202e)) + "gpj.exe"
                              << "\\u{202e}gpj.exe";
    QTest::newRow("lone surrogate") << QString(QChar(0xd800)) + "a"
                                    << "\\u{d800}a";
    QTest::newRow("pair") << QString::fromUtf8("\xf0\x9f\x93\x84")
                          << QString::fromUtf8("\xf0\x9f\x93\x84");
}

void TestText::printableEscapesWhatMovesTheCursor()
{
    QFETCH(QString, text);
    QFETCH(QString, shown);
    QCOMPARE(printable(text), shown);
}

void TestText::fieldEscapesAreUndone_data()
{
    QTest::addColumn<QString>("field");
    QTest::addColumn<QString>("text");
    QTest::newRow("none") << "plain"
                          << "plain";
    QTest::newRow("bracket") << "a\\]b"
                             << "a]b";
    QTest::newRow("backslash") << "a\\\\b"
                               << "a\\b";
    QTest::newRow("backslash before n") << "a\\\\n"
                                        << "a\\n";
    QTest::newRow("line feed") << "a\\nb"
                               << "a\nb";
    QTest::newRow("unknown escape stays") << "a\\tb"
                                          << "a\\tb";
    QTest::newRow("last backslash stays") << "a\\"
                                          << "a\\";
}

void TestText::fieldEscapesAreUndone()
{
    QFETCH(QString, field);
    QFETCH(QString, text);
    QCOMPARE(decodedField(field), text);
}

void TestText::entitiesAreUndoneOnce_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("decoded");
    QTest::newRow("all five") << "&lt;&gt;&quot;&apos;&amp;"
                              << "<>\"'&";
    QTest::newRow("twice written") << "&amp;lt;"
                                   << "&lt;";
    QTest::newRow("unknown stays") << "&nbsp; & &#10;"
                                   << "&nbsp; & &#10;";
}

void TestText::entitiesAreUndoneOnce()
{
    QFETCH(QString, text);
    QFETCH(QString, decoded);
    QCOMPARE(decodedEntities(text), decoded);
}

void TestText::sizesReadWell_data()
{
    QTest::addColumn<qint64>("bytes");
    QTest::addColumn<QString>("shown");
    QTest::newRow("unknown") << Q_INT64_C(-1) << "?";
    QTest::newRow("nothing") << Q_INT64_C(0) << "0 B";
    QTest::newRow("below a KiB") << Q_INT64_C(1023) << "1023 B";
    QTest::newRow("a KiB") << Q_INT64_C(1024) << "1.0 KiB";
    QTest::newRow("almost a MiB") << Q_INT64_C(1048575) << "1.0 MiB";
    QTest::newRow("largest container") << Q_INT64_C(2147483647) << "2.0 GiB";
}

void TestText::sizesReadWell()
{
    QFETCH(qint64, bytes);
    QFETCH(QString, shown);
    QCOMPARE(humanSize(bytes), shown);
}

void TestText::paintIsInvisibleWithoutColours()
{
    QCOMPARE(Paint(false).bad(QStringLiteral("x")), QStringLiteral("x"));
    QCOMPARE(Paint(true).bad(QStringLiteral("x")), QStringLiteral("\x1b[31mx\x1b[0m"));
    QCOMPARE(Paint(true).bad(QString()), QString());
}

QTEST_GUILESS_MAIN(TestText)
#include "tst_text.moc"
