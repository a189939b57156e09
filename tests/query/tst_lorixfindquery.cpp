// SPDX-License-Identifier: BSD-3-Clause
#include <lorix/query/lorixfindquery.h>
#include <lorix/query/querycompletion.h>
#include <lorix/query/querytypes.h>
#include <query/randomhistory.h>
#include <query/referencesearch.h>
#include <support/containerbuilder.h>

#include <lorix/container/lorixparser.h>

#include <QTemporaryDir>
#include <QTest>

using namespace lorix;

namespace {

// Step i leads to those steps whose title is its tool, round a ring.
QList<Summary> ring(int steps, int length)
{
    QList<Summary> summaries;
    for (int i = 0; i < steps; ++i) {
        Summary summary;
        summary.tagId = i;
        summary.title = QString::number(i % length);
        summary.tool = QString::number((i + 1) % length);
        summaries.append(summary);
    }
    return summaries;
}

QString path(const QStringList& names)
{
    QStringList tests;
    for (int i = 0; i < names.size(); ++i)
        tests += names[i] + QStringLiteral(":tool == ") + names[(i + 1) % names.size()] +
                 QStringLiteral(":title");
    return tests.join(QStringLiteral(" && "));
}

QStringList letters(int count)
{
    QStringList names;
    for (int i = 0; i < count; ++i)
        names += QString(QChar(u'a' + i / 26)) + QChar(u'a' + i % 26);
    return names;
}

} // namespace

class TestLorixFindQuery : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void queryIsCompiledOnce();
    void failedQueryLeavesErrorsAndAnEmptyForm();
    void queryCanBeReplaced();
    void doublyNegatedOperandIsTheOperand();
    void matchesFillOrEmptyTheHash();
    void containersAreMatched();
    void bindingsTellStepAndFile();
    void boundsEndWithAnError();
    void manyVariablesOverManyCandidatesEnd_data();
    void manyVariablesOverManyCandidatesEnd();
    void hugeQueriesAreMatched_data();
    void hugeQueriesAreMatched();
    void attributesAreListedWithTheirTypes();
    void operatorsAreListed();
    void unfinishedQueriesAreCompleted_data();
    void unfinishedQueriesAreCompleted();
};

void TestLorixFindQuery::queryIsCompiledOnce()
{
    const LorixFindQuery query(QStringLiteral("a:iswfs && b:iswfs"));
    QVERIFY(query.isValid());
    QVERIFY(query.getErrors().isEmpty());
    QCOMPARE(query.normalForm().numDisjunctions(), 2);
    QVERIFY(!query.matches(ring(1, 3)));
    QVERIFY(query.matches(ring(2, 3)));
    QVERIFY(!query.matches(ring(1, 3)));
    const LorixFindQuery copy = query;
    QVERIFY(copy.matches(ring(2, 3)));
}

void TestLorixFindQuery::failedQueryLeavesErrorsAndAnEmptyForm()
{
    LorixFindQuery query(QStringLiteral("a:iswfs"));
    QVERIFY(!query.setQuery(QStringLiteral("a:nonsense == 1")));
    QVERIFY(!query.isValid());
    QCOMPARE(query.getErrors().size(), 1);
    QCOMPARE(query.normalForm().numDisjunctions(), 0);
    QVERIFY(query.matches(QList<Summary>()));
}

void TestLorixFindQuery::queryCanBeReplaced()
{
    LorixFindQuery query(QStringLiteral("("));
    QVERIFY(!query.isValid());
    QVERIFY(query.setQuery(QStringLiteral("a:isfile")));
    QVERIFY(query.isValid());
    QVERIFY(query.getErrors().isEmpty());
    QVERIFY(!query.matches(ring(3, 3)));
}

void TestLorixFindQuery::doublyNegatedOperandIsTheOperand()
{
    const QList<Summary> history = ring(3, 3);
    QVERIFY(LorixFindQuery(QStringLiteral("!!1 == a:title")).matches(history));
    QVERIFY(!LorixFindQuery(QStringLiteral("!!5 == a:title")).matches(history));
    QVERIFY(!LorixFindQuery(QStringLiteral("!1 == a:title")).matches(history));
    QVERIFY(!LorixFindQuery(QStringLiteral("!5 == a:title")).matches(history));
}

void TestLorixFindQuery::matchesFillOrEmptyTheHash()
{
    const LorixFindQuery query(QStringLiteral("a:title == 1 && 2"));
    QHash<QString, QString> matches;
    QVERIFY(query.matches(ring(3, 3), &matches));
    const QHash<QString, QString> expected = {
        {QStringLiteral("a"), QStringLiteral("workflowstep: 1")},
        {QStringLiteral("@unnamed-2"), QStringLiteral("workflowstep: 1")}};
    QCOMPARE(matches, expected);
    QVERIFY(!query.matches(ring(1, 3), &matches));
    QVERIFY(matches.isEmpty());
}

void TestLorixFindQuery::containersAreMatched()
{
    const QTemporaryDir dir;
    ContainerBuilder builder;
    builder.start();
    builder.section(SectionSpec(QStringLiteral("Meshing"))
                        .file(FileSpec(QStringLiteral("mesh.dat"), QByteArray(2000, 'm'))));
    LorixParser parser;
    QVERIFY(parser.open(builder.writeTo(dir.filePath(QStringLiteral("c.lorix")))));
    QHash<QString, QString> matches;
    const LorixFindQuery query(
        QStringLiteral("a:filesize == 2000 && a:parentid == b:tagid && b:iswfs"));
    QVERIFY(query.matches(parser, &matches));
    QCOMPARE(matches.value(QStringLiteral("a")), QStringLiteral("file: mesh.dat"));
    QCOMPARE(matches.value(QStringLiteral("b")), QStringLiteral("workflowstep: Meshing"));
    QVERIFY(!LorixFindQuery(QStringLiteral("nowhere")).matches(parser));
}

void TestLorixFindQuery::bindingsTellStepAndFile()
{
    QList<Summary> summaries = ring(2, 3);
    summaries[1].files = {FileSummary(), FileSummary()};
    summaries[1].files[1].filename = QStringLiteral("f");
    QList<QueryBinding> bindings = {QueryBinding()};
    const LorixFindQuery query(QStringLiteral("b:filename == f && a:iswfs"));
    QVERIFY(query.findBindings(summaries, &bindings));
    const QList<QueryBinding> expected = {{QStringLiteral("b"), 1, 1},
                                          {QStringLiteral("a"), 0, -1}};
    QCOMPARE(bindings, expected);
    QVERIFY(!query.findBindings(ring(2, 3), &bindings));
    QVERIFY(bindings.isEmpty());
    QVERIFY(query.findBindings(summaries, nullptr));
}

void TestLorixFindQuery::boundsEndWithAnError()
{
    const QString four = QStringLiteral("(a:isfile && b:isfile) || (c:isfile && d:isfile)");
    Bounds bounds;
    bounds.queryClauses = 4;
    QVERIFY(LorixFindQuery(four, bounds).isValid());
    bounds.queryClauses = 3;
    LorixFindQuery query(four, bounds);
    QVERIFY(!query.isValid());
    QCOMPARE(query.getErrors().size(), 1);
    QVERIFY(query.getErrors()[0].errorMessage().contains(QLatin1String("more than 3 clauses")));
    QCOMPARE(query.getErrors()[0].originalText(), four);
    query.setBounds(Bounds());
    QVERIFY(query.setQuery(four));
    const QString pair = QStringLiteral("(a:isfile && b:isfile)");
    QVERIFY(LorixFindQuery(pair + (QStringLiteral(" || ") + pair).repeated(15)).isValid());
    QVERIFY(!LorixFindQuery(pair + (QStringLiteral(" || ") + pair).repeated(16)).isValid());
}

// Plain backtracking would take from days to ages for each.
void TestLorixFindQuery::manyVariablesOverManyCandidatesEnd_data()
{
    QTest::addColumn<QString>("query");
    QTest::addColumn<int>("steps");
    QTest::addColumn<bool>("matches");
    QTest::newRow("path of three") << path(letters(3)) << 1000 << false;
    QTest::newRow("path of four") << path(letters(4)) << 400 << false;
    QTest::newRow("closed path") << path(letters(37)) << 400 << true;
    QTest::newRow("last one alone")
        << QStringLiteral("a:iswfs && b:iswfs && c:iswfs && d:title == none") << 2000 << false;
    QTest::newRow("last two alone")
        << QStringLiteral("a:iswfs && b:iswfs && c:iswfs && d:title == e:hash") << 2000 << false;
    QStringList wfs;
    for (const QString& name : letters(40))
        wfs += name + QStringLiteral(":iswfs");
    QTest::newRow("too many names") << wfs.join(u' ') << 39 << false;
    QTest::newRow("just as many names") << wfs.join(u' ') << 40 << true;
    QTest::newRow("too few for some")
        << QStringLiteral("a:iswfs && b:iswfs && c:title == 1 && d:title == 1 && e:title == 1 && "
                          "f:title == 1")
        << 37 * 3 << false;
    QTest::newRow("one of many") << QStringLiteral("a:title == none || b:title == none || "
                                                   "c:tool == none || d:title == e:hash")
                                 << 2000 << false;
}

void TestLorixFindQuery::manyVariablesOverManyCandidatesEnd()
{
    QFETCH(const QString, query);
    QFETCH(const int, steps);
    QFETCH(const bool, matches);
    const LorixFindQuery compiled(query);
    QVERIFY(compiled.isValid());
    QCOMPARE(compiled.matches(ring(steps, 37)), matches);
}

void TestLorixFindQuery::hugeQueriesAreMatched_data()
{
    QTest::addColumn<QString>("query");
    QTest::addColumn<bool>("matches");
    const int count = 50000;
    QTest::newRow("words") << QStringLiteral("1 ").repeated(count) << true;
    QTest::newRow("one word missing") << QStringLiteral("1 ").repeated(count) + u'x' << false;
    QTest::newRow("words, one of them") << QStringLiteral("x || ").repeated(count) + u'1' << true;
    QTest::newRow("words, none of them") << QStringLiteral("x || ").repeated(count) + u'y' << false;
    QTest::newRow("words, many of them") << QStringLiteral("1 || ").repeated(count) + u'y' << true;
    QTest::newRow("pairs of words") << QStringLiteral("(1 || 2) ").repeated(count / 2) << true;
    QTest::newRow("tests of one") << QStringLiteral("a:iswfs && ").repeated(count) +
                                         QStringLiteral("a:isfile")
                                  << false;
    QTest::newRow("negations") << QStringLiteral("!").repeated(count) + QStringLiteral("a:iswfs")
                               << true;
    QTest::newRow("brackets") << QStringLiteral("(").repeated(count) + u'1' +
                                     QStringLiteral(")").repeated(count)
                              << true;
}

void TestLorixFindQuery::hugeQueriesAreMatched()
{
    QFETCH(const QString, query);
    QFETCH(const bool, matches);
    const LorixFindQuery compiled(query);
    QVERIFY(compiled.isValid());
    QCOMPARE(compiled.matches(ring(10, 37)), matches);
}

void TestLorixFindQuery::attributesAreListedWithTheirTypes()
{
    const QHash<QString, QString> types = getAttributeTypes();
    QSet<QString> names;
    for (const QueryAttribute& attribute : queryAttributes()) {
        names.insert(attribute.name);
        QVERIFY(!attribute.description.isEmpty());
        QVERIFY(attribute.ofSteps || attribute.ofFiles);
        QCOMPARE(attribute.type == QLatin1String("yes or no"),
                 types.value(attribute.name).contains(QLatin1String("nostring")));
    }
    QVERIFY(names.remove(QStringLiteral("user{NAME}")));
    const QStringList keys = types.keys();
    QCOMPARE(names, QSet<QString>(keys.cbegin(), keys.cend()));
    const auto find = [](const char* name) {
        for (const QueryAttribute& attribute : queryAttributes()) {
            if (attribute.name == QLatin1String(name))
                return attribute;
        }
        return QueryAttribute();
    };
    QVERIFY(find("title").ofSteps && !find("title").ofFiles);
    QVERIFY(!find("filename").ofSteps && find("filename").ofFiles);
    QVERIFY(find("comment").ofSteps && find("comment").ofFiles);
    QCOMPARE(find("filesize").type, QStringLiteral("number"));
    QCOMPARE(find("timestamp").type, QStringLiteral("date"));
    QCOMPARE(find("title").type, QStringLiteral("text"));
}

void TestLorixFindQuery::operatorsAreListed()
{
    const QList<QueryOperator> operators = queryOperators();
    QCOMPARE(operators.size(), 14);
    QCOMPARE(operators[0].name, QStringLiteral("!"));
    QCOMPARE(operators[0].operands, 1);
    for (int i = 1; i < operators.size(); ++i)
        QVERIFY(operators[i].precedence <= operators[i - 1].precedence);
}

void TestLorixFindQuery::unfinishedQueriesAreCompleted_data()
{
    QTest::addColumn<QStringList>("completions");
    const auto s = [](const char* text) { return QString::fromLatin1(text); };
    QTest::newRow("a:to") << QStringList{s("a:tool"), s("a:toolpath")};
    QTest::newRow("x && (:files") << QStringList{s(":filesize")};
    QTest::newRow("a:user") << QStringList{s("a:user"), s("a:userattrs"), s("a:user{")};
    QTest::newRow("a:tool %c") << QStringList{s("%contains")};
    QTest::newRow("a:tool %") << QStringList{s("%contains"), s("%isapprox"), s("%matches")};
    QTest::newRow("word") << QStringList();
    QTest::newRow("") << QStringList();
    QTest::newRow("a:nonsense") << QStringList();
}

void TestLorixFindQuery::unfinishedQueriesAreCompleted()
{
    QFETCH(const QStringList, completions);
    QCOMPARE(queryCompletions(QString::fromLatin1(QTest::currentDataTag())), completions);
}

QTEST_GUILESS_MAIN(TestLorixFindQuery)
#include "tst_lorixfindquery.moc"
