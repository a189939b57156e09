// SPDX-License-Identifier: BSD-3-Clause
#include <lorix/query/returnvalue.h>
#include <query/randomquery.h>
#include <query/referencecompiler.h>

#include <QTest>

#include <limits>

using namespace lorix;

class TestReturnValue : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void typesKeepTheirNumbers();
    void factoriesMakeTextAndType();
    void onlyBooleansAndStringsAreValid();
    void conversionsFailOnOtherTypes();
    void identityIsTypeAndExactText();
    void numbersAreRead_data();
    void numbersAreRead();
    void datesAreRead_data();
    void datesAreRead();
    void timeAloneIsToday();
    void readingsAreThoseOfThePatterns();
};

void TestReturnValue::typesKeepTheirNumbers()
{
    QCOMPARE(int(ReturnValueType::Boolean), 0);
    QCOMPARE(int(String), 1);
    QCOMPARE(int(NoSuchAttribute), 2);
    QCOMPARE(int(TypeMismatch), 3);
    QCOMPARE(int(InvalidOperand), 5);
    QCOMPARE(int(UnassignedVariable), 6);
    QCOMPARE(sizeof(ReturnValueType), size_t(4));
}

void TestReturnValue::factoriesMakeTextAndType()
{
    QCOMPARE(ReturnValue::fromBool(true), ReturnValue(Boolean, QStringLiteral("true")));
    QCOMPARE(ReturnValue::fromBool(false), ReturnValue(Boolean, QStringLiteral("false")));
    QCOMPARE(ReturnValue::fromString(QStringLiteral("A b")).text, QStringLiteral("A b"));
    QCOMPARE(ReturnValue::fromString(QString()).type, String);
    QCOMPARE(ReturnValue::fromNumber(1234567).text, QStringLiteral("1.23457e+06"));
    QCOMPARE(ReturnValue::fromNumber(-1).text, QStringLiteral("-1"));
    QCOMPARE(ReturnValue::fromNumber(0.5F), ReturnValue(String, QStringLiteral("0.5")));
    QCOMPARE(ReturnValue::fromNumber(999999).text, QStringLiteral("999999"));
}

void TestReturnValue::onlyBooleansAndStringsAreValid()
{
    for (const ReturnValueType type :
         {NoSuchAttribute, TypeMismatch, ReturnValueType(4), InvalidOperand, UnassignedVariable}) {
        const ReturnValue value(type, QString());
        QVERIFY(!value.isValid() && !value.isBool() && !value.isString());
        QCOMPARE(value.isUnassignedVariable(), type == UnassignedVariable);
    }
    QVERIFY(ReturnValue::fromBool(false).isValid());
    QVERIFY(ReturnValue::fromString(QString()).isValid());
}

void TestReturnValue::conversionsFailOnOtherTypes()
{
    bool ok = true;
    QCOMPARE(ReturnValue::fromBool(true).toString(&ok), QString());
    QVERIFY(!ok);
    QCOMPARE(ReturnValue::fromString(QStringLiteral("x")).toString(&ok), QStringLiteral("x"));
    QVERIFY(ok);
    QVERIFY(!ReturnValue::fromString(QStringLiteral("true")).toBool(&ok));
    QVERIFY(!ok);
    QVERIFY(ReturnValue::fromBool(true).toBool(&ok));
    QVERIFY(ok);
    QVERIFY(!ReturnValue(Boolean, QStringLiteral("True")).toBool(&ok));
    QVERIFY(ok);
    // Numbers and dates read the text whatever the type.
    QCOMPARE(ReturnValue(TypeMismatch, QStringLiteral("5")).toNumber(&ok), 5.F);
    QVERIFY(ok);
    QVERIFY(ReturnValue(Boolean, QStringLiteral("13-5-1")).isDate());
}

void TestReturnValue::identityIsTypeAndExactText()
{
    QVERIFY(ReturnValue::fromString(QStringLiteral("a")) !=
            ReturnValue::fromString(QStringLiteral("A")));
    QVERIFY(ReturnValue::fromString(QStringLiteral("true")) != ReturnValue::fromBool(true));
}

void TestReturnValue::numbersAreRead_data()
{
    QTest::addColumn<bool>("ok");
    QTest::addColumn<float>("number");
    const float inf = std::numeric_limits<float>::infinity();
    const struct
    {
        const char* text;
        bool ok;
        float number;
    } rows[] = {
        {"1.5KB", true, 1536},
        {"1.5kb", true, 1536},
        {"2 KB", true, 2048},
        {"3mB", true, 3145728},
        {"1gb", true, 1073741824},
        {"1tb", true, 1},
        {"1,5", false, 0},
        {"-3e2", true, -300},
        {"-3E+2", true, -300},
        {"abc", false, 0},
        {"", false, 0},
        {"kb", false, 0},
        {"12abc", true, 12},
        {"12e", true, 12},
        {"12e+", true, 12},
        {"2013-05-01", true, 2013},
        {" 1", false, 0},
        {"+", false, 0},
        {"+7", true, 7},
        {".5", true, 0.5F},
        {"5.", true, 5},
        {".", false, 0},
        {"1.2.3", false, 0},
        {"1e39", false, inf},
        {"1e-60", false, 0},
        {"1kbkb", true, 1024},
    };
    for (const auto& row : rows)
        QTest::newRow(row.text) << row.ok << row.number;
}

void TestReturnValue::numbersAreRead()
{
    QFETCH(const bool, ok);
    QFETCH(const float, number);
    const ReturnValue value = ReturnValue::fromString(QString::fromLatin1(QTest::currentDataTag()));
    bool read = !ok;
    QCOMPARE(value.toNumber(&read), number);
    QCOMPARE(read, ok);
    QCOMPARE(value.isNumber(), ok);
    QCOMPARE(value.toNumber(), number);
}

void TestReturnValue::datesAreRead_data()
{
    QTest::addColumn<QDateTime>("date");
    const auto at = [](int y, int m, int d, int h = 0, int min = 0, int s = 0) {
        return QDateTime(QDate(y, m, d), QTime(h, min, s));
    };
    QTest::newRow("2013-05-01 12:30") << at(2013, 5, 1, 12, 30);
    QTest::newRow("2013-05-01   1:3:59") << at(2013, 5, 1, 1, 3, 59);
    QTest::newRow("2013-5-1") << at(2013, 5, 1);
    QTest::newRow("13-5-1") << at(13, 5, 1);
    QTest::newRow("2013-05-01T12:30") << at(2013, 5, 1);
    QTest::newRow("2013-05-01 x") << at(2013, 5, 1);
    QTest::newRow("2013-05-011") << at(2013, 5, 1);
    QTest::newRow("2013-05-01\t12:30") << at(2013, 5, 1);
    QTest::newRow("2013-13-01") << QDateTime();
    QTest::newRow("2013-02-30 12:30") << QDateTime();
    QTest::newRow("113-05-01") << QDateTime();
    QTest::newRow("20130-5-1") << QDateTime();
    QTest::newRow("3-05-01") << QDateTime();
    QTest::newRow(" 2013-05-01") << QDateTime();
    QTest::newRow("x") << QDateTime();
    QTest::newRow("") << QDateTime();
    QTest::newRow("123:10") << QDateTime();
}

void TestReturnValue::datesAreRead()
{
    QFETCH(const QDateTime, date);
    const ReturnValue value = ReturnValue::fromString(QString::fromLatin1(QTest::currentDataTag()));
    bool ok = !date.isValid();
    const QDateTime read = value.toDate(&ok);
    QCOMPARE(ok, date.isValid());
    QCOMPARE(value.isDate(), date.isValid());
    QCOMPARE(read.isNull(), date.isNull());
    QCOMPARE(read.timeSpec(), Qt::LocalTime);
    if (ok)
        QCOMPARE(read, date);
}

void TestReturnValue::timeAloneIsToday()
{
    const QDate before = QDate::currentDate();
    const QDateTime read = ReturnValue::fromString(QStringLiteral("12:30:15h")).toDate();
    QVERIFY(read.date() == before || read.date() == QDate::currentDate());
    QCOMPARE(read.time(), QTime(12, 30, 15));
}

void TestReturnValue::readingsAreThoseOfThePatterns()
{
    RandomQuery random(51);
    const QStringList pieces =
        QStringLiteral("0 1 2 13 59 99 2013 . , - + e E : :: k K kb KB mb gB x 12:30 2013-05-01")
            .split(u' ') +
        QStringList{QStringLiteral(" "),    QStringLiteral("\n"),    QString(QChar(0)),
                    QString(QChar(0x212a)), QString(QChar(0x0130)),  QString(QChar(0x0663)),
                    QString(QChar(0xd835)), QStringLiteral("-05-01")};
    const QDate today = QDate::currentDate();
    for (int i = 0; i < randomRuns(50000); ++i) {
        const QString text = random.text(pieces, 7);
        const ReturnValue value = ReturnValue::fromString(text);
        bool expectedOk = false;
        bool ok = true;
        const float expected = reference::toNumber(text, &expectedOk);
        QVERIFY2(value.toNumber(&ok) == expected && ok == expectedOk, qPrintable(text));
        const QDateTime expectedDate = reference::toDate(text, &expectedOk);
        const QDateTime date = value.toDate(&ok);
        if (QDate::currentDate() != today)
            return; // The two may have been read on different days.
        QVERIFY2(ok == expectedOk && date == expectedDate, qPrintable(text));
    }
}

QTEST_GUILESS_MAIN(TestReturnValue)
#include "tst_returnvalue.moc"
