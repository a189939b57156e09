// SPDX-License-Identifier: BSD-3-Clause
#include <lorix/container/lorixparser.h>
#include <lorix/queues/extractionqueue.h>
#include <support/containerbuilder.h>
#include <support/signalrecorder.h>

#include <QMetaMethod>
#include <QTemporaryDir>
#include <QTest>

using namespace lorix;

namespace {

FileSpec named(const char* name, const QByteArray& content)
{
    return FileSpec(QString::fromLatin1(name), content);
}

// Compresses to about half its size, so that its stream takes several chunks.
QByteArray noisyText(int size)
{
    QByteArray text(size, Qt::Uninitialized);
    quint32 state = 12345;
    for (char& byte : text) {
        state = state * 1664525 + 1013904223;
        byte = static_cast<char>('a' + (state >> 28));
    }
    return text;
}

QByteArray contentOf(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("<no file>");
}

} // namespace

class TestExtractionQueue : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void signalsStandInTheirOrder();
    void emptyQueueReportsZeroAndEnds();
    void storedFileIsWrittenInChunks();
    void flateFileIsInflated();
    void itemsAreTakenByAscendingId();
    void keyThatIsNoFileIsIgnored();
    void nothingIsQueuedWithoutParser();
    void targetIsReplaced();
    void fileOfSizeZeroIsCreated();
    void emptySizesCountAsMinusOne();
    void missingDirectoryFailsWithTheDoubledWord();
    void directoryAsTargetFails();
    void fileOfSizeZeroFailsWhereNothingCanBeWritten();
    void fullDeviceFails();
    void rangeOutsideTheContainerFails();
    void failedItemCountsAsDone();
    void damagedStreamFailsAndLeavesWholeStepsBefore();
    void damagedStepLeavesNothingHoweverMuchItGave();
    void damageGoesBeforeAFailedWrite();
    void streamCutShortIsNoFailure();
    void bytesBehindTheStreamsEndAreIgnored();
    void decompressionRestsOnTheStoredDigest();
    void nextEntryCreditsWhatRemains();
    void handleErrorEndsTheCurrentItem();
    void cancelLeavesThePartlyWrittenTarget();
    void cancelFromASlotDropsNothingElse();
    void reinitAndResetPointToAnotherParser_data();
    void reinitAndResetPointToAnotherParser();
    void subclassSeesWhatPasses();
    void hugeOutputNeedsLittleMemory();

private:
    bool open(const ContainerBuilder& builder);
    QString path(const char* name) const { return m_dir->filePath(QString::fromLatin1(name)); }
    QStringList drive(ExtractionQueue& queue);

    std::unique_ptr<QTemporaryDir> m_dir;
    std::unique_ptr<LorixParser> m_parser;
};

void TestExtractionQueue::init()
{
    m_dir = std::make_unique<QTemporaryDir>();
    m_parser = std::make_unique<LorixParser>(Tolerant);
}

void TestExtractionQueue::cleanup()
{
    m_parser.reset();
    m_dir.reset();
}

bool TestExtractionQueue::open(const ContainerBuilder& builder)
{
    return m_parser->open(builder.writeTo(path("c.lorix")));
}

// Calls process() until it returns false and gives all signals, with the
// directory left out, and "|" after each step that returned true.
QStringList TestExtractionQueue::drive(ExtractionQueue& queue)
{
    SignalRecorder recorder(&queue);
    int steps = 0;
    while (queue.process()) {
        recorder.lines.append(QStringLiteral("|"));
        if (++steps == 1000)
            return {QStringLiteral("endless")};
    }
    return recorder.take().replaceInStrings(m_dir->path() + '/', QString());
}

void TestExtractionQueue::signalsStandInTheirOrder()
{
    const QMetaObject& meta = ExtractionQueue::staticMetaObject;
    QStringList signatures;
    for (int i = meta.methodOffset(); i < meta.methodCount(); ++i)
        signatures.append(QString::fromLatin1(meta.method(i).methodSignature()));
    QCOMPARE(signatures,
             QStringList({"fileProcessed(int,bool)", "percentFinishedChanged(int,QString)",
                          "cancelExtraction()"}));
    QCOMPARE(ExtractionQueue(nullptr).parent(), nullptr);
}

void TestExtractionQueue::emptyQueueReportsZeroAndEnds()
{
    ExtractionQueue queue(m_parser.get());
    QCOMPARE(drive(queue), QStringList({"percent 0 "}));
    queue.addExtractees({});
    QCOMPARE(drive(queue), QStringList({"percent 0 "}));
}

void TestExtractionQueue::storedFileIsWrittenInChunks()
{
    const QByteArray content = noisyText(250000);
    QVERIFY(open(ContainerBuilder().start().file(named("a", content))));
    ExtractionQueue queue(m_parser.get());
    queue.addExtractees({{0, path("out")}});
    QCOMPARE(drive(queue), QStringList({"percent 40 out", "|", "percent 80 out", "|",
                                        "file 0 valid", "percent 100 out"}));
    QCOMPARE(contentOf(path("out")), content);
}

void TestExtractionQueue::flateFileIsInflated()
{
    const QByteArray content = noisyText(400000);
    const FileSpec spec = named("a", content).flate();
    QVERIFY(spec.stored.size() > 200000 && spec.stored.size() < 300000);
    QVERIFY(open(ContainerBuilder().start().file(spec)));
    ExtractionQueue queue(m_parser.get());
    queue.addExtractees({{0, path("out")}});
    const QStringList all = drive(queue);
    QCOMPARE(all.filter(QStringLiteral("|")).size(), 2);
    QCOMPARE(all.mid(all.size() - 2), QStringList({"file 0 valid", "percent 100 out"}));
    QCOMPARE(contentOf(path("out")), content);
}

void TestExtractionQueue::itemsAreTakenByAscendingId()
{
    ContainerBuilder builder;
    builder.start();
    for (const char* name : {"a", "b", "c", "d"})
        builder.file(named(name, name));
    QVERIFY(open(builder));
    ExtractionQueue queue(m_parser.get());
    queue.addExtractees({{3, path("3")}, {0, path("0")}, {1, path("1")}});
    QCOMPARE(drive(queue), QStringList({"file 0 valid", "percent 33 0", "|", "file 1 valid",
                                        "percent 66 1", "|", "file 3 valid", "percent 100 3"}));
    QCOMPARE(contentOf(path("3")), QByteArray("d"));
}

void TestExtractionQueue::keyThatIsNoFileIsIgnored()
{
    QVERIFY(open(ContainerBuilder().start().file(named("a", "a"))));
    ExtractionQueue queue(m_parser.get());
    queue.addExtractees({{-1, path("x")}, {1, path("y")}});
    QCOMPARE(drive(queue), QStringList({"percent 0 "}));
    QCOMPARE(QDir(m_dir->path()).entryList(QDir::Files), QStringList({"c.lorix"}));
}

void TestExtractionQueue::nothingIsQueuedWithoutParser()
{
    ExtractionQueue queue(nullptr);
    queue.addExtractees({{0, path("x")}});
    QCOMPARE(drive(queue), QStringList({"percent 0 "}));
}

void TestExtractionQueue::targetIsReplaced()
{
    QVERIFY(open(ContainerBuilder().start().file(named("a", "new"))));
    ContainerBuilder::writeFile(path("out"), "much longer than before");
    ExtractionQueue queue(m_parser.get());
    queue.addExtractees({{0, path("out")}});
    drive(queue);
    QCOMPARE(contentOf(path("out")), QByteArray("new"));
}

void TestExtractionQueue::fileOfSizeZeroIsCreated()
{
    QVERIFY(open(ContainerBuilder()
                     .start()
                     .file(named("a", ""))
                     .file(named("b", "b")
                               .set("compression", "flate")
                               .set("md5cfile", QByteArray(32, '0'))
                               .set("cfilesize", "0"))));
    ExtractionQueue queue(m_parser.get());
    queue.addExtractees({{0, path("a")}, {1, path("b")}});
    QCOMPARE(drive(queue),
             QStringList({"file 0 valid", "percent 0 a", "|", "file 1 valid", "percent 0 b"}));
    QCOMPARE(contentOf(path("a")), QByteArray());
    QCOMPARE(contentOf(path("b")), QByteArray());
}

void TestExtractionQueue::emptySizesCountAsMinusOne()
{
    QVERIFY(open(ContainerBuilder().start().file(named("a", "abc").set("filesize", ""))));
    ExtractionQueue queue(m_parser.get());
    queue.addExtractees({{0, path("a")}});
    QCOMPARE(drive(queue), QStringList({"file 0 valid", "percent 100 a"}));
    QCOMPARE(contentOf(path("a")), QByteArray());
}

void TestExtractionQueue::missingDirectoryFailsWithTheDoubledWord()
{
    QVERIFY(open(ContainerBuilder().start().file(named("a", "a")).file(named("b", "b").flate())));
    ExtractionQueue queue(m_parser.get());
    queue.addExtractees({{0, path("no/a")}, {1, path("no/b")}});
    QCOMPARE(drive(queue).filter(QRegularExpression(QStringLiteral("^(log|file)"))),
             QStringList({"log 2 Could not write to file file no/a", "file 0 invalid",
                          "log 2 Could not write to file file no/b", "file 1 invalid"}));
}

void TestExtractionQueue::directoryAsTargetFails()
{
    QVERIFY(open(ContainerBuilder().start().file(named("a", "a"))));
    QVERIFY(QDir(m_dir->path()).mkdir(QStringLiteral("sub")));
    ExtractionQueue queue(m_parser.get());
    queue.addExtractees({{0, path("sub")}});
    QCOMPARE(drive(queue), QStringList({"log 2 Could not write to file file sub", "file 0 invalid",
                                        "percent 100 sub"}));
    QVERIFY(QFileInfo(path("sub")).isDir());
}

void TestExtractionQueue::fileOfSizeZeroFailsWhereNothingCanBeWritten()
{
    QVERIFY(open(ContainerBuilder().start().file(named("a", ""))));
    ExtractionQueue queue(m_parser.get());
    queue.addExtractees({{0, path("no/a")}});
    QCOMPARE(drive(queue), QStringList({"log 2 Could not write to file file no/a", "file 0 invalid",
                                        "percent 0 no/a"}));
}

void TestExtractionQueue::fullDeviceFails()
{
    if (!QFile::exists(QStringLiteral("/dev/full")))
        QSKIP("needs /dev/full");
    const QByteArray content = noisyText(150000);
    QVERIFY(open(
        ContainerBuilder().start().file(named("a", content)).file(named("b", content).flate())));
    ExtractionQueue queue(m_parser.get());
    queue.addExtractees({{0, QStringLiteral("/dev/full")}, {1, QStringLiteral("/dev/full")}});
    QCOMPARE(drive(queue).filter(QRegularExpression(QStringLiteral("^(log|file)"))),
             QStringList({"log 2 Could not write to file file /dev/full", "file 0 invalid",
                          "log 2 Could not write to file file /dev/full", "file 1 invalid"}));
}

void TestExtractionQueue::rangeOutsideTheContainerFails()
{
    QVERIFY(open(ContainerBuilder()
                     .start()
                     .file(named("a", "abc").set("filesize", "99999"))
                     .file(named("b", "abc").set("offset", "2147483647"))
                     .file(named("c", "abc").flate().set("cfilesize", "2147483647"))));
    ExtractionQueue queue(m_parser.get());
    queue.addExtractees({{0, path("a")}, {1, path("b")}, {2, path("c")}});
    QCOMPARE(drive(queue).filter(QRegularExpression(QStringLiteral("^(log|file)"))),
             QStringList({"log 2 Could not read from file a", "file 0 invalid",
                          "log 2 Could not read from file b", "file 1 invalid",
                          "log 2 Could not read from file c", "file 2 invalid"}));
    QCOMPARE(contentOf(path("a")), QByteArray());
}

void TestExtractionQueue::failedItemCountsAsDone()
{
    const QByteArray content = noisyText(150000);
    QVERIFY(open(ContainerBuilder()
                     .start()
                     .file(named("a", content))
                     .file(named("b", content))
                     .file(named("c", content))));
    ExtractionQueue queue(m_parser.get());
    queue.addExtractees({{0, path("a")}, {1, path("no/b")}, {2, path("c")}});
    QCOMPARE(drive(queue), QStringList({"percent 22 a", "|", "file 0 valid", "percent 33 a", "|",
                                        "log 2 Could not write to file file no/b", "file 1 invalid",
                                        "percent 66 no/b", "|", "percent 88 c", "|", "file 2 valid",
                                        "percent 100 c"}));
}

void TestExtractionQueue::damagedStreamFailsAndLeavesWholeStepsBefore()
{
    const QByteArray content = noisyText(600000);
    FileSpec spec = named("a", content).flate();
    QByteArray damaged = spec.stored;
    // An impossible block type where the third step begins.
    damaged[damaged.size() - 2] = static_cast<char>(damaged.at(damaged.size() - 2) ^ 0x55);
    QVERIFY(damaged.size() > 300000 && damaged.size() < 400000);
    QVERIFY(
        open(ContainerBuilder().start().file(spec.storeInstead(damaged)).file(named("b", "b"))));
    ExtractionQueue queue(m_parser.get());
    queue.addExtractees({{0, path("a")}, {1, path("b")}});
    const QStringList all = drive(queue);
    QCOMPARE(all.filter(QRegularExpression(QStringLiteral("^(log|file)"))),
             QStringList({"log 2 Could not decompress data from file a", "file 0 invalid",
                          "file 1 valid"}));
    const QByteArray written = contentOf(path("a"));
    // Three whole steps before the one with the damage, and nothing of that one.
    QVERIFY(written.size() > 400000);
    QVERIFY(written.size() < content.size() - 10000);
    QVERIFY(content.startsWith(written));
}

void TestExtractionQueue::damagedStepLeavesNothingHoweverMuchItGave()
{
    // Three megabytes in one step, of which two are out before the damage shows.
    FileSpec spec = named("a", QByteArray(3 * 1024 * 1024, 'z')).flate();
    QByteArray damaged = spec.stored;
    damaged[damaged.size() - 1] = static_cast<char>(damaged.back() ^ 1);
    QVERIFY(damaged.size() < 100000);
    QVERIFY(open(ContainerBuilder().start().file(spec.storeInstead(damaged))));
    ExtractionQueue queue(m_parser.get());
    queue.addExtractees({{0, path("a")}});
    QCOMPARE(drive(queue), QStringList({"log 2 Could not decompress data from file a",
                                        "file 0 invalid", "percent 100 a"}));
    QCOMPARE(contentOf(path("a")), QByteArray());
}

void TestExtractionQueue::damageGoesBeforeAFailedWrite()
{
    FileSpec spec = named("a", noisyText(3000)).flate();
    QByteArray damaged = spec.stored;
    damaged[damaged.size() - 1] = static_cast<char>(damaged.back() ^ 1);
    QVERIFY(open(ContainerBuilder().start().file(spec.storeInstead(damaged))));
    ExtractionQueue queue(m_parser.get());
    queue.addExtractees({{0, path("no/a")}});
    QCOMPARE(drive(queue), QStringList({"log 2 Could not decompress data from file no/a",
                                        "file 0 invalid", "percent 100 no/a"}));
}

void TestExtractionQueue::streamCutShortIsNoFailure()
{
    const QByteArray content = noisyText(3000);
    FileSpec spec = named("a", content).flate();
    QVERIFY(open(ContainerBuilder().start().file(
        spec.storeInstead(spec.stored.left(spec.stored.size() / 2)))));
    ExtractionQueue queue(m_parser.get());
    queue.addExtractees({{0, path("a")}});
    QCOMPARE(drive(queue), QStringList({"file 0 valid", "percent 100 a"}));
    QVERIFY(contentOf(path("a")).size() > 1000);
    QVERIFY(content.startsWith(contentOf(path("a"))));
}

void TestExtractionQueue::bytesBehindTheStreamsEndAreIgnored()
{
    FileSpec spec = named("a", "abc").flate();
    QVERIFY(open(
        ContainerBuilder().start().file(spec.storeInstead(spec.stored + QByteArray(250000, '!')))));
    ExtractionQueue queue(m_parser.get());
    queue.addExtractees({{0, path("a")}});
    QVERIFY(drive(queue).contains(QStringLiteral("file 0 valid")));
    QCOMPARE(contentOf(path("a")), QByteArray("abc"));
}

void TestExtractionQueue::decompressionRestsOnTheStoredDigest()
{
    const FileSpec flate = named("a", "abc").flate();
    QVERIFY(open(ContainerBuilder()
                     .start()
                     .file(FileSpec(flate).set("md5cfile", ""))
                     .file(named("b", "abc").set("md5cfile", QByteArray(32, 'a')))
                     .file(named("c", "abc").set("compression", "lzma"))));
    ExtractionQueue queue(m_parser.get());
    queue.addExtractees({{0, path("a")}, {1, path("b")}, {2, path("c")}});
    drive(queue);
    QCOMPARE(contentOf(path("a")), flate.stored);
    QCOMPARE(contentOf(path("b")), QByteArray("abc"));
    QCOMPARE(contentOf(path("c")), QByteArray("abc"));
}

void TestExtractionQueue::nextEntryCreditsWhatRemains()
{
    const QByteArray content = noisyText(200000);
    QVERIFY(open(ContainerBuilder().start().file(named("a", content)).file(named("b", content))));
    ExtractionQueue queue(m_parser.get());
    queue.addExtractees({{0, path("a")}, {1, path("b")}});
    QVERIFY(queue.process());
    queue.nextEntry();
    QCOMPARE(drive(queue), QStringList({"percent 75 b", "|", "file 1 valid", "percent 100 b"}));
    QCOMPARE(contentOf(path("a")).size(), 100000);
    queue.nextEntry();
    QCOMPARE(drive(queue), QStringList({"percent 0 "}));
}

void TestExtractionQueue::handleErrorEndsTheCurrentItem()
{
    QVERIFY(open(ContainerBuilder().start().file(named("a", "a")).file(named("b", "b"))));
    ExtractionQueue queue(m_parser.get());
    queue.addExtractees({{0, path("a")}, {1, path("b")}});
    SignalRecorder recorder(&queue);
    Extractee item;
    item.id = 7;
    QVERIFY(queue.handleError(QStringLiteral("told so"), item));
    QVERIFY(!queue.handleError(QStringLiteral("again"), item));
    QCOMPARE(recorder.lines,
             QStringList({"log 2 told so", "file 7 invalid", "log 2 again", "file 7 invalid"}));
}

void TestExtractionQueue::cancelLeavesThePartlyWrittenTarget()
{
    QVERIFY(open(ContainerBuilder().start().file(named("a", noisyText(250000)))));
    ExtractionQueue queue(m_parser.get());
    queue.addExtractees({{0, path("a")}});
    QVERIFY(queue.process());
    QVERIFY(QMetaObject::invokeMethod(&queue, "cancelExtraction"));
    QCOMPARE(drive(queue), QStringList({"percent 0 "}));
    QCOMPARE(contentOf(path("a")).size(), 100000);
}

void TestExtractionQueue::cancelFromASlotDropsNothingElse()
{
    QVERIFY(open(ContainerBuilder().start().file(named("a", "a")).file(named("b", "b"))));
    ExtractionQueue queue(m_parser.get());
    queue.addExtractees({{0, path("a")}, {1, path("b")}});
    connect(&queue, &ExtractionQueue::fileProcessed, &queue, &ExtractionQueue::cancelExtraction);
    QCOMPARE(drive(queue), QStringList({"file 0 valid", "percent 0 a"}));
    QVERIFY(!QFile::exists(path("b")));
}

void TestExtractionQueue::reinitAndResetPointToAnotherParser_data()
{
    QTest::addColumn<bool>("byReset");
    QTest::newRow("reinit") << false;
    QTest::newRow("reset") << true;
}

void TestExtractionQueue::reinitAndResetPointToAnotherParser()
{
    QFETCH(bool, byReset);
    QVERIFY(open(ContainerBuilder().start().file(named("a", noisyText(250000)))));
    LorixParser other(Tolerant);
    QVERIFY(other.open(ContainerBuilder().start().file(named("c", "ccc")).writeTo(path("other"))));
    ExtractionQueue queue(m_parser.get());
    queue.addExtractees({{0, path("a")}});
    QVERIFY(queue.process());
    byReset ? queue.reset(&other) : queue.reinit(&other);
    QCOMPARE(drive(queue), QStringList({"percent 0 "}));
    queue.addExtractees({{0, path("c")}});
    QCOMPARE(drive(queue), QStringList({"file 0 valid", "percent 100 c"}));
    QCOMPARE(contentOf(path("c")), QByteArray("ccc"));
}

void TestExtractionQueue::subclassSeesWhatPasses()
{
    class Watching : public ExtractionQueue
    {
    public:
        using ExtractionQueue::ExtractionQueue;
        QByteArray stored;
        QByteArray content;

    protected:
        void storedBytesRead(const Extractee&, const QByteArray& bytes) override
        {
            stored += bytes;
        }
        void contentWritten(const Extractee&, const char* bytes, qsizetype count) override
        {
            content.append(bytes, count);
        }
    };
    const FileSpec spec = named("a", noisyText(400000)).flate();
    QVERIFY(open(ContainerBuilder().start().file(spec)));
    Watching queue(m_parser.get());
    queue.addExtractees({{0, path("a")}});
    drive(queue);
    QCOMPARE(queue.stored, spec.stored);
    QCOMPARE(queue.content, spec.content);
}

void TestExtractionQueue::hugeOutputNeedsLittleMemory()
{
    class Watching : public ExtractionQueue
    {
    public:
        using ExtractionQueue::ExtractionQueue;
        qsizetype largest = 0;

    protected:
        void contentWritten(const Extractee&, const char*, qsizetype count) override
        {
            largest = qMax(largest, count);
        }
    };
    // One step's stored bytes hold a thousand times as much.
    const FileSpec spec = named("a", QByteArray(40000000, '\0')).flate();
    QVERIFY(spec.stored.size() < 100000);
    QVERIFY(open(ContainerBuilder().start().file(spec)));
    Watching queue(m_parser.get());
    queue.addExtractees({{0, path("a")}});
    QCOMPARE(drive(queue), QStringList({"file 0 valid", "percent 100 a"}));
    QCOMPARE(QFileInfo(path("a")).size(), 40000000);
    QVERIFY(queue.largest <= 1024 * 1024);
}

QTEST_GUILESS_MAIN(TestExtractionQueue)
#include "tst_extractionqueue.moc"
