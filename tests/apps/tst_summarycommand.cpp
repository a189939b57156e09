// SPDX-License-Identifier: BSD-3-Clause
// summary: what it tells people and programs of steps and their files.
#include "clirunner.h"

#include <support/containerbuilder.h>

#include <QJsonArray>
#include <QLoggingCategory>
#include <QTemporaryDir>
#include <QTest>

namespace {

QByteArray element(const QByteArray& tag, const QByteArray& content)
{
    return "<" + tag + ">" + content + "</" + tag + ">";
}

FileSpec xmlFile(const QByteArray& step)
{
    return FileSpec(
        QStringLiteral("ws_summary.xml"),
        element("loxchange", element("Workflowstep", step) + element("MD5Signature", "00ff")));
}

QByteArray attribute(const QByteArray& key, const QByteArray& value, const QByteArray& unit)
{
    return element("Attribute", element("Key", key) + element("Value", value) +
                                    (unit.isEmpty() ? unit : element("Unit", unit)));
}

// An element that names an embedded file, with more fields behind.
QByteArray entry(const QByteArray& purpose, const FileSpec& file, const QByteArray& more = "")
{
    return element(purpose,
                   element("Filename", ContainerBuilder::bracketText(file.name)) +
                       element("Filetype", file.type.toUtf8()) +
                       element("UncompressedSize", QByteArray::number(file.content.size())) +
                       element("UncompressedMD5", ContainerBuilder::md5(file.content)) +
                       element("Embedded", "1") + element("CompressedMethod", file.compression) +
                       element("CompressedSize", QByteArray::number(file.stored.size())) + more);
}

} // namespace

class TestSummaryCommand : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void stepsAreToldNewestFirst();
    void filesAreToldInFull();
    void oneStepCanBeAskedFor();
    void unknownStepIsRefused_data();
    void unknownStepIsRefused();
    void namesAreDecodedForPeopleAndKeptInJson();
    void textThatTheMarkerHasTooIsNoXml();
    void sectionsWithoutSummarySaySo();
    void filesOutsideOfStepsComeLast();
    void emptyHistorySaysSo();
    void nothingMovesTheCursor();
    void repeatedAttributeIsToldOnce();
    void jsonHoldsEveryMember();
    void libraryDumpsAreMadeOnDemandOnly();

private:
    QString write(const ContainerBuilder& builder) const;
    QByteArray tell(const ContainerBuilder& builder, const QStringList& options = {}) const;
    QJsonObject json(const ContainerBuilder& builder, const QStringList& options = {}) const;

    QScopedPointer<QTemporaryDir> m_dir;
    ContainerBuilder m_history;
};

void TestSummaryCommand::init()
{
    m_dir.reset(new QTemporaryDir);
    const FileSpec mesh = FileSpec(QStringLiteral("mesh.dat"), QByteArray(3000, 'm')).flate();
    const FileSpec report(QStringLiteral("report.txt"), "done");
    const FileSpec extra(QStringLiteral("extra.log"), "log");
    m_history = ContainerBuilder();
    m_history.start();
    m_history.section(SectionSpec(QStringLiteral("Import")).file(report));
    m_history.section(
        SectionSpec(QStringLiteral("marker title"))
            .file(mesh)
            .file(report)
            .file(extra)
            .file(xmlFile(element("LorixRootFile", "report.pdf") +
                          element("Timestamp", "2013-06-21 10:00:00") + element("Title", "Mesh") +
                          element("Description", "a first mesh") + element("Command", "mesher -x") +
                          element("Tool", "mesher") + element("ToolPath", "/opt/mesher") +
                          element("Host", "node7") + element("User", "anna") +
                          element("Creator", "writer 1.0") + element("PDFTitle", "The mesh") +
                          entry("InFile", mesh,
                                element("Filepath", "/data/") + element("Description", "points") +
                                    element("LastModified", "2013-06-20") +
                                    element("Preview", "1") + element("Thumbnail", "1") +
                                    element("UserAttributes", attribute("points", "9", ""))) +
                          element("InFile", element("Filename", "big.dat") +
                                                element("UncompressedSize", "5000000")) +
                          entry("OutFile", report) +
                          element("UserAttributes",
                                  attribute("speed", "12", "m/s") + attribute("level", "3", "")))));
}

QString TestSummaryCommand::write(const ContainerBuilder& builder) const
{
    return builder.writeTo(m_dir->filePath(QStringLiteral("c.lorix")));
}

QByteArray TestSummaryCommand::tell(const ContainerBuilder& builder,
                                    const QStringList& options) const
{
    const QString path = write(builder);
    const CliCall call = runCli(QStringList{QStringLiteral("summary"), path} + options);
    if (call.exitCode != 0 || !call.err.isEmpty())
        return "exit code " + QByteArray::number(call.exitCode) + ": " + call.err;
    return QByteArray(call.out).replace(path.toUtf8(), "FILE");
}

QJsonObject TestSummaryCommand::json(const ContainerBuilder& builder,
                                     const QStringList& options) const
{
    const CliCall call = runCli(
        QStringList{QStringLiteral("summary"), QStringLiteral("--json"), write(builder)} + options);
    return call.objects().value(0);
}

void TestSummaryCommand::stepsAreToldNewestFirst()
{
    QCOMPARE(tell(m_history), QByteArray(R"(FILE: 2 steps, newest first

0  Mesh
   time        2013-06-21 10:00:00
   who         anna on node7
   tool        mesher at /opt/mesher
   command     mesher -x
   about       a first mesh
   creator     writer 1.0
   inputs      #1       2.9 KiB  mesh.dat
               -        4.8 MiB  big.dat  (not embedded)
   outputs     #2           4 B  report.txt
   not named   #3           3 B  extra.log
   attributes  speed = 12 m/s
               level = 3

1  Import
   note        no summary; this is what the markers tell
   creator     builder
   files       #0           4 B  report.txt
)"));
}

void TestSummaryCommand::filesAreToldInFull()
{
    const QByteArray stored = QByteArray::number(m_history.files().at(1).storedSize);
    QByteArray expected(R"(0  Mesh
   time        2013-06-21 10:00:00
   who         anna on node7
   tool        mesher at /opt/mesher
   command     mesher -x
   about       a first mesh
   creator     writer 1.0
   document    report.pdf
   PDF title   The mesh
   signature   00ff
   inputs      #1       2.9 KiB  mesh.dat
                     path       /data/
                     type       text/plain
                     about      points
                     modified   2013-06-20
                     size       2.9 KiB (3000 bytes)
                     md5        MD5
                     stored     flate, STORED B
                     marked     preview, thumbnail
                     attribute  points = 9
               -        4.8 MiB  big.dat  (not embedded)
                     size       4.8 MiB (5000000 bytes)
   outputs     #2           4 B  report.txt
                     type       text/plain
                     size       4 B
                     md5        6b2ded51d81a4403d8a4bd25fa1e57ee
                     stored     none, 4 B
   not named   #3           3 B  extra.log
                     type       text/plain
                     size       3 B
                     md5        dc1d71bbb5c4d2a5e936db79ef10c19f
                     stored     none, 3 B
)");
    expected.replace("MD5\n", ContainerBuilder::md5(QByteArray(3000, 'm')) + "\n");
    expected.replace("STORED", stored);
    const QByteArray told =
        tell(m_history, {QStringLiteral("--files"), QStringLiteral("--step"), QStringLiteral("0")});
    QCOMPARE(told.left(expected.size()), expected);
    const QByteArray rest = told.mid(expected.size());
    QVERIFY(rest.startsWith("               #4   "));
    QVERIFY(rest.contains("  ws_summary.xml\n"));
    QVERIFY(rest.endsWith("   attributes  speed = 12 m/s\n               level = 3\n"));
}

void TestSummaryCommand::oneStepCanBeAskedFor()
{
    QCOMPARE(tell(m_history, {QStringLiteral("--step"), QStringLiteral("1")}),
             QByteArray("1  Import\n"
                        "   note        no summary; this is what the markers tell\n"
                        "   creator     builder\n"
                        "   files       #0           4 B  report.txt\n"));
    const QJsonArray steps =
        json(m_history, {QStringLiteral("--step"), QStringLiteral("1")})["steps"].toArray();
    QCOMPARE(steps.size(), 1);
    QCOMPARE(steps[0].toObject()["tagId"].toInt(), 1);
}

void TestSummaryCommand::unknownStepIsRefused_data()
{
    QTest::addColumn<bool>("empty");
    QTest::addColumn<QString>("step");
    QTest::addColumn<QByteArray>("message");
    QTest::newRow("beyond the last")
        << false << "2" << QByteArray("there is no step 2; 'lorix sections' lists the 2 steps");
    QTest::newRow("no steps") << true << "0"
                              << QByteArray("there is no step 0; the document has none");
}

void TestSummaryCommand::unknownStepIsRefused()
{
    QFETCH(bool, empty);
    QFETCH(QString, step);
    QFETCH(QByteArray, message);
    ContainerBuilder none;
    none.start();
    const QString path = write(empty ? none : m_history);
    const CliCall call = runCli({QStringLiteral("summary"), path, QStringLiteral("--step"), step});
    QCOMPARE(call.exitCode, 2);
    QCOMPARE(call.out, QByteArray());
    QVERIFY2(call.err.contains(path.toUtf8() + ": " + message), call.err.constData());
    const QJsonObject object = json(empty ? none : m_history, {QStringLiteral("--step"), step});
    QCOMPARE(object["errors"].toArray()[0].toObject()["code"].toString(),
             QStringLiteral("step.unknown"));
    QVERIFY(!object.contains(QStringLiteral("steps")));
    QCOMPARE(
        runCli({QStringLiteral("summary"), path, QStringLiteral("--step"), QStringLiteral("-1")})
            .exitCode,
        2);
}

void TestSummaryCommand::namesAreDecodedForPeopleAndKeptInJson()
{
    ContainerBuilder builder;
    builder.start();
    builder.section(SectionSpec(QStringLiteral("a]b"))
                        .file(FileSpec(QStringLiteral("x]y\\z.txt"), "1"))
                        .file(FileSpec(QStringLiteral("p&amp;q.txt"), "2")));
    builder.section(
        SectionSpec(QStringLiteral("two"))
            .file(xmlFile(element("Title", "a &lt; b &amp;amp; \\n c") +
                          element("InFile", element("Filename", "u\\]&gt;.txt")) +
                          element("UserAttributes",
                                  attribute("&quot;k&quot;", "&apos;v&apos;", "&lt;u&gt;")))));
    const QByteArray told = tell(builder);
    QVERIFY2(told.contains("0  a < b &amp; \\n c\n"), told.constData());
    QVERIFY2(told.contains("?  u]>.txt  (not embedded)\n"), told.constData());
    QVERIFY2(told.contains("   attributes  \"k\" = 'v' <u>\n"), told.constData());
    QVERIFY2(told.contains("1  a]b\n"), told.constData());
    QVERIFY2(told.contains("1 B  x]y\\z.txt\n"), told.constData());
    // A marker has no entities.
    QVERIFY2(told.contains("1 B  p&amp;q.txt\n"), told.constData());

    const QJsonArray steps = json(builder)["steps"].toArray();
    const QJsonObject newer = steps[0].toObject();
    QCOMPARE(newer["title"].toString(), QStringLiteral("a &lt; b &amp;amp; \\n c"));
    QCOMPARE(newer["files"].toArray()[0].toObject()["filename"].toString(),
             QStringLiteral("u\\]&gt;.txt"));
    QCOMPARE(newer["userAttributes"].toObject()["&quot;k&quot;"].toString(),
             QStringLiteral("&apos;v&apos;"));
    const QJsonObject older = steps[1].toObject();
    QCOMPARE(older["title"].toString(), QStringLiteral("a\\]b"));
    QCOMPARE(older["files"].toArray()[0].toObject()["filename"].toString(),
             QStringLiteral("x\\]y\\\\z.txt"));
}

void TestSummaryCommand::textThatTheMarkerHasTooIsNoXml()
{
    const FileSpec file =
        FileSpec(QStringLiteral("a&amp;b.txt"), "1").setDesc(QStringLiteral("c&lt;d"));
    ContainerBuilder builder;
    builder.start();
    builder.section(SectionSpec().file(file).file(xmlFile(
        entry("InFile", file, element("Description", "c&lt;d") + element("Comment", "e&lt;f")))));
    const QByteArray told = tell(builder, {QStringLiteral("--files")});
    QVERIFY2(told.contains("1 B  a&amp;b.txt\n"), told.constData());
    QVERIFY2(told.contains("about      c&lt;d\n"), told.constData());
    QVERIFY2(told.contains("comment    e<f\n"), told.constData());
}

void TestSummaryCommand::sectionsWithoutSummarySaySo()
{
    ContainerBuilder builder;
    builder.start();
    builder.section(SectionSpec(QStringLiteral("bare")));
    builder.section(
        SectionSpec(QStringLiteral("cut")).file(xmlFile("").flate().set("filesize", "1")));
    builder.section(SectionSpec(QStringLiteral("rootless"))
                        .file(FileSpec(QStringLiteral("ws_summary.xml"), "<a/>")));
    const QByteArray told = tell(builder);
    QVERIFY2(told.contains("2  bare\n"
                           "   note        no summary; this is what the markers tell\n"
                           "   creator     builder\n"),
             told.constData());
    QVERIFY2(told.contains("1  cut\n"
                           "   note        its summary cannot be read; this is what the markers "
                           "tell\n"),
             told.constData());
    QVERIFY2(told.contains("0  rootless\n"
                           "   note        its summary cannot be read; this is what the markers "
                           "tell\n"),
             told.constData());
}

void TestSummaryCommand::filesOutsideOfStepsComeLast()
{
    ContainerBuilder builder = m_history;
    builder.file(FileSpec(QStringLiteral("loose.txt"), "12"));
    QVERIFY(tell(builder).endsWith("\n\n-  Files that belong to no step\n"
                                   "   files       #5           2 B  loose.txt\n"));
    const QJsonArray loose = json(builder)["sectionless"].toArray();
    QCOMPARE(loose.size(), 1);
    QCOMPARE(loose[0].toObject()["filename"].toString(), QStringLiteral("loose.txt"));
    QCOMPARE(json(builder)["steps"].toArray().size(), 2);
    QVERIFY(!tell(builder, {QStringLiteral("--step"), QStringLiteral("0")}).contains("loose"));
}

void TestSummaryCommand::emptyHistorySaysSo()
{
    ContainerBuilder builder;
    builder.start();
    QCOMPARE(tell(builder), QByteArray("FILE: 0 steps\n"));
    QCOMPARE(json(builder)["steps"].toArray().size(), 0);
    QVERIFY(json(builder).contains(QStringLiteral("steps")));
}

void TestSummaryCommand::nothingMovesTheCursor()
{
    ContainerBuilder builder;
    builder.start();
    builder.section(SectionSpec().file(
        xmlFile(element("Title", "\x1b[2J\r") + element("Host", "a\nb") +
                element("InFile", element("Filename", "\x07")) +
                element("UserAttributes", attribute("\x08", "\xe2\x80\xae", "\t")))));
    const QByteArray told = tell(builder, {QStringLiteral("--files")});
    QVERIFY2(told.contains("0  \\x1b[2J\\r\n"), told.constData());
    QVERIFY2(told.contains("who         a\\nb\n"), told.constData());
    for (const char c : told)
        QVERIFY(c == '\n' || static_cast<unsigned char>(c) >= 0x20);
    QVERIFY(!told.contains("\xe2\x80\xae"));
}

void TestSummaryCommand::repeatedAttributeIsToldOnce()
{
    ContainerBuilder builder;
    builder.start();
    builder.section(SectionSpec().file(
        xmlFile(element("UserAttributes", attribute("k", "1", "mm") + attribute("l", "2", "") +
                                              attribute("k", "3", "")))));
    QVERIFY(tell(builder).endsWith("   attributes  k = 3 mm\n               l = 2\n"));
    const QJsonObject step = json(builder)["steps"].toArray()[0].toObject();
    QCOMPARE(step["userAttributeKeys"].toArray(), QJsonArray({"k", "l", "k"}));
    QCOMPARE(step["userAttributeUnits"].toObject(),
             QJsonObject({{QStringLiteral("k"), QStringLiteral("mm")}}));
}

void TestSummaryCommand::jsonHoldsEveryMember()
{
    const QJsonObject object = json(m_history);
    QCOMPARE(object["command"].toString(), QStringLiteral("summary"));
    const QJsonObject step = object["steps"].toArray()[0].toObject();
    const QStringList texts = {QStringLiteral("lorixRootFile=report.pdf"),
                               QStringLiteral("timestamp=2013-06-21 10:00:00"),
                               QStringLiteral("title=Mesh"),
                               QStringLiteral("description=a first mesh"),
                               QStringLiteral("comment="),
                               QStringLiteral("command=mesher -x"),
                               QStringLiteral("tool=mesher"),
                               QStringLiteral("toolPath=/opt/mesher"),
                               QStringLiteral("host=node7"),
                               QStringLiteral("user=anna"),
                               QStringLiteral("creator=writer 1.0"),
                               QStringLiteral("pdfTitle=The mesh"),
                               QStringLiteral("pdfAuthor="),
                               QStringLiteral("pdfSubject="),
                               QStringLiteral("pdfKeywords="),
                               QStringLiteral("pdfProducer="),
                               QStringLiteral("pdfCreator="),
                               QStringLiteral("md5=00ff")};
    for (const QString& text : texts) {
        const QString key = text.section(QLatin1Char('='), 0, 0);
        QVERIFY2(step.contains(key), qPrintable(key));
        QCOMPARE(step[key].toString(), text.section(QLatin1Char('='), 1));
    }
    QCOMPARE(step["tagId"].toInt(), 0);
    QCOMPARE(step["fromXml"].toBool(), true);
    QCOMPARE(step["userAttributeKeys"].toArray(), QJsonArray({"speed", "level"}));

    const QJsonArray files = step["files"].toArray();
    QCOMPARE(files.size(), 5);
    const QJsonObject mesh = files[0].toObject();
    const QJsonObject expected{
        {"tagId", 1},
        {"filename", "mesh.dat"},
        {"filepath", "/data/"},
        {"filetype", "text/plain"},
        {"description", "points"},
        {"comment", ""},
        {"lastModified", "2013-06-20"},
        {"generateMD5", false},
        {"embedded", true},
        {"preview", true},
        {"previewWS", false},
        {"thumbnail", true},
        {"thumbnailOnly", false},
        {"uncompressedSize", 3000},
        {"uncompressedMD5", QString::fromLatin1(ContainerBuilder::md5(QByteArray(3000, 'm')))},
        {"compressedMethod", "flate"},
        {"compressedSize", static_cast<int>(m_history.files().at(1).storedSize)},
        {"compressedMD5", ""},
        {"filePurpose", "InFile"},
        {"fromTags", false},
        {"userAttributes", QJsonObject{{"points", "9"}}},
        {"userAttributeUnits", QJsonObject()},
        {"userAttributeKeys", QJsonArray{"points"}}};
    QCOMPARE(mesh, expected);
    QCOMPARE(files[4].toObject()["filename"].toString(), QStringLiteral("ws_summary.xml"));
    QCOMPARE(files[4].toObject()["fromTags"].toBool(), true);
}

void TestSummaryCommand::libraryDumpsAreMadeOnDemandOnly()
{
    const QString path = write(m_history);
    runCli({QStringLiteral("summary"), path});
    QVERIFY(!QLoggingCategory::defaultCategory()->isDebugEnabled());
    runCli({QStringLiteral("summary"), QStringLiteral("-v"), path});
    QVERIFY(!QLoggingCategory::defaultCategory()->isDebugEnabled());
    runCli({QStringLiteral("summary"), QStringLiteral("-v"), QStringLiteral("-v"), path});
    QVERIFY(QLoggingCategory::defaultCategory()->isDebugEnabled());
}

QTEST_GUILESS_MAIN(TestSummaryCommand)
#include "tst_summarycommand.moc"
