// SPDX-License-Identifier: BSD-3-Clause
#include <lorix/query/cnfconstruction.h>
#include <lorix/query/lorixfindquery.h>
#include <lorix/query/querycandidate.h>
#include <lorix/query/queryevaluation.h>
#include <lorix/query/queryparser.h>
#include <query/randomhistory.h>
#include <query/referencesearch.h>

#include <QTest>

using namespace lorix;

namespace {

ConjunctiveNormalForm formOf(const QString& query)
{
    QList<QueryError> errors;
    return constructCNF(parseQuery(query, errors));
}

Summary makeStep(int id, const char* title, const char* tool)
{
    Summary summary;
    summary.tagId = id;
    summary.title = QString::fromLatin1(title);
    summary.tool = QString::fromLatin1(tool);
    return summary;
}

FileSummary makeFile(int id, const char* name, int size = 1)
{
    FileSummary file;
    file.tagId = id;
    file.filename = QString::fromLatin1(name);
    file.uncompressedSize = size;
    return file;
}

QList<Summary> history()
{
    Summary first = makeStep(1, "first", "python");
    first.files = {makeFile(0, "a.txt", 10), makeFile(1, "b.pdf", 2000)};
    Summary second = makeStep(0, "second", "python");
    second.files = {makeFile(2, "b.pdf", 2000)};
    return {first, second};
}

StaticParams staticsFor(const QString& query, const QList<Summary>& summaries)
{
    StaticParams statics;
    for (const Summary& summary : summaries) {
        statics.candidates += convertStepToHash(summary);
        for (const FileSummary& file : summary.files)
            statics.candidates += convertFileToHash(file, summary.tagId);
    }
    statics.cnf = formOf(query);
    statics.variableLocations = statics.cnf.variableLocations();
    statics.variableNames = statics.cnf.variableNames();
    return statics;
}

DynamicParams dynamicsFor(const StaticParams& statics)
{
    DynamicParams dynamics;
    dynamics.candidateUsed.fill(false, statics.candidates.size());
    dynamics.assignment.fill(-1, statics.variableNames.size());
    for (int d = 0; d < statics.cnf.numDisjunctions(); ++d)
        dynamics.results += QList<EvaluationResult>(statics.cnf.disjunctionAt(d).numLiterals(),
                                                    EvaluationUndecided);
    return dynamics;
}

// Candidate indexes in the order of the variables, or "none".
QString bindingsOf(const QString& query, const QList<Summary>& summaries)
{
    const LorixFindQuery find(query);
    if (!find.isValid())
        return QStringLiteral("invalid");
    QList<QueryBinding> bindings;
    if (!find.findBindings(summaries, &bindings))
        return QStringLiteral("none");
    QStringList texts;
    for (const QueryBinding& binding : bindings) {
        int index = binding.file + 1;
        for (int s = 0; s < binding.summary; ++s)
            index += int(summaries[s].files.size()) + 1;
        texts += binding.variable + u'=' + QString::number(index);
    }
    return texts.join(u' ');
}

QString plainBindings(const QString& query, const QList<Summary>& summaries, qint64 most,
                      qint64* steps)
{
    QList<QueryError> errors;
    const reference::Node tree = reference::parseQuery(query, errors);
    const ConjunctiveNormalForm form = reference::constructCNF(tree);
    const QStringList names = reference::variableOrder(tree, form);
    bool found = false;
    const QList<int> assignment = reference::search(summaries, form, names, &found, most, steps);
    if (!found)
        return QStringLiteral("none");
    QStringList texts;
    for (int i = 0; i < names.size(); ++i)
        texts += names[i] + u'=' + QString::number(assignment[i]);
    return texts.join(u' ');
}

} // namespace

class TestQueryEvaluation : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void stepsMakeCandidates();
    void filesMakeCandidates();
    void userNamesFoldAndTheFirstWins();
    void candidatesAreThoseOfTheReference();
    void candidatesAreDescribed();
    void firstBindingWins_data();
    void firstBindingWins();
    void literalsWithoutVariablesStayUndecided();
    void matchesAreHandedBackOnSuccessOnly();
    void operandsHaveValues();
    void literalsAreEvaluated();
    void satisfiableUnlessAllFalse();
    void plainStepsGoOnFromAnyState();
    void plainSearchFindsTheSame();
    void logicalPredicatesAreEvaluatedAsTheyStand();
    void bindingsAreThoseOfBacktracking_data();
    void bindingsAreThoseOfBacktracking();
};

void TestQueryEvaluation::stepsMakeCandidates()
{
    Summary step = makeStep(3, "Title", "Tool");
    step.pdfTitle = QStringLiteral("pdf");
    step.userAttributes = {{QStringLiteral("My Key"), QStringLiteral("Value")}};
    step.userAttributeKeys = QStringList{QStringLiteral("My Key")};
    const auto table = convertStepToHash(step);
    const auto text = [&](const char* name) { return table.value(QString::fromLatin1(name)); };
    QCOMPARE(text("hash"), ReturnValue::fromString(QStringLiteral("wfs:3")));
    QCOMPARE(text("tagid"), ReturnValue::fromString(QStringLiteral("3")));
    QCOMPARE(text("title"), ReturnValue::fromString(QStringLiteral("Title")));
    QCOMPARE(text("iswfs"), ReturnValue::fromBool(true));
    QCOMPARE(text("isfile"), ReturnValue::fromBool(false));
    QCOMPARE(text("userattrs"), ReturnValue::fromString(QStringLiteral("My Key")));
    QCOMPARE(text("user:my key"), ReturnValue::fromString(QStringLiteral("Value")));
    QCOMPARE(text("any"), ReturnValue::fromString(
                              QStringLiteral("\n\nTitle\n\n\n\nTool\n\n\n\n\nMy Key\nValue")));
    QCOMPARE(table.size(), 18);
    QVERIFY(!table.contains(QStringLiteral("parentid")));
}

void TestQueryEvaluation::filesMakeCandidates()
{
    FileSummary file = makeFile(7, "name", 1234567);
    file.compressedMethod = QStringLiteral("flate");
    file.filePurpose = QStringLiteral("InFile");
    auto table = convertFileToHash(file, 2);
    const auto text = [&](const char* name) { return table.value(QString::fromLatin1(name)); };
    QCOMPARE(text("hash"), ReturnValue::fromString(QStringLiteral("file:2:7")));
    QCOMPARE(text("tagid"), ReturnValue::fromString(QStringLiteral("7")));
    QCOMPARE(text("parentid"), ReturnValue::fromString(QStringLiteral("2")));
    QCOMPARE(text("filesize"), ReturnValue::fromString(QStringLiteral("1.23457e+06")));
    QCOMPARE(text("cfilesize"), ReturnValue::fromString(QStringLiteral("-1")));
    QCOMPARE(text("compressed"), ReturnValue::fromBool(true));
    QCOMPARE(text("isinfile"), ReturnValue::fromBool(true));
    QCOMPARE(text("isoutfile"), ReturnValue::fromBool(false));
    QCOMPARE(text("isfile"), ReturnValue::fromBool(true));
    QCOMPARE(text("any"), ReturnValue::fromString(
                              QStringLiteral("name\n\n\n\n\n\nInFile\n1.23457e+06\n-1\n\n\n")));
    QCOMPARE(table.size(), 22);
    file.filePurpose = QStringLiteral("OutFile");
    file.compressedMethod = QStringLiteral("Flate");
    table = convertFileToHash(file, 2);
    QCOMPARE(text("isinfile"), ReturnValue::fromBool(false));
    QCOMPARE(text("isoutfile"), ReturnValue::fromBool(true));
    QCOMPARE(text("compressed"), ReturnValue::fromBool(false));
}

void TestQueryEvaluation::userNamesFoldAndTheFirstWins()
{
    Workflowstep step;
    step.userAttributes = {{QStringLiteral("b"), QStringLiteral("1")},
                           {QStringLiteral("B"), QStringLiteral("2")},
                           {QStringLiteral("A"), QStringLiteral("3")},
                           {QStringLiteral("0"), QStringLiteral("4")}};
    step.userAttributeKeys =
        QStringList{QStringLiteral("B"), QStringLiteral("none"), QStringLiteral("b")};
    const auto table = convertStepToHash(step);
    QCOMPARE(table.value(QStringLiteral("user:b")).text, QStringLiteral("2"));
    QCOMPARE(table.value(QStringLiteral("user:a")).text, QStringLiteral("3"));
    QCOMPARE(table.value(QStringLiteral("userattrs")).text, QStringLiteral("B, b, 0, A"));
    QVERIFY(!table.contains(QStringLiteral("user:none")));
    QVERIFY(!table.contains(QStringLiteral("user:B")));
}

void TestQueryEvaluation::candidatesAreThoseOfTheReference()
{
    RandomQuery random(61);
    for (int i = 0; i < randomRuns(2000); ++i) {
        for (const Summary& summary : randomHistory(random, 5)) {
            QCOMPARE(convertStepToHash(summary), reference::stepTable(summary));
            for (const FileSummary& file : summary.files)
                QCOMPARE(convertFileToHash(file, summary.tagId),
                         reference::fileTable(file, summary.tagId));
        }
    }
}

void TestQueryEvaluation::candidatesAreDescribed()
{
    QCOMPARE(getVariableValue(convertStepToHash(makeStep(0, "T", ""))),
             QStringLiteral("workflowstep: T"));
    QCOMPARE(getVariableValue(convertFileToHash(makeFile(0, "f"), 0)), QStringLiteral("file: f"));
    auto orphan = convertFileToHash(makeFile(0, "f"), 0);
    orphan.remove(QStringLiteral("parentid"));
    QVERIFY(getVariableValue(orphan).contains(QLatin1String("not a file of workflowstep")));
    QCOMPARE(getVariableValue({}), QStringLiteral("invalid"));
}

void TestQueryEvaluation::firstBindingWins_data()
{
    QTest::addColumn<QString>("bindings");
    // 0 first, 1 a.txt, 2 b.pdf, 3 second, 4 b.pdf
    QTest::newRow("a:isfile") << "a=1";
    QTest::newRow("a:iswfs && b:iswfs") << "a=0 b=3";
    QTest::newRow(":iswfs && :iswfs") << "@unnamed-1=0 @unnamed-2=0";
    QTest::newRow("a:iswfs && :iswfs") << "a=0 @unnamed-2=0";
    QTest::newRow("a:filename == b:filename && a:isfile") << "a=2 b=4";
    QTest::newRow("a:iswfs && b:iswfs && c:iswfs") << "none";
    QTest::newRow("a:tool == b:tool") << "a=0 b=3";
    QTest::newRow("b:iswfs || (a:isfile && c:isfile)") << "b=0 a=1 c=2";
    QTest::newRow("a:filesize > '1kb'") << "a=2";
    QTest::newRow("a:iswfs && b:parentid == a:tagid && a:title == second") << "a=3 b=4";
    QTest::newRow("second") << "@unnamed-1=3";
    QTest::newRow("pdf first") << "@unnamed-1=2 @unnamed-2=0";
    QTest::newRow("a:user{none} == x") << "none";
    QTest::newRow("!(a:user{none} == x)") << "a=0";
    QTest::newRow("!(a:filename == x) && a:iswfs") << "a=0";
    QTest::newRow("a:user{none} != x") << "none";
    QTest::newRow("!nothere") << "@unnamed-1=0";
    QTest::newRow("a:hash == 'file:1:1'") << "a=2";
    QTest::newRow("a:tagid == 1") << "a=0";
}

void TestQueryEvaluation::firstBindingWins()
{
    QFETCH(const QString, bindings);
    QCOMPARE(bindingsOf(QString::fromLatin1(QTest::currentDataTag()), history()), bindings);
    QCOMPARE(plainBindings(QString::fromLatin1(QTest::currentDataTag()), history(), -1, nullptr),
             bindings);
}

void TestQueryEvaluation::literalsWithoutVariablesStayUndecided()
{
    QHash<QString, QString> matches = {{QStringLiteral("old"), QString()}};
    QVERIFY(evaluateCNF({}, formOf(QStringLiteral("1 == 2")), matches));
    QVERIFY(matches.isEmpty());
    QVERIFY(evaluateCNF({}, ConjunctiveNormalForm(), matches));
    // Such a literal holds its clause open.
    QCOMPARE(bindingsOf(QStringLiteral("a:iswfs && (a:isfile || 1 == 2)"), history()),
             QStringLiteral("a=0"));
    QVERIFY(!evaluateCNF({}, formOf(QStringLiteral("a:isfile || 1 == 1")), matches));
}

void TestQueryEvaluation::matchesAreHandedBackOnSuccessOnly()
{
    QHash<QString, QString> matches = {{QStringLiteral("old"), QString()}};
    QVERIFY(!evaluateCNF(history(), formOf(QStringLiteral("a:title == x")), matches));
    QVERIFY(matches.contains(QStringLiteral("old")));
    QVERIFY(evaluateCNF(history(), formOf(QStringLiteral("a:iswfs && b:isfile")), matches));
    const QHash<QString, QString> expected = {
        {QStringLiteral("a"), QStringLiteral("workflowstep: first")},
        {QStringLiteral("b"), QStringLiteral("file: a.txt")}};
    QCOMPARE(matches, expected);
}

void TestQueryEvaluation::operandsHaveValues()
{
    const StaticParams statics = staticsFor(QStringLiteral("a:isfile && b:isfile"), history());
    DynamicParams dynamics = dynamicsFor(statics);
    dynamics.assignment[0] = 1;
    const auto value = [&](const CNFOperand& operand) {
        return operandToReturnValue(statics, dynamics, operand);
    };
    const auto variable = [](const char* name, const char* attribute) {
        return CNFOperand::fromVariable(QString::fromLatin1(name), QString::fromLatin1(attribute));
    };
    QCOMPARE(value(CNFOperand::fromString(QStringLiteral("s"))),
             ReturnValue::fromString(QStringLiteral("s")));
    QCOMPARE(value(CNFOperand()), ReturnValue(InvalidOperand, QString()));
    QCOMPARE(value(variable("b", "filename")), ReturnValue(UnassignedVariable, QString()));
    QCOMPARE(value(variable("a", "FileName")), ReturnValue::fromString(QStringLiteral("a.txt")));
    QCOMPARE(value(variable("a", "title")), ReturnValue(NoSuchAttribute, QString()));
    QCOMPARE(findNextVariableIndex(dynamics), 1);
    dynamics.assignment[1] = 0;
    QCOMPARE(findNextVariableIndex(dynamics), -1);
}

void TestQueryEvaluation::literalsAreEvaluated()
{
    const StaticParams statics = staticsFor(QStringLiteral("a:isfile && b:isfile"), history());
    DynamicParams dynamics = dynamicsFor(statics);
    dynamics.assignment[0] = 1;
    const auto of = [](const char* name, const char* attribute) {
        return CNFOperand::fromVariable(QString::fromLatin1(name), QString::fromLatin1(attribute));
    };
    const CNFOperand text = CNFOperand::fromString(QStringLiteral("a.txt"));
    const auto result = [&](const CNFLiteral& literal) {
        return int(evaluateLiteral(statics, dynamics, literal));
    };
    const QString eq = QStringLiteral("==");
    QCOMPARE(result(CNFLiteral(false, of("a", "filename"), eq, text)), 1);
    QCOMPARE(result(CNFLiteral(true, of("a", "filename"), eq, text)), 2);
    QCOMPARE(result(CNFLiteral(false, of("b", "filename"), eq, text)), 0);
    QCOMPARE(result(CNFLiteral(true, of("b", "filename"), eq, text)), 0);
    QCOMPARE(result(CNFLiteral(false, of("a", "title"), eq, of("b", "title"))), 2);
    QCOMPARE(result(CNFLiteral(false, of("b", "title"), eq, of("a", "title"))), 0);
    QCOMPARE(result(CNFLiteral(false, of("a", "isfile"))), 1);
    QCOMPARE(result(CNFLiteral(false, of("a", "iswfs"))), 2);
    QCOMPARE(result(CNFLiteral(false, of("a", "filename"))), 2);
    QCOMPARE(result(CNFLiteral(false, of("a", "title"))), 2);
    QCOMPARE(result(CNFLiteral(true, of("a", "title"))), 1);
    QCOMPARE(result(CNFLiteral(false, of("b", "isfile"))), 0);
    QCOMPARE(result(CNFLiteral()), 2);
    CNFLiteral negatedInvalid;
    negatedInvalid.setNegated(true);
    QCOMPARE(result(negatedInvalid), 1);
    QCOMPARE(result(CNFLiteral(false, text, QStringLiteral("unknown"), text)), 2);
    QCOMPARE(
        int(evaluatePredicate(statics, dynamics, CNFLiteral(true, of("a", "filename"), eq, text))),
        1);
    QCOMPARE(int(evaluateBoolVariable(statics, dynamics, CNFLiteral(true, of("a", "isfile")))), 1);
}

void TestQueryEvaluation::satisfiableUnlessAllFalse()
{
    QVERIFY(disjunctionIsSatisfiable({EvaluationFalse, EvaluationUndecided}));
    QVERIFY(disjunctionIsSatisfiable({EvaluationTrue}));
    QVERIFY(!disjunctionIsSatisfiable({EvaluationFalse, EvaluationFalse}));
    QVERIFY(!disjunctionIsSatisfiable({}));
}

void TestQueryEvaluation::plainStepsGoOnFromAnyState()
{
    const StaticParams statics = staticsFor(QStringLiteral("a:iswfs && b:isfile"), history());
    DynamicParams dynamics = dynamicsFor(statics);
    QHash<QString, QString> matches;
    dynamics.assignment[0] = 3;
    dynamics.candidateUsed[1] = true;
    QVERIFY(evaluateVariables(statics, dynamics, 0, matches));
    QCOMPARE(matches.value(QStringLiteral("a")), QStringLiteral("workflowstep: second"));
    QCOMPARE(matches.value(QStringLiteral("b")), QStringLiteral("file: b.pdf"));
    dynamics.assignment[0] = 2;
    QVERIFY(!evaluateVariables(statics, dynamics, 0, matches));
    // A binding is not looked at again.
    QVERIFY(davisPutnam(statics, dynamics, matches));
    QCOMPARE(matches.value(QStringLiteral("a")), QStringLiteral("file: b.pdf"));
    QCOMPARE(getVariableAssociations(statics, dynamics).value(QStringLiteral("b")),
             QStringLiteral("invalid"));
}

void TestQueryEvaluation::plainSearchFindsTheSame()
{
    RandomQuery random(62);
    const QStringList names = {QString(), QStringLiteral("a"), QStringLiteral("b")};
    for (int i = 0; i < randomRuns(3000); ++i) {
        const QList<Summary> summaries = randomHistory(random, random.below(6));
        const QString query = random.query(names, 1 + random.below(4));
        const StaticParams statics = staticsFor(query, summaries);
        QHash<QString, QString> plain;
        QHash<QString, QString> fast;
        const bool found = davisPutnam(statics, dynamicsFor(statics), plain);
        QVERIFY2(evaluateCNF(summaries, statics.cnf, fast) == found, qPrintable(query));
        QCOMPARE(fast, plain);
    }
}

// No query has such a form, but a caller may build one.
void TestQueryEvaluation::logicalPredicatesAreEvaluatedAsTheyStand()
{
    const auto of = [](const char* name, const char* attribute) {
        return CNFOperand::fromVariable(QString::fromLatin1(name), QString::fromLatin1(attribute));
    };
    ConjunctiveNormalForm form;
    form.addDisjunction(CNFDisjunction());
    form.lastDisjunction().addLiteral(
        CNFLiteral(false, of("a", "iswfs"), QStringLiteral("&&"), of("b", "isfile")));
    QHash<QString, QString> matches;
    QVERIFY(evaluateCNF(history(), form, matches));
    QCOMPARE(matches.value(QStringLiteral("b")), QStringLiteral("file: a.txt"));
    form.clear();
    form.addDisjunction(CNFDisjunction());
    // The right side, bound first, is false by itself.
    form.lastDisjunction().addLiteral(
        CNFLiteral(false, of("b", "iswfs"), QStringLiteral("||"), of("a", "title")));
    form.setVariableOrder({QStringLiteral("a"), QStringLiteral("b")});
    QVERIFY(!evaluateCNF(history(), form, matches));
}

void TestQueryEvaluation::bindingsAreThoseOfBacktracking_data()
{
    QTest::addColumn<int>("runs");
    QTest::addColumn<int>("candidates");
    QTest::addColumn<int>("tests");
    QTest::addColumn<QStringList>("names");
    const QStringList two = {QStringLiteral("a"), QStringLiteral("b")};
    const QStringList all = {QString(), QStringLiteral("a"), QStringLiteral("b"),
                             QStringLiteral("c"), QStringLiteral("d")};
    QTest::newRow("small") << 40000 << 6 << 3 << all;
    QTest::newRow("two names") << 20000 << 8 << 5 << two;
    QTest::newRow("four names") << 20000 << 7 << 8 << all.mid(1);
    QTest::newRow("large") << 3000 << 20 << 9 << all;
    QTest::newRow("unnamed") << 10000 << 6 << 5 << all.mid(0, 2);
    QTest::newRow("crowded") << 7000 << 4 << 7 << all.mid(1);
}

void TestQueryEvaluation::bindingsAreThoseOfBacktracking()
{
    QFETCH(const int, runs);
    QFETCH(const int, candidates);
    QFETCH(const int, tests);
    QFETCH(const QStringList, names);
    RandomQuery random(63 + quint32(candidates));
    int found = 0;
    int compared = 0;
    for (int i = 0; i < randomRuns(runs) / 10; ++i) {
        const QString query = random.query(names, 1 + random.below(tests));
        for (int h = 0; h < 10; ++h) {
            const QList<Summary> summaries = randomHistory(random, random.below(candidates + 1));
            qint64 steps = 0;
            const QString expected = plainBindings(query, summaries, 3000, &steps);
            if (steps < 0)
                continue;
            ++compared;
            found += expected != QLatin1String("none");
            const QString bindings = bindingsOf(query, summaries);
            QVERIFY2(bindings == expected, qPrintable(query + u'\n' + bindings + u'\n' + expected));
        }
    }
    QVERIFY(compared > runs / 2);
    QVERIFY(found > compared / 10 && found < compared * 9 / 10);
}

QTEST_GUILESS_MAIN(TestQueryEvaluation)
#include "tst_queryevaluation.moc"
