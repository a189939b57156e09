// SPDX-License-Identifier: BSD-3-Clause
#include <lorix/summary/vxmllevel1iter.h>
#include <summary/plainsummary.h>

#include <QTest>

using namespace lorix;

namespace {

// "tag=content" of every element, one after the other.
QStringList walk(const QString& text)
{
    QStringList found;
    for (VXMLLevel1Iter element(text); element; ++element)
        found.append(element.getTag() + QLatin1Char('=') + element.getData());
    return found;
}

} // namespace

class TestVXMLLevel1Iter : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void walkFindsElements_data();
    void walkFindsElements();
    void bothIncrementsReturnTheNewContent();
    void endIsFinal();
    void emptyIteratorStandsOnNothing();
    void initAndAssignmentBeginAgain();
    void copiesWalkOnByThemselves();
    void tagMatchesExactly();
    void elementIsRebuilt();
    void replacingTheContentGivesTheWholeText_data();
    void replacingTheContentGivesTheWholeText();
    void dataBlocksLieInAPrivateCopy();
    void threeNumbersAreRead_data();
    void threeNumbersAreRead();
    void threeDoublesAreRead();
    void randomTextsReadAsThePlainWay_data();
    void randomTextsReadAsThePlainWay();
    void hostileTextsTakeLinearTime_data();
    void hostileTextsTakeLinearTime();
};

void TestVXMLLevel1Iter::walkFindsElements_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QStringList>("found");

    QTest::newRow("empty") << "" << QStringList();
    QTest::newRow("text alone") << "abc > -->" << QStringList();
    QTest::newRow("one") << "<a>x</a>" << QStringList{"a=x"};
    QTest::newRow("text around") << " x <a>y</a> > z <b>w</b> v" << QStringList{"a=y", "b=w"};
    QTest::newRow("content is raw")
        << "<a> <b>x</c> &lt;\n</a>" << QStringList{"a= <b>x</c> &lt;\n"};
    QTest::newRow("empty content") << "<a></a><b>x</b>" << QStringList{"a=", "b=x"};
    QTest::newRow("self-closing") << "<a/><b/>" << QStringList{"a=", "b="};
    QTest::newRow("self-closing with blank") << "<a />" << QStringList{"a ="};
    QTest::newRow("self-closing with attribute") << "<a b=\"1\"/>" << QStringList{"a b=\"1\"="};
    QTest::newRow("self-closing twice") << "<a//>" << QStringList{"a/="};
    QTest::newRow("declaration") << "<?xml version=\"1.0\"?><a>x</a>" << QStringList{"a=x"};
    QTest::newRow("declaration with > inside") << "<?xml > ?><a>x</a>" << QStringList{"a=x"};
    QTest::newRow("comments") << "<!-- <b>y</b> --><a>x</a><!---->" << QStringList{"a=x"};
    QTest::newRow("shortest comment") << "<!--><a>x</a>" << QStringList{"a=x"};
    QTest::newRow("shortest instruction") << "<?><a>x</a>" << QStringList{"a=x"};
    QTest::newRow("doctype runs to the next -->")
        << "<!DOCTYPE a><a>x</a><!-- --><b>y</b>" << QStringList{"b=y"};
    QTest::newRow("unended comment") << "<a>x</a><!-- <b>y</b>" << QStringList{"a=x"};
    QTest::newRow("unended instruction") << "<a>x</a><?x <b>y</b>" << QStringList{"a=x"};
    QTest::newRow("< at the end") << "<a>x</a><" << QStringList{"a=x"};
    QTest::newRow("< alone") << "<" << QStringList();
    QTest::newRow("tag not ended") << "<a>x</a><b" << QStringList{"a=x"};
    QTest::newRow("closing tag first") << "</b><a>x</a>" << QStringList();
    QTest::newRow("closing tag between") << "<a>x</a></b><c>y</c>" << QStringList{"a=x"};
    QTest::newRow("not closed") << "<a>x</a><b>y<c>z</c>" << QStringList{"a=x"};
    QTest::newRow("not closed deep enough") << "<a><a>x</a>" << QStringList();
    QTest::newRow("attribute in the tag")
        << "<a>x</a><b c=\"1\">y</b><d>z</d>" << QStringList{"a=x"};
    QTest::newRow("attribute repeated in the closing tag")
        << "<b c>y</b c>" << QStringList{"b c=y"};
    QTest::newRow("nested same name")
        << "<a><a>x</a>y</a>z<a>w</a>" << QStringList{"a=<a>x</a>y", "a=w"};
    QTest::newRow("nested same name three deep")
        << "<a><a><a>x</a></a><a/></a>" << QStringList{"a=<a><a>x</a></a><a/>"};
    QTest::newRow("longer names do not count")
        << "<a><ab>x</ab></aa></a>" << QStringList{"a=<ab>x</ab></aa>"};
    QTest::newRow("names are case-sensitive") << "<a>x</A></a>" << QStringList{"a=x</A>"};
    QTest::newRow("tags in comments count inside")
        << "<a><!-- </a> -->y</a>" << QStringList{"a=<!-- "};
    QTest::newRow("empty name") << "<>x</>" << QStringList{"=x"};
    QTest::newRow("blank in the name") << "< a>x</ a>" << QStringList{" a=x"};
    QTest::newRow("< in the name") << "<a<b>x</a<b>" << QStringList{"a<b=x"};
    QTest::newRow("< in the name, closing inside") << "<<b>x</<b></b>" << QStringList{"<b=x"};
    QTest::newRow("zero character")
        << QString(QLatin1String("<a>\0</a>", 8)) << QStringList{QString(QLatin1String("a=\0", 3))};
    QTest::newRow("beyond the first plane")
        << QString::fromUtf8("<\xf0\x9f\x93\x84>\xc3\xa4</\xf0\x9f\x93\x84>")
        << QStringList{QString::fromUtf8("\xf0\x9f\x93\x84=\xc3\xa4")};
}

void TestVXMLLevel1Iter::walkFindsElements()
{
    QFETCH(QString, text);
    QTEST(walk(text), "found");
}

void TestVXMLLevel1Iter::bothIncrementsReturnTheNewContent()
{
    VXMLLevel1Iter element(QStringLiteral("<a>1</a><b>2</b><c>3</c>"));
    QCOMPARE(element.getData(), QStringLiteral("1"));
    QCOMPARE(++element, QStringLiteral("2"));
    QCOMPARE(element++, QStringLiteral("3"));
    QVERIFY(element.isValid());
    QCOMPARE(++element, QString());
    QVERIFY(!element.isValid());
}

void TestVXMLLevel1Iter::endIsFinal()
{
    VXMLLevel1Iter element(QStringLiteral("<a>1</a></b><c>3</c>"));
    for (int i = 0; i < 3; ++i) {
        QCOMPARE(++element, QString());
        QVERIFY(!element);
        QVERIFY(!element.isTag(QStringLiteral("c")));
    }
}

void TestVXMLLevel1Iter::emptyIteratorStandsOnNothing()
{
    VXMLLevel1Iter element;
    QVERIFY(!element.isValid());
    QVERIFY(!element.isTag(QString()));
    QCOMPARE(element.getTagAndData(), QStringLiteral("<></>"));
    QCOMPARE(element.getTag(), QString());
    QCOMPARE(element.getData(), QString());
    QCOMPARE(++element, QString());
}

void TestVXMLLevel1Iter::initAndAssignmentBeginAgain()
{
    VXMLLevel1Iter element;
    QVERIFY(element.Init(QStringLiteral("<a>1</a>")));
    QVERIFY(element.isTag(QStringLiteral("a")));
    element = QStringLiteral("<b>2</b><c>3</c>");
    QVERIFY(element.isTag(QStringLiteral("b")));
    ++element;
    ++element;
    QVERIFY(!element);
    QVERIFY(element.Init(QStringLiteral("<d/>")));
    QVERIFY(element.isTag(QStringLiteral("d")));
    QVERIFY(!element.Init(QStringLiteral("</d>")));
    QVERIFY(!element);
}

void TestVXMLLevel1Iter::copiesWalkOnByThemselves()
{
    VXMLLevel1Iter first(QStringLiteral("<a>1</a><b>2</b><c>3</c>"));
    ++first;
    VXMLLevel1Iter second(first);
    VXMLLevel1Iter third;
    third = first;
    VXMLLevel1Iter fourth;
    fourth.Copy(first);
    QCOMPARE(++first, QStringLiteral("3"));
    for (VXMLLevel1Iter* copy : {&second, &third, &fourth}) {
        QCOMPARE(copy->getData(), QStringLiteral("2"));
        QVERIFY(copy->isTag(QStringLiteral("b")));
        QCOMPARE(++*copy, QStringLiteral("3"));
    }
    ++first;
    second.Copy(first);
    QVERIFY(!second);
    QVERIFY(third.isValid());
}

void TestVXMLLevel1Iter::tagMatchesExactly()
{
    VXMLLevel1Iter element(QStringLiteral("<Title>x</Title><b/>"));
    QVERIFY(element.isTag(QStringLiteral("Title")));
    QVERIFY(!element.isTag(QStringLiteral("title")));
    QVERIFY(!element.isTag(QStringLiteral("Titl")));
    QVERIFY(!element.isTag(QStringLiteral("Title ")));
    QVERIFY(!element.isTag(QString()));
    ++element;
    QVERIFY(element.isTag(QStringLiteral("b")));
    QVERIFY(!element.isTag(QStringLiteral("b/")));
}

void TestVXMLLevel1Iter::elementIsRebuilt()
{
    VXMLLevel1Iter element(QStringLiteral(" <a>%1<b/></a> <%2>%1</%2> <c/>"));
    QCOMPARE(element.getTagAndData(), QStringLiteral("<a>%1<b/></a>"));
    ++element;
    QCOMPARE(element.getTagAndData(), QStringLiteral("<%2>%1</%2>"));
    ++element;
    QCOMPARE(element.getTagAndData(), QStringLiteral("<c></c>"));
    ++element;
    QCOMPARE(element.getTagAndData(), QStringLiteral("<></>"));
}

void TestVXMLLevel1Iter::replacingTheContentGivesTheWholeText_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("steps");
    QTest::addColumn<QString>("replaced");

    QTest::newRow("first") << "-<a>1</a><b>2</b>+" << 0 << "-<a>NEW</a><b>2</b>+";
    QTest::newRow("second") << "-<a>1</a><b>2</b>+" << 1 << "-<a>1</a><b>NEW</b>+";
    QTest::newRow("empty content") << "<a></a>" << 0 << "<a>NEW</a>";
    QTest::newRow("self-closing") << "<a/>+" << 0 << "<a/>NEW+";
    QTest::newRow("no element") << "<a>1</a>+" << 1 << "<a>1</a>+";
}

void TestVXMLLevel1Iter::replacingTheContentGivesTheWholeText()
{
    QFETCH(QString, text);
    QFETCH(int, steps);
    VXMLLevel1Iter element(text);
    for (int i = 0; i < steps; ++i)
        ++element;
    const QString before = element.getTagAndData();
    QTEST(element.replaceCurrentTag(QStringLiteral("NEW")), "replaced");
    QCOMPARE(element.getTagAndData(), before);
}

void TestVXMLLevel1Iter::dataBlocksLieInAPrivateCopy()
{
    const QString text = QStringLiteral("<a>1</a><b>23</b><c/>");
    const QString untouched = QString::fromUtf8(text.toUtf8());
    VXMLLevel1Iter element(text);
    const VXMLLevel1Iter copy(element);

    QChar* data = nullptr;
    int length = -1;
    QVERIFY(element.getNextDataBlock(&data, &length));
    QCOMPARE(length, 2);
    QCOMPARE(QString(data, length), QStringLiteral("23"));
    QVERIFY(element.isTag(QStringLiteral("b")));
    data[0] = QLatin1Char('X');
    QCOMPARE(element.getData(), QStringLiteral("X3"));
    QCOMPARE(text, untouched);
    QCOMPARE(copy.replaceCurrentTag(QStringLiteral("1")), untouched);

    QVERIFY(element.getNextDataBlock(&data, &length));
    QVERIFY(data != nullptr);
    QCOMPARE(length, 0);
    QVERIFY(element.isTag(QStringLiteral("c")));

    QVERIFY(!element.getNextDataBlock(&data, &length));
    QCOMPARE(data, nullptr);
    QCOMPARE(length, 0);
    QVERIFY(!element.isValid());
}

void TestVXMLLevel1Iter::threeNumbersAreRead_data()
{
    QTest::addColumn<QString>("content");
    QTest::addColumn<bool>("read");
    QTest::addColumn<QList<int>>("numbers");

    QTest::newRow("three") << "1 -2 3" << true << QList<int>{1, -2, 3};
    QTest::newRow("blanks and lines") << " 1\n\t2   3 x" << true << QList<int>{1, 2, 3};
    QTest::newRow("two") << "1 2" << false << QList<int>{1, 2, 0};
    QTest::newRow("word") << "1 x 3" << false << QList<int>{1, 0, 0};
    QTest::newRow("empty") << "" << false << QList<int>{0, 0, 0};
    QTest::newRow("prefixes") << "0x10 010 7" << true << QList<int>{16, 8, 7};
}

void TestVXMLLevel1Iter::threeNumbersAreRead()
{
    QFETCH(QString, content);
    const VXMLLevel1Iter element(QStringLiteral("<a>%1</a>").arg(content));
    int a = -5;
    int b = -5;
    int c = -5;
    QTEST(element.dataTo3Int(a, b, c), "read");
    QTEST((QList<int>{a, b, c}), "numbers");
}

void TestVXMLLevel1Iter::threeDoublesAreRead()
{
    const VXMLLevel1Iter element(QStringLiteral("<a>1.5 -2e3 .25</a>"));
    double a = 0;
    double b = 0;
    double c = 0;
    QVERIFY(element.dataTo3Double(a, b, c));
    QCOMPARE(a, 1.5);
    QCOMPARE(b, -2000.0);
    QCOMPARE(c, 0.25);
    QVERIFY(!VXMLLevel1Iter(QStringLiteral("<a>1.5 2</a>")).dataTo3Double(a, b, c));
    QVERIFY(!VXMLLevel1Iter().dataTo3Double(a, b, c));
}

void TestVXMLLevel1Iter::randomTextsReadAsThePlainWay_data()
{
    QTest::addColumn<QStringList>("alphabet");
    QTest::addColumn<int>("pieces");

    QTest::newRow("characters") << QStringList{"<", ">", "/", "!", "-", "?", "a", " "} << 24;
    QTest::newRow("few characters") << QStringList{"<", ">", "/", "a"} << 24;
    QTest::newRow("brackets and slashes") << QStringList{"<", ">", "/"} << 24;
    QTest::newRow("tags") << QStringList{"<a>",   "</a>", "<b>", "</b>", "<a/>", "<ab>",
                                         "</ab>", "<!--", "-->", "<?",   "?>",   "x",
                                         "<",     ">",    "</",  "/>"}
                          << 24;
    QTest::newRow("balanced mostly")
        << QStringList{"<a>", "</a>", "<a>x</a>", "<b>y</b>", "<>", "</>", "<a<b>", "</a<b>", "</a"}
        << 24;
}

void TestVXMLLevel1Iter::randomTextsReadAsThePlainWay()
{
    QFETCH(QStringList, alphabet);
    QFETCH(int, pieces);
    QRandomGenerator random(20130621);
    int found = 0;
    for (int run = plain::runs(40000); run > 0; --run) {
        const QString text = plain::randomText(random, alphabet, pieces);
        VXMLLevel1Iter element(text);
        for (const plain::Element& expected : plain::elements(text)) {
            ++found;
            QVERIFY2(element.isValid(), qPrintable(text));
            QVERIFY2(element.isTag(expected.tag), qPrintable(text));
            QVERIFY2(element.getData() == expected.content, qPrintable(text));
            QString replaced = text;
            replaced.replace(expected.contentStart, expected.contentEnd - expected.contentStart,
                             QLatin1String("#"));
            QVERIFY2(element.replaceCurrentTag(QStringLiteral("#")) == replaced, qPrintable(text));
            ++element;
        }
        QVERIFY2(!element.isValid(), qPrintable(text));
    }
    QVERIFY(found > 200);
}

void TestVXMLLevel1Iter::hostileTextsTakeLinearTime_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("found");

    const int many = 200000;
    QString different;
    for (int i = 0; i < many; ++i)
        different += QStringLiteral("<e%1></e%1>").arg(i);
    const QString half(2 * many, QLatin1Char('<'));
    QTest::newRow("different elements") << different << many;
    QTest::newRow("nested") << QStringLiteral("<a>").repeated(many) +
                                   QStringLiteral("</a>").repeated(many)
                            << 1;
    QTest::newRow("never closed") << QStringLiteral("<a>").repeated(many) << 0;
    QTest::newRow("long name that nearly occurs everywhere")
        << half + QLatin1Char('>') + half + half << 0;
    QTest::newRow("long name cut by >")
        << half + QLatin1Char('>') + QStringLiteral("<<>").repeated(many) << 0;
    QTest::newRow("comments") << QStringLiteral("<!-- -->").repeated(many) << 0;
    QTest::newRow("comment openings") << QStringLiteral("<!--").repeated(many) << 0;
}

// A walk that looked at every later character for every element would take
// minutes to hours here; the time limit of the suite is the only clock.
void TestVXMLLevel1Iter::hostileTextsTakeLinearTime()
{
    QFETCH(QString, text);
    int found = 0;
    for (VXMLLevel1Iter element(text); element; ++element)
        ++found;
    QTEST(found, "found");
}

QTEST_GUILESS_MAIN(TestVXMLLevel1Iter)
#include "tst_vxmllevel1iter.moc"
