// SPDX-License-Identifier: BSD-3-Clause
#include "clirunner.h"

#include <apps/lorix/commands/addcommand.h>
#include <lorix/argfile/argfileparser.h>

#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

#include <tuple>

using namespace lorix::cli;

namespace {

// Shows what it is given and says something of every kind.
const char* const talkingTool = "import sys\n"
                                "print('arguments', sys.argv[1:])\n"
                                "print('text', sys.stdin.read())\n"
                                "print('***WARNING: low \\x1b[31m disk')\n"
                                "print('***ERROR disk full', file=sys.stderr)\n"
                                "print()\n"
                                "sys.exit(3)\n";

} // namespace

class TestToolCommands : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup() { m_dir.reset(); }
    void wordsReachTheToolAsTheyAre();
    void addRelaysTheTool();
    void addAnswersInJson();
    void toolOptionsLookingLikeOursPass();
    void warningsAndErrorsAreColoured();
    void delRunsTheToolForEachFile();
    void delShieldsLeadingHyphens();
    void frozenToolIsFound();
    void missingToolIsAFailure();
    void namedFoldersComeFirst();
    void callsWithoutAnythingAreRefused();

private:
    void writeTool(const QString& name, const QByteArray& content);

    QScopedPointer<QTemporaryDir> m_dir;
};

void TestToolCommands::init()
{
    m_dir.reset(new QTemporaryDir);
    QVERIFY(m_dir->isValid());
}

void TestToolCommands::writeTool(const QString& name, const QByteArray& content)
{
    QFile file(m_dir->filePath(name));
    QVERIFY(file.open(QIODevice::WriteOnly));
    QCOMPARE(file.write(content), content.size());
    file.close();
    QVERIFY(file.setPermissions(file.permissions() | QFile::ExeOwner));
}

void TestToolCommands::wordsReachTheToolAsTheyAre()
{
    const QStringList words({"", " ", "it's", "\"", "#x", "a\\", "$HOME", "${x}", "\n", "''",
                             "`ls`", QString::fromUtf8("\xc3\xa4")});
    // The library's reading doubles dollar signs that are no variables.
    QStringList expected = words;
    expected.replaceInStrings(QStringLiteral("$"), QStringLiteral("$$"));
    QCOMPARE(lorix::ArgfileParser::parseArgfile(AddCommand::argumentText(words), nullptr),
             expected);
}

void TestToolCommands::addRelaysTheTool()
{
    writeTool(QStringLiteral("lorixadd.py"), talkingTool);
    const CliCall call = runCli({"add", "--tool-path", m_dir->path(), "--", "-A", "it's.pdf"});
    QCOMPARE(call.exitCode, 3);
    QCOMPARE(call.out, QByteArray("arguments ['--stdin']\ntext '-A' 'it'\\''s.pdf'\n\n"));
    QCOMPARE(call.err, QByteArray("lorix: warning: low \\x1b[31m disk\nlorix: error: disk full\n"));
}

void TestToolCommands::addAnswersInJson()
{
    writeTool(QStringLiteral("lorixadd.py"), talkingTool);
    const CliCall call = runCli(
        {"--json", "add", "--tool-path", m_dir->path(), "--", "-A", "x", "-s", "title", "y"});
    QCOMPARE(call.exitCode, 3);
    QCOMPARE(call.err, QByteArray());
    const auto message = [](const char* severity, const char* text) {
        return QJsonObject({{"severity", severity}, {"text", text}});
    };
    QCOMPARE(
        QJsonDocument::fromJson(call.out).object(),
        QJsonObject({{"schema", "lorix/1"},
                     {"command", "add"},
                     {"file", "x"},
                     {"exitCode", 3},
                     {"messages",
                      QJsonArray({message("information", "arguments ['--stdin']"),
                                  message("information", "text '-A' 'x' '-s' 'title' 'y'"),
                                  message("warning", "low \x1b[31m disk"),
                                  message("error", "disk full"), message("information", "")})}}));
}

void TestToolCommands::toolOptionsLookingLikeOursPass()
{
    writeTool(QStringLiteral("lorixadd.py"), "import sys\nprint(sys.stdin.read())\n");
    const CliCall call = runCli({"add", "--tool-path", m_dir->path(), "--", "-q", "--json",
                                 "--help", "-v", "--version", "--", "--tool-path", "--color"});
    QCOMPARE(call.exitCode, 0);
    QCOMPARE(call.out, QByteArray("'-q' '--json' '--help' '-v' '--version' '--' '--tool-path' "
                                  "'--color'\n"));
}

void TestToolCommands::warningsAndErrorsAreColoured()
{
    writeTool(QStringLiteral("lorixdel.py"), "print('***WARNING a')\nprint('***ERROR b')\n");
    const CliCall call = runCli({"--color", "always", "del", "--tool-path", m_dir->path(), "x"});
    QCOMPARE(call.exitCode, 0);
    QCOMPARE(call.err, QByteArray("lorix: \x1b[33mwarning:\x1b[0m a\nlorix: \x1b[31merror:\x1b[0m "
                                  "b\n"));
}

void TestToolCommands::delRunsTheToolForEachFile()
{
    writeTool(QStringLiteral("lorixdel.py"),
              "import sys\nprint(sys.argv[1:])\nsys.exit(int(sys.argv[1][-1]))\n");
    const CliCall call = runCli({"del", "--tool-path", m_dir->path(), "a 0", "b2", "c1"});
    QCOMPARE(call.exitCode, 2);
    QCOMPARE(call.out, QByteArray("['a 0']\n['b2']\n['c1']\n"));
    const CliCall json = runCli({"--json", "del", "--tool-path", m_dir->path(), "a0", "b1"});
    QCOMPARE(json.exitCode, 1);
    const QList<QByteArray> lines = json.out.trimmed().split('\n');
    QCOMPARE(lines.size(), 2);
    const QJsonObject last = QJsonDocument::fromJson(lines.last()).object();
    QCOMPARE(last.value("file").toString(), QStringLiteral("b1"));
    QCOMPARE(last.value("exitCode").toInt(), 1);
}

void TestToolCommands::delShieldsLeadingHyphens()
{
    writeTool(QStringLiteral("lorixdel.py"), "import sys\nprint(sys.argv[1:])\n");
    const CliCall call = runCli({"del", "--tool-path", m_dir->path(), "--", "-x"});
    QCOMPARE(call.out, QByteArray("['./-x']\n"));
}

void TestToolCommands::frozenToolIsFound()
{
    writeTool(QStringLiteral("lorixdel.exe"), "#!/bin/sh\necho frozen \"$1\"\n");
    const CliCall call = runCli({"del", "--tool-path", m_dir->path(), "x"});
    QCOMPARE(call.exitCode, 0);
    QCOMPARE(call.out, QByteArray("frozen x\n"));
}

void TestToolCommands::missingToolIsAFailure()
{
    // The program in a folder of its own, without the tools beside it.
    const QString program = m_dir->filePath(QStringLiteral("lorix"));
    QVERIFY(QFile::copy(qEnvironmentVariable("LORIX_PROGRAM"), program));
    const auto run = [&program](const QStringList& arguments) {
        QProcess process;
        process.start(program, arguments);
        process.waitForFinished(-1);
        return std::make_tuple(process.exitCode(), process.readAllStandardOutput(),
                               process.readAllStandardError());
    };
    const auto [exitCode, out, err] = run({"del", "x"});
    QCOMPARE(exitCode, 3);
    QCOMPARE(out, QByteArray());
    QCOMPARE(err, QByteArray("lorix: error: could not find any lorixdel.py executable\n"
                             "lorix: x: the tool was not found beside this program; name the "
                             "folder that holds it with --tool-path\n"));
    const auto [jsonCode, json, jsonErr] = run({"--json", "add", "--", "-A", "x"});
    QCOMPARE(jsonCode, 3);
    QCOMPARE(jsonErr, QByteArray());
    const QJsonObject answer = QJsonDocument::fromJson(json).object();
    QCOMPARE(answer.value("exitCode").toInt(), 3);
    QCOMPARE(answer.value("errors").toArray().first().toObject().value("code").toString(),
             QStringLiteral("tool.missing"));
}

void TestToolCommands::namedFoldersComeFirst()
{
    QDir(m_dir->path()).mkdir(QStringLiteral("one"));
    QDir(m_dir->path()).mkdir(QStringLiteral("two"));
    writeTool(QStringLiteral("two/lorixdel.py"), "print('two')\n");
    const QStringList call({"del", "--tool-path", m_dir->filePath(QStringLiteral("one")),
                            "--tool-path", m_dir->filePath(QStringLiteral("two")), "x"});
    QCOMPARE(runCli(call).out, QByteArray("two\n"));
    writeTool(QStringLiteral("one/lorixdel.py"), "print('one')\n");
    QCOMPARE(runCli(call).out, QByteArray("one\n"));
}

void TestToolCommands::callsWithoutAnythingAreRefused()
{
    for (const char* command : {"add", "del", "args"}) {
        const CliCall call = runCli({command});
        QCOMPARE(call.exitCode, 2);
        QCOMPARE(call.out, QByteArray());
    }
}

QTEST_GUILESS_MAIN(TestToolCommands)
#include "tst_toolcommands.moc"
