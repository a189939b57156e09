// SPDX-License-Identifier: BSD-3-Clause
#include <lorix/query/queryparser.h>
#include <query/randomquery.h>
#include <query/referencecompiler.h>

#include <QTest>

using namespace lorix;

class TestQueryParser : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void errorsAreClearedFirst();
    void eachStageStopsTheQuery_data();
    void eachStageStopsTheQuery();
    void compilesAsThePlainStagesDo_data();
    void compilesAsThePlainStagesDo();
};

void TestQueryParser::errorsAreClearedFirst()
{
    QList<QueryError> errors = {QueryError()};
    QVERIFY(parseQuery(QStringLiteral("foo"), errors));
    QVERIFY(errors.isEmpty());
}

void TestQueryParser::eachStageStopsTheQuery_data()
{
    QTest::addColumn<QString>("message");
    QTest::newRow("a ) %") << "Error while reading text at position 4 (%):\n input seems to be "
                              "invalid";
    QTest::newRow("a:foo )") << "Error at position 6:\n found a closing  bracket ) but did not "
                                "except one.";
    QTest::newRow("a:foo == 1") << "error at pos 0: attribute foo does not exist.";
}

void TestQueryParser::eachStageStopsTheQuery()
{
    QFETCH(const QString, message);
    QList<QueryError> errors;
    QVERIFY(parseQuery(QString::fromLatin1(QTest::currentDataTag()), errors).isNull());
    QCOMPARE(errors.size(), 1);
    QCOMPARE(errors[0].errorMessage(), message);
}

void TestQueryParser::compilesAsThePlainStagesDo_data()
{
    QTest::addColumn<int>("kind");
    QTest::newRow("sound queries") << 0;
    QTest::newRow("damaged queries") << 1;
    QTest::newRow("texts") << 2;
}

void TestQueryParser::compilesAsThePlainStagesDo()
{
    QFETCH(const int, kind);
    RandomQuery random(57 + quint32(kind));
    const QStringList names = {QString(), QStringLiteral("a"), QStringLiteral("b")};
    for (int i = 0; i < randomRuns(10000); ++i) {
        QString query = kind == 2 ? random.soup(12) : random.query(names, 1 + random.below(5));
        if (kind == 1) {
            const int at = random.below(int(query.size()));
            query.replace(at, random.below(4), random.soup(1));
        }
        QList<QueryError> errors;
        QList<QueryError> expectedErrors;
        const QString tree = reference::describe(parseQuery(query, errors));
        const QString expected = reference::describe(reference::parseQuery(query, expectedErrors));
        QVERIFY2(tree == expected, qPrintable(query));
        QCOMPARE(reference::describe(errors), reference::describe(expectedErrors));
        QVERIFY2(kind != 0 || errors.isEmpty(), qPrintable(query));
    }
}

QTEST_GUILESS_MAIN(TestQueryParser)
#include "tst_queryparser.moc"
