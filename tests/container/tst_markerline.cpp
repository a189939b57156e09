// SPDX-License-Identifier: BSD-3-Clause
#include <lorix/container/markerline.h>
#include <support/containerbuilder.h>
#include <support/randomruns.h>

#include <QRegExp>
#include <QTest>

using namespace lorix;

namespace {

const QByteArray digest(32, 'a');

QByteArray section()
{
    return ContainerBuilder::sectionMarker({{"version", "1.0"},
                                            {"creator", "c"},
                                            {"title", "t"},
                                            {"left", "1"},
                                            {"size", "2"},
                                            {"index", "3"},
                                            {"md5section", digest},
                                            {"previousmd5", digest},
                                            {"previousmarker", "4"}});
}

QByteArray file()
{
    return ContainerBuilder::fileMarker({{"filetype", "a"},
                                         {"filename", "b"},
                                         {"desc", "c"},
                                         {"comment", "d"},
                                         {"compression", "none"},
                                         {"filesize", "1"},
                                         {"cfilesize", "2"},
                                         {"blocksize", "3"},
                                         {"offset", "4"},
                                         {"md5file", digest},
                                         {"md5cfile", digest}});
}

MarkerMatch matchWith(const QString& pattern, const QString& line)
{
    QRegExp regex(pattern, Qt::CaseSensitive, QRegExp::RegExp);
    MarkerMatch match;
    if (regex.indexIn(line) != 0)
        return match;
    match.length = regex.matchedLength();
    match.fields = regex.capturedTexts().mid(1);
    return match;
}

QString describe(const MarkerMatch& match)
{
    return QString::number(match.length) + QStringLiteral(": ") +
           match.fields.join(QLatin1Char('|'));
}

// Text of the characters at which patterns part: brackets, escapes, digits of
// other scripts, both halves of surrogate pairs alone and together, zero.
QString oddText(Dice& dice, int most)
{
    static const QList<QString> pieces = {
        QStringLiteral("]"),    QStringLiteral("["),    QStringLiteral("\\"),
        QStringLiteral("\\\\"), QStringLiteral("\\]"),  QStringLiteral("\\n"),
        QStringLiteral("n"),    QStringLiteral("\n"),   QStringLiteral("\r"),
        QStringLiteral("-->"),  QStringLiteral("%"),    QStringLiteral("7"),
        QStringLiteral("a"),    QStringLiteral("F"),    QString(QChar(0)),
        QString(QChar(0x0663)), QString(QChar(0xd83d)), QString(QChar(0xde00)),
        QString(QChar(0xff11)), QString(QChar(0xfffd)), QString(QChar(0x00e4)),
        QStringLiteral(" "),    QStringLiteral(":")};
    QString result;
    for (int i = dice.below(most); i > 0; --i)
        result += dice.oneOf(pieces);
    return result;
}

} // namespace

class TestMarkerLine : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void patternsAreThoseOfTheFormat();
    void fieldsComeInOrder();
    void makeIntReads_data();
    void makeIntReads();
    void sectionMarkers_data();
    void sectionMarkers();
    void fileMarkers_data();
    void fileMarkers();
    void zeroedLine_data();
    void zeroedLine();
    void matchersAgreeWithThePatterns();
};

void TestMarkerLine::patternsAreThoseOfTheFormat()
{
    const QString text = QStringLiteral("((?:[^\\]\\\\]|(?:\\\\\\\\)|(?:\\\\\\])|(?:\\\\n))*)");
    const QString number = QStringLiteral("([0-9]*)");
    const QString md5 = QStringLiteral("((?:)|(?:[a-f0-9]{32}))");
    QCOMPARE(strRegex, text);
    QCOMPARE(intRegex, number);
    QCOMPARE(md5Regex, md5);
    const auto field = [](const char* name, const QString& value) {
        return QStringLiteral("\\[") + QLatin1String(name) + QLatin1Char(':') + value +
               QStringLiteral("\\]");
    };
    QCOMPARE(sectionRegexStr, QStringLiteral("^%<--! \\$LORIX_SECTION ") + field("version", text) +
                                  field("creator", text) + field("title", text) +
                                  field("left", number) + field("size", number) +
                                  field("index", number) + field("md5section", md5) +
                                  field("previousmd5", md5) + field("previousmarker", number) +
                                  QStringLiteral("-->"));
    QCOMPARE(fileRegexStr,
             QStringLiteral("^%<--! \\$LORIX_EMBEDDEDFILE_BEGIN ") + field("filetype", text) +
                 field("filename", text) + field("desc", text) + field("comment", text) +
                 field("compression", text) + field("filesize", number) +
                 field("cfilesize", number) + field("blocksize", number) + field("offset", number) +
                 field("md5file", md5) + field("md5cfile", md5) + QStringLiteral("-->"));
}

void TestMarkerLine::fieldsComeInOrder()
{
    const QString hex = QString::fromLatin1(digest);
    const MarkerMatch one = matchSectionMarker(QString::fromLatin1(section()));
    QCOMPARE(one.length, section().size());
    QCOMPARE(one.fields.join(QLatin1Char('|')), QStringLiteral("1.0|c|t|1|2|3|") + hex +
                                                    QLatin1Char('|') + hex + QStringLiteral("|4"));
    const MarkerMatch other = matchFileMarker(QString::fromLatin1(file()));
    QCOMPARE(other.length, file().size());
    QCOMPARE(other.fields.join(QLatin1Char('|')),
             QStringLiteral("a|b|c|d|none|1|2|3|4|") + hex + QLatin1Char('|') + hex);
}

void TestMarkerLine::makeIntReads_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("value");
    QTest::newRow("empty") << QString() << -1;
    QTest::newRow("zero") << QStringLiteral("0") << 0;
    QTest::newRow("leading zeros") << QStringLiteral("00042") << 42;
    QTest::newRow("largest") << QStringLiteral("2147483647") << 2147483647;
    QTest::newRow("one more") << QStringLiteral("2147483648") << 0;
    QTest::newRow("32 bits") << QStringLiteral("4294967296") << 0;
    QTest::newRow("many digits") << QStringLiteral("99999999999999999999999") << 0;
    QTest::newRow("no number") << QStringLiteral("abc") << 0;
    QTest::newRow("negative") << QStringLiteral("-7") << -7;
}

void TestMarkerLine::makeIntReads()
{
    QFETCH(QString, text);
    QTEST(makeInt(text), "value");
}

void TestMarkerLine::sectionMarkers_data()
{
    QTest::addColumn<QByteArray>("line");
    QTest::addColumn<bool>("matches");
    const auto changed = [](const char* name, const QByteArray& from, const QByteArray& to,
                            bool matches) {
        QByteArray line = section();
        const qsizetype place = line.indexOf(from);
        line.replace(place, from.size(), to);
        QTest::newRow(name) << line << matches;
    };
    QTest::newRow("right") << section() << true;
    QTest::newRow("text behind") << section() + " more\r\n" << true;
    QTest::newRow("text in front") << " " + section() << false;
    QTest::newRow("line feed in front") << "\n" + section() << false;
    changed("two blanks", "SECTION ", "SECTION  ", false);
    changed("no blank", "SECTION ", "SECTION", false);
    changed("blank between brackets", "][creator", "] [creator", false);
    changed("lower case keyword", "LORIX_SECTION", "lorix_section", false);
    changed("empty text", "[title:t]", "[title:]", true);
    changed("escaped bracket", "[title:t]", "[title:a\\]b]", true);
    changed("plain bracket", "[title:t]", "[title:a]b]", false);
    changed("opening bracket", "[title:t]", "[title:a[b]", true);
    changed("escaped backslash", "[title:t]", "[title:\\\\]", true);
    changed("lone backslash", "[title:t]", "[title:a\\b]", false);
    changed("backslash at the end", "[title:t]", "[title:a\\]", false);
    changed("escaped line feed", "[title:t]", "[title:\\n]", true);
    changed("fields swapped", "[left:1][size:2]", "[size:2][left:1]", false);
    changed("field missing", "[index:3]", "", false);
    changed("field twice", "[index:3]", "[index:3][index:3]", false);
    changed("empty number", "[left:1]", "[left:]", true);
    changed("negative number", "[left:1]", "[left:-1]", false);
    changed("signed number", "[left:1]", "[left:+1]", false);
    changed("number with blank", "[left:1]", "[left: 1]", false);
    changed("hexadecimal number", "[left:1]", "[left:0x1]", false);
    changed("number of many digits", "[left:1]", "[left:" + QByteArray(400, '9') + "]", true);
    changed("empty digest", digest, "", true);
    changed("digest of 31 digits", digest, digest.left(31), false);
    changed("digest of 33 digits", digest, digest + "a", false);
    changed("upper-case digest", digest, digest.toUpper(), false);
    changed("one upper-case digit", digest, digest.left(31) + "A", false);
    changed("digest beyond f", digest, digest.left(31) + "g", false);
    changed("no arrow", "-->", "--", false);
    changed("blank before the arrow", "-->", " -->", false);
}

void TestMarkerLine::sectionMarkers()
{
    QFETCH(QByteArray, line);
    QFETCH(bool, matches);
    const QString text = QString::fromUtf8(line);
    QCOMPARE(matchSectionMarker(text).length >= 0, matches);
    QCOMPARE(describe(matchSectionMarker(text)), describe(matchWith(sectionRegexStr, text)));
    QCOMPARE(matchFileMarker(text).length, -1);
}

void TestMarkerLine::fileMarkers_data()
{
    QTest::addColumn<QByteArray>("line");
    QTest::addColumn<bool>("matches");
    QTest::newRow("right") << file() << true;
    QTest::newRow("text behind") << file() + "-->[md5cfile:]-->" << true;
    QTest::newRow("text in front") << "%" + file() << false;
    QTest::newRow("other compression") << file().replace("none", "any text, \\] too") << true;
    QTest::newRow("empty") << ContainerBuilder::fileMarker({}) << true;
    QTest::newRow("number with dot") << file().replace("[offset:4]", "[offset:4.0]") << false;
    QTest::newRow("short digest") << file().replace(digest, digest.mid(1)) << false;
    QTest::newRow("keyword alone") << QByteArray("%<--! $LORIX_EMBEDDEDFILE_BEGIN") << false;
}

void TestMarkerLine::fileMarkers()
{
    QFETCH(QByteArray, line);
    QFETCH(bool, matches);
    const QString text = QString::fromUtf8(line);
    QCOMPARE(matchFileMarker(text).length >= 0, matches);
    QCOMPARE(describe(matchFileMarker(text)), describe(matchWith(fileRegexStr, text)));
    QCOMPARE(matchSectionMarker(text).length, -1);
}

void TestMarkerLine::zeroedLine_data()
{
    QTest::addColumn<QByteArray>("line");
    QTest::addColumn<QString>("md5section");
    QTest::addColumn<QByteArray>("zeroed");
    const QByteArray zeros(32, '0');
    const QString hex = QString::fromLatin1(digest);
    const auto field = [](const QByteArray& value) { return "[md5section:" + value + "]"; };
    QTest::newRow("usual") << "%a" + field(digest) + "b\r\n" << hex << "a" + field(zeros) + "b\r\n";
    QTest::newRow("every occurrence")
        << field(digest) + field(digest) << hex << field(zeros).mid(1) + field(zeros);
    QTest::newRow("empty digest") << "%" + field("") + "\n" << QString() << field(zeros) + "\n";
    QTest::newRow("other digest") << "%" + field(QByteArray(32, 'b')) << hex
                                  << field(QByteArray(32, 'b'));
    QTest::newRow("other field") << "%[previousmd5:" + digest + "]" << hex
                                 << "[previousmd5:" + digest + "]";
    QTest::newRow("empty line") << QByteArray() << hex << QByteArray();
    QTest::newRow("first byte goes, whatever it is")
        << QByteArray("\xff\n") << hex << QByteArray("\n");
}

void TestMarkerLine::zeroedLine()
{
    QFETCH(QByteArray, line);
    QFETCH(QString, md5section);
    QTEST(zeroedMarkerLine(line, md5section), "zeroed");
}

void TestMarkerLine::matchersAgreeWithThePatterns()
{
    const QList<QString> lines = {QString::fromLatin1(section()), QString::fromLatin1(file())};
    int matched = 0;
    for (int run = 0; run < randomRuns(6000); ++run) {
        const quint32 seed = randomSeed(1) + static_cast<quint32>(run);
        Dice dice(seed);
        QString line = dice.oneOf(lines);
        for (int i = dice.between(1, 3); i > 0; --i) {
            const int place = dice.below(static_cast<int>(line.size()));
            // Behind a colon stands a value, where odd text may be allowed.
            const qsizetype colon = line.indexOf(QLatin1Char(':'), place);
            if (colon >= 0 && dice.once(2))
                line.insert(colon + 1, oddText(dice, 5));
            else
                line.replace(place, dice.below(3), oddText(dice, 3));
        }
        const QString actual = describe(matchSectionMarker(line)) + describe(matchFileMarker(line));
        const QString expected =
            describe(matchWith(sectionRegexStr, line)) + describe(matchWith(fileRegexStr, line));
        QVERIFY2(actual == expected, qPrintable(QStringLiteral("seed %1: ").arg(seed) + actual +
                                                QStringLiteral(" for ") + line));
        matched += actual != QStringLiteral("-1: -1: ");
    }
    QVERIFY(matched > 300);
}

QTEST_GUILESS_MAIN(TestMarkerLine)
#include "tst_markerline.moc"
