// SPDX-License-Identifier: BSD-3-Clause
#include <lorix/summary/filesummary.h>
#include <lorix/summary/printsummary.h>
#include <lorix/summary/summary.h>
#include <lorix/summary/tripple.h>
#include <support/debugrecorder.h>

#include <QLoggingCategory>
#include <QSharedPointer>
#include <QTest>

using namespace lorix;

namespace {

FileSummary exampleFile()
{
    FileSummary file;
    file.tagId = 7;
    file.filename = QStringLiteral("in.dat");
    file.filepath = QStringLiteral("/data/run 1");
    file.filetype = QStringLiteral("text");
    file.description = QStringLiteral("the input");
    file.comment = QStringLiteral("as received");
    file.lastModified = QStringLiteral("2013-06-21T10:00:00");
    file.generateMD5 = true;
    file.embedded = true;
    file.preview = true;
    file.thumbnailOnly = true;
    file.uncompressedSize = 1200;
    file.uncompressedMD5 = QStringLiteral("0123456789abcdef0123456789abcdef");
    file.compressedMethod = QStringLiteral("flate");
    file.compressedSize = 300;
    file.compressedMD5 = QStringLiteral("fedcba9876543210fedcba9876543210");
    file.userAttributes.insert(QStringLiteral("speed"), QStringLiteral("12"));
    file.userAttributeUnits.insert(QStringLiteral("speed"), QStringLiteral("m/s"));
    file.userAttributeKeys.append(QStringLiteral("speed"));
    file.filePurpose = QStringLiteral("InFile");
    file.fromTags = false;
    return file;
}

QStringList defaultFileLines()
{
    return {QStringLiteral("  TagID -1"),
            QStringLiteral("  Filename \"\""),
            QStringLiteral("  Filepath \"\""),
            QStringLiteral("  Filetype \"\""),
            QStringLiteral("  Description \"\""),
            QStringLiteral("  Comment \"\""),
            QStringLiteral("  LastModified \"\""),
            QStringLiteral("  GenerateMD5 false"),
            QStringLiteral("  Embedded false"),
            QStringLiteral("  UncompressedSize -1"),
            QStringLiteral("  UncompressedMD5 \"\""),
            QStringLiteral("  CompressedMethod \"\""),
            QStringLiteral("  CompressedSize -1"),
            QStringLiteral("  CompressedMD5 \"\""),
            QStringLiteral("  FilePurpose \"Undefined\""),
            QStringLiteral("  Preview false"),
            QStringLiteral("  PreviewWS false"),
            QStringLiteral("  Thumbnail false"),
            QStringLiteral("  ThumbnailOnly false"),
            QStringLiteral("  File User Attributes:"),
            QStringLiteral("    QHash()")};
}

QStringList exampleFileLines()
{
    return {QStringLiteral("  TagID 7"),
            QStringLiteral("  Filename \"in.dat\""),
            QStringLiteral("  Filepath \"/data/run 1\""),
            QStringLiteral("  Filetype \"text\""),
            QStringLiteral("  Description \"the input\""),
            QStringLiteral("  Comment \"as received\""),
            QStringLiteral("  LastModified \"2013-06-21T10:00:00\""),
            QStringLiteral("  GenerateMD5 true"),
            QStringLiteral("  Embedded true"),
            QStringLiteral("  UncompressedSize 1200"),
            QStringLiteral("  UncompressedMD5 \"0123456789abcdef0123456789abcdef\""),
            QStringLiteral("  CompressedMethod \"flate\""),
            QStringLiteral("  CompressedSize 300"),
            QStringLiteral("  CompressedMD5 \"fedcba9876543210fedcba9876543210\""),
            QStringLiteral("  FilePurpose \"InFile\""),
            QStringLiteral("  Preview true"),
            QStringLiteral("  PreviewWS false"),
            QStringLiteral("  Thumbnail false"),
            QStringLiteral("  ThumbnailOnly true"),
            QStringLiteral("  File User Attributes:"),
            QStringLiteral("    QHash((\"speed\", \"12\"))")};
}

const char* const stepLabels[] = {
    "LorixRootFile:", "Timestamp:",  "Title:",       "Description:", "Comment:",   "Command:",
    "Tool:",          "ToolPath:",   "Host:",        "User:",        "Creator:",   "PDFTitle:",
    "PDFAuthor:",     "PDFSubject:", "PDFKeywords:", "PDFProducer:", "PDFCreator:"};

QString Workflowstep::*const stepTexts[] = {
    &Workflowstep::lorixRootFile, &Workflowstep::timestamp,  &Workflowstep::title,
    &Workflowstep::description,   &Workflowstep::comment,    &Workflowstep::command,
    &Workflowstep::tool,          &Workflowstep::toolPath,   &Workflowstep::host,
    &Workflowstep::user,          &Workflowstep::creator,    &Workflowstep::pdfTitle,
    &Workflowstep::pdfAuthor,     &Workflowstep::pdfSubject, &Workflowstep::pdfKeywords,
    &Workflowstep::pdfProducer,   &Workflowstep::pdfCreator};

FileTag exampleTag()
{
    FileTag tag;
    tag.id = 4;
    tag.position = 100;
    tag.taglen = 200;
    tag.filetype = QStringLiteral("text");
    tag.filename = QStringLiteral("a\\]b.txt");
    tag.desc = QStringLiteral("what it is");
    tag.comment = QStringLiteral("why");
    tag.compression = QStringLiteral("flate");
    tag.filesize = 11;
    tag.cfilesize = 9;
    tag.blocksize = 10;
    tag.offset = 1;
    tag.md5file = QStringLiteral("0123456789abcdef0123456789abcdef");
    tag.md5cfile = QStringLiteral("fedcba9876543210fedcba9876543210");
    return tag;
}

} // namespace

class TestSummary : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void recordsBeginWithTheirDefaults();
    void tripplesHoldDefaultsOrTheirThreeValues();
    void fileFromTagTakesWhatTheMarkerTells();
    void summaryFromTagsTakesTitleCreatorAndFilesInOrder();
    void fileHashNamesSectionNameDigestAndSize_data();
    void fileHashNamesSectionNameDigestAndSize();
    void defaultFilePrintsLineByLine();
    void filePrintsLineByLine();
    void stepPrintsItsFieldsThenFilesThenAttributes();
    void summaryPrintsStepThenDigest();
    void valuesKeepToTheirLine();
    void nothingIsPrintedWhereDebugOutputIsOff();
    void copiesAreIndependent();
};

void TestSummary::recordsBeginWithTheirDefaults()
{
    const FileSummary file;
    QCOMPARE(file.uncompressedSize, -1);
    QCOMPARE(file.compressedSize, -1);
    QCOMPARE(file.filePurpose, QStringLiteral("Undefined"));
    QVERIFY(file.fromTags);
    QVERIFY(!file.generateMD5 && !file.embedded && !file.preview);
    QVERIFY(!file.previewWS && !file.thumbnail && !file.thumbnailOnly);
    QVERIFY(file.filename.isEmpty() && file.filepath.isEmpty() && file.filetype.isEmpty());
    QVERIFY(file.userAttributes.isEmpty() && file.userAttributeUnits.isEmpty());
    QVERIFY(file.userAttributeKeys.isEmpty());

    const Summary summary;
    QCOMPARE(summary.tagId, 0);
    for (const auto member : stepTexts)
        QCOMPARE(summary.*member, QString());
    QVERIFY(summary.files.isEmpty());
    QVERIFY(summary.md5.isEmpty());
    QVERIFY(!summary.fromXml);
}

void TestSummary::tripplesHoldDefaultsOrTheirThreeValues()
{
    using Attribute = Tripple<QString, QString, QSharedPointer<QString>>;
    const Attribute none;
    QVERIFY(none.first.isEmpty() && none.second.isEmpty() && none.third.isNull());
    const Tripple<int, double, bool> zeros;
    QCOMPARE(zeros.first, 0);
    QCOMPARE(zeros.second, 0.0);
    QCOMPARE(zeros.third, false);
    const Attribute one(QStringLiteral("k"), QStringLiteral("v"),
                        QSharedPointer<QString>::create(QStringLiteral("u")));
    QCOMPARE(one.first, QStringLiteral("k"));
    QCOMPARE(one.second, QStringLiteral("v"));
    QCOMPARE(*one.third, QStringLiteral("u"));
}

void TestSummary::fileFromTagTakesWhatTheMarkerTells()
{
    const FileSummary file = makeFileSummaryFromFileTag(exampleTag());
    QCOMPARE(file.tagId, 4);
    QCOMPARE(file.filetype, QStringLiteral("text"));
    QCOMPARE(file.filename, QStringLiteral("a\\]b.txt"));
    QCOMPARE(file.description, QStringLiteral("what it is"));
    QCOMPARE(file.comment, QStringLiteral("why"));
    QCOMPARE(file.compressedMethod, QStringLiteral("flate"));
    QCOMPARE(file.compressedSize, 9);
    QCOMPARE(file.uncompressedSize, 11);
    QCOMPARE(file.compressedMD5, QStringLiteral("fedcba9876543210fedcba9876543210"));
    QCOMPARE(file.uncompressedMD5, QStringLiteral("0123456789abcdef0123456789abcdef"));
    QCOMPARE(file.filePurpose, QStringLiteral("Undefined"));
    QVERIFY(file.fromTags);
    QVERIFY(file.filepath.isEmpty() && file.lastModified.isEmpty());
    QVERIFY(!file.embedded && !file.generateMD5 && !file.preview && !file.previewWS);
    QVERIFY(!file.thumbnail && !file.thumbnailOnly && file.userAttributes.isEmpty());
}

void TestSummary::summaryFromTagsTakesTitleCreatorAndFilesInOrder()
{
    SectionTag section;
    section.id = 3;
    section.index = 9;
    section.title = QStringLiteral("Cleaned");
    section.creator = QStringLiteral("cleaner 1.0");
    FileTag first = exampleTag();
    FileTag second = exampleTag();
    second.id = 2;
    second.filename = QStringLiteral("second");

    const Summary summary = makeSummaryFromTags(section, {first, second});
    QCOMPARE(summary.tagId, 3);
    QCOMPARE(summary.title, QStringLiteral("Cleaned"));
    QCOMPARE(summary.creator, QStringLiteral("cleaner 1.0"));
    QVERIFY(summary.md5.isEmpty() && summary.timestamp.isEmpty());
    QVERIFY(!summary.fromXml);
    QCOMPARE(summary.files.size(), 2);
    QCOMPARE(summary.files.at(0).tagId, 4);
    QCOMPARE(summary.files.at(1).tagId, 2);
    QCOMPARE(summary.files.at(1).filename, QStringLiteral("second"));
    QVERIFY(summary.files.at(0).fromTags && summary.files.at(1).fromTags);
}

void TestSummary::fileHashNamesSectionNameDigestAndSize_data()
{
    QTest::addColumn<QString>("filename");
    QTest::addColumn<QString>("md5");
    QTest::addColumn<int>("size");
    QTest::addColumn<int>("section");
    QTest::addColumn<QString>("hash");

    QTest::newRow("default") << ""
                             << "" << -1 << 0 << "file: <0>-<>-<>-<-1>";
    QTest::newRow("all") << "a b.txt"
                         << "00ff" << 12 << 3 << "file: <3>-<a b.txt>-<00ff>-<12>";
    QTest::newRow("placeholders in the name") << "%1%2%4"
                                              << "%3" << 0 << -1 << "file: <-1>-<%1%2%4>-<%3>-<0>";
    QTest::newRow("brackets in the name") << "a>-<b"
                                          << "" << 1 << 1 << "file: <1>-<a>-<b>-<>-<1>";
}

void TestSummary::fileHashNamesSectionNameDigestAndSize()
{
    QFETCH(QString, filename);
    QFETCH(QString, md5);
    QFETCH(int, size);
    QFETCH(int, section);
    FileSummary file;
    file.filename = filename;
    file.uncompressedMD5 = md5;
    file.uncompressedSize = size;
    QTEST(makeFileHash(file, section), "hash");
}

void TestSummary::defaultFilePrintsLineByLine()
{
    DebugRecorder debug;
    FileSummary file;
    file.tagId = -1;
    printFileSummary(file);
    QCOMPARE(debug.take(), defaultFileLines());
}

void TestSummary::filePrintsLineByLine()
{
    DebugRecorder debug;
    lorix::printFileSummary(exampleFile());
    QCOMPARE(debug.take(), exampleFileLines());
}

void TestSummary::stepPrintsItsFieldsThenFilesThenAttributes()
{
    Workflowstep step;
    step.tagId = 12;
    QStringList expected = {QStringLiteral("TagID 12")};
    for (int i = 0; i < 17; ++i) {
        step.*stepTexts[i] = QStringLiteral("text %1").arg(i);
        expected.append(QLatin1String(stepLabels[i]) + QStringLiteral(" \"text %1\"").arg(i));
    }
    step.files = {exampleFile(), FileSummary()};
    step.files.last().tagId = -1;
    step.userAttributes.insert(QStringLiteral("k"), QStringLiteral("v"));
    step.userAttributeUnits.insert(QStringLiteral("k"), QStringLiteral("u"));
    expected += exampleFileLines() + defaultFileLines();
    expected.append(QStringLiteral("Step User Attributes:"));
    expected.append(QStringLiteral("  QHash((\"k\", \"v\"))"));

    DebugRecorder debug;
    printWorkflowstep(step);
    QCOMPARE(debug.take(), expected);
}

void TestSummary::summaryPrintsStepThenDigest()
{
    Summary summary;
    summary.md5 = QStringLiteral("00ff");
    DebugRecorder debug;
    printWorkflowstep(summary);
    QStringList expected = debug.take();
    expected.append(QStringLiteral("Summary MD5: \"00ff\""));
    printSummary(summary);
    QCOMPARE(debug.take(), expected);
}

void TestSummary::valuesKeepToTheirLine()
{
    FileSummary file;
    file.description = QStringLiteral("two\nlines, a \"quote\" and \u00e4");
    DebugRecorder debug;
    printFileSummary(file);
    QCOMPARE(debug.take().at(4),
             QStringLiteral("  Description \"two\\nlines, a \\\"quote\\\" and \u00e4\""));
}

void TestSummary::nothingIsPrintedWhereDebugOutputIsOff()
{
    DebugRecorder debug;
    QLoggingCategory* category = QLoggingCategory::defaultCategory();
    category->setEnabled(QtDebugMsg, false);
    printSummary(Summary());
    printFileSummary(FileSummary());
    category->setEnabled(QtDebugMsg, true);
    QCOMPARE(debug.take(), QStringList());
}

void TestSummary::copiesAreIndependent()
{
    Summary original;
    original.files.append(exampleFile());
    original.md5 = QStringLiteral("a");
    Summary copy = original;
    copy.md5 = QStringLiteral("b");
    copy.files[0].tagId = 99;
    copy.files[0].userAttributes.insert(QStringLiteral("speed"), QStringLiteral("13"));
    QCOMPARE(original.md5, QStringLiteral("a"));
    QCOMPARE(original.files.at(0).tagId, 7);
    QCOMPARE(original.files.at(0).userAttributes.value(QStringLiteral("speed")),
             QStringLiteral("12"));
}

QTEST_GUILESS_MAIN(TestSummary)
#include "tst_summary.moc"
