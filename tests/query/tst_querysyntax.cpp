// SPDX-License-Identifier: BSD-3-Clause
#include <lorix/query/querylexer.h>
#include <lorix/query/querysyntax.h>
#include <query/randomquery.h>
#include <query/referencecompiler.h>

#include <QTest>

using namespace lorix;

namespace {

QString checkedNames(const QList<ExpressionValue>& tokens)
{
    QStringList names;
    for (const ExpressionValue& token : tokens)
        names += token.isOperator() ? token.operatorName() : token.originalText();
    return names.join(u' ');
}

} // namespace

class TestQuerySyntax : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void conjunctionsAreInserted_data();
    void conjunctionsAreInserted();
    void insertedConjunctionHasAPlaceButNoText();
    void errorsAreWorded_data();
    void errorsAreWorded();
    void subExpressionEndsAtItsBracket();
    void subExpressionEndsWithTheTokens();
    void failureIsTheComplementOfItsIndex();
    void strayTokensAreErrors();
    void resultsAreThoseOfTheRecursiveCheck();
    void deepNestingEnds();
};

void TestQuerySyntax::conjunctionsAreInserted_data()
{
    QTest::addColumn<QString>("tokens");
    QTest::newRow("foo bar") << "foo implizit && bar";
    QTest::newRow("a b c") << "a implizit && b implizit && c";
    QTest::newRow("(a:x == 1) (b:y == 2)") << "( a:x == 1 ) implizit && ( b:y == 2 )";
    QTest::newRow("a !b") << "a implizit && ! b";
    QTest::newRow("!!a:isfile") << "! ! a:isfile";
    QTest::newRow("a(b)c") << "a implizit && ( b ) implizit && c";
    QTest::newRow("((a))") << "( ( a ) )";
    QTest::newRow("a && b") << "a && b";
}

void TestQuerySyntax::conjunctionsAreInserted()
{
    QFETCH(const QString, tokens);
    QList<QueryError> errors;
    const QString query = QString::fromLatin1(QTest::currentDataTag());
    QCOMPARE(checkedNames(checkSyntax(lexQuery(query, errors), errors)), tokens);
    QVERIFY(errors.isEmpty());
}

void TestQuerySyntax::insertedConjunctionHasAPlaceButNoText()
{
    QList<QueryError> errors;
    const QList<ExpressionValue> tokens =
        checkSyntax(lexQuery(QStringLiteral("(a:x == 1) (b:y == 2)"), errors), errors);
    const ExpressionValue& inserted = tokens[5];
    QCOMPARE(inserted.operatorName(), QStringLiteral("implizit &&"));
    QCOMPARE(inserted.position(), 11);
    QCOMPARE(inserted.originalText(), QString());
    QCOMPARE(createImplizitAnd(4).position(), 4);
    QCOMPARE(createImplizitAnd(4).precedence(), 2);
}

void TestQuerySyntax::errorsAreWorded_data()
{
    QTest::addColumn<QString>("message");
    QTest::addColumn<int>("position");
    QTest::addColumn<QString>("text");
    const auto expected = [](int at, const char* text) {
        return QStringLiteral("Error at position %1:\n expected a string, a variable, an open "
                              "bracket '(' or an unary operator (e.g. !), but found '%2'.")
            .arg(QString::number(at), QString::fromLatin1(text));
    };
    const auto closing = [](int at) {
        return QStringLiteral("Error at position %1:\n found a closing  bracket ) but did not "
                              "except one.")
            .arg(at);
    };
    const auto premature = [](int at, const char* text) {
        return QStringLiteral("Error after position %1:\n premature end of query  after %2.")
            .arg(QString::number(at), QString::fromLatin1(text));
    };
    QTest::newRow("") << "Error after position 0:\n query is empty." << 0 << "";
    QTest::newRow("  ") << "Error after position 0:\n query is empty." << 0 << "";
    QTest::newRow("a:tool ==") << premature(9, "==") << 7 << "==";
    QTest::newRow("a !") << premature(3, "!") << 2 << "!";
    QTest::newRow("(a") << premature(2, "a") << 1 << "a";
    QTest::newRow("a (") << premature(3, "(") << 2 << "(";
    QTest::newRow("a %contains ") << premature(12, "%contains ") << 2 << "%contains ";
    QTest::newRow(")") << closing(0) << 0 << ")";
    QTest::newRow("a )") << closing(2) << 2 << ")";
    QTest::newRow("a && )") << closing(5) << 5 << ")";
    QTest::newRow("!)") << closing(1) << 1 << ")";
    QTest::newRow("(a))") << closing(3) << 3 << ")";
    QTest::newRow("()") << expected(1, ")") << 1 << ")";
    QTest::newRow("(a &&)") << expected(5, ")") << 5 << ")";
    QTest::newRow("&& a") << expected(0, "&&") << 0 << "&&";
    QTest::newRow("a == %matches b") << expected(5, "%matches ") << 5 << "%matches ";
    QTest::newRow("(a) == == )") << expected(7, "==") << 7 << "==";
}

void TestQuerySyntax::errorsAreWorded()
{
    QFETCH(const QString, message);
    QFETCH(const int, position);
    QFETCH(const QString, text);
    QList<QueryError> errors;
    const QString query = QString::fromLatin1(QTest::currentDataTag());
    QVERIFY(checkSyntax(lexQuery(query, errors), errors).isEmpty());
    QCOMPARE(errors.size(), 1);
    QCOMPARE(errors[0].errorMessage(), message);
    QCOMPARE(errors[0].position(), position);
    QCOMPARE(errors[0].originalText(), text);
    QVERIFY(errors[0].isError());
}

void TestQuerySyntax::subExpressionEndsAtItsBracket()
{
    QList<QueryError> errors;
    const QList<ExpressionValue> tokens = lexQuery(QStringLiteral("x (a (b) c) y"), errors);
    const auto [checked, end] = checkSubExpressionCorrectness(tokens, 2, true, errors);
    QCOMPARE(end, 7);
    QCOMPARE(checkedNames(checked), QStringLiteral("a implizit && ( b ) implizit && c )"));
    QVERIFY(errors.isEmpty());
}

void TestQuerySyntax::subExpressionEndsWithTheTokens()
{
    QList<QueryError> errors;
    const QList<ExpressionValue> tokens = lexQuery(QStringLiteral("a && b"), errors);
    const auto [checked, end] = checkSubExpressionCorrectness(tokens, 2, false, errors);
    QCOMPARE(end, 3);
    QCOMPARE(checkedNames(checked), QStringLiteral("b"));
}

void TestQuerySyntax::failureIsTheComplementOfItsIndex()
{
    QList<QueryError> errors;
    const QList<ExpressionValue> tokens = lexQuery(QStringLiteral("(a && &&"), errors);
    QCOMPARE(checkSubExpressionCorrectness(tokens, 0, false, errors).second, ~3);
    QCOMPARE(checkSubExpressionCorrectness(tokens.mid(0, 3), 0, false, errors).second, ~3);
    QCOMPARE(checkSubExpressionCorrectness({}, 0, false, errors).second, ~0);
    QCOMPARE(errors.size(), 3);
}

void TestQuerySyntax::strayTokensAreErrors()
{
    const ExpressionValue operand = ExpressionValue::fromString(QStringLiteral("a"), 0, {});
    const ExpressionValue end = ExpressionValue::fromOperator(QStringLiteral("EOS"), 1, {});
    for (const ExpressionValue& stray : {end, ExpressionValue()}) {
        QList<QueryError> errors;
        QVERIFY(checkSyntax({operand, stray}, errors).isEmpty());
        QVERIFY(checkSyntax({stray}, errors).isEmpty());
        QCOMPARE(errors.size(), 2);
    }
}

void TestQuerySyntax::resultsAreThoseOfTheRecursiveCheck()
{
    RandomQuery random(55);
    const QStringList pieces = QStringLiteral("a b:c 'd' && || == ! ( ) ( ) %matches").split(u' ');
    for (int i = 0; i < randomRuns(100000); ++i) {
        QList<QueryError> errors;
        QString query;
        for (int n = random.below(12); n > 0; --n)
            query += random.pick(pieces) + u' ';
        const QList<ExpressionValue> tokens = lexQuery(query, errors);
        QList<QueryError> expectedErrors;
        const QString checked = reference::describe(checkSyntax(tokens, errors));
        QVERIFY2(checked == reference::describe(reference::checkSyntax(tokens, expectedErrors)) &&
                     reference::describe(errors) == reference::describe(expectedErrors),
                 qPrintable(query));
    }
}

void TestQuerySyntax::deepNestingEnds()
{
    QList<QueryError> errors;
    const QString open = QStringLiteral("(").repeated(100000);
    const QString close = QStringLiteral(")").repeated(100000);
    const QString nots = QStringLiteral("!").repeated(100000);
    QCOMPARE(checkSyntax(lexQuery(open + u'a' + close, errors), errors).size(), 200001);
    QCOMPARE(checkSyntax(lexQuery(nots + u'a', errors), errors).size(), 100001);
    QVERIFY(errors.isEmpty());
    QVERIFY(checkSyntax(lexQuery(open + u'a', errors), errors).isEmpty());
    QCOMPARE(errors.size(), 1);
}

QTEST_GUILESS_MAIN(TestQuerySyntax)
#include "tst_querysyntax.moc"
