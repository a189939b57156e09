// SPDX-License-Identifier: BSD-3-Clause
#include <lorix/container/lorixparser.h>
#include <lorix/queues/validationqueue.h>
#include <support/containerbuilder.h>
#include <support/signalrecorder.h>

#include <QMetaMethod>
#include <QTemporaryDir>
#include <QTest>

using namespace lorix;

namespace {

constexpr int leftOfMarker = 300;
constexpr int wholeSection = 600;

FileSpec named(const char* name, qsizetype size)
{
    return FileSpec(QString::fromLatin1(name), QByteArray(size, 'x'));
}

// A section of exactly 600 bytes, 300 of them up to the "%" of its marker and
// some behind the marker line.
SectionSpec evenSection(const char* title)
{
    const auto make = [title](qsizetype trailing) {
        return SectionSpec(QString::fromLatin1(title))
            .setLeadingBytes(QByteArray(leftOfMarker - 2, 'd') + '\n')
            .setTrailingBytes(QByteArray(trailing, 't'));
    };
    ContainerBuilder probe;
    probe.section(make(100));
    const qint64 size = probe.sections().first().end - probe.sections().first().start;
    return make(100 + wholeSection - size);
}

QStringList lines(std::initializer_list<const char*> texts)
{
    QStringList result;
    for (const char* text : texts)
        result.append(QString::fromUtf8(text));
    return result;
}

} // namespace

class TestValidationQueue : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void signalsStandInTheirOrder();
    void emptyQueueReportsZeroAndEnds();
    void fileIsReadInChunks();
    void percentageRunsOverAllItems();
    void chunkSizeFallsBackToTheDefault_data();
    void chunkSizeFallsBackToTheDefault();
    void chunkNeverCrossesTheMarker();
    void markerBeyondTheFirstChunkIsReachedExactly();
    void markerAtTheVeryStart();
    void sectionEndingAtItsMarkerEnds();
    void sectionEndingWithinItsMarkerTakesOneStepBack();
    void sectionEndingBeforeItsMarkerIsHashedAsPlainBytes();
    void sectionOfSizeZero();
    void emptyNumbersCountAsMinusOne();
    void sectionWithoutDigestNeverValidates();
    void repopulateTakesOldestSectionFirstThenFiles();
    void listedIdsAreTakenInTheSameOrder();
    void unknownIdsAreIgnored();
    void nothingIsQueuedWithoutParser();
    void flateFileNeedsStreamAndBothDigests();
    void flateWithoutStoredDigestIsHashedAsStored();
    void rangePastTheEndIsInvalid();
    void chunkThatReachesPastTheEndIsEmptyAsAWhole();
    void savedFilesAreLogged();
    void savedFileIsHashedUpToItsSize();
    void savedFileThatDoesNotOpenIsInvalid();
    void sizesOfSavedFilesNeverKeepItGoing_data();
    void sizesOfSavedFilesNeverKeepItGoing();
    void countersStartAnewWhenTheQueueHasRunEmpty();
    void itemsAddedMeanwhileCount();
    void nextEntryDropsTheCurrentItem();
    void nextEntryOnAnEmptyQueueDoesNothing();
    void cancelEndsAtOnce();
    void cancelFromASlotDropsNothingElse();
    void repointingFromASlotKeepsTheFirstNewItem();
    void reinitPointsToAnotherParser();
    void resetReportsTheTimeWhenRunEmpty();

private:
    bool open(const ContainerBuilder& builder);
    QStringList drive(ValidationQueue& queue, int limit = 1000);

    std::unique_ptr<QTemporaryDir> m_dir;
    std::unique_ptr<LorixParser> m_parser;
};

void TestValidationQueue::init()
{
    m_dir = std::make_unique<QTemporaryDir>();
    m_parser = std::make_unique<LorixParser>(Tolerant);
}

void TestValidationQueue::cleanup()
{
    m_parser.reset();
    m_dir.reset();
}

bool TestValidationQueue::open(const ContainerBuilder& builder)
{
    return m_parser->open(builder.writeTo(m_dir->filePath(QStringLiteral("c.lorix"))));
}

// Calls process() until it returns false and gives all signals, "|" after each
// step that returned true. Ends with "endless" where it does not end.
QStringList TestValidationQueue::drive(ValidationQueue& queue, int limit)
{
    SignalRecorder recorder(&queue);
    for (int step = 0; step < limit; ++step) {
        if (!queue.process())
            return recorder.take();
        recorder.lines.append(QStringLiteral("|"));
    }
    return recorder.take() << QStringLiteral("endless");
}

void TestValidationQueue::signalsStandInTheirOrder()
{
    const QMetaObject& meta = ValidationQueue::staticMetaObject;
    QStringList signatures;
    for (int i = meta.methodOffset(); i < meta.methodCount(); ++i)
        signatures.append(QString::fromLatin1(meta.method(i).methodSignature()));
    QCOMPARE(signatures, lines({"fileProcessed(int,bool)", "savedFileProcessed(QString,bool)",
                                "sectionProcessed(int,bool)", "percentFinishedChanged(int,QString)",
                                "cancelValidation()"}));
    QCOMPARE(ValidationQueue(nullptr, 0).parent(), nullptr);
}

void TestValidationQueue::emptyQueueReportsZeroAndEnds()
{
    ValidationQueue queue(m_parser.get(), 0);
    QCOMPARE(drive(queue), lines({"percent 0 "}));
    queue.addValidatees(QList<int>(), QList<int>());
    queue.addValidatees(QList<SavedFile>());
    QCOMPARE(drive(queue), lines({"percent 0 "}));
}

void TestValidationQueue::fileIsReadInChunks()
{
    QVERIFY(open(ContainerBuilder().start().file(named("a", 250))));
    ValidationQueue queue(m_parser.get(), 100);
    queue.addValidatees({0}, {});
    QCOMPARE(drive(queue),
             lines({"percent 40 a", "|", "percent 80 a", "|", "file 0 valid", "percent 100 a"}));
}

void TestValidationQueue::percentageRunsOverAllItems()
{
    QVERIFY(open(ContainerBuilder()
                     .start()
                     .file(named("a", 250))
                     .file(named("b", 0))
                     .file(named("c", 150).set("md5file", QByteArray(32, 'a')))));
    ValidationQueue queue(m_parser.get(), 100);
    queue.addValidatees({0, 1, 2}, {});
    QCOMPARE(drive(queue), lines({"percent 25 a", "|", "percent 50 a", "|", "file 0 valid",
                                  "percent 62 a", "|", "file 1 valid", "percent 62 b", "|",
                                  "percent 87 c", "|", "file 2 invalid", "percent 100 c"}));
}

void TestValidationQueue::chunkSizeFallsBackToTheDefault_data()
{
    QTest::addColumn<int>("chunkSize");
    QTest::addColumn<int>("steps");
    QTest::newRow("zero") << 0 << 3;
    QTest::newRow("negative") << -5 << 3;
    QTest::newRow("its own") << 250001 << 1;
    QTest::newRow("smaller") << 50000 << 6;
}

void TestValidationQueue::chunkSizeFallsBackToTheDefault()
{
    QFETCH(int, chunkSize);
    QVERIFY(open(ContainerBuilder().start().file(named("a", 250001))));
    ValidationQueue queue(m_parser.get(), chunkSize);
    queue.addValidatees({0}, {});
    int steps = 1;
    while (queue.process())
        ++steps;
    QTEST(steps, "steps");
}

void TestValidationQueue::chunkNeverCrossesTheMarker()
{
    QVERIFY(open(ContainerBuilder().start().section(evenSection("s"))));
    QCOMPARE(m_parser->getSection(0)->left, leftOfMarker);
    QCOMPARE(m_parser->getSection(0)->size, wholeSection);
    ValidationQueue queue(m_parser.get(), 0);
    queue.addValidatees({}, {0});
    const int behind = wholeSection - leftOfMarker -
                       static_cast<int>(m_parser->getSection(0)->validationTag.size());
    QVERIFY(behind > 0);
    QCOMPARE(drive(queue), QStringList({QStringLiteral("percent 50 s"), QStringLiteral("|"),
                                        QStringLiteral("section 0 valid"),
                                        QStringLiteral("percent %1 s").arg(50 + behind / 6)}));
}

void TestValidationQueue::markerBeyondTheFirstChunkIsReachedExactly()
{
    QVERIFY(open(ContainerBuilder().start().section(evenSection("s"))));
    ValidationQueue queue(m_parser.get(), 120);
    queue.addValidatees({}, {0});
    const QStringList all = drive(queue);
    QCOMPARE(all.mid(0, 6), lines({"percent 20 s", "|", "percent 40 s", "|", "percent 50 s", "|"}));
    QCOMPARE(all.at(all.size() - 2), QStringLiteral("section 0 valid"));
}

void TestValidationQueue::markerAtTheVeryStart()
{
    QVERIFY(open(ContainerBuilder().start().section(SectionSpec(QStringLiteral("s")))));
    QCOMPARE(m_parser->getSection(0)->left, 1);
    ValidationQueue queue(m_parser.get(), 0);
    queue.addValidatees({}, {0});
    // The section ends with its marker line: the tag completes it.
    QCOMPARE(drive(queue), lines({"section 0 valid", "percent 0 s"}));
}

void TestValidationQueue::sectionEndingAtItsMarkerEnds()
{
    QVERIFY(open(ContainerBuilder().start().section(
        evenSection("s").set("size", QByteArray::number(leftOfMarker)))));
    ValidationQueue queue(m_parser.get(), 0);
    queue.addValidatees({}, {0});
    const QStringList all = drive(queue);
    QCOMPARE(all.mid(0, 3), lines({"percent 100 s", "|", "section 0 invalid"}));
    QCOMPARE(all.size(), 4);
    const int tag = static_cast<int>(m_parser->getSection(0)->validationTag.size());
    QCOMPARE(all.last(),
             QStringLiteral("percent %1 s").arg((leftOfMarker - tag) * 100 / leftOfMarker));
}

void TestValidationQueue::sectionEndingWithinItsMarkerTakesOneStepBack()
{
    QVERIFY(open(ContainerBuilder().start().section(evenSection("s").set("size", "400"))));
    ValidationQueue queue(m_parser.get(), 0);
    queue.addValidatees({}, {0});
    const QStringList all = drive(queue);
    QCOMPARE(all.mid(0, 3), lines({"percent 75 s", "|", "section 0 invalid"}));
    QCOMPARE(all.size(), 4);
}

void TestValidationQueue::sectionEndingBeforeItsMarkerIsHashedAsPlainBytes()
{
    ContainerBuilder builder;
    builder.start().section(evenSection("s").set("size", "200"));
    const QByteArray first = builder.bytes().mid(builder.sections().first().start, 200);
    ContainerBuilder right;
    right.start().section(
        evenSection("s").set("size", "200").set("md5section", ContainerBuilder::md5(first)));
    QVERIFY(open(right));
    ValidationQueue queue(m_parser.get(), 150);
    queue.addValidatees({}, {0});
    QCOMPARE(drive(queue), lines({"percent 75 s", "|", "section 0 valid", "percent 100 s"}));
}

void TestValidationQueue::sectionOfSizeZero()
{
    QVERIFY(open(ContainerBuilder().start().section(
        evenSection("s").set("size", "0").set("md5section", ContainerBuilder::md5("")))));
    ValidationQueue queue(m_parser.get(), 0);
    queue.addValidatees({}, {0});
    QCOMPARE(drive(queue), lines({"section 0 valid", "percent 0 s"}));

    // With nothing left of it either, the tag is fed and the size comes after it.
    QVERIFY(open(
        ContainerBuilder().start().section(evenSection("s").set("size", "0").set("left", "0"))));
    queue.addValidatees({}, {0});
    QCOMPARE(drive(queue), lines({"percent 0 s", "|", "section 0 invalid", "percent 0 s"}));
}

void TestValidationQueue::emptyNumbersCountAsMinusOne()
{
    const QByteArray nothing = ContainerBuilder::md5("");
    QVERIFY(open(ContainerBuilder()
                     .start()
                     .file(named("a", 10).set("filesize", "").set("md5file", nothing))
                     .file(named("b", 101))
                     .section(evenSection("s").set("size", "").set("md5section", nothing))));
    ValidationQueue queue(m_parser.get(), 0);
    queue.addValidatees({0}, {});
    QCOMPARE(drive(queue), lines({"file 0 valid", "percent 100 a"}));
    queue.addValidatees({0, 1}, {});
    QCOMPARE(drive(queue),
             lines({"file 0 valid", "percent -1 a", "|", "file 1 valid", "percent 100 b"}));
    queue.addValidatees({}, {0});
    QCOMPARE(drive(queue), lines({"section 0 valid", "percent 100 s"}));
}

void TestValidationQueue::sectionWithoutDigestNeverValidates()
{
    QVERIFY(open(ContainerBuilder().start().section(evenSection("s").set("md5section", ""))));
    ValidationQueue queue(m_parser.get(), 0);
    queue.addValidatees({}, {0});
    QVERIFY(drive(queue).contains(QStringLiteral("section 0 invalid")));
}

void TestValidationQueue::repopulateTakesOldestSectionFirstThenFiles()
{
    QVERIFY(open(ContainerBuilder()
                     .start()
                     .section(SectionSpec(QStringLiteral("old")).file(named("a", 3)))
                     .section(SectionSpec(QStringLiteral("middle")))
                     .section(SectionSpec().file(named("b", 3)).file(named("c", 3)))));
    ValidationQueue queue(nullptr, 0);
    queue.repopulate(m_parser.get());
    QStringList order;
    const QStringList all = drive(queue);
    for (const QString& line : all)
        if (line.startsWith(QLatin1String("section")) || line.startsWith(QLatin1String("file")))
            order.append(line);
    QCOMPARE(order, lines({"section 2 valid", "section 1 valid", "section 0 valid", "file 0 valid",
                           "file 1 valid", "file 2 valid"}));
    // A section without files or title is done in one step, all of it its tag.
    QVERIFY(all.filter(QStringLiteral("<no title>")).size() > 0);
    QCOMPARE(all.last(), QStringLiteral("time validation finished"));
}

void TestValidationQueue::listedIdsAreTakenInTheSameOrder()
{
    ContainerBuilder builder;
    builder.start();
    for (const char* name : {"a", "b", "c"})
        builder.section(SectionSpec(QString::fromLatin1(name)).file(named(name, 3)));
    QVERIFY(open(builder));
    ValidationQueue queue(m_parser.get(), 0);
    queue.addValidatees({2, 0, 2, 0}, {0, 2, 0});
    const QStringList order = drive(queue).filter(QStringLiteral("valid"));
    QCOMPARE(order, lines({"section 2 valid", "section 0 valid", "file 0 valid", "file 2 valid"}));
}

void TestValidationQueue::unknownIdsAreIgnored()
{
    QVERIFY(open(
        ContainerBuilder().start().section(SectionSpec(QStringLiteral("s")).file(named("a", 3)))));
    ValidationQueue queue(m_parser.get(), 0);
    queue.addValidatees({-1, 1, 99}, {-1, 1, 99});
    QCOMPARE(drive(queue), lines({"percent 0 "}));
}

void TestValidationQueue::nothingIsQueuedWithoutParser()
{
    ValidationQueue queue(nullptr, 0);
    queue.addValidatees({0}, {0});
    QCOMPARE(drive(queue), lines({"percent 0 "}));
    queue.repopulate(nullptr);
    QCOMPARE(drive(queue), lines({"percent 0 ", "time validation finished"}));
}

void TestValidationQueue::flateFileNeedsStreamAndBothDigests()
{
    const QByteArray text(500, 'y');
    const QByteArray stream = ContainerBuilder::zlibStream(text);
    const FileSpec good = FileSpec(QStringLiteral("f"), text).flate();
    QByteArray damaged = stream;
    damaged[stream.size() - 1] = static_cast<char>(damaged.back() ^ 1);
    QVERIFY(open(ContainerBuilder()
                     .start()
                     .file(good)
                     .file(FileSpec(good).storeInstead(stream.chopped(1)))
                     .file(FileSpec(good).storeInstead(damaged))
                     .file(FileSpec(good).set("md5cfile", QByteArray(32, '0')))
                     .file(FileSpec(good).set("md5file", QByteArray(32, '0')))
                     .file(FileSpec(good).storeInstead(stream + "more"))
                     .file(FileSpec(good).set("filesize", "7"))));
    QCOMPARE(m_parser->getNumFiles(), 7);
    ValidationQueue queue(m_parser.get(), 7);
    queue.repopulate(m_parser.get());
    QCOMPARE(drive(queue).filter(QStringLiteral("valid")).mid(0, 7),
             lines({"file 0 valid", "file 1 invalid", "file 2 invalid", "file 3 invalid",
                    "file 4 invalid", "file 5 valid", "file 6 valid"}));
}

void TestValidationQueue::flateWithoutStoredDigestIsHashedAsStored()
{
    const QByteArray text(500, 'y');
    const QByteArray stream = ContainerBuilder::zlibStream(text);
    const FileSpec good = FileSpec(QStringLiteral("f"), text).flate().set("md5cfile", "");
    QVERIFY(open(ContainerBuilder().start().file(good).file(
        FileSpec(good).set("md5file", ContainerBuilder::md5(stream)))));
    ValidationQueue queue(m_parser.get(), 0);
    queue.addValidatees({0, 1}, {});
    QCOMPARE(drive(queue).filter(QStringLiteral("valid")),
             lines({"file 0 invalid", "file 1 valid"}));
}

void TestValidationQueue::rangePastTheEndIsInvalid()
{
    QVERIFY(open(ContainerBuilder()
                     .start()
                     .file(named("a", 10).set("filesize", "2147483647"))
                     .file(named("b", 10).set("offset", "2147483647"))
                     .file(named("c", 10)
                               .set("offset", "2147483647")
                               .set("md5file", ContainerBuilder::md5("")))));
    ValidationQueue queue(m_parser.get(), 1000000000);
    queue.addValidatees({0, 1, 2}, {});
    // Nothing can be read of "c", which is just what its digest says.
    QCOMPARE(drive(queue),
             lines({"percent 46 a", "|", "percent 93 a", "|", "file 0 invalid", "percent 99 a", "|",
                    "file 1 invalid", "percent 99 b", "|", "file 2 valid", "percent 100 c"}));
}

void TestValidationQueue::chunkThatReachesPastTheEndIsEmptyAsAWhole()
{
    // Ten bytes are there; of the second chunk only two, and none count.
    const ContainerBuilder builder =
        ContainerBuilder().start().file(named("a", 10)
                                            .set("filesize", "16")
                                            .set("md5file", ContainerBuilder::md5("xxxxxxxx"))
                                            .withoutClosingLineEnd());
    QVERIFY(open(builder));
    ValidationQueue queue(m_parser.get(), 8);
    queue.addValidatees({0}, {});
    QCOMPARE(drive(queue), lines({"percent 50 a", "|", "file 0 valid", "percent 100 a"}));
}

void TestValidationQueue::savedFilesAreLogged()
{
    const QString good = m_dir->filePath(QStringLiteral("good"));
    const QString bad = m_dir->filePath(QStringLiteral("bad %1"));
    ContainerBuilder::writeFile(good, QByteArray(30, 'g'));
    ContainerBuilder::writeFile(bad, QByteArray(10, 'b'));
    ValidationQueue queue(nullptr, 20);
    queue.addValidatees(
        {{good, QString::fromLatin1(ContainerBuilder::md5(QByteArray(30, 'g'))), 30},
         {bad, QString::fromLatin1(ContainerBuilder::md5("other")), 10}});
    QCOMPARE(drive(queue),
             QStringList(
                 {QStringLiteral("percent 50 ") + good, QStringLiteral("|"),
                  QStringLiteral("saved ") + good + QStringLiteral(" valid"),
                  QStringLiteral("log 0 Checksum of file ") + good + QStringLiteral(" is correct"),
                  QStringLiteral("percent 75 ") + good, QStringLiteral("|"),
                  QStringLiteral("saved ") + bad + QStringLiteral(" invalid"),
                  QStringLiteral("log 0 Checksum of file ") + bad + QStringLiteral(" is incorrect"),
                  QStringLiteral("percent 100 ") + bad}));
}

void TestValidationQueue::savedFileIsHashedUpToItsSize()
{
    const QString path = m_dir->filePath(QStringLiteral("f"));
    ContainerBuilder::writeFile(path, "abcdefgh");
    const auto md5 = [](const char* text) {
        return QString::fromLatin1(ContainerBuilder::md5(text));
    };
    ValidationQueue queue(nullptr, 3);
    queue.addValidatees({{path, md5("abc"), 3},
                         {path, md5("abcdefgh"), 8},
                         {path, md5("abcdefgh"), 20},
                         {path, md5("abcdefgh"), 7},
                         {path, md5(""), 0}});
    QCOMPARE(drive(queue).filter(QStringLiteral("saved")),
             QStringList({QStringLiteral("saved %1 valid").arg(path),
                          QStringLiteral("saved %1 valid").arg(path),
                          QStringLiteral("saved %1 valid").arg(path),
                          QStringLiteral("saved %1 invalid").arg(path),
                          QStringLiteral("saved %1 valid").arg(path)}));
}

void TestValidationQueue::savedFileThatDoesNotOpenIsInvalid()
{
    ValidationQueue queue(nullptr, 0);
    const QString md5 = QString::fromLatin1(ContainerBuilder::md5("x"));
    queue.addValidatees({{QStringLiteral("/nowhere/f"), md5, 10}, {m_dir->path(), md5, 10}});
    QCOMPARE(drive(queue).filter(QStringLiteral("saved")),
             QStringList({QStringLiteral("saved /nowhere/f invalid"),
                          QStringLiteral("saved %1 invalid").arg(m_dir->path())}));
}

void TestValidationQueue::sizesOfSavedFilesNeverKeepItGoing_data()
{
    QTest::addColumn<int>("size");
    QTest::addColumn<int>("percent");
    QTest::newRow("0") << 0 << 0;
    QTest::newRow("-1") << -1 << 100;
    QTest::newRow("smallest") << std::numeric_limits<int>::min() << 100;
    QTest::newRow("largest") << std::numeric_limits<int>::max() << 100;
}

void TestValidationQueue::sizesOfSavedFilesNeverKeepItGoing()
{
    QFETCH(int, size);
    QFETCH(int, percent);
    const QString path = m_dir->filePath(QStringLiteral("f"));
    ContainerBuilder::writeFile(path, QByteArray());
    ValidationQueue queue(nullptr, std::numeric_limits<int>::max());
    queue.addValidatees({{path, QString::fromLatin1(ContainerBuilder::md5("")), size}});
    QCOMPARE(drive(queue).last(), QStringLiteral("percent %1 %2").arg(percent).arg(path));
}

void TestValidationQueue::countersStartAnewWhenTheQueueHasRunEmpty()
{
    QVERIFY(open(ContainerBuilder().start().file(named("a", 200))));
    ValidationQueue queue(m_parser.get(), 100);
    for (int round = 0; round < 2; ++round) {
        queue.addValidatees({0}, {});
        QCOMPARE(drive(queue), lines({"percent 50 a", "|", "file 0 valid", "percent 100 a"}));
    }
}

void TestValidationQueue::itemsAddedMeanwhileCount()
{
    QVERIFY(open(ContainerBuilder().start().file(named("a", 200)).file(named("b", 200))));
    ValidationQueue queue(m_parser.get(), 100);
    queue.addValidatees({0}, {});
    SignalRecorder recorder(&queue);
    QVERIFY(queue.process());
    queue.addValidatees({1}, {});
    while (queue.process())
        ;
    QCOMPARE(recorder.lines, lines({"percent 50 a", "file 0 valid", "percent 50 a", "percent 75 b",
                                    "file 1 valid", "percent 100 b"}));
}

void TestValidationQueue::nextEntryDropsTheCurrentItem()
{
    QVERIFY(open(ContainerBuilder().start().file(named("a", 300)).file(named("b", 100))));
    ValidationQueue queue(m_parser.get(), 100);
    queue.addValidatees({0, 1}, {});
    SignalRecorder recorder(&queue);
    QVERIFY(queue.process());
    queue.nextEntry();
    QVERIFY(!queue.process());
    // The dropped item's remaining bytes stay in the total.
    QCOMPARE(recorder.lines, lines({"percent 25 a", "file 1 valid", "percent 50 b"}));
}

void TestValidationQueue::nextEntryOnAnEmptyQueueDoesNothing()
{
    ValidationQueue queue(m_parser.get(), 0);
    queue.nextEntry();
    QCOMPARE(drive(queue), lines({"percent 0 "}));
}

void TestValidationQueue::cancelEndsAtOnce()
{
    QVERIFY(open(ContainerBuilder().start().file(named("a", 300))));
    ValidationQueue queue(m_parser.get(), 100);
    queue.repopulate(m_parser.get());
    SignalRecorder recorder(&queue);
    QVERIFY(queue.process());
    QVERIFY(QMetaObject::invokeMethod(&queue, "cancelValidation"));
    QVERIFY(!queue.process());
    QCOMPARE(recorder.lines, lines({"percent 33 a", "time validation finished", "percent 0 "}));
    queue.addValidatees({0}, {});
    QCOMPARE(drive(queue).last(), QStringLiteral("percent 100 a"));
}

void TestValidationQueue::cancelFromASlotDropsNothingElse()
{
    QVERIFY(open(ContainerBuilder().start().file(named("a", 30)).file(named("b", 30))));
    ValidationQueue queue(m_parser.get(), 100);
    queue.addValidatees({0, 1}, {});
    connect(&queue, &ValidationQueue::fileProcessed, &queue, &ValidationQueue::cancelValidation);
    QCOMPARE(drive(queue), lines({"file 0 valid", "percent 0 a"}));
}

void TestValidationQueue::repointingFromASlotKeepsTheFirstNewItem()
{
    QVERIFY(open(ContainerBuilder().start().file(named("a", 30)).file(named("b", 30))));
    LorixParser other(Tolerant);
    QVERIFY(other.open(ContainerBuilder()
                           .start()
                           .file(named("c", 30))
                           .writeTo(m_dir->filePath(QStringLiteral("other")))));
    ValidationQueue queue(m_parser.get(), 100);
    queue.addValidatees({0, 1}, {});
    int processed = 0;
    connect(&queue, &ValidationQueue::fileProcessed, &queue, [&] {
        if (++processed == 1)
            queue.repopulate(&other);
    });
    QCOMPARE(drive(queue), lines({"file 0 valid", "percent 0 a", "|", "file 0 valid",
                                  "percent 100 c", "time validation finished"}));
}

void TestValidationQueue::reinitPointsToAnotherParser()
{
    QVERIFY(open(ContainerBuilder().start().file(named("a", 300))));
    LorixParser other(Tolerant);
    QVERIFY(other.open(ContainerBuilder()
                           .start()
                           .file(named("c", 200))
                           .writeTo(m_dir->filePath(QStringLiteral("other")))));
    ValidationQueue queue(m_parser.get(), 100);
    queue.addValidatees({0}, {});
    QVERIFY(queue.process());
    queue.reinit(&other);
    QCOMPARE(drive(queue), lines({"percent 0 "}));
    queue.addValidatees({0}, {});
    QCOMPARE(drive(queue), lines({"percent 50 c", "|", "file 0 valid", "percent 100 c"}));
}

void TestValidationQueue::resetReportsTheTimeWhenRunEmpty()
{
    QVERIFY(open(ContainerBuilder().start().file(named("a", 10))));
    ValidationQueue queue(nullptr, 0);
    queue.reset(m_parser.get());
    queue.addValidatees({0}, {});
    QCOMPARE(drive(queue), lines({"file 0 valid", "percent 100 a", "time validation finished"}));
    QCOMPARE(drive(queue), lines({"percent 0 "}));
}

QTEST_GUILESS_MAIN(TestValidationQueue)
#include "tst_validationqueue.moc"
