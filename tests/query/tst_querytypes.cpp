// SPDX-License-Identifier: BSD-3-Clause
#include <lorix/query/querylexer.h>
#include <lorix/query/querysyntax.h>
#include <lorix/query/querytree.h>
#include <lorix/query/querytypes.h>

#include <QTest>

using namespace lorix;

namespace {

using Node = QSharedPointer<ExpressionTreeNode>;

Node treeOf(const QString& query)
{
    QList<QueryError> errors;
    return createTree(checkSyntax(lexQuery(query, errors), errors), query, errors);
}

} // namespace

class TestQueryTypes : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void attributeTableIsAsListed_data();
    void attributeTableIsAsListed();
    void attributeTableHoldsNothingElse();
    void literalsAreDescribed();
    void typesAreFitted();
    void linesAreWorded();
    void messagesAreWorded_data();
    void messagesAreWorded();
    void soundQueriesPass_data();
    void soundQueriesPass();
    void errorsOfBothSidesComeFirst();
    void errorsKeepPlaceAndText();
    void familiesCheckTheirOperands();
    void hugeChainsOfDoubtEnd();
};

void TestQueryTypes::attributeTableIsAsListed_data()
{
    QTest::addColumn<QString>("types");
    const auto rows = [](const char* names, const char* types) {
        for (const QByteArray& name : QByteArray(names).split(' '))
            QTest::newRow(name.constData()) << QString::fromLatin1(types);
    };
    rows("hash", "string,nonumber,nodate,noboolean");
    rows("tagid", "string,number,nodate,noboolean");
    rows("lorixrootfile", "string,noboolean");
    rows("timestamp", "string,date,nonumber,noboolean");
    rows("title description comment command tool toolpath host user creator", "string,noboolean");
    rows("iswfs isfile", "nostring,nonumber,nodate,boolean");
    rows("userattrs filename filepath filetype", "string,noboolean");
    rows("lastmodified", "string,date,nonumber,noboolean");
    rows("embedded compressed", "nostring,nonumber,nodate,boolean");
    rows("filepurpose", "string,nodate,nonumber,noboolean");
    rows("isinfile isoutfile", "nostring,nodate,nonumber,boolean");
    rows("filesize cfilesize", "string,number,nodate,noboolean");
    rows("md5 cmd5", "string,nodate,nonumber,noboolean");
    rows("parentid", "string,number,nodate,noboolean");
    rows("any", "string");
}

void TestQueryTypes::attributeTableIsAsListed()
{
    QFETCH(const QString, types);
    const QHash<QString, QString> table = getAttributeTypes();
    QCOMPARE(table.value(QString::fromLatin1(QTest::currentDataTag())), types);
}

void TestQueryTypes::attributeTableHoldsNothingElse()
{
    QCOMPARE(getAttributeTypes().size(), 31);
}

void TestQueryTypes::literalsAreDescribed()
{
    const auto types = [](const char* text) {
        return getTypesOfString(ReturnValue::fromString(QString::fromLatin1(text)));
    };
    QCOMPARE(types("x"), QStringLiteral("string,boolean,nonumber,nodate"));
    QCOMPARE(types("1kb"), QStringLiteral("string,boolean,number,nodate"));
    QCOMPARE(types("2013-05-01"), QStringLiteral("string,boolean,number,date"));
    QCOMPARE(types("12:30"), QStringLiteral("string,boolean,number,date"));
}

void TestQueryTypes::typesAreFitted()
{
    const auto fit = [](const char* type, const char* types) {
        return checkIfTypeFits(QString::fromLatin1(type), QString::fromLatin1(types));
    };
    QCOMPARE(fit("string", "string,noboolean"), 1);
    QCOMPARE(fit("number", "string,noboolean"), 2);
    QCOMPARE(fit("boolean", "string,noboolean"), 4);
    QCOMPARE(fit("number", ""), 2);
}

void TestQueryTypes::linesAreWorded()
{
    QCOMPARE(wrongTypeStr(QStringLiteral("'%2 %1'"), QStringLiteral("date")),
             QStringLiteral("\n''%2 %1'' is not a date."));
    QCOMPARE(maybeWrongTypeStr(QStringLiteral("x"), QStringLiteral("number")),
             QStringLiteral("\n'x' may not be a number."));
}

void TestQueryTypes::messagesAreWorded_data()
{
    QTest::addColumn<QStringList>("messages");
    const auto row = [](const char* query, const QStringList& messages) {
        QTest::newRow(query) << messages;
    };
    const auto s = [](const char* text) { return QString::fromLatin1(text); };
    row("a:filename > 10",
        {s("warning at pos 11: operator > requires either two numbers or two dates as arguments."
           "\n'a:filename' may not be a number.")});
    row("a:filename > b:title",
        {s("warning at pos 11: operator > requires either two numbers or two dates as arguments."
           "\n'a:filename' may not be a number.\n'b:title' may not be a number."
           "\n'a:filename' may not be a date.\n'b:title' may not be a date.")});
    row("a:isfile <= x",
        {s("error at pos 9: operator <= requires either two numbers or two dates as arguments."
           "\n'a:isfile' is not a number or date.\n'x' is not a number or date.")});
    row("a:filesize < b:timestamp",
        {s("error at pos 11: operator < requires either two numbers or two dates as arguments."
           "\n'a:filesize' is not a date.\n'b:timestamp' is not a number.")});
    row("a:timestamp > b:title",
        {s("warning at pos 12: operator > requires either two numbers or two dates as arguments."
           "\n'b:title' may not be a date.")});
    row("a:isfile %contains x",
        {s("error at pos 9: operator %contains requires two strings as arguments."
           "\n'a:isfile' is not a string.")});
    row("a:isfile %matches b:iswfs",
        {s("error at pos 9: operator %matches requires two strings as arguments."
           "\n'a:isfile' is not a string.\n'b:iswfs' is not a string.")});
    row("(a:isfile && b:isfile) %contains x",
        {s("warning at pos 23: operator %contains requires two strings as arguments."
           "\n'a:isfile && b:isfile' may not be a string.")});
    row("a:title %isapprox 10",
        {s("warning at pos 8: operator %isapprox requires two numbers as arguments."
           "\n'a:title' may not be a number.")});
    row("a:md5 %isapprox b:title",
        {s("error at pos 6: operator %isapprox requires two numbers as arguments."
           "\n'a:md5' is not a number.")});
    row("a:filename && b:isfile",
        {s("error at pos 11: operator && requires two booleans as arguments."
           "\n'a:filename' is not a boolean.")});
    row("a:isfile b:title",
        {s("error at pos 9: operator implizit && requires two booleans as arguments."
           "\n'b:title' is not a boolean.")});
    row("a:any || b:isfile", {s("warning at pos 6: operator || requires two booleans as arguments."
                                "\n'a:any' may not be a boolean.")});
    row("!a:title", {s("error at pos 0: operator ! requires a boolean as argument."
                       "\n'a:title' is not a boolean.")});
    row("!a:user{k}", {s("warning at pos 0: operator ! requires a boolean as argument."
                         "\n'a:user{k}' may not be a boolean.")});
    row("a:foo == 1", {s("error at pos 0: attribute foo does not exist.")});
    row("a:Title == 1", {s("error at pos 0: attribute Title does not exist.")});
    row("1 == a:file:size", {s("error at pos 5: attribute file:size does not exist.")});
    row("a:filename", {s("Result of query a:filename is not a boolean value")});
    row("a:any", {s("Result of query a:any is not a boolean value")});
    row("a:user{k}", {s("Result of query a:user{k} is not a boolean value")});
    row("a:foo", {s("error at pos 0: attribute foo does not exist."),
                  s("Result of query a:foo is not a boolean value")});
}

void TestQueryTypes::messagesAreWorded()
{
    QFETCH(const QStringList, messages);
    QList<QueryError> errors;
    QVERIFY(!checkQueryTypes(treeOf(QString::fromLatin1(QTest::currentDataTag())), errors));
    QStringList found;
    for (const QueryError& error : errors) {
        QVERIFY(error.isError());
        found += error.errorMessage();
    }
    QCOMPARE(found, messages);
}

void TestQueryTypes::soundQueriesPass_data()
{
    QTest::addColumn<QString>("query");
    for (const char* query :
         {"a:filesize > 10", "a:filename == 3", "a:isfile == 3", "a:isfile != b:title",
          "a:user{colour} %contains red", "a:timestamp > 2013-05-01", "'12:30' < b:timestamp",
          "a:tagid == b:parentid", "report", "!!a:isfile", "a:any %contains x", "1 %isapprox 2",
          "(a:title == b:title) == x", "foo || a:isfile"})
        QTest::newRow(query) << QString::fromLatin1(query);
}

void TestQueryTypes::soundQueriesPass()
{
    QFETCH(const QString, query);
    QList<QueryError> errors;
    QVERIFY(checkQueryTypes(treeOf(query), errors));
    QVERIFY(errors.isEmpty());
}

void TestQueryTypes::errorsOfBothSidesComeFirst()
{
    QList<QueryError> errors;
    const Node tree = treeOf(QStringLiteral("a:x %contains b:y"));
    QCOMPARE(getTypes(tree, getAttributeTypes(), errors), QStringLiteral("boolean"));
    QCOMPARE(errors.size(), 3);
    QCOMPARE(errors[0].position(), 0);
    QCOMPARE(errors[1].position(), 14);
    QCOMPARE(errors[2].position(), 4);
}

void TestQueryTypes::errorsKeepPlaceAndText()
{
    QList<QueryError> errors;
    checkQueryTypes(treeOf(QStringLiteral("x && (a:isfile %contains 'y')")), errors);
    QCOMPARE(errors.size(), 1);
    QCOMPARE(errors[0].position(), 15);
    QCOMPARE(errors[0].originalText(), QStringLiteral("a:isfile %contains 'y'"));
    errors.clear();
    checkQueryTypes(treeOf(QStringLiteral(" a:title")), errors);
    QCOMPARE(errors[0].position(), 1);
    QCOMPARE(errors[0].originalText(), QStringLiteral("a:title"));
}

void TestQueryTypes::familiesCheckTheirOperands()
{
    const Node node = treeOf(QStringLiteral("a == b"));
    const QString nothing = QStringLiteral("nostring,nonumber,nodate,noboolean");
    const QString all = QStringLiteral("string,number,date,boolean");
    using Check = void (*)(const Node&, const QString&, const QString&, QList<QueryError>&);
    for (const Check check : {Check(checkLogicalOperators), Check(checkComparissonOperators),
                              Check(checkStringOperators), Check(checkNumberOperators)}) {
        QList<QueryError> errors;
        check(node, all, all, errors);
        QCOMPARE(errors.size(), 0);
        check(node, nothing, all, errors);
        check(node, all, nothing, errors);
        check(node, QString(), all, errors);
        QCOMPARE(errors.size(), 3);
    }
    QList<QueryError> errors;
    checkUnaryLogicalOperators(node, all, errors);
    QVERIFY(errors.isEmpty());
    createErrorOneType(node, all, nothing, QStringLiteral("date"), errors);
    createErrorTwoTypes(node, all, nothing, QStringLiteral("number"), QStringLiteral("date"),
                        errors);
    QCOMPARE(errors.size(), 2);
}

void TestQueryTypes::hugeChainsOfDoubtEnd()
{
    QList<QueryError> errors;
    QVERIFY(!checkQueryTypes(treeOf(QStringLiteral("a:tool > ").repeated(100000) + u'1'), errors));
    qsizetype characters = 0;
    for (const QueryError& error : errors)
        characters += error.errorMessage().size();
    QVERIFY(characters < 20 * 1024 * 1024);
}

QTEST_GUILESS_MAIN(TestQueryTypes)
#include "tst_querytypes.moc"
