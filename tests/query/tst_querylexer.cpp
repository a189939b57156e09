// SPDX-License-Identifier: BSD-3-Clause
#include <lorix/query/operatortable.h>
#include <lorix/query/querylexer.h>
#include <query/randomquery.h>
#include <query/referencecompiler.h>

#include <QDebug>
#include <QTest>

using namespace lorix;

namespace {

// Kind and content of each token, for rows that people read.
QString shape(const QString& query)
{
    QList<QueryError> errors;
    QStringList shapes;
    for (const ExpressionValue& token : lexQuery(query, errors)) {
        if (token.isVariable())
            shapes += u'$' + token.variableName() + u'.' + token.variableAttribute();
        else if (token.isString())
            shapes += u'"' + token.string() + u'"';
        else
            shapes += token.operatorName();
    }
    for (const QueryError& error : errors)
        shapes += QStringLiteral("error at %1").arg(error.position());
    return shapes.join(u' ');
}

} // namespace

class TestQueryLexer : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void operatorTableIsAsListed_data();
    void operatorTableIsAsListed();
    void accessorsAnswerForTheirKind();
    void variablesAreSplit_data();
    void variablesAreSplit();
    void queriesAreCut_data();
    void queriesAreCut();
    void tokensKeepTheirPlace();
    void errorShowsTwentyCharacters();
    void errorMessageIsFilledOnce();
    void errorsAndWarningsAreToldApart();
    void tokensAreThoseOfThePatterns();
    void everyCharacterIsReadAsThePatternsDo();
    void unclosedBracesAreReadOnce();
    void tokensPrint();
};

void TestQueryLexer::operatorTableIsAsListed_data()
{
    QTest::addColumn<int>("precedence");
    QTest::addColumn<int>("arguments");
    QTest::addColumn<char>("association");
    QTest::newRow("!") << 9 << 1 << 'r';
    for (const char* name : {"%contains", "%matches", "%isapprox"})
        QTest::newRow(name) << 6 << 2 << 'l';
    for (const char* name : {"<", "<=", ">", ">="})
        QTest::newRow(name) << 5 << 2 << 'l';
    for (const char* name : {"==", "!="})
        QTest::newRow(name) << 4 << 2 << 'l';
    QTest::newRow("||") << 3 << 2 << 'l';
    for (const char* name : {"&&", "implizit &&"})
        QTest::newRow(name) << 2 << 2 << 'l';
    for (const char* name : {"(", ")"})
        QTest::newRow(name) << 0 << 0 << 'x';
    QTest::newRow("EOS") << -100 << 0 << 'x';
    for (const char* name : {"", "=", "%CONTAINS", "eos", "fakeRoot"})
        QTest::newRow(name) << -1 << -1 << 'x';
}

void TestQueryLexer::operatorTableIsAsListed()
{
    QFETCH(const int, precedence);
    QFETCH(const int, arguments);
    QFETCH(const char, association);
    const QString name = QString::fromLatin1(QTest::currentDataTag());
    QCOMPARE(getPrecedence(name), precedence);
    QCOMPARE(getNumArguments(name), arguments);
    QCOMPARE(getAssociation(name), association);
    const ExpressionValue token = ExpressionValue::fromOperator(name, 3, QStringLiteral("text"));
    QVERIFY(token.isOperator() && !token.isString() && !token.isVariable());
    QCOMPARE(token.operatorName(), name);
    QCOMPARE(token.precedence(), precedence);
    QCOMPARE(token.numArgs(), arguments);
    QCOMPARE(token.association(), association);
    QCOMPARE(token.position(), 3);
    QCOMPARE(token.length(), 4);
}

void TestQueryLexer::accessorsAnswerForTheirKind()
{
    QCOMPARE(int(VariableValue), 1);
    QCOMPARE(int(StringValue), 2);
    QCOMPARE(int(OperatorValue), 4);
    const ExpressionValue none;
    QVERIFY(!none.isVariable() && !none.isString() && !none.isOperator());
    QCOMPARE(none.position(), -1);
    const ExpressionValue string =
        ExpressionValue::fromString(QStringLiteral("s"), 0, QStringLiteral("'s'"));
    QCOMPARE(string.string(), QStringLiteral("s"));
    QCOMPARE(string.operatorName(), QString());
    QCOMPARE(string.variableName(), QString());
    QCOMPARE(string.precedence(), -1);
    QCOMPARE(string.numArgs(), -1);
    QCOMPARE(string.association(), 'x');
    ExpressionValue variable =
        ExpressionValue::fromVariable(QStringLiteral("a"), QStringLiteral("b"), 1, QString());
    variable.setVariableName(QStringLiteral("c"));
    QCOMPARE(variable.variableName(), QStringLiteral("c"));
    QCOMPARE(variable.variableAttribute(), QStringLiteral("b"));
    QCOMPARE(variable.string(), QString());
}

void TestQueryLexer::variablesAreSplit_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("attribute");
    QTest::addColumn<int>("position");
    QTest::newRow("a:filename") << "a"
                                << "filename" << 5;
    QTest::newRow(":filename") << ""
                               << "filename" << 5;
    QTest::newRow("a:file:size") << "a"
                                 << "file:size" << 5;
    QTest::newRow("a::b:") << "a"
                           << ":b:" << 5;
    QTest::newRow("a") << "a"
                       << "" << 5;
    QTest::newRow("") << ""
                      << "" << 5;
    QTest::newRow("x:user{my colour}") << "x"
                                       << "user:my colour" << 5;
    QTest::newRow(":user{a}") << ""
                              << "user:a" << 5;
    QTest::newRow("x:user{a\\}b}") << "x"
                                   << "user:a\\}b" << 5;
    QTest::newRow("x:user{:user{a}") << "x"
                                     << "user::user{a" << 5;
    QTest::newRow("x:USER{a}") << ""
                               << "" << -1;
    QTest::newRow("}") << ""
                       << "" << -1;
}

void TestQueryLexer::variablesAreSplit()
{
    QFETCH(const QString, name);
    QFETCH(const QString, attribute);
    QFETCH(const int, position);
    const QString text = QString::fromLatin1(QTest::currentDataTag());
    const ExpressionValue token = ExpressionValue::fromVariable(text, 5, text);
    QVERIFY(token.isVariable());
    QCOMPARE(token.variableName(), name);
    QCOMPARE(token.variableAttribute(), attribute);
    QCOMPARE(token.variable().name, name);
    QCOMPARE(token.position(), position);
}

void TestQueryLexer::queriesAreCut_data()
{
    QTest::addColumn<QString>("shapes");
    QTest::newRow("a:filename==x") << "$a.filename == \"x\"";
    QTest::newRow("a:filename %contains `report` && b:tool == 'python'")
        << "$a.filename %contains \"`report`\" && $b.tool == \"python\"";
    QTest::newRow("x %contains") << "\"x\" %contains";
    QTest::newRow("%containsx") << "error at 0";
    QTest::newRow("%CONTAINS x") << "error at 0";
    QTest::newRow("%matches\nx%isapprox\ty") << "%matches \"x\" %isapprox \"y\"";
    QTest::newRow("'it\\'s'") << "\"it's\"";
    QTest::newRow("\"a\\\\b\"") << "\"a\\b\"";
    QTest::newRow("\"it's\"'\"'") << "\"it's\" \"\"\"";
    QTest::newRow("''") << "\"\"";
    QTest::newRow("'a") << "error at 0";
    QTest::newRow("'a\\'") << "error at 0";
    QTest::newRow("'a\\b'") << "error at 0";
    QTest::newRow("'a\\\\'b") << "\"a\\\" \"b\"";
    QTest::newRow("x:user{my colour}") << "$x.user:my colour";
    QTest::newRow(":user{}") << "$.user \"{}\"";
    QTest::newRow(":user{a") << "$.user \"{a\"";
    QTest::newRow(":user{a\\}") << "$.user \"{a\\}\"";
    QTest::newRow("a1:b") << "\"a1\" $.b";
    QTest::newRow("a:b:c:d") << "$a.b:c $.d";
    QTest::newRow("a:") << "error at 1";
    QTest::newRow("a<=b>=c<d>e") << "\"a\" <= \"b\" >= \"c\" < \"d\" > \"e\"";
    QTest::newRow("a!=b") << "\"a\" != \"b\"";
    QTest::newRow("!!a") << "! ! \"a\"";
    QTest::newRow("!==") << "error at 2";
    QTest::newRow("a&b") << "error at 1";
    QTest::newRow("a&&b||c") << "\"a\" && \"b\" || \"c\"";
    QTest::newRow("(a)") << "( \"a\" )";
    QTest::newRow(" \t\n\r") << "";
    QTest::newRow("a\vb") << "error at 1";
    QTest::newRow("") << "";
}

void TestQueryLexer::queriesAreCut()
{
    QFETCH(const QString, shapes);
    QCOMPARE(shape(QString::fromLatin1(QTest::currentDataTag())), shapes);
}

void TestQueryLexer::tokensKeepTheirPlace()
{
    QList<QueryError> errors;
    const QList<ExpressionValue> tokens =
        lexQuery(QStringLiteral(" a:tool %contains  'x'"), errors);
    QCOMPARE(tokens.size(), 3);
    QCOMPARE(tokens[0].position(), 1);
    QCOMPARE(tokens[0].originalText(), QStringLiteral("a:tool"));
    QCOMPARE(tokens[1].position(), 8);
    QCOMPARE(tokens[1].originalText(), QStringLiteral("%contains "));
    QCOMPARE(tokens[2].position(), 19);
    QCOMPARE(tokens[2].length(), 3);
}

void TestQueryLexer::errorShowsTwentyCharacters()
{
    for (const int rest : {0, 1, 19, 20, 21}) {
        QList<QueryError> errors;
        const QString tail = u'%' + QStringLiteral("z").repeated(rest);
        QVERIFY(lexQuery(QStringLiteral("ab ") + tail, errors).isEmpty());
        QCOMPARE(errors.size(), 1);
        const QString shown = tail.size() > 20 ? tail.left(20) + QStringLiteral("...") : tail;
        QCOMPARE(errors[0].errorMessage(),
                 QStringLiteral("Error while reading text at position 3 (") + shown +
                     QStringLiteral("):\n input seems to be invalid"));
        QCOMPARE(errors[0].position(), 3);
        QCOMPARE(errors[0].originalText(), tail);
        QCOMPARE(errors[0].length(), int(tail.size()));
        QVERIFY(errors[0].isError() && !errors[0].isWarning());
    }
}

void TestQueryLexer::errorMessageIsFilledOnce()
{
    QList<QueryError> errors;
    lexQuery(QStringLiteral("%1%2"), errors);
    QCOMPARE(errors[0].errorMessage(), QStringLiteral("Error while reading text at position 0 (") +
                                           QStringLiteral("%1%2):\n input seems to be invalid"));
}

void TestQueryLexer::errorsAndWarningsAreToldApart()
{
    const QueryError error(QueryErrorType(0), QStringLiteral("e"), 1, QString());
    const QueryError warning(QueryErrorType(1), QStringLiteral("w"), 1, QString());
    QVERIFY(!containsErrors({}) && !containsWarnings({}));
    QVERIFY(containsErrors({warning, error}) && containsWarnings({error, warning}));
    QVERIFY(!containsErrors({warning}) && !containsWarnings({error}));
    QVERIFY(warning.isWarning() && !warning.isError());
}

void TestQueryLexer::tokensAreThoseOfThePatterns()
{
    RandomQuery random(54);
    for (int i = 0; i < randomRuns(100000); ++i) {
        const QString query = random.soup(9);
        QList<QueryError> errors;
        QList<QueryError> expectedErrors;
        const QString tokens = reference::describe(lexQuery(query, errors));
        const QString expected = reference::describe(reference::lexQuery(query, expectedErrors));
        QVERIFY2(tokens == expected &&
                     reference::describe(errors) == reference::describe(expectedErrors),
                 qPrintable(query));
    }
}

void TestQueryLexer::everyCharacterIsReadAsThePatternsDo()
{
    for (int c = 0; c < 0x10000; ++c) {
        const QString query = QStringLiteral("a%1").arg(QChar(ushort(c)));
        QList<QueryError> errors;
        QList<QueryError> expectedErrors;
        const QString tokens = reference::describe(lexQuery(query, errors));
        QVERIFY2(tokens == reference::describe(reference::lexQuery(query, expectedErrors)),
                 qPrintable(QString::number(c, 16)));
        QCOMPARE(errors.size(), expectedErrors.size());
    }
}

void TestQueryLexer::unclosedBracesAreReadOnce()
{
    QList<QueryError> errors;
    const QString query = QStringLiteral("a:user{x ").repeated(100000);
    QCOMPARE(lexQuery(query, errors).size(), 200000);
    QVERIFY(errors.isEmpty());
}

void TestQueryLexer::tokensPrint()
{
    QString text;
    QDebug(&text) << ExpressionValue() << ExpressionValue::fromString(QStringLiteral("s"), 7, {})
                  << ExpressionValue::fromVariable(QStringLiteral("a:b"), 0, {})
                  << ExpressionValue::fromOperator(QStringLiteral("=="), 1, {});
    QVERIFY(text.contains(QLatin1String("\"s\"")) && text.contains(QLatin1String("\"==\"")));
}

QTEST_GUILESS_MAIN(TestQueryLexer)
#include "tst_querylexer.moc"
