// SPDX-License-Identifier: BSD-3-Clause
// tree and diff: what they show of histories, nested ones, and of their differences.
#include "clirunner.h"

#include <support/containerbuilder.h>
#include <tree/nestedcontainer.h>

#include <QDir>
#include <QFileInfo>
#include <QJsonArray>
#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>

#include <csignal>

namespace {

WrittenStep step(const char* title, const QList<FileSpec>& files = {}, const char* tool = "")
{
    return {QString::fromUtf8(title), QString::fromUtf8(tool), QString(), files};
}

// Each level holds the next one five times, which takes its while to read.
QByteArray fanningOut()
{
    QByteArray bytes = containerOf({step("innermost")});
    for (int level = 0; level < 7; ++level) {
        QList<FileSpec> files;
        for (int i = 0; i < 5; ++i)
            files.append(nestedFile(QStringLiteral("%1.lorix").arg(i), bytes).flate());
        bytes = containerOf({step("level", files)});
    }
    return bytes;
}

QList<QPair<int, int>> pairsOf(const QJsonObject& object, int match = 0)
{
    QList<QPair<int, int>> pairs;
    const QJsonArray steps =
        object.value("matches").toArray().at(match).toObject().value("steps").toArray();
    for (const QJsonValue& value : steps)
        pairs.append(
            {value.toObject().value("left").toInt(-3), value.toObject().value("right").toInt(-3)});
    return pairs;
}

} // namespace

class TestTreeCommands : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { m_dir.reset(new QTemporaryDir); }

    void treeIndentsNestedContainers();
    void treeAsJsonHoldsPlaceAndStep();
    void unreadableNestedContainerIsAFinding();
    void treeOfNoContainerIsRefused();
    void dotRendersAnyTitle();
    void sameHistoriesDifferInNothing();
    void differencesStandSideBySide();
    void nestedStepIsIndentedInTheComparison();
    void movedStepIsTold();
    void stepWithoutPartnerIsNeverTheMovedOne();
    void ignoredFieldsNeedNotAgree();
    void unknownFieldCannotBeIgnored();
    void moreMatchesAreShownWhenWanted();
    void quickMatchSaysHowCertainItIs();
    void comparisonNeedsTwoContainers();
    void controlCharactersAreEscaped();
    void endedProgramLeavesNoTemporaryFiles_data();
    void endedProgramLeavesNoTemporaryFiles();

private:
    QString write(const char* name, const QList<WrittenStep>& steps)
    {
        return write(name, containerOf(steps));
    }
    QString write(const char* name, const QByteArray& bytes)
    {
        return ContainerBuilder::writeFile(m_dir->filePath(QString::fromLatin1(name)), bytes);
    }

    QScopedPointer<QTemporaryDir> m_dir;
};

void TestTreeCommands::treeIndentsNestedContainers()
{
    const QByteArray inner = containerOf({step("i1"), step("i2", {}, "mesher")});
    const QByteArray deepest = containerOf({step("d")});
    const QByteArray other =
        containerOf({step("o", {nestedFile(QStringLiteral("deep.lorix"), deepest)})});
    const QString path = write(
        "a.lorix", {step("one", {nestedFile(QStringLiteral("last.lorix"), deepest)}),
                    step("two &amp; more", {nestedFile(QStringLiteral("in.lorix"), inner),
                                            nestedFile(QStringLiteral("other.lorix"), other)}),
                    step("three")});
    const CliCall call = runCli({"tree", path});
    QCOMPARE(call.exitCode, 0);
    QCOMPARE(QString::fromUtf8(call.out), path + QStringLiteral("\n"
                                                                "├─ three\n"
                                                                "├─ two & more\n"
                                                                "│  ├─ in.lorix\n"
                                                                "│  │  ├─ i2  mesher\n"
                                                                "│  │  └─ i1\n"
                                                                "│  └─ other.lorix\n"
                                                                "│     └─ o\n"
                                                                "│        └─ deep.lorix\n"
                                                                "│           └─ d\n"
                                                                "└─ one\n"
                                                                "   └─ last.lorix\n"
                                                                "      └─ d\n"));
    QCOMPARE(call.err, QByteArray());
}

void TestTreeCommands::treeAsJsonHoldsPlaceAndStep()
{
    const QByteArray inner = containerOf({step("i")});
    const QString path =
        write("a.lorix", {step("one"),
                          step("two", {nestedFile(QStringLiteral("in.lorix"), inner)}, "solver")});
    for (const QStringList& arguments :
         {QStringList{"--json", "tree", path}, QStringList{"tree", "--format", "json", path}}) {
        const CliCall call = runCli(arguments);
        QCOMPARE(call.exitCode, 0);
        const QJsonArray nodes = call.objects().first().value("nodes").toArray();
        QCOMPARE(nodes.size(), 3);
        const QJsonObject first = nodes.at(0).toObject();
        QCOMPARE(first.value("nodeId").toInt(-9), 0);
        QCOMPARE(first.value("parentId").toInt(-9), -1);
        QCOMPARE(first.value("title").toString(), QStringLiteral("two"));
        QCOMPARE(first.value("tool").toString(), QStringLiteral("solver"));
        QCOMPARE(first.value("lorixfile").toString(), path);
        QCOMPARE(first.value("files").toInt(), 2);
        const QJsonObject nested = nodes.at(1).toObject();
        QCOMPARE(nested.value("parentId").toInt(-9), 0);
        QCOMPARE(nested.value("lorixfile").toString(), QStringLiteral("in.lorix"));
        QCOMPARE(nodes.at(2).toObject().value("parentId").toInt(-9), 0);
        QCOMPARE(nodes.at(2).toObject().value("tagId").toInt(-9), 1);
    }
}

void TestTreeCommands::unreadableNestedContainerIsAFinding()
{
    const QString path =
        write("a.lorix", {step("one", {nestedFile(QStringLiteral("in.lorix"), "no container")})});
    const CliCall text = runCli({"tree", path});
    QCOMPARE(text.exitCode, 0);
    QVERIFY(text.err.contains("in.lorix"));
    const QJsonArray findings =
        runCli({"--json", "tree", path}).objects().first().value("findings").toArray();
    QCOMPARE(findings.size(), 1);
    QCOMPARE(findings.first().toObject().value("code").toString(),
             QStringLiteral("nested.unreadable"));
    QCOMPARE(findings.first().toObject().value("id").toInt(-1), 0);
    QCOMPARE(findings.first().toObject().value("path").toString(), path);
}

void TestTreeCommands::treeOfNoContainerIsRefused()
{
    const QString good = write("a.lorix", {step("one")});
    const QString bad = write("b.txt", QByteArray("no container"));
    const CliCall call = runCli({"tree", bad, good, m_dir->filePath("missing")});
    QCOMPARE(call.exitCode, 2);
    QVERIFY(call.out.contains("one"));
    QVERIFY(call.err.contains("b.txt"));
    QVERIFY(call.err.contains("missing"));
}

void TestTreeCommands::dotRendersAnyTitle()
{
    const QByteArray inner = containerOf({step("\"quoted\" \\n \\ <b>bold</b> {x|y}")});
    const QString path =
        write("a.lorix", {step("one"), step("\x1b[31mred\n\xe2\x80\xae turned"),
                          step(QByteArray(100000, 'x').constData(),
                               {nestedFile(QStringLiteral("\"in\".lorix"), inner)})});
    const CliCall call = runCli({"tree", "--format", "dot", path});
    QCOMPARE(call.exitCode, 0);
    QVERIFY(call.out.startsWith("digraph \""));
    QVERIFY(!call.out.contains('\x1b'));
    if (QStandardPaths::findExecutable(QStringLiteral("dot")).isEmpty())
        QSKIP("Graphviz is not installed");
    QProcess dot;
    dot.start(QStringLiteral("dot"), {QStringLiteral("-Tplain")});
    dot.write(call.out);
    dot.closeWriteChannel();
    QVERIFY(dot.waitForFinished());
    QCOMPARE(dot.readAllStandardError(), QByteArray());
    QCOMPARE(dot.exitCode(), 0);
    const QByteArray drawn = dot.readAllStandardOutput();
    QCOMPARE(drawn.count("\nnode "), 4);
    QCOMPARE(drawn.count("\nedge "), 3);
}

void TestTreeCommands::sameHistoriesDifferInNothing()
{
    const QString a = write("a.lorix", {step("one"), step("two")});
    const QString b = write("b.lorix", {step("one"), step("two")});
    const CliCall call = runCli({"diff", a, b});
    QCOMPARE(call.exitCode, 0);
    QVERIFY(call.out.contains("2 the same, 0 changed (~), 0 moved (^), 0 only left (<), 0 only"));
    QVERIFY(call.out.contains("cost 0 (exact search: no match costs less)"));
    const QJsonObject object = runCli({"--json", "diff", a, b}).objects().first();
    QCOMPARE(object.value("same").toBool(), true);
    QCOMPARE(object.value("other").toString(), b);
    QCOMPARE(pairsOf(object), (QList<QPair<int, int>>{{0, 0}, {1, 1}}));
}

void TestTreeCommands::differencesStandSideBySide()
{
    const QString a = write("a.lorix", {step("one"), step("two", {}, "old"), step("left")});
    const QString b =
        write("b.lorix", {step("right"), step("one"),
                          step("two", {FileSpec(QStringLiteral("f.txt"), "f")}, "new")});
    const CliCall call = runCli({"diff", a, b});
    QCOMPARE(call.exitCode, 1);
    QStringList lines;
    for (const QString& line : QString::fromUtf8(call.out).split(QLatin1Char('\n')))
        lines.append(line.simplified());
    QCOMPARE(lines.mid(1), QStringList({QStringLiteral("left <"), QStringLiteral("two ~ two"),
                                        QStringLiteral("tool: old tool: new"),
                                        QStringLiteral("files: files: f.txt (8fa14cdd)"),
                                        QStringLiteral("one = one"), QStringLiteral("> right"),
                                        QStringLiteral("1 the same, 1 changed (~), 0 moved (^), 1 "
                                                       "only left (<), 1 only right (>)"),
                                        QStringLiteral("cost 70 (exact search: no match costs "
                                                       "less)"),
                                        QString()}));
    const CliCall colored = runCli({"--color", "always", "diff", a, b});
    QVERIFY(colored.out.contains("\x1b[31mleft"));
    QVERIFY(colored.out.contains("\x1b[33mtwo"));
}

void TestTreeCommands::nestedStepIsIndentedInTheComparison()
{
    const QByteArray inner = containerOf({step("inside")});
    const QString a =
        write("a.lorix", {step("one", {nestedFile(QStringLiteral("in.lorix"), inner)})});
    const QString b = write("b.lorix", {step("one")});
    const CliCall call = runCli({"diff", "--ignore", "files", a, b});
    QCOMPARE(call.exitCode, 1);
    QVERIFY(call.out.contains("\n  inside"));
    QVERIFY(call.out.contains("1 the same, 0 changed (~), 0 moved (^), 1 only left (<)"));
}

void TestTreeCommands::movedStepIsTold()
{
    const QByteArray inner = containerOf({step("inside")});
    const QList<FileSpec> files{nestedFile(QStringLiteral("in.lorix"), inner)};
    const QString a = write("a.lorix", {step("one", files), step("two")});
    const QString b = write("b.lorix", {step("one"), step("two", files)});
    const CliCall call = runCli({"diff", "--ignore", "files", a, b});
    QCOMPARE(call.exitCode, 1);
    QVERIFY(call.out.contains("2 the same, 0 changed (~), 1 moved (^), 0 only left"));
    QVERIFY(call.out.contains("    below: one"));
    QVERIFY(call.out.contains("    below: two"));
    QVERIFY(call.out.contains("cost 10 "));
}

void TestTreeCommands::stepWithoutPartnerIsNeverTheMovedOne()
{
    const QString a = write("a.lorix", {step("one"), step("left"), step("two")});
    const QString b = write("b.lorix", {step("one"), step("two")});
    const QJsonObject object = runCli({"--json", "diff", a, b}).objects().first();
    QCOMPARE(pairsOf(object), (QList<QPair<int, int>>{{0, 0}, {1, -3}, {2, 1}}));
    for (const QJsonValue& value :
         object.value("matches").toArray().first().toObject().value("steps").toArray())
        QVERIFY(!value.toObject().value("moved").toBool());
    QVERIFY(runCli({"diff", a, b}).out.contains("0 moved (^), 1 only left (<), 0 only right"));
}

void TestTreeCommands::ignoredFieldsNeedNotAgree()
{
    const QString a = write("a.lorix", {step("one", {}, "old")});
    const QString b = write("b.lorix", {step("one", {FileSpec(QStringLiteral("f"), "f")}, "new")});
    QCOMPARE(runCli({"diff", a, b}).exitCode, 1);
    QCOMPARE(runCli({"diff", "--ignore", "tool", a, b}).exitCode, 1);
    QCOMPARE(runCli({"diff", "--ignore", "tool,files", a, b}).exitCode, 0);
}

void TestTreeCommands::unknownFieldCannotBeIgnored()
{
    const QString a = write("a.lorix", {step("one")});
    QCOMPARE(runCli({"diff", "--ignore", "colour", a, a}).exitCode, 2);
}

void TestTreeCommands::moreMatchesAreShownWhenWanted()
{
    const QString a = write("a.lorix", {step("one")});
    const CliCall call = runCli({"diff", "-n", "5", a, a});
    QCOMPARE(call.exitCode, 0);
    QVERIFY(call.out.contains("match 1 of 2\n"));
    QVERIFY(call.out.contains("match 2 of 2\n"));
    QVERIFY(call.out.contains("cost 30\n"));
    const QJsonObject object = runCli({"--json", "diff", "-n", "5", a, a}).objects().first();
    QCOMPARE(object.value("matches").toArray().size(), 2);
    QCOMPARE(pairsOf(object, 1), (QList<QPair<int, int>>{{0, -3}, {-3, 0}}));
}

void TestTreeCommands::quickMatchSaysHowCertainItIs()
{
    QList<WrittenStep> steps1;
    QList<WrittenStep> steps2;
    for (int i = 0; i < 12; ++i) {
        const QByteArray title = "step " + QByteArray::number(i);
        steps1.append(step(title));
        steps2.append(step(i % 4 == 1 ? title + " renamed" : title));
    }
    const QString a = write("a.lorix", steps1);
    const QString b = write("b.lorix", steps2);
    const CliCall quick = runCli({"diff", "--effort", "0", a, b});
    QCOMPARE(quick.exitCode, 1);
    QVERIFY(quick.out.contains("(quick match: the cheapest match costs between 90 and 120)"));
    const CliCall little = runCli({"diff", "--effort", "5", a, b});
    QCOMPARE(little.out, quick.out);
    const QJsonObject object = runCli({"--json", "diff", "--effort", "5", a, b}).objects().first();
    QCOMPARE(object.value("method").toString(), QStringLiteral("quick"));
    QCOMPARE(object.value("lowerBound").toDouble(), 90.0);
    QCOMPARE(object.value("expansions").toInt(), 5);
    QVERIFY(runCli({"diff", a, b}).out.contains("cost 120 (exact search: no match costs less)"));
}

void TestTreeCommands::comparisonNeedsTwoContainers()
{
    const QString a = write("a.lorix", {step("one")});
    const QString bad = write("b.txt", QByteArray("no container"));
    QCOMPARE(runCli({"diff", a}).exitCode, 2);
    for (const QStringList& files : {QStringList{a, bad}, QStringList{bad, a}}) {
        const CliCall call = runCli(QStringList{"diff"} + files);
        QCOMPARE(call.exitCode, 2);
        QCOMPARE(call.out, QByteArray());
        QVERIFY(call.err.contains("b.txt"));
    }
    const CliCall call = runCli({"--json", "diff", bad, m_dir->filePath("missing")});
    QCOMPARE(call.exitCode, 2);
    QCOMPARE(call.objects().first().value("errors").toArray().size(), 2);
}

void TestTreeCommands::controlCharactersAreEscaped()
{
    const QString a = write("a.lorix", {step("\x1b[31mred", {}, "t\x07")});
    const QString b = write("b.lorix", {step("\x1b[32mgreen", {}, "t\x08")});
    for (const QStringList& arguments :
         {QStringList{"tree", a}, QStringList{"diff", a, b}, QStringList{"diff", "-n", "3", a, b}})
        for (const char c : runCli(arguments).out)
            QVERIFY(c == '\n' || static_cast<unsigned char>(c) >= 0x20);
}

void TestTreeCommands::endedProgramLeavesNoTemporaryFiles_data()
{
    QTest::addColumn<QList<int>>("signalNumbers");
    QTest::newRow("ctrl-C") << QList<int>{SIGINT};
    QTest::newRow("ctrl-C twice") << QList<int>{SIGINT, SIGINT};
    QTest::newRow("asked to end") << QList<int>{SIGTERM};
    QTest::newRow("crash") << QList<int>{SIGSEGV};
    QTest::newRow("abort") << QList<int>{SIGABRT};
}

void TestTreeCommands::endedProgramLeavesNoTemporaryFiles()
{
    QFETCH(QList<int>, signalNumbers);
    const QString path = write("a.lorix", fanningOut());
    const QDir temporary(m_dir->filePath(QStringLiteral("tmp")));
    QVERIFY(QDir().mkpath(temporary.path()));
    QProcess program;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("TMPDIR"), temporary.path());
    program.setProcessEnvironment(environment);
    program.start(qEnvironmentVariable("LORIX_PROGRAM"), {QStringLiteral("tree"), path});
    QVERIFY(program.waitForStarted());
    const auto files = [&temporary] {
        return temporary.entryList(QDir::AllEntries | QDir::NoDotAndDotDot);
    };
    const auto nestedFiles = [&] {
        const QStringList folders = files();
        return folders.isEmpty()
                   ? 0
                   : QDir(temporary.filePath(folders.first())).entryList(QDir::Files).size();
    };
    QTRY_VERIFY_WITH_TIMEOUT(nestedFiles() > 3, 60000);
    for (const int number : signalNumbers)
        ::kill(static_cast<pid_t>(program.processId()), number);
    QVERIFY(program.waitForFinished(60000));
    QCOMPARE(files(), QStringList());
    if (signalNumbers == QList<int>{SIGINT}) {
        QCOMPARE(program.exitStatus(), QProcess::NormalExit);
        QCOMPARE(program.exitCode(), 130);
    }
}

QTEST_GUILESS_MAIN(TestTreeCommands)
#include "tst_treecommands.moc"
