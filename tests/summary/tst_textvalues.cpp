// SPDX-License-Identifier: BSD-3-Clause
#include <lorix/summary/textvalues.h>

#include <QTest>

class TestTextValues : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void textReadsAsNumberAndFlag_data();
    void textReadsAsNumberAndFlag();
    void bothSpellingsNameOneFunction();
};

void TestTextValues::textReadsAsNumberAndFlag_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("number");
    QTest::addColumn<bool>("flag");

    QTest::newRow("empty") << QString() << -1 << false;
    QTest::newRow("zero") << "0" << 0 << false;
    QTest::newRow("zeros") << "000" << 0 << false;
    QTest::newRow("minus zero") << "-0" << 0 << false;
    QTest::newRow("one") << "1" << 1 << true;
    QTest::newRow("minus one") << "-1" << -1 << true;
    QTest::newRow("plus sign") << "+7" << 7 << true;
    QTest::newRow("leading zeros are no octal") << "0010" << 10 << true;
    QTest::newRow("trailing letter") << "12a" << -1 << false;
    QTest::newRow("word") << "true" << -1 << false;
    QTest::newRow("hexadecimal") << "0x10" << -1 << false;
    QTest::newRow("hexadecimal digit") << "a" << -1 << false;
    QTest::newRow("fraction") << "1.5" << -1 << false;
    QTest::newRow("group separator") << "1,000" << -1 << false;
    QTest::newRow("exponent") << "1e3" << -1 << false;
    QTest::newRow("blanks around") << " 12\n" << 12 << true;
    QTest::newRow("blank alone") << " " << -1 << false;
    QTest::newRow("blank inside") << "1 2" << -1 << false;
    QTest::newRow("two signs") << "--1" << -1 << false;
    QTest::newRow("sign alone") << "-" << -1 << false;
    QTest::newRow("largest") << "2147483647" << 2147483647 << true;
    QTest::newRow("beyond the largest") << "2147483648" << -1 << false;
    QTest::newRow("smallest") << "-2147483648" << -2147483647 - 1 << true;
    QTest::newRow("beyond the smallest") << "-2147483649" << -1 << false;
    QTest::newRow("beyond 64 bits") << "18446744073709551617" << -1 << false;
    QTest::newRow("zero character") << QString(QLatin1String("1\0002", 3)) << -1 << false;
}

void TestTextValues::textReadsAsNumberAndFlag()
{
    QFETCH(QString, text);
    QTEST(str2int(text), "number");
    QTEST(str2bool(text), "flag");
}

void TestTextValues::bothSpellingsNameOneFunction()
{
    QVERIFY(&lorix::str2int == &::str2int);
    QVERIFY(&lorix::str2bool == &::str2bool);
}

QTEST_GUILESS_MAIN(TestTextValues)
#include "tst_textvalues.moc"
