// SPDX-License-Identifier: BSD-3-Clause
// find: what it answers, and that every example of docs/query.md is right.
#include "clirunner.h"

#include <support/containerbuilder.h>

#include <lorix/query/querycompletion.h>

#include <QDir>
#include <QJsonArray>
#include <QTemporaryDir>
#include <QTest>

namespace {

QByteArray element(const QByteArray& tag, const QByteArray& content)
{
    return "<" + tag + ">" + content + "</" + tag + ">";
}

QByteArray attribute(const QByteArray& key, const QByteArray& value)
{
    return element("Attribute", element("Key", key) + element("Value", value));
}

QByteArray entry(const QByteArray& purpose, const FileSpec& file)
{
    return element(purpose,
                   element("Filename", ContainerBuilder::bracketText(file.name)) +
                       element("Filetype", file.type.toUtf8()) +
                       element("UncompressedSize", QByteArray::number(file.content.size())) +
                       element("UncompressedMD5", ContainerBuilder::md5(file.content)) +
                       element("Embedded", "1") + element("CompressedMethod", file.compression) +
                       element("CompressedSize", QByteArray::number(file.stored.size())));
}

FileSpec summaryFile(const QByteArray& step)
{
    return FileSpec(QStringLiteral("ws_summary.xml"),
                    element("loxchange", element("Workflowstep", step)))
        .flate();
}

QByteArray stepFields(const QByteArray& title, const QByteArray& tool, const QByteArray& user,
                      const QByteArray& host, const QByteArray& time)
{
    return element("Timestamp", time) + element("Title", title) + element("Tool", tool) +
           element("Host", host) + element("User", user);
}

// The document that docs/query.md describes.
void writeBridge(const QString& path)
{
    const FileSpec points(QStringLiteral("points.csv"), QByteArray(2000, '1'));
    const FileSpec mesh = FileSpec(QStringLiteral("mesh.dat"), QByteArray(5000, 'm')).flate();
    const FileSpec report(QStringLiteral("report.pdf"), QByteArray(1500, 'r'));
    const FileSpec plot(QStringLiteral("plot.png"), QByteArray(800, 'p'));
    ContainerBuilder builder;
    builder.start();
    builder.section(SectionSpec(QStringLiteral("Survey"))
                        .file(points)
                        .file(summaryFile(stepFields("Survey", "surveyor", "anna", "field1",
                                                     "2013-05-02 09:00:00") +
                                          entry("OutFile", points))));
    builder.section(
        SectionSpec(QStringLiteral("Mesh"))
            .file(points)
            .file(mesh)
            .file(summaryFile(stepFields("Mesh", "mesher", "ben", "node7", "2013-05-03 14:30:00") +
                              entry("InFile", points) + entry("OutFile", mesh) +
                              element("UserAttributes", attribute("cells", "1200") +
                                                            attribute("Method", "Delaunay")))));
    builder.section(
        SectionSpec(QStringLiteral("Report"))
            .file(mesh)
            .file(report)
            .file(plot)
            .file(summaryFile(
                stepFields("Report", "python", "anna", "node7", "2013-05-07 08:15:00") +
                entry("InFile", mesh) + entry("OutFile", report) + entry("OutFile", plot))));
    builder.writeTo(path);
}

// Words of a shell's line, single quotes the only quoting.
QStringList words(const QString& line)
{
    QStringList result;
    QString word;
    bool quoted = false;
    bool any = false;
    for (const QChar c : line) {
        if (c == u'\'') {
            quoted = !quoted;
            any = true;
        } else if (c == u' ' && !quoted) {
            if (any)
                result.append(word);
            word.clear();
            any = false;
        } else {
            word += c;
            any = true;
        }
    }
    if (any)
        result.append(word);
    return result;
}

struct Example
{
    QString command;
    QByteArray output;
};

// The commands of the page's console blocks, with what is printed below them.
QList<Example> examplesOf(const QByteArray& page)
{
    QList<Example> examples;
    bool inside = false;
    for (const QByteArray& line : page.split('\n')) {
        if (line.startsWith("```")) {
            inside = line == "```console";
        } else if (inside && line.startsWith("$ ")) {
            examples.append({QString::fromUtf8(line.mid(2)), QByteArray()});
        } else if (inside) {
            examples.last().output += line + '\n';
        }
    }
    return examples;
}

} // namespace

class TestFindCommand : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void examplesOfThePageAreRight();
    void matchesAreShownWithTheirBindings();
    void exitCodeSaysWhetherAnythingMatched();
    void onlyNamesAreShownOnRequest();
    void onlyTheCountIsShownOnRequest();
    void answersComeInTheOrderOfTheArguments();
    void foldersAreSearchedOnRequest();
    void badQueryIsShownOnceWithACaret();
    void caretStandsUnderThePlace_data();
    void caretStandsUnderThePlace();
    void longQueriesAreCutAroundThePlace();
    void unreadableFilesDoNotStopTheRest();
    void fileIsRequiredUnlessExplaining();
    void explanationShowsAllStages();
    void jsonTellsBindings();
    void jsonTellsWhatIsWrongWithTheQuery();
    void helpNamesEveryAttributeAndOperator();
    void namesAreDecodedAndPrintable();

private:
    QScopedPointer<QTemporaryDir> m_dir;
    QString m_before;
};

void TestFindCommand::init()
{
    m_dir.reset(new QTemporaryDir);
    m_before = QDir::currentPath();
    QVERIFY(QDir::setCurrent(m_dir->path()));
    writeBridge(QStringLiteral("bridge.lorix"));
    ContainerBuilder::writeFile(QStringLiteral("plain.txt"), "no container\n");
}

void TestFindCommand::cleanup()
{
    QDir::setCurrent(m_before);
}

void TestFindCommand::examplesOfThePageAreRight()
{
    QFile page(QStringLiteral(LORIX_SOURCE_DIR "/docs/query.md"));
    QVERIFY(page.open(QIODevice::ReadOnly));
    const QList<Example> examples = examplesOf(page.readAll());
    QVERIFY(examples.size() >= 15);
    for (const Example& example : examples) {
        QStringList arguments = words(example.command);
        QCOMPARE(arguments.takeFirst(), QStringLiteral("lorix"));
        const CliCall call = runCli(arguments);
        if (call.out + call.err != example.output) {
            qDebug().noquote() << example.command;
            QCOMPARE(call.out + call.err, example.output);
        }
    }
}

void TestFindCommand::matchesAreShownWithTheirBindings()
{
    const CliCall call = runCli({QStringLiteral("find"),
                                 QStringLiteral("out:isoutfile && out:parentid == step:tagid && "
                                                "step:iswfs && dat"),
                                 QStringLiteral("bridge.lorix")});
    QCOMPARE(call.err, QByteArray());
    QCOMPARE(call.out, QByteArray("bridge.lorix\n"
                                  "  out   file #0  points.csv  in step 2  Survey\n"
                                  "  step  step 2  Survey\n"
                                  "  (3)   file #3  mesh.dat  in step 1  Mesh\n"));
    QCOMPARE(call.exitCode, 0);
}

void TestFindCommand::exitCodeSaysWhetherAnythingMatched()
{
    const auto code = [](const char* query, const QStringList& files) {
        return runCli(QStringList{QStringLiteral("find"), QString::fromLatin1(query)} + files)
            .exitCode;
    };
    writeBridge(QStringLiteral("other.lorix"));
    const QString bridge = QStringLiteral("bridge.lorix");
    QCOMPARE(code("mesher", {bridge}), 0);
    QCOMPARE(code("nowhere", {bridge}), 1);
    QCOMPARE(code("mesher", {bridge, QStringLiteral("other.lorix")}), 0);
    QCOMPARE(code("mesher", {bridge, QStringLiteral("missing")}), 2);
    QCOMPARE(code("nowhere", {bridge, QStringLiteral("plain.txt")}), 2);
    QCOMPARE(code("a:nonsense", {bridge}), 2);
    // A document without history has nothing that could match.
    ContainerBuilder().start().writeTo(QStringLiteral("empty.lorix"));
    QCOMPARE(code("mesher", {QStringLiteral("empty.lorix")}), 1);
    QCOMPARE(code("mesher", {QStringLiteral("empty.lorix"), bridge}), 0);
}

void TestFindCommand::onlyNamesAreShownOnRequest()
{
    const CliCall call = runCli({QStringLiteral("find"), QStringLiteral("--files-with-matches"),
                                 QStringLiteral("mesher"), QStringLiteral("bridge.lorix")});
    QCOMPARE(call.out, QByteArray("bridge.lorix\n"));
    QCOMPARE(runCli({QStringLiteral("find"), QStringLiteral("-l"), QStringLiteral("nowhere"),
                     QStringLiteral("bridge.lorix")})
                 .out,
             QByteArray());
}

void TestFindCommand::onlyTheCountIsShownOnRequest()
{
    writeBridge(QStringLiteral("other.lorix"));
    const QStringList call = {QStringLiteral("find"), QStringLiteral("-c"),
                              QStringLiteral("mesher"), QStringLiteral("bridge.lorix"),
                              QStringLiteral("other.lorix")};
    QCOMPARE(runCli(call).out, QByteArray("2\n"));
    QCOMPARE(runCli(QStringList(call).replaceInStrings(QStringLiteral("mesher"),
                                                       QStringLiteral("nowhere")))
                 .out,
             QByteArray("0\n"));
}

void TestFindCommand::answersComeInTheOrderOfTheArguments()
{
    QByteArray expected;
    QStringList call = {QStringLiteral("find"), QStringLiteral("-l"), QStringLiteral("--jobs"),
                        QStringLiteral("4"), QStringLiteral("mesher")};
    for (int i = 40; i > 0; --i) {
        const QString name = QStringLiteral("%1.lorix").arg(i);
        writeBridge(name);
        call.append(name);
        expected += name.toLatin1() + '\n';
    }
    QCOMPARE(runCli(call).out, expected);
}

void TestFindCommand::foldersAreSearchedOnRequest()
{
    QVERIFY(QDir().mkpath(QStringLiteral("d/e")));
    writeBridge(QStringLiteral("d/b.lorix"));
    writeBridge(QStringLiteral("d/e/a.lorix"));
    ContainerBuilder::writeFile(QStringLiteral("d/plain.txt"), "no container\n");
    const CliCall call = runCli({QStringLiteral("find"), QStringLiteral("-r"), QStringLiteral("-l"),
                                 QStringLiteral("mesher"), QStringLiteral("d")});
    QCOMPARE(call.out, QByteArray("d/b.lorix\nd/e/a.lorix\n"));
    QCOMPARE(call.err, QByteArray());
    QCOMPARE(call.exitCode, 0);
}

void TestFindCommand::badQueryIsShownOnceWithACaret()
{
    const CliCall call = runCli({QStringLiteral("find"), QStringLiteral("x && a:colour == red"),
                                 QStringLiteral("bridge.lorix"), QStringLiteral("plain.txt")});
    QCOMPARE(call.exitCode, 2);
    QCOMPARE(call.out, QByteArray());
    QCOMPARE(call.err, QByteArray("lorix: this is no query:\n"
                                  "error at pos 5: attribute colour does not exist.\n"
                                  "  x && a:colour == red\n"
                                  "       ^~~~~~~~\n"));
}

void TestFindCommand::caretStandsUnderThePlace_data()
{
    QTest::addColumn<QByteArray>("lines");
    QTest::newRow("a:tool ==") << QByteArray("  a:tool ==\n         ^~\n");
    QTest::newRow("") << QByteArray("  \n  ^\n");
    QTest::newRow("a\nb )") << QByteArray("  b )\n    ^\n");
    QTest::newRow("a % b") << QByteArray("  a % b\n    ^~~\n");
    QTest::newRow("a\t)") << QByteArray("  a\\t)\n     ^\n");
}

void TestFindCommand::caretStandsUnderThePlace()
{
    QFETCH(const QByteArray, lines);
    const QString query = QString::fromLatin1(QTest::currentDataTag());
    const CliCall call = runCli({QStringLiteral("find"), query, QStringLiteral("bridge.lorix")});
    QCOMPARE(call.exitCode, 2);
    QVERIFY2(call.err.endsWith(lines), call.err.constData());
}

void TestFindCommand::longQueriesAreCutAroundThePlace()
{
    const QString query =
        QStringLiteral("word ").repeated(1000) + u'%' + QStringLiteral(" word").repeated(1000);
    const CliCall call = runCli({QStringLiteral("find"), query, QStringLiteral("bridge.lorix")});
    QCOMPARE(call.exitCode, 2);
    const QList<QByteArray> lines = call.err.trimmed().split('\n');
    const QByteArray caret = lines.last();
    const QByteArray shown = lines.at(lines.size() - 2);
    QVERIFY(shown.size() < 80);
    QCOMPARE(shown.at(caret.indexOf('^')), '%');
}

void TestFindCommand::unreadableFilesDoNotStopTheRest()
{
    const CliCall call =
        runCli({QStringLiteral("find"), QStringLiteral("-l"), QStringLiteral("mesher"),
                QStringLiteral("missing"), QStringLiteral("bridge.lorix")});
    QCOMPARE(call.exitCode, 2);
    QCOMPARE(call.out, QByteArray("bridge.lorix\n"));
    QVERIFY(call.err.contains("missing"));
}

void TestFindCommand::fileIsRequiredUnlessExplaining()
{
    const CliCall call = runCli({QStringLiteral("find"), QStringLiteral("mesher")});
    QCOMPARE(call.exitCode, 2);
    QVERIFY(call.err.contains("FILE"));
    QCOMPARE(runCli({QStringLiteral("find"), QStringLiteral("--explain"), QStringLiteral("mesher")})
                 .exitCode,
             0);
}

void TestFindCommand::explanationShowsAllStages()
{
    const CliCall call = runCli({QStringLiteral("find"), QStringLiteral("--explain"),
                                 QStringLiteral("!(a:tool == 'x' && b:isfile) y")});
    QCOMPARE(call.out, QByteArray("Tokens\n"
                                  "  AT  TEXT      KIND      MEANING\n"
                                  "   0  !         operator  !\n"
                                  "   1  (         operator  (\n"
                                  "   2  a:tool    variable  of a, attribute tool\n"
                                  "   9  ==        operator  ==\n"
                                  "  12  'x'       text      x\n"
                                  "  16  &&        operator  &&\n"
                                  "  19  b:isfile  variable  of b, attribute isfile\n"
                                  "  27  )         operator  )\n"
                                  "  29            operator  &&, put in between\n"
                                  "  29  y         text      y\n"
                                  "Tree\n"
                                  "  implizit &&\n"
                                  "    !\n"
                                  "      &&\n"
                                  "        ==\n"
                                  "          a:tool\n"
                                  "          'x'\n"
                                  "        b:isfile\n"
                                  "    %contains\n"
                                  "      @unnamed-3:any\n"
                                  "      'y'\n"
                                  "Normal form: each of these must hold\n"
                                  "  not a:tool == \"x\"  or  not b:isfile\n"
                                  "  @unnamed-3:any %contains \"y\"\n"
                                  "Bound in this order\n"
                                  "  a\n"
                                  "  b\n"
                                  "  @unnamed-3\n"));
}

void TestFindCommand::jsonTellsBindings()
{
    const CliCall call = runCli({QStringLiteral("--json"), QStringLiteral("find"),
                                 QStringLiteral("a:filename == 'mesh.dat' && b:title == Mesh"),
                                 QStringLiteral("bridge.lorix"), QStringLiteral("plain.txt")});
    QCOMPARE(call.exitCode, 2);
    const QList<QJsonObject> objects = call.objects();
    QCOMPARE(objects.size(), 2);
    QCOMPARE(objects[0][QStringLiteral("matches")].toBool(), true);
    const QJsonArray bindings = objects[0][QStringLiteral("bindings")].toArray();
    const QJsonObject file = {{QStringLiteral("variable"), QStringLiteral("a")},
                              {QStringLiteral("kind"), QStringLiteral("file")},
                              {QStringLiteral("step"), 1},
                              {QStringLiteral("title"), QStringLiteral("Mesh")},
                              {QStringLiteral("tagId"), 3},
                              {QStringLiteral("filename"), QStringLiteral("mesh.dat")}};
    const QJsonObject step = {{QStringLiteral("variable"), QStringLiteral("b")},
                              {QStringLiteral("kind"), QStringLiteral("step")},
                              {QStringLiteral("step"), 1},
                              {QStringLiteral("title"), QStringLiteral("Mesh")}};
    QCOMPARE(bindings, QJsonArray({file, step}));
    QVERIFY(objects[1].contains(QStringLiteral("errors")));
    QVERIFY(!objects[1].contains(QStringLiteral("matches")));
}

void TestFindCommand::jsonTellsWhatIsWrongWithTheQuery()
{
    const CliCall call = runCli({QStringLiteral("--json"), QStringLiteral("find"),
                                 QStringLiteral("a:tool =="), QStringLiteral("bridge.lorix")});
    QCOMPARE(call.exitCode, 2);
    QCOMPARE(call.objects().size(), 1);
    const QJsonArray errors = call.objects()[0][QStringLiteral("errors")].toArray();
    QCOMPARE(errors.size(), 1);
    QVERIFY(errors[0].toObject()[QStringLiteral("message")].toString().contains(
        QLatin1String("premature end of query  after ==.")));
    const CliCall explained = runCli({QStringLiteral("--json"), QStringLiteral("find"),
                                      QStringLiteral("--explain"), QStringLiteral("a b")});
    const QJsonObject explanation = explained.objects()[0][QStringLiteral("explain")].toObject();
    QCOMPARE(explanation[QStringLiteral("clauses")].toArray().size(), 2);
}

void TestFindCommand::helpNamesEveryAttributeAndOperator()
{
    const QByteArray help = runCli({QStringLiteral("find"), QStringLiteral("--help")}).out;
    for (const lorix::QueryAttribute& attribute : lorix::queryAttributes())
        QVERIFY2(help.contains("  " + attribute.name.toLatin1() + ' '), qPrintable(attribute.name));
    for (const lorix::QueryOperator& op : lorix::queryOperators())
        QVERIFY2(help.contains("  " + op.name.toLatin1() + ' '), qPrintable(op.name));
}

void TestFindCommand::namesAreDecodedAndPrintable()
{
    ContainerBuilder builder;
    builder.start();
    builder.section(SectionSpec(QStringLiteral("odd ]\x1b[31m"))
                        .file(FileSpec(QStringLiteral("a]b\n.txt"), "x")));
    builder.writeTo(QStringLiteral("odd.lorix"));
    const CliCall call =
        runCli({QStringLiteral("find"), QStringLiteral("a:isfile"), QStringLiteral("odd.lorix")});
    QVERIFY(call.out.contains("a]b\\n.txt"));
    QVERIFY(call.out.contains("odd ]\\x1B[31m") || call.out.contains("odd ]\\x1b[31m"));
    QVERIFY(!call.out.contains('\x1b'));
}

QTEST_GUILESS_MAIN(TestFindCommand)
#include "tst_findcommand.moc"
