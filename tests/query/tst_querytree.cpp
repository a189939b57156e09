// SPDX-License-Identifier: BSD-3-Clause
#include <lorix/query/querylexer.h>
#include <lorix/query/querysyntax.h>
#include <lorix/query/querytree.h>
#include <query/randomquery.h>
#include <query/referencecompiler.h>

#include <QDebug>
#include <QTest>

using namespace lorix;

namespace {

using Node = QSharedPointer<ExpressionTreeNode>;

QList<ExpressionValue> tokensOf(const QString& query)
{
    QList<QueryError> errors;
    return checkSyntax(lexQuery(query, errors), errors);
}

Node treeOf(const QString& query)
{
    QList<QueryError> errors;
    return createTree(tokensOf(query), query, errors);
}

// Everything in brackets, for rows that people read.
QString grouped(const Node& node)
{
    const ExpressionValue& value = node->value;
    if (value.isVariable())
        return value.variableName() + u':' + value.variableAttribute();
    if (value.isString())
        return value.string();
    if (node->children.size() == 1)
        return value.operatorName() + grouped(node->children[0]);
    return u'(' + grouped(node->children[0]) + u' ' + value.operatorName() + u' ' +
           grouped(node->children[1]) + u')';
}

} // namespace

class TestQueryTree : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void operatorsBindByPrecedence_data();
    void operatorsBindByPrecedence();
    void nodesSpanTheirOperands();
    void precedenceGrowsWithBrackets();
    void nothingGivesNoTree();
    void unreadableTokensGiveNoTree();
    void bareStringsBecomeTests_data();
    void bareStringsBecomeTests();
    void anyContainsNodeKeepsPlaceAndText();
    void stringsAsValuesAreKept();
    void unnamedVariablesAreNumbered_data();
    void unnamedVariablesAreNumbered();
    void namesAreCollectedPerNode();
    void hugeQueriesKeepTheRootsNames();
    void cloneSharesNoNode();
    void treesPrint();
    void treesAreThoseOfRecursion();
    void textsOutliveTheTree();
    void deepTreesEnd_data();
    void deepTreesEnd();
};

void TestQueryTree::operatorsBindByPrecedence_data()
{
    QTest::addColumn<QString>("groups");
    QTest::newRow("a && b || c") << "(a && (b || c))";
    QTest::newRow("a || b && c") << "((a || b) && c)";
    QTest::newRow("a b || c") << "(a implizit && (b || c))";
    QTest::newRow("!a == b") << "(!a == b)";
    QTest::newRow("!(a == b)") << "!(a == b)";
    QTest::newRow("!!a") << "!!a";
    QTest::newRow("a == b < c %contains d") << "(a == (b < (c %contains d)))";
    QTest::newRow("a %contains b < c == d") << "(((a %contains b) < c) == d)";
    QTest::newRow("a == b != c") << "((a == b) != c)";
    QTest::newRow("a && (b && c)") << "(a && (b && c))";
    QTest::newRow("(a && b) || c") << "((a && b) || c)";
    QTest::newRow("a || (b && (c || d))") << "(a || (b && (c || d)))";
    QTest::newRow("a == (!b)") << "(a == !b)";
    QTest::newRow("x:tool") << "x:tool";
}

void TestQueryTree::operatorsBindByPrecedence()
{
    QFETCH(const QString, groups);
    QCOMPARE(grouped(treeOf(QString::fromLatin1(QTest::currentDataTag()))), groups);
}

void TestQueryTree::nodesSpanTheirOperands()
{
    const Node root = treeOf(QStringLiteral("!(a:x == 'y z')  &&  b"));
    QCOMPARE(root->text, QStringLiteral("a:x == 'y z')  &&  b"));
    QCOMPARE(root->position, 2);
    QCOMPARE(root->children[0]->text, QStringLiteral("a:x == 'y z'"));
    QCOMPARE(root->children[0]->position, 2);
    QCOMPARE(root->children[0]->value.position(), 0);
    QCOMPARE(root->children[0]->children[0]->children[1]->text, QStringLiteral("'y z'"));
    QCOMPARE(root->children[1]->text, QStringLiteral("b"));
    QCOMPARE(root->children[1]->position, 21);
}

void TestQueryTree::precedenceGrowsWithBrackets()
{
    QCOMPARE(treeOf(QStringLiteral("((a && b))"))->value.precedence(), 22);
    QCOMPARE(makeEndOfStreamOperator().precedence(), -100);
}

void TestQueryTree::nothingGivesNoTree()
{
    QList<QueryError> errors;
    QVERIFY(createTree({}, QString(), errors).isNull());
    QVERIFY(expandImplicitTreeNodes(Node(), true).isNull());
    QVERIFY(expandUnnamedVariables(Node(), 0).isEmpty());
}

void TestQueryTree::unreadableTokensGiveNoTree()
{
    for (const char* query : {"&&", "a b", "a &&", "! !", "( )", ") a b (", "a == == b"}) {
        QList<QueryError> errors;
        const QString text = QString::fromLatin1(query);
        QVERIFY2(createTree(lexQuery(text, errors), text, errors).isNull(), query);
    }
}

void TestQueryTree::bareStringsBecomeTests_data()
{
    QTest::addColumn<QString>("groups");
    QTest::newRow("report") << "(:any %contains report)";
    QTest::newRow("foo bar") << "((:any %contains foo) implizit && (:any %contains bar))";
    QTest::newRow("!foo") << "!(:any %contains foo)";
    QTest::newRow("foo || !(a:tool == bar)") << "((:any %contains foo) || !(a:tool == bar))";
    QTest::newRow("(foo && bar) == baz") << "((foo && bar) == baz)";
}

void TestQueryTree::bareStringsBecomeTests()
{
    QFETCH(const QString, groups);
    const Node tree = treeOf(QString::fromLatin1(QTest::currentDataTag()));
    QCOMPARE(grouped(expandImplicitTreeNodes(tree, true)), groups);
}

void TestQueryTree::anyContainsNodeKeepsPlaceAndText()
{
    const Node leaf = treeOf(QStringLiteral("  'a b'"));
    const Node test = makeAnyContainsNode(leaf);
    QCOMPARE(test->value.operatorName(), QStringLiteral("%contains"));
    QCOMPARE(test->value.position(), 2);
    QCOMPARE(test->value.originalText(), QStringLiteral("'a b'"));
    QCOMPARE(test->position, 2);
    QCOMPARE(test->text, QStringLiteral("'a b'"));
    QCOMPARE(test->children[1], leaf);
    const ExpressionValue& any = test->children[0]->value;
    QCOMPARE(any.variableName(), QString());
    QCOMPARE(any.variableAttribute(), QStringLiteral("any"));
    QCOMPARE(any.position(), 2);
    QCOMPARE(any.originalText(), QString());
}

void TestQueryTree::stringsAsValuesAreKept()
{
    const Node leaf = treeOf(QStringLiteral("x"));
    QCOMPARE(expandImplicitTreeNodes(leaf, false), leaf);
    const Node test = treeOf(QStringLiteral("x == y"));
    QCOMPARE(grouped(expandImplicitTreeNodes(test, true)), QStringLiteral("(x == y)"));
}

void TestQueryTree::unnamedVariablesAreNumbered_data()
{
    QTest::addColumn<QString>("names");
    QTest::newRow("foo bar") << "@unnamed-1 @unnamed-2";
    QTest::newRow("a:isfile foo") << "@unnamed-2 a";
    QTest::newRow("a:isfile && a:iswfs && foo") << "@unnamed-2 a";
    QTest::newRow("foo && (a:isfile && b:isfile) && bar") << "@unnamed-1 @unnamed-4 a b";
    // Where a name repeats, two operands may get the same number.
    QTest::newRow("(a:tool == 1 && (a:host == 2 && :user == 3)) && :tool == 4") << "@unnamed-3 a";
}

void TestQueryTree::unnamedVariablesAreNumbered()
{
    QFETCH(const QString, names);
    const Node tree =
        expandImplicitTreeNodes(treeOf(QString::fromLatin1(QTest::currentDataTag())), true);
    const QSet<QString> found = expandUnnamedVariables(tree, 0);
    QStringList sorted(found.cbegin(), found.cend());
    sorted.sort();
    QCOMPARE(sorted.join(u' '), names);
    QCOMPARE(tree->variables, found);
}

void TestQueryTree::namesAreCollectedPerNode()
{
    const Node tree = treeOf(QStringLiteral("a:tool == b:tool && !c:isfile"));
    expandUnnamedVariables(tree, 5);
    const auto set = [](const QStringList& names) {
        return QSet<QString>(names.cbegin(), names.cend());
    };
    QCOMPARE(tree->children[0]->variables, set({QStringLiteral("a"), QStringLiteral("b")}));
    QCOMPARE(tree->children[0]->children[1]->variables, set({QStringLiteral("b")}));
    QCOMPARE(tree->children[1]->variables, set({QStringLiteral("c")}));
    QCOMPARE(tree->variables.size(), 3);
    const Node unnamed = treeOf(QStringLiteral(":isfile"));
    expandUnnamedVariables(unnamed, 5);
    QCOMPARE(unnamed->value.variableName(), QStringLiteral("@unnamed-6"));
}

void TestQueryTree::hugeQueriesKeepTheRootsNames()
{
    const Node tree =
        expandImplicitTreeNodes(treeOf(QStringLiteral("word ").repeated(20000)), true);
    QCOMPARE(expandUnnamedVariables(tree, 0).size(), 20000);
    QCOMPARE(tree->variables.size(), 20000);
    QVERIFY(tree->variables.contains(QStringLiteral("@unnamed-20000")));
    QVERIFY(tree->children[0]->variables.isEmpty());
    QCOMPARE(tree->children[1]->children[0]->variables,
             QSet<QString>({QStringLiteral("@unnamed-20000")}));
}

void TestQueryTree::cloneSharesNoNode()
{
    const Node tree = treeOf(QStringLiteral("a:tool == 1 && !(b c)"));
    const Node clone = tree->cloneTree();
    QCOMPARE(reference::describe(clone), reference::describe(tree));
    QVERIFY(clone != tree);
    QVERIFY(clone->children[1] != tree->children[1]);
    clone->children[1]->children[0]->children[0]->text = QStringLiteral("x");
    QCOMPARE(tree->children[1]->children[0]->children[0]->text, QStringLiteral("b"));
}

void TestQueryTree::treesPrint()
{
    QString text;
    QDebug(&text) << treeOf(QStringLiteral("a && !b"));
    const QStringList lines = text.trimmed().split(u'\n');
    QCOMPARE(lines.size(), 4);
    QVERIFY(lines[1].startsWith(QLatin1String("    s")));
    QVERIFY(lines[3].startsWith(QLatin1String("        s")));
    QDebug(&text) << Node();
}

void TestQueryTree::treesAreThoseOfRecursion()
{
    RandomQuery random(56);
    const QStringList names = {QString(), QStringLiteral("a"), QStringLiteral("b")};
    for (int i = 0; i < randomRuns(20000); ++i) {
        const QString query = random.query(names, 1 + random.below(8));
        const QList<ExpressionValue> tokens = tokensOf(query);
        QList<QueryError> errors;
        Node tree = createTree(tokens, query, errors);
        Node expected = reference::createTree(tokens, query);
        QVERIFY2(reference::describe(tree) == reference::describe(expected), qPrintable(query));
        tree = expandImplicitTreeNodes(tree, true);
        expected = reference::expandImplicit(expected, true);
        const int counter = random.below(3);
        QVERIFY(expandUnnamedVariables(tree, counter) ==
                reference::nameVariables(expected, counter));
        QVERIFY2(reference::describe(tree) == reference::describe(expected), qPrintable(query));
    }
}

void TestQueryTree::textsOutliveTheTree()
{
    const QString expected = QStringLiteral("a:tool == x && ").repeated(20) + u'y';
    QString text;
    QString part;
    {
        const Node tree = treeOf(QStringLiteral("(") + expected + u')');
        text = tree->text;
        part = tree->children[0]->text;
    }
    QCOMPARE(text, expected);
    QCOMPARE(part, expected.chopped(5));
    part.append(u'z');
    part[0] = u'b';
    QCOMPARE(part, u'b' + expected.mid(1, expected.size() - 6) + u'z');
    QCOMPARE(text, expected);
}

void TestQueryTree::deepTreesEnd_data()
{
    QTest::addColumn<QString>("query");
    const int depth = 100000;
    QTest::newRow("negations") << QStringLiteral("!").repeated(depth) + u'a';
    QTest::newRow("brackets") << QStringLiteral("(").repeated(depth) + u'a' +
                                     QStringLiteral(")").repeated(depth);
    QTest::newRow("right") << QStringLiteral("a || (").repeated(depth) + u'a' +
                                  QStringLiteral(")").repeated(depth);
    QTest::newRow("left") << QStringLiteral("x:tool == 1 && ").repeated(depth) + u'a';
    QTest::newRow("words") << QStringLiteral("w ").repeated(depth);
}

void TestQueryTree::deepTreesEnd()
{
    QFETCH(const QString, query);
    Node tree = expandImplicitTreeNodes(treeOf(query), true);
    QVERIFY(tree);
    expandUnnamedVariables(tree, 0);
    const Node clone = tree->cloneTree();
    QCOMPARE(clone->variables, tree->variables);
    tree.clear();
    QVERIFY(!clone->value.operatorName().isEmpty());
}

QTEST_GUILESS_MAIN(TestQueryTree)
#include "tst_querytree.moc"
