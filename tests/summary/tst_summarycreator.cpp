// SPDX-License-Identifier: BSD-3-Clause
#include <lorix/summary/makesummaries.h>
#include <lorix/summary/summarycreator.h>
#include <summary/plainmatching.h>
#include <support/containerbuilder.h>
#include <support/debugrecorder.h>

#include <QTemporaryDir>
#include <QTest>

using namespace lorix;

namespace {

const QString summaryName = QStringLiteral("ws_summary.xml");

QByteArray element(const QByteArray& tag, const QByteArray& content)
{
    return "<" + tag + ">" + content + "</" + tag + ">";
}

QByteArray document(const QByteArray& step)
{
    return "<?xml version=\"1.0\"?>\n" +
           element("loxchange",
                   element("Workflowstep", step) + element("MD5Signature", "signature"));
}

// What a writer says of an embedded file.
QByteArray entry(const FileSpec& file, const QByteArray& purpose = "InFile")
{
    return element(purpose,
                   element("Filename", ContainerBuilder::bracketText(file.name)) +
                       element("Filetype", file.type.toUtf8()) +
                       element("Description", file.desc.toUtf8()) +
                       element("Comment", file.comment.toUtf8()) + element("Embedded", "1") +
                       element("UncompressedSize", QByteArray::number(file.content.size())) +
                       element("UncompressedMD5", ContainerBuilder::md5(file.content)) +
                       element("CompressedMethod", file.compression) +
                       element("CompressedSize", QByteArray::number(file.stored.size())) +
                       element("CompressedMD5", ContainerBuilder::md5(file.stored)));
}

FileSpec xmlFile(const QByteArray& text)
{
    return FileSpec(summaryName, text).flate();
}

struct Shape
{
    QString title;
    int section;
    bool fromXml;
    QStringList files; // "purpose name id"
};

QString text(const Shape& shape)
{
    return QStringLiteral("%1 #%2 %3: %4")
        .arg(shape.title, QString::number(shape.section),
             shape.fromXml ? QStringLiteral("xml") : QStringLiteral("tags"),
             shape.files.join(QStringLiteral(", ")));
}

QStringList texts(const QList<Shape>& shapes)
{
    QStringList all;
    for (const Shape& shape : shapes)
        all.append(text(shape));
    return all;
}

QStringList texts(const QList<Summary>& summaries)
{
    QStringList all;
    for (const Summary& summary : summaries) {
        Shape shape{summary.title, summary.tagId, summary.fromXml, {}};
        for (const FileSummary& file : summary.files)
            shape.files.append(QStringLiteral("%1%2 %3 %4")
                                   .arg(file.filePurpose, file.fromTags ? "*" : "", file.filename)
                                   .arg(file.tagId));
        all.append(text(shape));
    }
    return all;
}

} // namespace

class TestSummaryCreator : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void emptyHistoryHasNoSummaries();
    void markersAloneTellTheHistory();
    void xmlSummaryTiesItsFilesToTheMarkers();
    void summaryFileMustBeTheLastOfItsSection();
    void summaryFileIsKnownByItsExactName_data();
    void summaryFileIsKnownByItsExactName();
    void numbersAreTheParsersNotTheMarkers();
    void copiesAreTakenLastFirst();
    void sameFileInTwoStepsIsTiedWithinItsStep();
    void unreadableSummaryFallsBackToTheMarkers_data();
    void unreadableSummaryFallsBackToTheMarkers();
    void summaryWithoutRootIsADefaultStepWithItsFiles_data();
    void summaryWithoutRootIsADefaultStepWithItsFiles();
    void summaryIsReadAsUtf8();
    void escapedNamesMatchAsStored();
    void filesOutsideOfSectionsComeLast();
    void tagHashHoldsEveryFileOfEverySection();
    void parserIsReadOnlyAndCreatorKeepsNothing();
    void bytesOfSummariesAreBounded();
    void claimedSizesDoNotCountAsRead_data();
    void claimedSizesDoNotCountAsRead();
    void filesOfMarkersAreBounded();
    void filesOfSummariesAreBounded();
    void randomContainersAreToldAsThePlainWay();

private:
    QList<Summary> summaries(const ContainerBuilder& builder, const Bounds& bounds = Bounds());

    QTemporaryDir m_dir;
};

void TestSummaryCreator::init()
{
    QVERIFY(m_dir.isValid());
}

QList<Summary> TestSummaryCreator::summaries(const ContainerBuilder& builder, const Bounds& bounds)
{
    LorixParser parser(Tolerant);
    parser.setBounds(bounds);
    if (!parser.open(builder.writeTo(m_dir.filePath(QStringLiteral("c.lorix")))))
        qFatal("cannot open");
    return SummaryCreator().createSummaries(parser);
}

void TestSummaryCreator::emptyHistoryHasNoSummaries()
{
    ContainerBuilder builder;
    builder.start();
    QCOMPARE(texts(summaries(builder)), QStringList());

    LorixParser closed(Tolerant);
    QVERIFY(SummaryCreator().createSummaries(closed).isEmpty());
}

void TestSummaryCreator::markersAloneTellTheHistory()
{
    ContainerBuilder builder;
    builder.start();
    builder.section(SectionSpec("one").file(FileSpec("a", "1")).file(FileSpec("b", "2").flate()));
    builder.section(SectionSpec("two"));
    builder.section(SectionSpec("three").file(FileSpec("c", "3")).setCreator("editor"));
    DebugRecorder debug;
    const QList<Summary> found = summaries(builder);
    QCOMPARE(texts(found), texts({{"one", 2, false, {"Undefined* a 0", "Undefined* b 1"}},
                                  {"two", 1, false, {}},
                                  {"three", 0, false, {"Undefined* c 2"}}}));
    QCOMPARE(found.at(2).creator, QStringLiteral("editor"));
    QVERIFY(found.at(2).md5.isEmpty());
    QCOMPARE(debug.take(), QStringList());
}

void TestSummaryCreator::xmlSummaryTiesItsFilesToTheMarkers()
{
    const FileSpec a("a", "1");
    const FileSpec b = FileSpec("b", "22").flate();
    const FileSpec extra("extra", "3");
    FileSpec changed("changed", "4");
    FileSpec described = changed;
    described.desc = QStringLiteral("another description");
    FileSpec absent("absent", "5");
    ContainerBuilder builder;
    builder.start();
    const QByteArray step = element("Title", "from xml") + entry(b, "OutFile") + entry(described) +
                            entry(absent) + entry(a) +
                            element("InFile", element("Filename", "not embedded"));
    builder.section(SectionSpec("one").file(FileSpec("first", "0")));
    builder.section(
        SectionSpec("two").file(a).file(b).file(extra).file(changed).file(xmlFile(document(step))));
    const DebugRecorder quiet;
    const QList<Summary> found = summaries(builder);
    QCOMPARE(texts(found), texts({{"one", 1, false, {"Undefined* first 0"}},
                                  {"from xml",
                                   0,
                                   true,
                                   {"OutFile b 2", "InFile changed 4", "InFile absent -1",
                                    "InFile a 1", "InFile not embedded -1", "Undefined* extra 3",
                                    "Undefined* ws_summary.xml 5"}}}));
    QCOMPARE(found.at(1).md5, QStringLiteral("signature"));
    QCOMPARE(found.at(1).files.at(1).description, QStringLiteral("another description"));
}

void TestSummaryCreator::summaryFileMustBeTheLastOfItsSection()
{
    ContainerBuilder builder;
    builder.start();
    builder.section(
        SectionSpec("one").file(xmlFile(document(element("Title", "x")))).file(FileSpec("a", "1")));
    DebugRecorder debug;
    QCOMPARE(texts(summaries(builder)),
             texts({{"one", 0, false, {"Undefined* ws_summary.xml 0", "Undefined* a 1"}}}));
    QCOMPARE(debug.take(), QStringList());
}

void TestSummaryCreator::summaryFileIsKnownByItsExactName_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<bool>("isSummary");
    QTest::newRow("exact") << summaryName << true;
    QTest::newRow("other case") << "WS_summary.xml" << false;
    QTest::newRow("in a folder") << "./ws_summary.xml" << false;
    QTest::newRow("longer") << "ws_summary.xml " << false;
    QTest::newRow("empty") << "" << false;
}

void TestSummaryCreator::summaryFileIsKnownByItsExactName()
{
    QFETCH(QString, name);
    QFETCH(bool, isSummary);
    ContainerBuilder builder;
    builder.start();
    builder.section(SectionSpec("one").file(FileSpec(name, document(element("Title", "x")))));
    const DebugRecorder quiet;
    const QList<Summary> found = summaries(builder);
    QCOMPARE(found.size(), 1);
    QCOMPARE(found.at(0).fromXml, isSummary);
    QCOMPARE(found.at(0).title, isSummary ? QStringLiteral("x") : QStringLiteral("one"));
    QCOMPARE(found.at(0).files.size(), 1);
}

void TestSummaryCreator::numbersAreTheParsersNotTheMarkers()
{
    const FileSpec a("a", "1");
    ContainerBuilder builder;
    builder.start();
    builder.section(SectionSpec("one")
                        .set("index", "1")
                        .file(a)
                        .file(xmlFile(document(element("Title", "first") + entry(a)))));
    builder.section(SectionSpec("two")
                        .set("index", "77")
                        .file(a)
                        .file(xmlFile(document(element("Title", "second") + entry(a)))));
    const DebugRecorder quiet;
    QCOMPARE(texts(summaries(builder)),
             texts({{"first", 1, true, {"InFile a 0", "Undefined* ws_summary.xml 1"}},
                    {"second", 0, true, {"InFile a 2", "Undefined* ws_summary.xml 3"}}}));
}

void TestSummaryCreator::copiesAreTakenLastFirst()
{
    const FileSpec a("a", "1");
    FileSpec described = a;
    described.desc = QStringLiteral("the second");
    ContainerBuilder builder;
    builder.start();
    builder.section(SectionSpec("one").file(a).file(described).file(a).file(
        xmlFile(document(entry(a) + entry(described) + entry(a, "OutFile") + entry(a)))));
    const DebugRecorder quiet;
    QCOMPARE(texts(summaries(builder)), texts({{"",
                                                0,
                                                true,
                                                {"InFile a 2", "InFile a 1", "OutFile a 0",
                                                 "InFile a -1", "Undefined* ws_summary.xml 3"}}}));
}

void TestSummaryCreator::sameFileInTwoStepsIsTiedWithinItsStep()
{
    const FileSpec a("a", "1");
    ContainerBuilder builder;
    builder.start();
    builder.section(SectionSpec("one").file(a).file(xmlFile(document(QByteArray()))));
    builder.section(SectionSpec("two").file(xmlFile(document(entry(a)))));
    const DebugRecorder quiet;
    QCOMPARE(texts(summaries(builder)),
             texts({{"", 1, true, {"Undefined* a 0", "Undefined* ws_summary.xml 1"}},
                    {"", 0, true, {"InFile a -1", "Undefined* ws_summary.xml 2"}}}));
}

void TestSummaryCreator::unreadableSummaryFallsBackToTheMarkers_data()
{
    QTest::addColumn<QByteArray>("field");
    QTest::addColumn<QByteArray>("value");
    QTest::newRow("wrong size") << QByteArray("filesize") << QByteArray("7");
    QTest::newRow("unknown compression") << QByteArray("compression") << QByteArray("zip");
    QTest::newRow("stream cut") << QByteArray("cfilesize") << QByteArray("5");
}

void TestSummaryCreator::unreadableSummaryFallsBackToTheMarkers()
{
    QFETCH(QByteArray, field);
    QFETCH(QByteArray, value);
    ContainerBuilder builder;
    builder.start();
    builder.section(SectionSpec("one")
                        .file(FileSpec("a", "1"))
                        .file(xmlFile(document(element("Title", "x"))).set(field, value)));
    DebugRecorder debug;
    QCOMPARE(texts(summaries(builder)),
             texts({{"one", 0, false, {"Undefined* a 0", "Undefined* ws_summary.xml 1"}}}));
    QCOMPARE(debug.take(), QStringList{"could not read summary 1"});
}

void TestSummaryCreator::summaryWithoutRootIsADefaultStepWithItsFiles_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::newRow("empty") << QByteArray();
    QTest::newRow("no XML") << QByteArray("\x00\xff\xfe<<<>>", 8);
    QTest::newRow("other root") << QByteArray("<other><Workflowstep/></other>");
    QTest::newRow("cut") << document(element("Title", "x")).chopped(1);
}

void TestSummaryCreator::summaryWithoutRootIsADefaultStepWithItsFiles()
{
    QFETCH(QByteArray, text);
    ContainerBuilder builder;
    builder.start();
    builder.section(SectionSpec("one").file(FileSpec("a", "1")).file(FileSpec(summaryName, text)));
    const DebugRecorder quiet;
    QCOMPARE(texts(summaries(builder)),
             texts({{"", 0, false, {"Undefined* a 0", "Undefined* ws_summary.xml 1"}}}));
}

void TestSummaryCreator::summaryIsReadAsUtf8()
{
    ContainerBuilder builder;
    builder.start();
    builder.section(SectionSpec("one").file(
        xmlFile("\xef\xbb\xbf" + document(element("Title", "\xc3\xa4 \xff")))));
    const DebugRecorder quiet;
    QCOMPARE(summaries(builder).at(0).title, QString::fromUtf8("\xc3\xa4 \xef\xbf\xbd"));
}

void TestSummaryCreator::escapedNamesMatchAsStored()
{
    const FileSpec odd("a]b\\c\n", "1");
    ContainerBuilder builder;
    builder.start();
    builder.section(SectionSpec("one").file(odd).file(xmlFile(document(entry(odd)))));
    const DebugRecorder quiet;
    const QList<Summary> found = summaries(builder);
    QCOMPARE(found.at(0).files.at(0).filename, QStringLiteral("a\\]b\\\\c\\n"));
    QCOMPARE(found.at(0).files.at(0).tagId, 0);
}

void TestSummaryCreator::filesOutsideOfSectionsComeLast()
{
    ContainerBuilder builder;
    builder.start();
    builder.file(FileSpec("before", "1"));
    builder.section(SectionSpec("one").file(FileSpec("a", "2")));
    builder.file(FileSpec(summaryName, document(element("Title", "x"))));
    QCOMPARE(texts(summaries(builder)),
             texts({{"one", 0, false, {"Undefined* a 1"}},
                    {"<unmatched files>",
                     0,
                     false,
                     {"Undefined* before 0", "Undefined* ws_summary.xml 2"}}}));

    ContainerBuilder bare;
    bare.start();
    bare.file(FileSpec("alone", "1"));
    QCOMPARE(texts(summaries(bare)),
             texts({{"<unmatched files>", 0, false, {"Undefined* alone 0"}}}));
}

void TestSummaryCreator::tagHashHoldsEveryFileOfEverySection()
{
    ContainerBuilder builder;
    builder.start();
    builder.file(FileSpec("outside", "0"));
    builder.section(SectionSpec("one").file(FileSpec("a", "1")).file(FileSpec("a", "1")));
    builder.section(SectionSpec("two").file(FileSpec("a", "1")));
    LorixParser parser(Tolerant);
    QVERIFY(parser.open(builder.writeTo(m_dir.filePath(QStringLiteral("hash.lorix")))));
    const TagHash hash = ::makeTagHash(parser);
    const QString md5 = QString::fromLatin1(ContainerBuilder::md5("1"));
    QCOMPARE(hash.size(), 3);
    const auto older = hash.values(QStringLiteral("file: <1>-<a>-<%1>-<1>").arg(md5));
    QCOMPARE(older.size(), 2);
    QCOMPARE(older.at(0).first.id, 2);
    QCOMPARE(older.at(0).second, 1);
    QCOMPARE(older.at(1).first.id, 1);
    const auto newer = hash.values(QStringLiteral("file: <0>-<a>-<%1>-<1>").arg(md5));
    QCOMPARE(newer.size(), 1);
    QCOMPARE(newer.at(0).first.id, 3);
    QCOMPARE(newer.at(0).second, 0);
}

void TestSummaryCreator::parserIsReadOnlyAndCreatorKeepsNothing()
{
    const FileSpec a("a", "1");
    ContainerBuilder builder;
    builder.start();
    builder.section(SectionSpec("one").file(a).file(a).file(xmlFile(document(entry(a)))));
    LorixParser parser(Tolerant);
    QVERIFY(parser.open(builder.writeTo(m_dir.filePath(QStringLiteral("again.lorix")))));
    const DebugRecorder quiet;
    SummaryCreator creator;
    const TagHash hash = makeTagHash(parser);
    const auto first = plain::members(creator.createSummaries(parser));
    QCOMPARE(plain::members(creator.createSummaries(parser)), first);
    QCOMPARE(plain::members(makeSummaries(parser, hash)), first);
    QCOMPARE(plain::members(makeSummaries(parser, hash)), first);
}

void TestSummaryCreator::bytesOfSummariesAreBounded()
{
    const QByteArray newer = document(element("Title", "newer xml"));
    const QByteArray older = document(element("Title", "older xml"));
    ContainerBuilder builder;
    builder.start();
    builder.section(SectionSpec("older").file(FileSpec(summaryName, older)));
    builder.section(SectionSpec("newer").file(FileSpec(summaryName, newer)));
    DebugRecorder debug;
    Bounds bounds;
    bounds.summaryBytes = older.size() + newer.size();
    QCOMPARE(summaries(builder, bounds).at(1).title, QStringLiteral("newer xml"));
    debug.take();
    --bounds.summaryBytes;
    const QList<Summary> found = summaries(builder, bounds);
    QCOMPARE(found.at(0).title, QStringLiteral("older xml"));
    QCOMPARE(found.at(1).title, QStringLiteral("newer"));
    QVERIFY(debug.take().contains(QStringLiteral("could not read summary 1")));
}

void TestSummaryCreator::claimedSizesDoNotCountAsRead_data()
{
    const FileSpec stored(summaryName, document(element("Title", "xml")));
    QTest::addColumn<FileSpec>("spec");
    QTest::addColumn<QString>("title");
    // Stored bytes are the content, whatever size the content is said to have.
    QTest::newRow("filesize of stored bytes")
        << FileSpec(stored).set("filesize", "2147483647") << QStringLiteral("xml");
    // Bytes that are not there are no bytes, which hold no step.
    QTest::newRow("cfilesize beyond the end")
        << FileSpec(stored).set("cfilesize", "2147483647") << QString();
    QTest::newRow("offset beyond the end")
        << FileSpec(stored).set("offset", "2147483647") << QString();
    QTest::newRow("no cfilesize") << FileSpec(stored).set("cfilesize", "") << QString();
    // A stream that is shorter than it should be has no content.
    QTest::newRow("filesize of a stream")
        << FileSpec(stored).flate().set("filesize", "2147483647") << QStringLiteral("marker");
}

void TestSummaryCreator::claimedSizesDoNotCountAsRead()
{
    QFETCH(FileSpec, spec);
    QFETCH(QString, title);
    ContainerBuilder builder;
    builder.start();
    builder.section(SectionSpec("marker").file(spec));
    const FileSpec honest = xmlFile(document(element("Title", "honest")));
    builder.section(SectionSpec("newer").file(honest));
    Bounds bounds;
    bounds.summaryBytes = 300 * 1024;
    const DebugRecorder quiet;
    const QList<Summary> found = summaries(builder, bounds);
    QCOMPARE(found.at(0).title, title);
    QCOMPARE(found.at(1).title, QStringLiteral("honest"));
}

void TestSummaryCreator::filesOfMarkersAreBounded()
{
    ContainerBuilder builder;
    builder.start();
    builder.section(SectionSpec("older").file(FileSpec("a", "1")).file(FileSpec("b", "2")));
    builder.section(SectionSpec("newer").file(FileSpec("c", "3")).file(FileSpec("d", "4")));
    Bounds bounds;
    bounds.summaryFiles = 4;
    QCOMPARE(texts(summaries(builder, bounds)), texts(summaries(builder)));
    bounds.summaryFiles = 3;
    QCOMPARE(texts(summaries(builder, bounds)),
             texts({{"older", 1, false, {"Undefined* a 0"}},
                    {"newer", 0, false, {"Undefined* c 2", "Undefined* d 3"}}}));
    bounds.summaryFiles = 0;
    QCOMPARE(texts(summaries(builder, bounds)),
             texts({{"older", 1, false, {}}, {"newer", 0, false, {}}}));
}

void TestSummaryCreator::filesOfSummariesAreBounded()
{
    ContainerBuilder builder;
    builder.start();
    builder.section(SectionSpec().file(FileSpec(summaryName, document("<InFile/><InFile/>"))));
    builder.section(SectionSpec().file(FileSpec(summaryName, document("<InFile/><InFile/>"))));
    const DebugRecorder quiet;
    Bounds bounds;
    bounds.summaryFiles = 4;
    QCOMPARE(texts(summaries(builder, bounds)), texts(summaries(builder)));
    bounds.summaryFiles = 3;
    const QList<Summary> found = summaries(builder, bounds);
    QCOMPARE(found.at(0).files.size(), 3);
    QCOMPARE(found.at(1).files.size(), 2);
    QCOMPARE(found.at(1).files.at(0).filePurpose, QStringLiteral("InFile"));
    QCOMPARE(found.at(1).files.at(1).filename, summaryName);
}

void TestSummaryCreator::randomContainersAreToldAsThePlainWay()
{
    QRandomGenerator random(20130621);
    const DebugRecorder quiet;
    const QString path = m_dir.filePath(QStringLiteral("random.lorix"));
    const QStringList names{"a", "b", "ws_summary.xml", "c"};
    int matched = 0;
    for (int run = plain::runs(600); run > 0; --run) {
        ContainerBuilder builder;
        builder.start();
        for (int sections = random.bounded(5); sections > 0; --sections) {
            SectionSpec section(QStringLiteral("s%1").arg(sections));
            QByteArray step;
            for (int files = random.bounded(6); files > 0; --files) {
                FileSpec file(names.at(random.bounded(int(names.size()))),
                              QByteArray::number(random.bounded(2)));
                file.desc = QString::number(random.bounded(2));
                if (random.bounded(2) == 0)
                    file.flate(random.bounded(2) == 0 ? 1 : 9);
                if (random.bounded(8) != 0)
                    step.append(entry(file, random.bounded(2) == 0 ? "InFile" : "OutFile"));
                file.comment = random.bounded(4) == 0 ? QStringLiteral("changed") : file.comment;
                section.file(file);
            }
            if (random.bounded(4) != 0) {
                QByteArray text = document(step + entry(FileSpec("none", "1")));
                if (random.bounded(4) == 0)
                    text = plain::damaged(random, QString::fromUtf8(text), 2).toUtf8();
                FileSpec xml = xmlFile(text);
                if (random.bounded(8) == 0)
                    xml.set("filesize", "1");
                section.file(xml);
            }
            if (random.bounded(4) == 0)
                section.markerAfter(random.bounded(int(section.files.size()) + 1));
            builder.section(section);
            if (random.bounded(4) == 0)
                builder.file(FileSpec("loose", "1"));
        }
        LorixParser parser(Tolerant);
        QVERIFY(parser.open(builder.writeTo(path)));
        const QList<Summary> found = SummaryCreator().createSummaries(parser);
        QCOMPARE(plain::members(found), plain::members(plain::createSummaries(parser)));
        for (const Summary& summary : found) {
            for (const FileSummary& file : summary.files)
                matched += file.embedded && file.tagId >= 0;
        }
    }
    QVERIFY(matched > 500);
}

QTEST_GUILESS_MAIN(TestSummaryCreator)
#include "tst_summarycreator.moc"
