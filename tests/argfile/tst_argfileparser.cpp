// SPDX-License-Identifier: BSD-3-Clause
#include "referenceargfile.h"

#include <lorix/argfile/argfileparser.h>

#include <QRandomGenerator>
#include <QTest>

#include <iterator>
#include <type_traits>

using namespace lorix;

namespace {

using Tokens = QList<ArgfileToken>;
using Variables = QHash<QString, QString>;

/// A token as text, so that a failing comparison shows what differs.
QString shown(const QString& str, bool separator, int position, const QString& originalText)
{
    return QStringLiteral("%1@%2[%3][%4]")
        .arg(separator ? QStringLiteral("sep") : QStringLiteral("tok"))
        .arg(position)
        .arg(str, originalText);
}

QStringList shown(const Tokens& tokens)
{
    QStringList result;
    for (const ArgfileToken& token : tokens)
        result << shown(token.str(), token.isSeparator(), token.position(), token.originalText());
    return result;
}

QStringList shown(const reference::Tokens& tokens)
{
    QStringList result;
    for (const reference::Token& token : tokens)
        result << shown(token.str, token.isSeparator, token.position, token.originalText);
    return result;
}

Variables someVariables()
{
    return {{QStringLiteral("name"), QStringLiteral("v al")},
            {QStringLiteral("a"), QStringLiteral("\\'\"# \n$a$$${a}`{}")},
            {QStringLiteral("b"), QString()},
            {QStringLiteral("1"), QStringLiteral("'")},
            {QStringLiteral("Z9"), QString(QChar(0)) + QChar(0xd800) + QChar(0x00e4)},
            {QString(), QStringLiteral("nameless")},
            {QStringLiteral("-"), QStringLiteral("dash")}};
}

int randomRuns(int runs)
{
    const int factor = qEnvironmentVariableIntValue("LORIX_RANDOM_RUNS");
    return factor > 0 ? runs * factor : runs;
}

QString randomText(QRandomGenerator& random, int maximalLength)
{
    static const char16_t alphabet[] = {
        u'\'',  u'\'',  u'"',   u'"',   u'\\',  u'\\',  u'$',   u'$',   u'{',   u'}',
        u'#',   u' ',   u' ',   u'\t',  u'\n',  u'\r',  u'a',   u'b',   u'Z',   u'9',
        u'1',   u'-',   u'_',   u'\0',  u'`',   u'\v',  u'\f',  0x00a0, 0x00e4, 0x0660,
        0x2028, 0xd83d, 0xde00, 0xd800, 0xdfff, 0xfffe, 0xffff, 0x0391, u'.',   u'*'};
    const int length = random.bounded(maximalLength + 1);
    const int letters = 2 + random.bounded(static_cast<int>(std::size(alphabet)) - 1);
    QString text;
    for (int i = 0; i < length; ++i)
        text += QChar(alphabet[random.bounded(letters)]);
    return text;
}

QString printable(const QString& text)
{
    QString result;
    for (const QChar c : text) {
        if (c.unicode() > 0x20 && c.unicode() < 0x7f)
            result += c;
        else
            result += QStringLiteral("<%1>").arg(c.unicode(), 0, 16);
    }
    return result;
}

/// All stages for one text against the reference; false after a report.
bool agreesWithReference(const QString& text, const Variables* variables)
{
    const auto fails = [&text](const char* stage) {
        qWarning("%s differs for %s", stage, qPrintable(printable(text)));
        return false;
    };
    const Tokens split = ArgfileParser::splitIntoTokens(text);
    const reference::Tokens expectedSplit = reference::splitIntoTokens(text);
    if (shown(split) != shown(expectedSplit))
        return fails("splitIntoTokens");
    const Tokens thin = ArgfileParser::removeDoubleSeparators(split);
    const reference::Tokens expectedThin = reference::removeDoubleSeparators(expectedSplit);
    if (shown(thin) != shown(expectedThin))
        return fails("removeDoubleSeparators");
    const Tokens handled = ArgfileParser::handleVariables(thin, variables);
    const reference::Tokens expectedHandled = reference::handleVariables(expectedThin, variables);
    if (shown(handled) != shown(expectedHandled))
        return fails("handleVariables");
    const Tokens unescaped = ArgfileParser::unescapeTokens(handled);
    if (shown(unescaped) != shown(reference::unescapeTokens(expectedHandled)))
        return fails("unescapeTokens");
    if (shown(ArgfileParser::getHighlighterList(text)) !=
        shown(reference::unescapeTokens(expectedSplit)))
        return fails("getHighlighterList");
    if (ArgfileParser::parseArgfile(text, variables) != reference::parseArgfile(text, variables))
        return fails("parseArgfile");
    if (ArgfileParser::findVariablesInToken(text) != reference::findVariablesInToken(text))
        return fails("findVariablesInToken");
    if (ArgfileParser::unescapeBackslashed(text) != reference::unescapeBackslashed(text))
        return fails("unescapeBackslashed");
    return true;
}

} // namespace

class TestArgfileParser : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void tokenKeepsWhatItIsMadeOf();
    void separatorTokenHasNoText();
    void tokenFromCharactersIsAscii();
    void textIsCutIntoTokens_data();
    void textIsCutIntoTokens();
    void uncuttableTextGivesNoTokenAtAll_data();
    void uncuttableTextGivesNoTokenAtAll();
    void doubleSeparatorsAreRemoved();
    void variablesAreFound_data();
    void variablesAreFound();
    void variablesOfQuotedTextAreFoundInside();
    void variableNamesAreTakenFromPieces_data();
    void variableNamesAreTakenFromPieces();
    void piecesAreReplaced();
    void variablesAreHandledByKindOfToken();
    void everythingIsEscaped();
    void textIsUnescaped_data();
    void textIsUnescaped();
    void unescapingKeepsPlaces();
    void tokensAreJoined();
    void stringsOfTokensAreTaken();
    void argumentsAreParsed_data();
    void argumentsAreParsed();
    void nullVariablesDifferFromNone();
    void highlighterKeepsEveryPlace();
    void allShortTextsAgreeWithTheRegularExpressions();
    void randomTextsAgreeWithTheRegularExpressions();
    void originalTextsPutTogetherAreTheText();
    void longTextsOfOneKindAreParsed_data();
    void longTextsOfOneKindAreParsed();
};

void TestArgfileParser::tokenKeepsWhatItIsMadeOf()
{
    const ArgfileToken token(QStringLiteral("ab"), 7, QStringLiteral("'ab'"));
    QCOMPARE(token.str(), QStringLiteral("ab"));
    QVERIFY(!token.isSeparator());
    QCOMPARE(token.position(), 7);
    QCOMPARE(token.originalText(), QStringLiteral("'ab'"));
    QCOMPARE(token.originalLength(), 4);
    ArgfileToken copy(TokenSeparator, 1, QString());
    copy = token;
    QCOMPARE(shown({copy}), shown({token}));
}

void TestArgfileParser::separatorTokenHasNoText()
{
    QCOMPARE(static_cast<int>(TokenSeparator), 0);
    QVERIFY(std::is_enum_v<decltype(TokenSeparator)>);
    const ArgfileToken token(TokenSeparator, 3, QStringLiteral("  "));
    QCOMPARE(token.str(), QString());
    QVERIFY(token.isSeparator());
    QCOMPARE(token.position(), 3);
    QCOMPARE(token.originalText(), QStringLiteral("  "));
    QCOMPARE(token.originalLength(), 2);
}

void TestArgfileParser::tokenFromCharactersIsAscii()
{
    const ArgfileToken token("word", -1, QString());
    QCOMPARE(token.str(), QStringLiteral("word"));
    QVERIFY(!token.isSeparator());
    QCOMPARE(token.position(), -1);
    QCOMPARE(token.originalLength(), 0);
    QCOMPARE(ArgfileToken(static_cast<const char*>(nullptr), 0, QString()).str(), QString());
}

void TestArgfileParser::textIsCutIntoTokens_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QStringList>("tokens");

    const auto row = [](const char* name, const char* text, const QStringList& tokens) {
        QTest::newRow(name) << QString::fromUtf8(text) << tokens;
    };
    row("nothing", "", {});
    row("word", "ab", {"tok@0[ab][ab]"});
    row("blanks", " \t\r\n", {"sep@0[][ \t\r\n]"});
    row("words", "a  b", {"tok@0[a][a]", "sep@1[][  ]", "tok@3[b][b]"});
    row("single-quoted", "'a\\' b", {"tok@0['a\\']['a\\']", "sep@4[][ ]", "tok@5[b][b]"});
    row("double-quoted", "\"a\\\"b\"", {"tok@0[\"a\\\"b\"][\"a\\\"b\"]"});
    row("quotes of the other kind", "'\"' \"'\"",
        {"tok@0['\"']['\"']", "sep@3[][ ]", "tok@4[\"'\"][\"'\"]"});
    row("empty quotes", "''\"\"", {"tok@0['']['']", "tok@2[\"\"][\"\"]"});
    row("adjacent pieces", "a'b'\"c\"d",
        {"tok@0[a][a]", "tok@1['b']['b']", "tok@4[\"c\"][\"c\"]", "tok@7[d][d]"});
    row("quoted line break", "'a\nb'\"\r\n\\\n\"",
        {"tok@0['a\nb']['a\nb']", "tok@5[\"\r\n\\\n\"][\"\r\n\\\n\"]"});
    row("comment takes the line feed", "#a\nb", {"sep@0[][#a\n]", "tok@3[b][b]"});
    row("comment takes CR of CR LF", "#a\r\nb", {"sep@0[][#a\r]", "sep@3[][\n]", "tok@4[b][b]"});
    row("comment takes LF of LF CR", "#\n\rb", {"sep@0[][#\n]", "sep@2[][\r]", "tok@3[b][b]"});
    row("comment at the end", "#a", {"sep@0[][#a]"});
    row("comment alone", "#", {"sep@0[][#]"});
    row("comment holds quotes", "#'\"\\\na", {"sep@0[][#'\"\\\n]", "tok@5[a][a]"});
    row("comment in a word", "a#b", {"tok@0[a][a]", "sep@1[][#b]"});
    row("comment after a quote", "'a'#b", {"tok@0['a']['a']", "sep@3[][#b]"});
    row("escapes in a word", "\\'\\\"\\#\\ \\\n\\\r\\\tx",
        {"tok@0[\\'\\\"\\#\\ \\\n\\\r\\\tx][\\'\\\"\\#\\ \\\n\\\r\\\tx]"});
    row("escaped backslash before a quote", "\\\\'a'", {"tok@0[\\\\][\\\\]", "tok@2['a']['a']"});
    row("variables are words", "$a${b}", {"tok@0[$a${b}][$a${b}]"});
    row("other blanks belong to words", "a\vb\fc\u00a0d",
        {QString::fromUtf8("tok@0[a\vb\fc\u00a0d][a\vb\fc\u00a0d]")});
}

void TestArgfileParser::textIsCutIntoTokens()
{
    QFETCH(QString, text);
    QFETCH(QStringList, tokens);
    QCOMPARE(shown(ArgfileParser::splitIntoTokens(text)), tokens);
    QCOMPARE(shown(reference::splitIntoTokens(text)), tokens);
}

void TestArgfileParser::uncuttableTextGivesNoTokenAtAll_data()
{
    QTest::addColumn<QString>("text");

    QTest::newRow("single quote") << "a b 'c";
    QTest::newRow("double quote") << "a b \"c";
    QTest::newRow("escaped closing quote") << "a \"b\\\"";
    QTest::newRow("quote at the end") << "a '";
    QTest::newRow("backslash at the end") << "a b\\";
    QTest::newRow("backslash alone") << "\\";
    QTest::newRow("backslash at the end of a quoted text") << "a \"b\\";
    QTest::newRow("one quote too many") << "it's";
}

void TestArgfileParser::uncuttableTextGivesNoTokenAtAll()
{
    QFETCH(QString, text);
    const Variables variables = someVariables();
    QCOMPARE(shown(ArgfileParser::splitIntoTokens(text)), QStringList());
    QCOMPARE(shown(ArgfileParser::getHighlighterList(text)), QStringList());
    QCOMPARE(ArgfileParser::parseArgfile(text, nullptr), QStringList());
    QCOMPARE(ArgfileParser::parseArgfile(text, &variables), QStringList());
}

void TestArgfileParser::doubleSeparatorsAreRemoved()
{
    const auto thin = [](const QString& text) {
        return shown(ArgfileParser::removeDoubleSeparators(ArgfileParser::splitIntoTokens(text)));
    };
    QCOMPARE(thin(QString()), QStringList());
    QCOMPARE(thin(QStringLiteral(" ")), QStringList());
    QCOMPARE(thin(QStringLiteral(" #a\n #b")), QStringList());
    QCOMPARE(thin(QStringLiteral(" #\n a #b\n #c\n b #d")),
             QStringList({QStringLiteral("tok@4[a][a]"), QStringLiteral("sep@5[][ ]"),
                          QStringLiteral("tok@14[b][b]")}));
    QCOMPARE(thin(QStringLiteral("a'b'")),
             QStringList({QStringLiteral("tok@0[a][a]"), QStringLiteral("tok@1['b']['b']")}));
}

void TestArgfileParser::variablesAreFound_data()
{
    QTest::addColumn<QString>("token");
    QTest::addColumn<QStringList>("pieces");

    const auto row = [](const char* token, const QStringList& pieces) {
        QTest::newRow(token) << QString::fromUtf8(token) << pieces;
    };
    row("", {});
    row("a", {"a"});
    row("$a", {"$a"});
    row("${a}", {"${a}"});
    row("$a$b", {"$a", "$b"});
    row("x$a y", {"x", "$a", " y"});
    row("$aZ09_b", {"$aZ09", "_b"});
    row("${a}b", {"${a}", "b"});
    row("\\$a", {"\\$a"});
    row("\\\\$a", {"\\\\", "$a"});
    row("\\\\\\$a", {"\\\\\\$a"});
    row("\\$a$b", {"\\$a", "$b"});
    row("x\\$a\\\\${b}c", {"x\\$a\\\\", "${b}", "c"});
    row("\\$$a", {"\\$", "$a"});
    row("$", {"$"});
    row("$$", {"$$"});
    row("$$a", {"$", "$a"});
    row("$a$", {"$a", "$"});
    row("$-", {"$-"});
    row("$ a", {"$ a"});
    row("${}", {"${}"});
    row("${a", {"${a"});
    row("${a_b}", {"${a_b}"});
    row("${a$b}", {"${a", "$b", "}"});
    row("$\\a", {"$\\a"});
    row("$\u00e4", {QString::fromUtf8("$\u00e4")});
    row("$\u0660", {QString::fromUtf8("$\u0660")});
    row("\\\\\\\\", {"\\\\\\\\"});
}

void TestArgfileParser::variablesAreFound()
{
    QFETCH(QString, token);
    QFETCH(QStringList, pieces);
    QCOMPARE(ArgfileParser::findVariablesInToken(token), pieces);
    QCOMPARE(ArgfileParser::findVariablesInToken(ArgfileToken(token, 0, token)), pieces);
    QCOMPARE(ArgfileParser::findVariablesBackslashed(token), pieces);
    QCOMPARE(reference::findVariablesInToken(token), pieces);
}

void TestArgfileParser::variablesOfQuotedTextAreFoundInside()
{
    const auto found = [](const char* token) {
        return ArgfileParser::findVariablesDoubleQuoted(QString::fromUtf8(token));
    };
    QCOMPARE(found("\"x $a\""), QStringList({QStringLiteral("x "), QStringLiteral("$a")}));
    QCOMPARE(found("\"\""), QStringList());
    QCOMPARE(found("\""), QStringList());
    QCOMPARE(found(""), QStringList());
    QCOMPARE(ArgfileParser::findVariablesDoubleQuoted(ArgfileToken("\"$a\"", 0, QString())),
             QStringList({QStringLiteral("$a")}));
}

void TestArgfileParser::variableNamesAreTakenFromPieces_data()
{
    QTest::addColumn<QString>("piece");
    QTest::addColumn<QString>("name");

    QTest::newRow("nothing") << ""
                             << "";
    QTest::newRow("literal") << "abc"
                             << "";
    QTest::newRow("bare") << "$abc"
                          << "abc";
    QTest::newRow("braced") << "${abc}"
                            << "abc";
    QTest::newRow("dollar") << "$"
                            << "";
    QTest::newRow("open brace") << "${"
                                << "{";
    QTest::newRow("empty braces") << "${}"
                                  << "";
    QTest::newRow("unclosed brace") << "${abc"
                                    << "{abc";
    QTest::newRow("closed only") << "$abc}"
                                 << "abc}";
    QTest::newRow("dollar inside") << "a$b"
                                   << "";
    QTest::newRow("several braces") << "${a}${b}"
                                    << "a}${b";
}

void TestArgfileParser::variableNamesAreTakenFromPieces()
{
    QFETCH(QString, piece);
    QFETCH(QString, name);
    QCOMPARE(ArgfileParser::getVariableName(piece), name);
}

void TestArgfileParser::piecesAreReplaced()
{
    const Variables variables = someVariables();
    const Variables none;
    const QStringList pieces({QStringLiteral("x"), QStringLiteral("$name"), QStringLiteral("$"),
                              QStringLiteral("${1}"), QStringLiteral("$other"),
                              QStringLiteral("$-")});
    const auto replaced = [&pieces](const Variables* given) {
        return shown({ArgfileParser::replaceVariables(pieces, given)});
    };
    QCOMPARE(replaced(&variables), QStringList({QStringLiteral("tok@-1[x\\v\\ \\a\\l$\\'$-][]")}));
    QCOMPARE(replaced(&none), QStringList({QStringLiteral("tok@-1[x$$-][]")}));
    QCOMPARE(replaced(nullptr), QStringList({QStringLiteral("tok@-1[x$name$${1}$other$-][]")}));
    QCOMPARE(shown({ArgfileParser::replaceVariables({}, &variables)}),
             QStringList({QStringLiteral("tok@-1[][]")}));
}

void TestArgfileParser::variablesAreHandledByKindOfToken()
{
    const Variables variables = someVariables();
    const Tokens tokens = ArgfileParser::splitIntoTokens(QStringLiteral("$name '$1' #$1\n\"$1\""));
    QCOMPARE(shown(ArgfileParser::handleVariables(tokens, &variables)),
             QStringList({QStringLiteral("tok@-1[\\v\\ \\a\\l][]"), QStringLiteral("sep@5[][ ]"),
                          QStringLiteral("tok@-1['$1'][]"), QStringLiteral("sep@10[][ ]"),
                          QStringLiteral("sep@11[][#$1\n]"), QStringLiteral("tok@-1[\"\\'\"][]")}));
}

void TestArgfileParser::everythingIsEscaped()
{
    QCOMPARE(ArgfileParser::escapeEverything(QString()), QString());
    QCOMPARE(ArgfileParser::escapeEverything(QStringLiteral("a\\ $")),
             QStringLiteral("\\a\\\\\\ \\$"));
    const QString odd = QString(QChar(0)) + QChar(0xd83d) + QChar(0xde00);
    QCOMPARE(ArgfileParser::escapeEverything(odd).size(), 6);
    QCOMPARE(ArgfileParser::unescapeBackslashed(ArgfileParser::escapeEverything(odd)), odd);
}

void TestArgfileParser::textIsUnescaped_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("backslashed");
    QTest::addColumn<QString>("doubleQuoted");
    QTest::addColumn<QString>("singleQuoted");

    const auto row = [](const char* text, const char* backslashed, const char* doubleQuoted,
                        const char* singleQuoted) {
        QTest::newRow(text) << text << backslashed << doubleQuoted << singleQuoted;
    };
    row("", "", "", "");
    row("x", "x", "", "");
    row("xx", "xx", "", "");
    row("xabcx", "xabcx", "abc", "abc");
    row("x\\nx", "xnx", "n", "\\n");
    row("x\\\\x", "x\\x", "\\", "\\\\");
    row("x\\\\\\x", "x\\x", "\\\\", "\\\\\\");
    row("x\\$x", "x$$x", "$$", "\\$$");
    row("x\\\\$x", "x\\$x", "\\$", "\\\\$$");
    row("x$$x", "x$$x", "$$", "$$$$");
    row("x\\", "x\\", "", "");
    row("\\", "\\", "", "");
    row("\\\\", "\\", "", "");
    row("\\$", "$$", "", "");
    row("\\'\\\"\\#\\ ", "'\"# ", "'\"#\\", "'\\\"\\#\\");
}

void TestArgfileParser::textIsUnescaped()
{
    QFETCH(QString, text);
    QTEST(ArgfileParser::unescapeBackslashed(text), "backslashed");
    QTEST(ArgfileParser::unescapeDoubleQuoted(text), "doubleQuoted");
    QTEST(ArgfileParser::unescapeSingleQuoted(text), "singleQuoted");
}

void TestArgfileParser::unescapingKeepsPlaces()
{
    const Tokens tokens({ArgfileToken("\"\\a\"", 5, QStringLiteral("one")),
                         ArgfileToken("'\\$'", 6, QStringLiteral("two")),
                         ArgfileToken(TokenSeparator, 7, QStringLiteral("three")),
                         ArgfileToken("\\a'", -1, QString()), ArgfileToken("", 8, QString())});
    QCOMPARE(shown(ArgfileParser::unescapeTokens(tokens)),
             QStringList({QStringLiteral("tok@5[a][one]"), QStringLiteral("tok@6[\\$$][two]"),
                          QStringLiteral("sep@7[][three]"), QStringLiteral("tok@-1[a'][]"),
                          QStringLiteral("tok@8[][]")}));
}

void TestArgfileParser::tokensAreJoined()
{
    const ArgfileToken a("a", 1, QStringLiteral("A"));
    const ArgfileToken b("b", 2, QStringLiteral("B"));
    const ArgfileToken empty("", 3, QStringLiteral("''"));
    const ArgfileToken separator(TokenSeparator, 4, QStringLiteral(" "));
    const auto joined = [](const Tokens& tokens) {
        return ArgfileParser::tokensToStrings(ArgfileParser::joinTokens(tokens));
    };
    const QString nothing = QStringLiteral("");
    const QString ab = QStringLiteral("ab");
    QCOMPARE(joined({}), QStringList());
    QCOMPARE(joined({a, b}), QStringList({ab}));
    QCOMPARE(joined({a, b, separator}), QStringList({ab}));
    QCOMPARE(joined({a, b, separator, empty}), QStringList({ab, nothing}));
    QCOMPARE(joined({empty, separator, a, empty, b}), QStringList({nothing, ab}));
    QCOMPARE(joined({separator}), QStringList({nothing}));
    QCOMPARE(joined({separator, separator, a}),
             QStringList({nothing, nothing, QStringLiteral("a")}));
    QCOMPARE(shown(ArgfileParser::joinTokens({a})), QStringList({QStringLiteral("tok@-1[a][]")}));
}

void TestArgfileParser::stringsOfTokensAreTaken()
{
    QCOMPARE(ArgfileParser::tokensToStrings({}), QStringList());
    QCOMPARE(ArgfileParser::tokensToStrings({ArgfileToken("a", 1, QStringLiteral("A")),
                                             ArgfileToken(TokenSeparator, 2, QStringLiteral(" "))}),
             QStringList({QStringLiteral("a"), QStringLiteral("")}));
}

void TestArgfileParser::argumentsAreParsed_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QStringList>("arguments");

    const auto row = [](const char* text, const QStringList& arguments) {
        QTest::newRow(text) << QString::fromUtf8(text) << arguments;
    };
    row("a  b", {"a", "b"});
    row(" a  b ", {"a", "b"});
    row("a'b c'd", {"ab cd"});
    row("'' x", {"", "x"});
    row("\"\" x", {"", "x"});
    row("''", {""});
    row("x # comment\ny", {"x", "y"});
    row("a#b", {"a"});
    row("a#b\nc", {"a", "c"});
    row("a\\#b", {"a#b"});
    row("a\\\nb", {"a\nb"});
    row("$name", {"v al"});
    row("${name}x", {"v alx"});
    row("$namex", {""});
    row("\\$name", {"$$name"});
    row("\\\\$name", {"\\v al"});
    row("'$name'", {"$$name"});
    row("\"$name\"", {"v al"});
    row("\"\\$name\"", {"$$name"});
    row("$missing", {""});
    row("x $missing y", {"x", "", "y"});
    row("\"$missing\"", {""});
    row("x$missing", {"x"});
    row("$a", {"\\'\"# \n$$a$$$$$${a}`{}"});
    row("\"$a\"", {"\\'\"# \n$$a$$$$$${a}`{}"});
    row("$", {"$"});
    row("$ x", {"$", "x"});
    row("$-", {"$-"});
    row("$name$", {"v al$"});
    row("$$name", {"$v al"});
    row("$'name'", {"$name"});
    row("$\"name\"", {"$name"});
    row("\"$\"name", {"$name"});
    row("${na'me}'", {"${name}"});
    row("a\"b\"'c'$1", {"abc'"});
}

void TestArgfileParser::argumentsAreParsed()
{
    QFETCH(QString, text);
    QFETCH(QStringList, arguments);
    const Variables variables = someVariables();
    QCOMPARE(ArgfileParser::parseArgfile(text, &variables), arguments);
    QCOMPARE(reference::parseArgfile(text, &variables), arguments);
}

void TestArgfileParser::nullVariablesDifferFromNone()
{
    const Variables none;
    const QString text = QStringLiteral("$name \"x${name}\" '$name' \\$name");
    const QString doubled = QStringLiteral("$$name");
    QCOMPARE(ArgfileParser::parseArgfile(text, nullptr),
             QStringList({QStringLiteral("$name"), QStringLiteral("x${name}"), doubled, doubled}));
    QCOMPARE(ArgfileParser::parseArgfile(text, &none),
             QStringList({QStringLiteral(""), QStringLiteral("x"), doubled, doubled}));
    const ArgfileParser parser;
    QCOMPARE(parser.parseArgfile(text), ArgfileParser::parseArgfile(text, nullptr));
}

void TestArgfileParser::highlighterKeepsEveryPlace()
{
    QCOMPARE(shown(ArgfileParser::getHighlighterList(QStringLiteral("a 'b'"))),
             QStringList({QStringLiteral("tok@0[a][a]"), QStringLiteral("sep@1[][ ]"),
                          QStringLiteral("tok@2[b]['b']")}));
    QCOMPARE(ArgfileParser::getHighlighterList(QStringLiteral("a 'b'")).last().originalLength(), 3);
    QCOMPARE(shown(ArgfileParser::getHighlighterList(QStringLiteral(" #c\n $a\\$"))),
             QStringList({QStringLiteral("sep@0[][ ]"), QStringLiteral("sep@1[][#c\n]"),
                          QStringLiteral("sep@4[][ ]"), QStringLiteral("tok@5[$a$$][$a\\$]")}));
}

void TestArgfileParser::allShortTextsAgreeWithTheRegularExpressions()
{
    const QString alphabet = QStringLiteral("'\"\\$#{} \r\na") + QChar(0);
    const Variables variables = someVariables();
    QStringList texts({QString()});
    for (int length = 0; length <= 4; ++length) {
        QStringList longer;
        for (const QString& text : qAsConst(texts)) {
            QVERIFY(agreesWithReference(text, &variables));
            for (const QChar c : alphabet)
                longer.append(text + c);
        }
        texts = longer;
    }
}

void TestArgfileParser::randomTextsAgreeWithTheRegularExpressions()
{
    QRandomGenerator random(20061);
    const Variables variables = someVariables();
    const int runs = randomRuns(15000);
    for (int run = 0; run < runs; ++run) {
        const QString text = randomText(random, run % 1000 == 0 ? 3000 : run % 20 == 0 ? 200 : 24);
        QVERIFY(agreesWithReference(text, random.bounded(4) == 0 ? nullptr : &variables));
    }
}

void TestArgfileParser::originalTextsPutTogetherAreTheText()
{
    QRandomGenerator random(20062);
    int cut = 0;
    for (int run = 0; run < 20000; ++run) {
        const QString text = randomText(random, 30);
        QString together;
        const Tokens tokens = ArgfileParser::getHighlighterList(text);
        for (const ArgfileToken& token : tokens) {
            QCOMPARE(static_cast<qsizetype>(token.position()), together.size());
            together += token.originalText();
        }
        if (!tokens.isEmpty()) {
            QCOMPARE(together, text);
            ++cut;
        }
    }
    QVERIFY(cut > 2000);
}

void TestArgfileParser::longTextsOfOneKindAreParsed_data()
{
    QTest::addColumn<QString>("unit");
    QTest::addColumn<int>("arguments");

    QTest::newRow("words") << "word " << 200000;
    QTest::newRow("letters") << "a" << 1;
    QTest::newRow("quoted pieces") << "'a'\"b\"" << 1;
    QTest::newRow("escapes") << "\\\\" << 1;
    QTest::newRow("dollar signs") << "$" << 1;
    QTest::newRow("variables") << "$1" << 1;
    QTest::newRow("open braces") << "${a" << 1;
    QTest::newRow("comments") << "#a\n" << 0;
    QTest::newRow("blanks") << " " << 0;
    QTest::newRow("escaped dollar signs") << "\\$a" << 1;
    QTest::newRow("quotes") << "''\"" << 0;
    QTest::newRow("quotes and blanks") << "'' " << 200000;
}

void TestArgfileParser::longTextsOfOneKindAreParsed()
{
    QFETCH(QString, unit);
    QFETCH(int, arguments);
    const Variables variables = someVariables();
    // An odd count of "''\"" leaves the last quote open.
    const QString text = unit.repeated(200000) + (arguments == 0 ? unit : QString());
    QCOMPARE(ArgfileParser::parseArgfile(text, &variables).size(), arguments);
    QCOMPARE(ArgfileParser::getHighlighterList(text).isEmpty(),
             unit.startsWith(QLatin1String("''\"")));
}

QTEST_GUILESS_MAIN(TestArgfileParser)
#include "tst_argfileparser.moc"
