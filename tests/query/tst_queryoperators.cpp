// SPDX-License-Identifier: BSD-3-Clause
#include <lorix/query/queryoperators.h>
#include <lorix/query/wildcardpattern.h>
#include <query/randomquery.h>
#include <query/referencecompiler.h>

#include <QTest>

#include <algorithm>
#include <cmath>
#include <functional>

using namespace lorix;

namespace {

using Binary = ReturnValue (*)(const ReturnValue&, const ReturnValue&);

ReturnValue string(const char* text)
{
    return ReturnValue::fromString(QString::fromLatin1(text));
}

const ReturnValue yes = ReturnValue::fromBool(true);
const ReturnValue no = ReturnValue::fromBool(false);
const ReturnValue mismatch(TypeMismatch, QString());
const ReturnValue missing(NoSuchAttribute, QString());
const ReturnValue unassigned(UnassignedVariable, QString());
const ReturnValue invalid(InvalidOperand, QString());

const QList<ReturnValue> kinds = {yes, no, string("x"), mismatch, missing, unassigned, invalid};

ReturnValue passThrough(const ReturnValue& left, const ReturnValue& right)
{
    if (left.type != Boolean && left.type != String)
        return left;
    if (right.type != Boolean && right.type != String)
        return right;
    return mismatch;
}

// The comparisons once more, straight from their description.
ReturnValue plainCompare(int op, const ReturnValue& left, const ReturnValue& right)
{
    const bool strings = left.type == String && right.type == String;
    if (op < 3) {
        if (!strings)
            return passThrough(left, right);
        if (op == 0)
            return ReturnValue::fromBool(left.text.toLower() == right.text.toLower());
        if (op == 1)
            return ReturnValue::fromBool(left.text.toLower().contains(right.text.toLower()));
        return ReturnValue::fromBool(reference::matches(left.text, right.text));
    }
    bool leftOk = false;
    bool rightOk = false;
    const float a = reference::toNumber(left.text, &leftOk);
    const float b = reference::toNumber(right.text, &rightOk);
    if (leftOk && rightOk) {
        const bool results[] = {std::fabs(a - b) / std::max(a, b) < 0.01F, a > b, a >= b, a < b,
                                a <= b};
        return ReturnValue::fromBool(results[op - 3]);
    }
    const QDateTime d = reference::toDate(left.text, &leftOk);
    const QDateTime e = reference::toDate(right.text, &rightOk);
    if (op > 3 && leftOk && rightOk) {
        const bool results[] = {e < d, !(d < e), d < e, !(e < d)};
        return ReturnValue::fromBool(results[op - 4]);
    }
    return passThrough(left, right);
}

const Binary comparisons[] = {evaluateEq,      evaluateContains,  evaluateMatches, evaluateIsApprox,
                              evaluateGreater, evaluateGreaterEq, evaluateLess,    evaluateLessEq};

} // namespace

class TestQueryOperators : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void comparisonsDecide_data();
    void comparisonsDecide();
    void unsuitableOperandsPassThroughLeftFirst();
    void notEqualNegatesWhatIsDecided();
    void andFollowsItsTable();
    void orFollowsItsTable();
    void notFollowsItsTable();
    void comparisonsAreThePlainOnes();
    void wildcardsAreThoseOfTheExpressionClass();
    void longWildcardPatternsEnd();
};

void TestQueryOperators::comparisonsDecide_data()
{
    QTest::addColumn<int>("op");
    QTest::addColumn<QString>("left");
    QTest::addColumn<QString>("right");
    QTest::addColumn<bool>("result");
    enum { eq, contains, matches, approx, gt, ge, lt, le };
    const struct
    {
        int op;
        const char* left;
        const char* right;
        bool result;
    } rows[] = {
        {eq, "ABC", "abc", true},
        {eq, "1.0", "1", false},
        {contains, "ABCD", "bc", true},
        {contains, "abcd", "BC", true},
        {contains, "abcd", "", true},
        {contains, "", "", true},
        {contains, "abcd", "bd", false},
        {matches, "Report.PDF", "*.pdf", false},
        {matches, "report.pdf", "*.PDF", true},
        {matches, "Report.pdf", "?eport.pdf", true},
        {matches, "report.pdf", "report", false},
        {matches, "report.pdf", "[p-s]eport.*", true},
        {matches, "", "*", true},
        {matches, "", "", true},
        {matches, "x", "", false},
        {matches, "a", "[a", false},
        {matches, "a\nb", "a*b", true},
        {approx, "100", "100.5", true},
        {approx, "100", "99", false},
        {approx, "100", "99.1", true},
        {approx, "0", "0", false},
        {approx, "-1", "-500", true},
        {approx, "-1", "1", false},
        {gt, "2", "1kb", false},
        {gt, "2kb", "1", true},
        {ge, "2", "2.0", true},
        {lt, "2", "10", true},
        {le, "10", "10", true},
        {le, "10.1", "10", false},
        {lt, "2013-05-01", "2013-06-01", false},
        {le, "2013-05-01", "2013-04-01", true},
        {gt, "2014-01-01", "2013-12-31", true},
    };
    int n = 0;
    for (const auto& row : rows) {
        QTest::newRow(qPrintable(QString::number(n++)))
            << row.op << QString::fromLatin1(row.left) << QString::fromLatin1(row.right)
            << row.result;
    }
}

void TestQueryOperators::comparisonsDecide()
{
    QFETCH(const int, op);
    QFETCH(const QString, left);
    QFETCH(const QString, right);
    QFETCH(const bool, result);
    QCOMPARE(comparisons[op](ReturnValue::fromString(left), ReturnValue::fromString(right)),
             ReturnValue::fromBool(result));
}

void TestQueryOperators::unsuitableOperandsPassThroughLeftFirst()
{
    for (const Binary op : comparisons) {
        for (const ReturnValue& left : kinds) {
            for (const ReturnValue& right : kinds) {
                if (left.isString() && right.isString())
                    continue;
                QCOMPARE(op(left, right), passThrough(left, right));
                QCOMPARE(evaluateNEq(left, right), passThrough(left, right));
            }
        }
    }
    QCOMPARE(evaluateEq(yes, yes), mismatch);
    QCOMPARE(evaluateIsApprox(string("2013-05-01x"), string("12:x")), ReturnValue::fromBool(false));
    QCOMPARE(evaluateIsApprox(string("x"), string("1")), mismatch);
    QCOMPARE(evaluateGreater(string("x"), string("1")), mismatch);
}

void TestQueryOperators::notEqualNegatesWhatIsDecided()
{
    QCOMPARE(evaluateNEq(string("a"), string("A")), no);
    QCOMPARE(evaluateNEq(string("a"), string("b")), yes);
}

void TestQueryOperators::andFollowsItsTable()
{
    for (const ReturnValue& left : kinds) {
        for (const ReturnValue& right : kinds) {
            ReturnValue expected = left;
            if (left.isString() || right.isString())
                expected = mismatch;
            else if (left == yes)
                expected = right;
            QCOMPARE(evaluateAnd(left, right), expected);
        }
    }
}

void TestQueryOperators::orFollowsItsTable()
{
    for (const ReturnValue& left : kinds) {
        for (const ReturnValue& right : kinds) {
            ReturnValue expected = right;
            if (left == yes)
                expected = left;
            else if (right.isString())
                expected = mismatch;
            QCOMPARE(evaluateOr(left, right), expected);
        }
    }
    QCOMPARE(evaluateOr(string("x"), no), no);
}

void TestQueryOperators::notFollowsItsTable()
{
    QCOMPARE(evaluateNot(yes), no);
    QCOMPARE(evaluateNot(no), yes);
    QCOMPARE(evaluateNot(string("x")), mismatch);
    for (const ReturnValue& value : {mismatch, missing, unassigned, invalid})
        QCOMPARE(evaluateNot(value), value);
}

void TestQueryOperators::comparisonsAreThePlainOnes()
{
    RandomQuery random(52);
    const QStringList pieces =
        QStringLiteral("a B * ? [ab] [ ] \\ ^ . 1 2 10 -1 1e3 kb 2013-05-01 x12:30 12:31 , - $ (")
            .split(u' ') +
        QStringList{QStringLiteral(" "), QStringLiteral("\n"), QString(QChar(0xe4)),
                    QString(QChar(0xc4)), QString(QChar(0))};
    for (int i = 0; i < randomRuns(20000); ++i) {
        ReturnValue left = ReturnValue::fromString(random.text(pieces, 4));
        ReturnValue right = ReturnValue::fromString(random.text(pieces, 4));
        if (random.once(20))
            left = kinds[random.below(int(kinds.size()))];
        if (random.once(20))
            right = kinds[random.below(int(kinds.size()))];
        for (int op = 0; op < 8; ++op) {
            QVERIFY2(comparisons[op](left, right) == plainCompare(op, left, right),
                     qPrintable(QStringLiteral("%1 %2 %3").arg(op).arg(left.text, right.text)));
        }
    }
}

void TestQueryOperators::wildcardsAreThoseOfTheExpressionClass()
{
    RandomQuery random(53);
    const QStringList pieces = QStringLiteral("a b c * ? ** [ab] [^a] [a-c] []a] [ ] \\ ^ $ . + | "
                                              "( ) { }")
                                   .split(u' ') +
                               QStringList{QStringLiteral("\n"), QString(QChar(0xd83d)),
                                           QString(QChar(0xde00)), QString(QChar(0))};
    for (int i = 0; i < randomRuns(60000); ++i) {
        const QString pattern = random.text(pieces, 6);
        QString text = random.text(pieces, 7);
        if (random.once(2)) {
            text = pattern;
            text.replace(u'?', u'a').replace(u'*', random.text(pieces, 2));
        }
        QVERIFY2(WildcardPattern(pattern).matches(text) == reference::matches(text, pattern),
                 qPrintable(QStringLiteral("%1 in %2").arg(pattern, text)));
    }
}

void TestQueryOperators::longWildcardPatternsEnd()
{
    const QString pattern = QStringLiteral("*a").repeated(2000) + u'b';
    const QString text = QStringLiteral("a").repeated(20000);
    QVERIFY(!WildcardPattern(pattern).matches(text));
    QVERIFY(WildcardPattern(QStringLiteral("*").repeated(100000)).matches(text));
}

QTEST_GUILESS_MAIN(TestQueryOperators)
#include "tst_queryoperators.moc"
