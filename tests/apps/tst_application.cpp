// SPDX-License-Identifier: BSD-3-Clause
#include "clirunner.h"

#include <apps/lorix/application.h>

#include <lorix/runner/version.h>
#include <support/containerbuilder.h>

#include <QFile>
#include <QJsonArray>
#include <QTemporaryDir>
#include <QTest>

using lorix::cli::allCommands;

namespace {

QString container(const QTemporaryDir& dir, const QString& name)
{
    ContainerBuilder builder;
    builder.start();
    builder.section(SectionSpec(QStringLiteral("one"))
                        .file(FileSpec(QStringLiteral("a.txt"), QByteArrayLiteral("aaa"))));
    return builder.writeTo(dir.filePath(name));
}

} // namespace

class TestApplication : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void helpListsEveryCommandWithItsSummary();
    void everyOptionIsDescribed();
    void versionNamesProgramAndLibrary();
    void callsThatCannotBeUsedExitWithTwo_data();
    void callsThatCannotBeUsedExitWithTwo();
    void bareFileIsShortForInfo();
    void globalOptionsStandAnywhere();
    void badFileDoesNotStopTheRest();
    void unusableInputStillGivesAnObject();
    void answersComeInTheOrderOfTheArguments();
    void folderNeedsLeaveAndThenSkipsOrdinaryFiles();
    void messagesGoToStandardErrorAlone();
    void quietKeepsErrors();
    void fullDiskIsReported();
    void helpExplainsExitStatus();
    void helpExplainsCommands();
    void helpOnUnknownTopicFails();
};

void TestApplication::helpListsEveryCommandWithItsSummary()
{
    const CliCall call = runCli({QStringLiteral("--help")});
    QCOMPARE(call.exitCode, 0);
    for (const auto& command : allCommands()) {
        QVERIFY2(call.out.contains(command->name().toUtf8()), qPrintable(command->name()));
        QVERIFY2(call.out.contains(command->summary().left(40).toUtf8()),
                 qPrintable(command->name()));
    }
}

void TestApplication::everyOptionIsDescribed()
{
    lorix::cli::Console console(stdout, stderr);
    const lorix::cli::Application application(console);
    QList<const CLI::App*> apps = {&application.parser()};
    for (const CLI::App* command : application.parser().get_subcommands({}))
        apps.append(command);
    QVERIFY(apps.size() > 3);
    for (const CLI::App* app : apps) {
        QVERIFY2(!app->get_description().empty(), app->get_name().c_str());
        for (const CLI::Option* option : app->get_options())
            QVERIFY2(!option->get_description().empty(),
                     (app->get_name() + " " + option->get_name()).c_str());
    }
}

void TestApplication::versionNamesProgramAndLibrary()
{
    const CliCall call = runCli({QStringLiteral("--version")});
    QCOMPARE(call.exitCode, 0);
    QVERIFY(call.out.startsWith("lorix 1."));
    QVERIFY(call.out.contains(getVersion().toUtf8()));
}

void TestApplication::callsThatCannotBeUsedExitWithTwo_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::newRow("nothing") << QStringList();
    QTest::newRow("no file") << QStringList({"files"});
    QTest::newRow("unknown option") << QStringList({"files", "--nonsense", "x"});
    QTest::newRow("missing file") << QStringList({"files", "/nonexistent/x.lorix"});
    QTest::newRow("no number") << QStringList({"cat", "x.lorix", "one"});
    QTest::newRow("bad colour") << QStringList({"--color", "blue", "files", "x"});
}

void TestApplication::callsThatCannotBeUsedExitWithTwo()
{
    QFETCH(QStringList, arguments);
    const CliCall call = runCli(arguments);
    QCOMPARE(call.exitCode, 2);
    QVERIFY(call.out.isEmpty());
    QVERIFY(call.err.startsWith("lorix: "));
}

void TestApplication::bareFileIsShortForInfo()
{
    QTemporaryDir dir;
    const QString path = container(dir, QStringLiteral("a.lorix"));
    const CliCall bare = runCli({path});
    QCOMPARE(bare.exitCode, 0);
    QVERIFY(!bare.out.isEmpty());
    QCOMPARE(bare.out, runCli({QStringLiteral("info"), path}).out);
}

void TestApplication::globalOptionsStandAnywhere()
{
    QTemporaryDir dir;
    const QString path = container(dir, QStringLiteral("a.lorix"));
    const QByteArray expected =
        runCli({QStringLiteral("--json"), QStringLiteral("files"), path}).out;
    QVERIFY(expected.startsWith('{'));
    QCOMPARE(runCli({QStringLiteral("files"), QStringLiteral("--json"), path}).out, expected);
    QCOMPARE(runCli({QStringLiteral("files"), path, QStringLiteral("--json")}).out, expected);
}

void TestApplication::badFileDoesNotStopTheRest()
{
    QTemporaryDir dir;
    const QString good = container(dir, QStringLiteral("a.lorix"));
    const QString plain =
        ContainerBuilder::writeFile(dir.filePath(QStringLiteral("plain.txt")), "x");
    const CliCall call = runCli({QStringLiteral("files"), plain, good});
    QCOMPARE(call.exitCode, 2);
    QVERIFY(call.out.contains("a.txt"));
    QVERIFY(call.err.contains("plain.txt: carries no history"));
}

void TestApplication::unusableInputStillGivesAnObject()
{
    QTemporaryDir dir;
    const QString missing = dir.filePath(QStringLiteral("missing"));
    const CliCall call = runCli({QStringLiteral("files"), QStringLiteral("--json"), missing});
    QCOMPARE(call.exitCode, 2);
    QVERIFY(call.err.isEmpty());
    const QList<QJsonObject> objects = call.objects();
    QCOMPARE(objects.size(), 1);
    QCOMPARE(objects[0].value("schema").toString(), QStringLiteral("lorix/1"));
    QCOMPARE(objects[0].value("command").toString(), QStringLiteral("files"));
    QCOMPARE(objects[0].value("file").toString(), missing);
    QCOMPARE(objects[0].value("errors").toArray().at(0).toObject().value("code").toString(),
             QStringLiteral("input.missing"));
}

void TestApplication::answersComeInTheOrderOfTheArguments()
{
    QTemporaryDir dir;
    QStringList arguments = {QStringLiteral("info"), QStringLiteral("--json")};
    QStringList paths;
    for (int i = 9; i >= 0; --i)
        paths.append(container(dir, QString::number(i)));
    QStringList answered;
    for (const QJsonObject& object : runCli(arguments + paths).objects())
        answered.append(object.value("file").toString());
    QCOMPARE(answered, paths);
}

void TestApplication::folderNeedsLeaveAndThenSkipsOrdinaryFiles()
{
    QTemporaryDir dir;
    container(dir, QStringLiteral("a.lorix"));
    ContainerBuilder::writeFile(dir.filePath(QStringLiteral("plain.txt")), "x");
    const CliCall refused = runCli({QStringLiteral("info"), dir.path()});
    QCOMPARE(refused.exitCode, 2);
    QVERIFY(refused.err.contains("add -r"));
    const CliCall walked = runCli(
        {QStringLiteral("info"), QStringLiteral("-r"), QStringLiteral("--json"), dir.path()});
    QCOMPARE(walked.exitCode, 0);
    QCOMPARE(walked.objects().size(), 1);
}

void TestApplication::messagesGoToStandardErrorAlone()
{
    const CliCall call = runCli({QStringLiteral("info"), QStringLiteral("/nonexistent")});
    QVERIFY(call.out.isEmpty());
    QCOMPARE(call.err, QByteArrayLiteral("lorix: /nonexistent: there is no such file\n"));
}

void TestApplication::quietKeepsErrors()
{
    const CliCall call =
        runCli({QStringLiteral("-q"), QStringLiteral("info"), QStringLiteral("/nonexistent")});
    QCOMPARE(call.exitCode, 2);
    QVERIFY(!call.err.isEmpty());
}

void TestApplication::fullDiskIsReported()
{
    if (!QFile::exists(QStringLiteral("/dev/full")))
        QSKIP("this system has no /dev/full");
    QTemporaryDir dir;
    const QString path = container(dir, QStringLiteral("a.lorix"));
    std::FILE* full = std::fopen("/dev/full", "w");
    std::FILE* err = std::tmpfile();
    int exitCode = -1;
    {
        lorix::cli::Console console(full, err);
        lorix::cli::Application application(console);
        exitCode = application.run({QStringLiteral("info"), path});
    }
    std::fclose(full);
    std::fclose(err);
    QCOMPARE(exitCode, 3);
}

void TestApplication::helpExplainsExitStatus()
{
    const CliCall call = runCli({QStringLiteral("help"), QStringLiteral("exit-status")});
    QCOMPARE(call.exitCode, 0);
    for (const char* code : {"\n  0 ", "\n  1 ", "\n  2 ", "\n  3 ", "\n  130 "})
        QVERIFY2(call.out.contains(code), code);
}

void TestApplication::helpExplainsCommands()
{
    for (const auto& command : allCommands()) {
        const CliCall call = runCli({QStringLiteral("help"), command->name()});
        QCOMPARE(call.exitCode, 0);
        QVERIFY(call.out.contains("Usage: lorix " + command->name().toUtf8()));
    }
}

void TestApplication::helpOnUnknownTopicFails()
{
    QCOMPARE(runCli({QStringLiteral("help"), QStringLiteral("nonsense")}).exitCode, 2);
}

QTEST_GUILESS_MAIN(TestApplication)
#include "tst_application.moc"
