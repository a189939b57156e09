// SPDX-License-Identifier: BSD-3-Clause
#include "clirunner.h"

#include <apps/lorix/argfilecheck.h>
#include <lorix/bounds.h>

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRandomGenerator>
#include <QTemporaryDir>
#include <QTest>

using namespace lorix;
using namespace lorix::cli;

namespace {

QStringList shown(const QList<Complaint>& complaints)
{
    QStringList result;
    for (const Complaint& complaint : complaints) {
        result << QStringLiteral("%1:%2@%3 %4 %5: %6")
                      .arg(complaint.line)
                      .arg(complaint.column)
                      .arg(complaint.offset)
                      .arg(complaint.severity, complaint.code, complaint.message);
    }
    return result;
}

QJsonObject object(const QByteArray& line)
{
    return QJsonDocument::fromJson(line).object();
}

} // namespace

class TestArgsCommand : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void complaintsHaveTheirPlaces_data();
    void complaintsHaveTheirPlaces();
    void dollarSignsAreShownAsTheyAreMeant();
    void everyTextGetsAnAnswer();
    void invocationIsPrintedAsTable();
    void invocationIsPrintedAsJson();
    void complaintsTakeThePlaceOfTheTable();
    void warningsLeaveTheAnswerYes();
    void variablesComeFromEnvironmentAndDefinitions();
    void badDefinitionsAreRefused();
    void unreadableFilesAreNamed();
    void hugeFilesAreRefused();
    void controlCharactersAreEscaped();
    void worstOfSeveralFilesCounts();

private:
    QString file(const QByteArray& content);

    QTemporaryDir m_dir;
    int m_files = 0;
};

QString TestArgsCommand::file(const QByteArray& content)
{
    QFile file(m_dir.filePath(QStringLiteral("%1.args").arg(m_files++)));
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
        qFatal("cannot write %s", qPrintable(file.fileName()));
    return file.fileName();
}

void TestArgsCommand::complaintsHaveTheirPlaces_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QStringList>("complaints");

    const auto row = [](const char* name, const char* text, const QStringList& complaints) {
        QTest::newRow(name) << QString::fromUtf8(text) << complaints;
    };
    row("nothing", "", {});
    row("comment alone", "# x '", {});
    row("fine", "-q -s title x -i a -f no-embed -u k v", {});
    row("unknown option", "-q\n  --bogus -v",
        {"2:3@5 error argfile.option.unknown: unknown option found: --bogus"});
    row("quoted unknown option", "-q\r\n'a'\"b\"c d",
        {"2:1@4 error argfile.option.unknown: unknown option found: abc"});
    row("missing parameters", "-q # x\n-s title",
        {"2:1@7 error argfile.parameters.missing: not enough parameters for option: -s"});
    row("open single quote", "-q\n-s title 'x\n",
        {"2:10@12 error argfile.quote.open: the single quote opened here is never closed"});
    row("open single quote behind a double one", "\"'\" it's \"x\"",
        {"1:7@6 error argfile.quote.open: the single quote opened here is never closed"});
    row("open double quote", "a\r\"it's",
        {"2:1@2 error argfile.quote.open: the double quote opened here is never closed"});
    row("open double quote with escape", "'' \"x\\\"",
        {"1:4@3 error argfile.quote.open: the double quote opened here is never closed"});
    row("open double quote with backslash", "\"x\\",
        {"1:1@0 error argfile.quote.open: the double quote opened here is never closed"});
    row("backslash at the end", "a\nb\\",
        {"2:2@3 error argfile.backslash.last: a backslash ends the text"});
    row("backslash alone", "\\", {"1:1@0 error argfile.backslash.last: a backslash ends the text"});
    row("names and flags", "-i a -f bogus\n-a what x -s what x\n\n-d what x -q",
        {"1:9@8 error argfile.name.unknown: \"bogus\" is no valid parameter for option -f",
         "2:4@17 error argfile.name.unknown: first parameter (what) of option -a is invalid",
         "2:14@27 error argfile.name.unknown: first parameter (what) of option -s is invalid",
         "4:4@38 error argfile.name.unknown: first parameter (what) of option -d is invalid"});
    row("options for the tool", "--sync-cwd -c x -q",
        {"1:1@0 warning argfile.option.unread: invalid option (--sync-cwd) found",
         "1:12@11 warning argfile.option.unread: invalid option (-c) found",
         "1:15@14 warning argfile.option.unread: invalid option (x) found"});
    row("parameter of -c is an option", "-c -q -s what x",
        {"1:1@0 warning argfile.option.unread: invalid option (-c) found",
         "1:10@9 error argfile.name.unknown: first parameter (what) of option -s is invalid"});
    row("parameter of -c swallows options", "-c -s -q",
        {"1:1@0 warning argfile.option.unread: invalid option (-c) found"});
    row("early file option", "-f bogus -i a -u k v",
        {"1:1@0 warning argfile.option.early: option -f stands before the first file and is "
         "ignored"});
    row("columns count characters", "'\xf0\x9f\x98\x80\xc3\xa4' x",
        {"1:1@0 error argfile.option.unknown: unknown option found: \xf0\x9f\x98\x80\xc3\xa4"});
    row("columns count characters, second", "-O '\xf0\x9f\x98\x80\xc3\xa4' x",
        {"1:9@9 error argfile.option.unknown: unknown option found: x"});
    row("all kinds of line ends", "-q\n\n-q\r\r-q\r\n\r\n-q\n\rx",
        {"9:1@18 error argfile.option.unknown: unknown option found: x"});
}

void TestArgsCommand::complaintsHaveTheirPlaces()
{
    QFETCH(QString, text);
    QFETCH(QStringList, complaints);
    const ArgfileCheck check = ArgfileCheck::read(text, nullptr);
    QCOMPARE(shown(check.complaints), complaints);
    QCOMPARE(check.hasErrors(), !complaints.filter(QStringLiteral(" error ")).isEmpty());
}

void TestArgsCommand::dollarSignsAreShownAsTheyAreMeant()
{
    const QString text = QStringLiteral("-s title '$x' -s comment \\$x$x -s tool $ -s user $x");
    const QHash<QString, QString> variables{{QStringLiteral("x"), QStringLiteral("$5")}};
    const ArgFile replaced = ArgfileCheck::read(text, &variables).invocation;
    QCOMPARE(replaced.title(), QStringLiteral("$x"));
    QCOMPARE(replaced.comment(), QStringLiteral("$x$5"));
    QCOMPARE(replaced.tool(), QStringLiteral("$"));
    QCOMPARE(replaced.user(), QStringLiteral("$5"));
    const ArgFile kept = ArgfileCheck::read(text, nullptr).invocation;
    QCOMPARE(kept.title(), QStringLiteral("$$x"));
    QCOMPARE(kept.comment(), QStringLiteral("$$x$x"));
    QCOMPARE(kept.user(), QStringLiteral("$x"));
}

void TestArgsCommand::everyTextGetsAnAnswer()
{
    QRandomGenerator random(6301);
    const QStringList pieces({"-q", "-s", "title", "x",  "-i", "-f",     "embed",
                              "-c", "-u", "'",     "\"", "\\", " ",      " ",
                              "\n", "\r", "#",     "$a", "''", "--bogus"});
    const QHash<QString, QString> none;
    for (int run = 0; run < 3000; ++run) {
        QString text;
        for (int count = random.bounded(20); count > 0; --count)
            text += pieces[random.bounded(pieces.size())];
        const ArgfileCheck check = ArgfileCheck::read(text, random.bounded(2) ? &none : nullptr);
        int offset = 0;
        for (const Complaint& complaint : check.complaints) {
            QVERIFY(!complaint.message.isEmpty());
            QVERIFY(complaint.offset >= offset && complaint.offset < text.size());
            offset = complaint.offset;
        }
    }
}

void TestArgsCommand::invocationIsPrintedAsTable()
{
    const CliCall call =
        runCli({"args", file("-q -A 'my out.pdf' -s title 'Mesh refined' -U case 7\n"
                             "-i d/a.inp -f no-automd5 -a filetype mesh -o b -u k v")});
    QCOMPARE(call.exitCode, 0);
    QCOMPARE(call.err, QByteArray());
    QCOMPARE(call.out, QByteArray("field           value\n"
                                  "verbosity       quiet\n"
                                  "rootIsOptional  yes\n"
                                  "output          my out.pdf\n"
                                  "root            my out.pdf\n"
                                  "title           Mesh refined\n"
                                  "user case       7\n"
                                  "\n"
                                  "purpose  file     flags          type  description  user "
                                  "attributes\n"
                                  "input    d/a.inp  embed          mesh\n"
                                  "output   ./b      embed automd5                     k=v\n"));
}

void TestArgsCommand::invocationIsPrintedAsJson()
{
    const QString path = file("-v -O a -O b -J r -s title x -U k v -U k w -d author z\n"
                              "-o d/f -f compress -a md5file 00 -u l m");
    const CliCall call = runCli({"args", "--json", path});
    QCOMPARE(call.exitCode, 0);
    const QJsonObject answer = object(call.out);
    QCOMPARE(answer.value("schema").toString(), QStringLiteral("lorix/1"));
    QCOMPARE(answer.value("command").toString(), QStringLiteral("args"));
    QCOMPARE(answer.value("file").toString(), path);
    QCOMPARE(answer.value("complaints").toArray(), QJsonArray());
    const QJsonObject invocation = answer.value("invocation").toObject();
    QCOMPARE(invocation.value("verbosity").toString(), QStringLiteral("verbose"));
    QCOMPARE(invocation.value("outputLorixfiles").toArray(), QJsonArray({"a", "b"}));
    QCOMPARE(invocation.value("rootfile").toString(), QStringLiteral("r"));
    QCOMPARE(invocation.value("rootIsOptional").toBool(), true);
    QCOMPARE(invocation.value("title").toString(), QStringLiteral("x"));
    QCOMPARE(invocation.value("pdfAuthor").toString(), QStringLiteral("z"));
    const QJsonObject kw{{"key", "k"}, {"value", "w"}};
    QCOMPARE(invocation.value("userAttributes").toArray(), QJsonArray({kw, kw}));
    const QJsonArray files = invocation.value("files").toArray();
    QCOMPARE(files.size(), 1);
    const QJsonObject first = files.first().toObject();
    QCOMPARE(first.value("filePurpose").toString(), QStringLiteral("output"));
    QCOMPARE(first.value("filename").toString(), QStringLiteral("f"));
    QCOMPARE(first.value("filepath").toString(), QStringLiteral("d/"));
    QCOMPARE(first.value("compress").toBool(), true);
    QCOMPARE(first.value("preview").toBool(true), false);
    QCOMPARE(first.value("md5File").toString(), QStringLiteral("00"));
    QCOMPARE(first.value("userAttributes").toArray(),
             QJsonArray({QJsonObject{{"key", "l"}, {"value", "m"}}}));
}

void TestArgsCommand::complaintsTakeThePlaceOfTheTable()
{
    const QString path = file("-q -c x\n--bogus");
    const CliCall text = runCli({"args", path});
    QCOMPARE(text.exitCode, 1);
    QCOMPARE(text.err, QByteArray());
    QCOMPARE(QString::fromUtf8(text.out),
             QStringLiteral("%1:1:4: warning: invalid option (-c) found\n"
                            "%1:1:7: warning: invalid option (x) found\n"
                            "%1:2:1: error: unknown option found: --bogus\n")
                 .arg(path));
    const CliCall json = runCli({"--json", "args", path});
    QCOMPARE(json.exitCode, 1);
    const QJsonArray complaints = object(json.out).value("complaints").toArray();
    QCOMPARE(complaints.size(), 3);
    QCOMPARE(complaints.last().toObject(),
             QJsonObject({{"code", "argfile.option.unknown"},
                          {"severity", "error"},
                          {"message", "unknown option found: --bogus"},
                          {"line", 2},
                          {"column", 1},
                          {"offset", 8}}));
    QCOMPARE(object(json.out).value("invocation").toObject().value("verbosity").toString(),
             QStringLiteral("quiet"));
}

void TestArgsCommand::warningsLeaveTheAnswerYes()
{
    const QString path = file("--sync-cwd -s title x");
    const CliCall call = runCli({"args", path});
    QCOMPARE(call.exitCode, 0);
    QCOMPARE(QString::fromUtf8(call.out),
             path + QStringLiteral(":1:1: warning: invalid option (--sync-cwd) found\n"
                                   "field  value\ntitle  x\n"));
}

void TestArgsCommand::variablesComeFromEnvironmentAndDefinitions()
{
    qputenv("LORIXTESTCASE", "seven");
    qputenv("LORIXTESTOTHER", "one");
    const QString path = file("-s title $LORIXTESTCASE-$LORIXTESTOTHER-$LORIXTESTMISSING-");
    const auto title = [&](const QStringList& options) {
        const CliCall call = runCli(QStringList({"--json", "args"}) + options + QStringList(path));
        return object(call.out).value("invocation").toObject().value("title").toString();
    };
    QCOMPARE(title({}), QStringLiteral("seven-one--"));
    QCOMPARE(title({"-D", "LORIXTESTOTHER=a=b"}), QStringLiteral("seven-a=b--"));
    QCOMPARE(title({"-D", "LORIXTESTOTHER=", "--define", "LORIXTESTMISSING=x"}),
             QStringLiteral("seven--x-"));
    QCOMPARE(title({"--keep-variables"}),
             QStringLiteral("$LORIXTESTCASE-$LORIXTESTOTHER-$LORIXTESTMISSING-"));
}

void TestArgsCommand::badDefinitionsAreRefused()
{
    for (const char* definition : {"x", "=x", ""}) {
        const CliCall call = runCli({"args", "-D", definition, file("-q")});
        QCOMPARE(call.exitCode, 2);
        QCOMPARE(call.out, QByteArray());
    }
}

void TestArgsCommand::unreadableFilesAreNamed()
{
    const QString missing = m_dir.filePath(QStringLiteral("missing"));
    const CliCall text = runCli({"args", missing});
    QCOMPARE(text.exitCode, 2);
    QCOMPARE(text.out, QByteArray());
    QVERIFY(text.err.contains(missing.toUtf8()));
    const CliCall json = runCli({"args", "--json", m_dir.path()});
    QCOMPARE(json.exitCode, 2);
    QCOMPARE(object(json.out).value("errors").toArray().first().toObject().value("code").toString(),
             QStringLiteral("argfile.unreadable"));
}

void TestArgsCommand::hugeFilesAreRefused()
{
    const QByteArray blanks(Bounds().argfileBytes, ' ');
    QCOMPARE(runCli({"args", file(blanks)}).exitCode, 0);
    const CliCall call = runCli({"args", file(blanks + ' ')});
    QCOMPARE(call.exitCode, 2);
    QVERIFY(call.err.contains("32.0 MiB"));
}

void TestArgsCommand::controlCharactersAreEscaped()
{
    const CliCall table = runCli({"args", file("-s title 'a\x1b[31mb'")});
    QCOMPARE(table.out, QByteArray("field  value\ntitle  a\\x1b[31mb\n"));
    const CliCall complaint = runCli({"args", file("'a\x1b[31mb\n'")});
    QVERIFY(complaint.out.endsWith("unknown option found: a\\x1b[31mb\\n\n"));
}

void TestArgsCommand::worstOfSeveralFilesCounts()
{
    const QString good = file("-q");
    const QString bad = file("x");
    const QString missing = m_dir.filePath(QStringLiteral("missing"));
    QCOMPARE(runCli({"args", good, good}).exitCode, 0);
    QCOMPARE(runCli({"args", bad, good}).exitCode, 1);
    const CliCall all = runCli({"args", "--json", missing, bad, good});
    QCOMPARE(all.exitCode, 2);
    QCOMPARE(all.out.count('\n'), 3);
}

QTEST_GUILESS_MAIN(TestArgsCommand)
#include "tst_argscommand.moc"
