// SPDX-License-Identifier: BSD-3-Clause
#include <lorix/query/cnfconstruction.h>
#include <lorix/query/queryparser.h>
#include <query/randomquery.h>
#include <query/referencenormalform.h>

#include <QTest>

#include <functional>

using namespace lorix;

namespace {

using Node = QSharedPointer<ExpressionTreeNode>;

Node treeOf(const QString& query)
{
    QList<QueryError> errors;
    return parseQuery(query, errors);
}

Node leaf(int number)
{
    return Node::create(ExpressionValue::fromVariable(QStringLiteral("v%1").arg(number),
                                                      QStringLiteral("x"), number, QString()));
}

Node inner(const char* name, const QList<Node>& children)
{
    Node node =
        Node::create(ExpressionValue::fromOperator(QString::fromLatin1(name), 0, QString()));
    node->children = children;
    return node;
}

Node negated(Node node, int times)
{
    for (; times > 0; --times)
        node = inner("!", {node});
    return node;
}

// Any shape over distinct leaves; `bias` of eight inner nodes are conjunctions.
Node randomTree(RandomQuery& random, int size, int bias, int& number)
{
    Node node;
    if (size <= 1) {
        node = leaf(number++);
        if (random.once(10))
            node = inner("==", {node, inner("&&", {leaf(number), leaf(number)})});
        else if (random.once(6))
            node =
                inner("==", {negated(node, 2 * random.below(3)), negated(node, random.below(5))});
    } else {
        const int left = 1 + random.below(size - 1);
        const Node a = randomTree(random, left, bias, number);
        const Node b = randomTree(random, size - left, bias, number);
        const char* conjunction = random.once(3) ? "implizit &&" : "&&";
        node = inner(random.below(8) < bias ? conjunction : "||", {a, b});
    }
    for (int i = random.once(3) ? random.below(6) : 0; i > 0; --i)
        node = inner("!", {node});
    return node;
}

QString formOf(const char* query)
{
    return reference::describe(constructCNF(treeOf(QString::fromLatin1(query))));
}

} // namespace

class TestConjunctiveNormalForm : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void operandsHaveThreeKinds();
    void literalsHaveThreeKinds();
    void formsListWhereNamesStand();
    void namesKeepTheQuerysOrder();
    void formsAreBuilt_data();
    void formsAreBuilt();
    void literalsAreMadeFromNodes();
    void treeStaysAsItIs();
    void formsSayWhatTheTreeSays();
    void clausesStandWherePassesPutThem_data();
    void clausesStandWherePassesPutThem();
    void chainsStandWherePassesPutThem();
    void boundsHoldJustBelowAndAbove();
    void hugeFormsAreRefused_data();
    void hugeFormsAreRefused();
    void deepTreesEnd_data();
    void deepTreesEnd();
};

void TestConjunctiveNormalForm::operandsHaveThreeKinds()
{
    const CNFOperand none;
    QVERIFY(none.isInvalid() && !none.isString() && !none.isVariable());
    QVERIFY(CNFOperand::fromInvalid().isInvalid());
    const CNFOperand string = CNFOperand::fromString(QStringLiteral("s"));
    QVERIFY(string.isString() && !string.isInvalid() && !string.isVariable());
    QCOMPARE(string.string(), QStringLiteral("s"));
    QCOMPARE(string.variableName(), QString());
    const CNFOperand variable =
        CNFOperand::fromVariable(QStringLiteral("a"), QStringLiteral("tool"));
    QVERIFY(variable.isVariable() && !variable.isInvalid() && !variable.isString());
    QCOMPARE(variable.variableName(), QStringLiteral("a"));
    QCOMPARE(variable.variableAttribute(), QStringLiteral("tool"));
    QCOMPARE(variable.string(), QString());
}

void TestConjunctiveNormalForm::literalsHaveThreeKinds()
{
    const CNFOperand a = CNFOperand::fromVariable(QStringLiteral("a"), QStringLiteral("x"));
    const CNFOperand b = CNFOperand::fromVariable(QStringLiteral("b"), QStringLiteral("x"));
    const CNFLiteral predicate(true, a, QStringLiteral("=="), b);
    QVERIFY(predicate.isPredicate() && !predicate.isBoolVariable() && predicate.isNegated());
    QCOMPARE(predicate.op(), QStringLiteral("=="));
    QCOMPARE(predicate.left().variableName(), QStringLiteral("a"));
    QCOMPARE(predicate.right().variableName(), QStringLiteral("b"));
    QVERIFY(predicate.boolVariable().isInvalid());
    QCOMPARE(predicate.variableNames(), QSet<QString>({QStringLiteral("a"), QStringLiteral("b")}));
    CNFLiteral flag(false, a);
    QVERIFY(flag.isBoolVariable() && !flag.isPredicate() && !flag.isNegated());
    QCOMPARE(flag.boolVariable().variableName(), QStringLiteral("a"));
    QCOMPARE(flag.variableNames(), QSet<QString>({QStringLiteral("a")}));
    QVERIFY(flag.left().isInvalid());
    flag.setNegated(true);
    QVERIFY(flag.isNegated());
    const CNFLiteral none = CNFLiteral::fromInvalid();
    QVERIFY(!none.isPredicate() && !none.isBoolVariable() && !none.isNegated());
    QVERIFY(none.variableNames().isEmpty());
}

void TestConjunctiveNormalForm::formsListWhereNamesStand()
{
    ConjunctiveNormalForm form =
        constructCNF(treeOf(QStringLiteral("(a:tool == b:tool || a:isfile || 1 == 2) && "
                                           "a:tool == a:host")));
    QCOMPARE(form.numDisjunctions(), 2);
    const QMultiHash<QString, int> inClause = form.disjunctionAt(0).variableLocations();
    QCOMPARE(inClause.size(), 3);
    QVERIFY(inClause.contains(QStringLiteral("a"), 0) &&
            inClause.contains(QStringLiteral("a"), 1) && inClause.contains(QStringLiteral("b"), 0));
    const QMultiHash<QString, CNFLiteralIndex> all = form.variableLocations();
    QCOMPARE(all.size(), 4);
    QVERIFY(all.contains(QStringLiteral("a"), CNFLiteralIndex(1, 0)));
    QCOMPARE(form.literalAt(CNFLiteralIndex(0, 1)).boolVariable().variableAttribute(),
             QStringLiteral("isfile"));
    form.lastDisjunction().addLiteral(CNFLiteral());
    QCOMPARE(form.disjunctionAt(1).numLiterals(), 2);
    form.clear();
    QCOMPARE(form.numDisjunctions(), 0);
    QVERIFY(form.variableNames().isEmpty());
}

void TestConjunctiveNormalForm::namesKeepTheQuerysOrder()
{
    const Node tree =
        treeOf(QStringLiteral("c:isfile || (a:isfile && b:isfile) || (d:tool == 1) == 2"));
    ConjunctiveNormalForm form = constructCNF(tree);
    QCOMPARE(form.variableNames(),
             QStringList({QStringLiteral("c"), QStringLiteral("a"), QStringLiteral("b")}));
    form.setVariableOrder({QStringLiteral("x"), QStringLiteral("b")});
    QCOMPARE(form.variableNames().first(), QStringLiteral("b"));
    QCOMPARE(form.variableNames().size(), 3);
}

void TestConjunctiveNormalForm::formsAreBuilt_data()
{
    QTest::addColumn<QString>("form");
    QTest::newRow("!!a:isfile") << "[a:isfile]\n";
    QTest::newRow("!!!a:isfile") << "[!a:isfile]\n";
    QTest::newRow("!(a:tool == 'a' && b:tool == 'b')") << "[!a:tool == 'a', !b:tool == 'b']\n";
    QTest::newRow("!(a:isfile || b:isfile)") << "[!a:isfile]\n[!b:isfile]\n";
    QTest::newRow("(p:isfile || q:isfile) && r:isfile") << "[p:isfile, q:isfile]\n[r:isfile]\n";
    QTest::newRow("(p:isfile && q:isfile) || r:isfile")
        << "[p:isfile, r:isfile]\n[q:isfile, r:isfile]\n";
    QTest::newRow("r:isfile || (p:isfile && q:isfile)")
        << "[p:isfile, r:isfile]\n[q:isfile, r:isfile]\n";
    QTest::newRow("(a:isfile && b:isfile) || (c:isfile && d:isfile)")
        << "[a:isfile, c:isfile]\n[b:isfile, c:isfile]\n[a:isfile, d:isfile]\n"
           "[b:isfile, d:isfile]\n";
    QTest::newRow("a b") << "[@unnamed-1:any %contains 'a']\n[@unnamed-2:any %contains 'b']\n";
    QTest::newRow("(a:tool == 1) == 2") << "[invalid == '2']\n";
    QTest::newRow("1 == 2") << "['1' == '2']\n";
    QTest::newRow("!!a:isfile == !!!!'x'") << "[a:isfile == 'x']\n";
    QTest::newRow("!!!a:isfile == !b:isfile") << "[invalid == invalid]\n";
    QTest::newRow("!(!!1 == a:tool) || (a:tool != !!2)") << "[!'1' == a:tool, a:tool != '2']\n";
}

void TestConjunctiveNormalForm::formsAreBuilt()
{
    QFETCH(const QString, form);
    QCOMPARE(formOf(QTest::currentDataTag()), form);
}

void TestConjunctiveNormalForm::literalsAreMadeFromNodes()
{
    const Node string = Node::create(ExpressionValue::fromString(QStringLiteral("s"), 0, {}));
    const CNFLiteral none = makeLiteral(string);
    QVERIFY(!none.isPredicate() && !none.isBoolVariable() && !none.isNegated());
    QVERIFY(makeLiteral(inner("!", {string})).isNegated());
    QVERIFY(makeLiteral(inner("!", {inner("!", {leaf(1)})})).isNegated());
    QVERIFY(makeLiteral(leaf(1)).isBoolVariable());
    QVERIFY(makeLiteral(inner("<", {leaf(1), string})).right().isString());
    QVERIFY(makeOperand(inner("!", {string})).isInvalid());
    QVERIFY(makeOperand(leaf(1)).isVariable());
    QCOMPARE(int(ConjunctionLevel), 0);
    QCOMPARE(int(DisjunctionLevel), 1);
}

void TestConjunctiveNormalForm::treeStaysAsItIs()
{
    QCOMPARE(constructCNF(Node()).numDisjunctions(), 0);
    const Node tree = treeOf(QStringLiteral("!(a:isfile || (b:isfile && !!c:isfile)) || d:isfile"));
    const QString before = reference::describe(tree);
    constructCNF(tree);
    QCOMPARE(reference::describe(tree), before);
}

// Truth tables over up to six leaves.
void TestConjunctiveNormalForm::formsSayWhatTheTreeSays()
{
    RandomQuery random(58);
    for (int i = 0; i < randomRuns(3000); ++i) {
        int leaves = 0;
        const Node tree = randomTree(random, 1 + random.below(6), 4, leaves);
        const ConjunctiveNormalForm form = constructCNF(tree);
        for (int assignment = 0; assignment < 1 << leaves; ++assignment) {
            const auto isSet = [&](const QString& name) {
                return (assignment >> name.mid(1).toInt() & 1) != 0;
            };
            const std::function<bool(const Node&)> truth = [&](const Node& node) {
                const QString name = node->value.operatorName();
                if (name == QLatin1String("!"))
                    return !truth(node->children[0]);
                if (name.contains(QLatin1String("&&")))
                    return truth(node->children[0]) && truth(node->children[1]);
                if (name == QLatin1String("||"))
                    return truth(node->children[0]) || truth(node->children[1]);
                Node variable = node;
                while (!variable->children.isEmpty())
                    variable = variable->children[0];
                return isSet(variable->value.variableName());
            };
            bool all = true;
            for (int d = 0; d < form.numDisjunctions(); ++d) {
                bool one = false;
                for (int l = 0; l < form.disjunctionAt(d).numLiterals(); ++l) {
                    const CNFLiteral& literal = form.disjunctionAt(d).literalAt(l);
                    const CNFOperand operand =
                        literal.isPredicate() ? literal.left() : literal.boolVariable();
                    one = one || isSet(operand.variableName()) != literal.isNegated();
                }
                all = all && one;
            }
            QCOMPARE(all, truth(tree));
        }
    }
}

void TestConjunctiveNormalForm::clausesStandWherePassesPutThem_data()
{
    QTest::addColumn<int>("runs");
    QTest::addColumn<int>("size");
    QTest::addColumn<int>("bias");
    QTest::newRow("small") << 30000 << 6 << 4;
    QTest::newRow("large, conjunctions") << 4000 << 20 << 6;
    QTest::newRow("large, disjunctions") << 4000 << 16 << 2;
    QTest::newRow("large, mixed") << 3000 << 14 << 4;
}

void TestConjunctiveNormalForm::clausesStandWherePassesPutThem()
{
    QFETCH(const int, runs);
    QFETCH(const int, size);
    QFETCH(const int, bias);
    RandomQuery random(59);
    Bounds bounds;
    bounds.queryClauses = 300;
    for (int i = 0; i < randomRuns(runs); ++i) {
        int number = 0;
        const Node tree = randomTree(random, 1 + random.below(size), bias, number);
        bool exceeded = false;
        const ConjunctiveNormalForm form = constructCNF(tree, bounds, &exceeded);
        if (exceeded)
            continue;
        const QString expected = reference::describe(reference::constructCNF(tree));
        if (reference::describe(form) != expected) {
            qDebug() << tree;
            QCOMPARE(reference::describe(form), expected);
        }
    }
}

void TestConjunctiveNormalForm::chainsStandWherePassesPutThem()
{
    RandomQuery random(60);
    for (int i = 0; i < randomRuns(300); ++i) {
        int number = 0;
        Node tree = randomTree(random, 3, 4, number);
        for (int depth = random.below(60); depth > 0; --depth) {
            const Node other =
                random.once(12) ? inner("&&", {leaf(number), leaf(number + 1)}) : leaf(number);
            number += 2;
            if (random.once(4))
                tree = inner("!", {tree});
            else
                tree = inner(random.once(5) ? "&&" : "||",
                             random.once(2) ? QList<Node>{tree, other} : QList<Node>{other, tree});
        }
        Bounds bounds;
        bounds.queryClauses = 2000;
        bool exceeded = false;
        const ConjunctiveNormalForm form = constructCNF(tree, bounds, &exceeded);
        if (!exceeded)
            QCOMPARE(reference::describe(form), reference::describe(reference::constructCNF(tree)));
    }
}

void TestConjunctiveNormalForm::boundsHoldJustBelowAndAbove()
{
    const Node tree = treeOf(QStringLiteral("(a:isfile && b:isfile) || (c:isfile && d:isfile)"));
    Bounds bounds;
    bool exceeded = true;
    bounds.queryClauses = 4;
    bounds.queryLiterals = 8;
    QCOMPARE(constructCNF(tree, bounds, &exceeded).numDisjunctions(), 4);
    QVERIFY(!exceeded);
    bounds.queryClauses = 3;
    QCOMPARE(constructCNF(tree, bounds, &exceeded).numDisjunctions(), 0);
    QVERIFY(exceeded);
    bounds.queryClauses = 4;
    bounds.queryLiterals = 7;
    QCOMPARE(constructCNF(tree, bounds, nullptr).numDisjunctions(), 0);
}

void TestConjunctiveNormalForm::hugeFormsAreRefused_data()
{
    QTest::addColumn<QString>("query");
    const QString pair = QStringLiteral("(a:isfile && b:isfile)");
    QTest::newRow("many clauses")
        << pair + QStringLiteral(" || (a:isfile && b:isfile)").repeated(5000);
    QTest::newRow("long clauses") << QStringLiteral("(") +
                                         QStringLiteral("a:isfile ").repeated(10000) +
                                         QStringLiteral(") || (") +
                                         QStringLiteral("a:isfile || ").repeated(10000) +
                                         QStringLiteral("a:isfile)");
}

void TestConjunctiveNormalForm::hugeFormsAreRefused()
{
    QFETCH(const QString, query);
    bool exceeded = false;
    QCOMPARE(constructCNF(treeOf(query), Bounds(), &exceeded).numDisjunctions(), 0);
    QVERIFY(exceeded);
}

void TestConjunctiveNormalForm::deepTreesEnd_data()
{
    QTest::addColumn<QString>("query");
    QTest::addColumn<int>("clauses");
    QTest::addColumn<int>("literals");
    const int depth = 100000;
    const QString close = QStringLiteral(")").repeated(depth);
    QTest::newRow("negations") << QStringLiteral("!").repeated(depth + 1) +
                                      QStringLiteral("a:isfile")
                               << 1 << 1;
    QTest::newRow("brackets") << QStringLiteral("(").repeated(depth) + QStringLiteral("a:isfile") +
                                     close
                              << 1 << 1;
    QTest::newRow("negated brackets")
        << QStringLiteral("!(").repeated(depth) + QStringLiteral("a:isfile || b:isfile") + close
        << 1 << 2;
    QTest::newRow("left disjunctions")
        << QStringLiteral("(a:isfile && b:isfile)") + QStringLiteral(" || c:isfile").repeated(depth)
        << 2 << depth + 1;
    QTest::newRow("right disjunctions") << QStringLiteral("c:isfile || (").repeated(depth) +
                                               QStringLiteral("a:isfile && b:isfile") + close
                                        << 2 << depth + 1;
    QTest::newRow("left conjunctions")
        << QStringLiteral("a:isfile") + QStringLiteral(" && c:isfile").repeated(depth - 1) << depth
        << 1;
    QTest::newRow("right conjunctions") << QStringLiteral("c:isfile && (").repeated(depth - 1) +
                                               QStringLiteral("a:isfile") + close.mid(1)
                                        << depth << 1;
    QTest::newRow("one over many") << QStringLiteral("x:iswfs || (a:isfile") +
                                          QStringLiteral(" && c:isfile").repeated(depth - 1) + u')'
                                   << depth << 2;
}

void TestConjunctiveNormalForm::deepTreesEnd()
{
    QFETCH(const QString, query);
    QFETCH(const int, clauses);
    QFETCH(const int, literals);
    const ConjunctiveNormalForm form = constructCNF(treeOf(query), Bounds(), nullptr);
    QCOMPARE(form.numDisjunctions(), clauses);
    QCOMPARE(form.disjunctionAt(0).numLiterals(), literals);
}

QTEST_GUILESS_MAIN(TestConjunctiveNormalForm)
#include "tst_conjunctivenormalform.moc"
