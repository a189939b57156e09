// SPDX-License-Identifier: BSD-3-Clause
// Containers that are made to cost time or memory.
#include <lorix/container/lorixparser.h>
#include <support/containerbuilder.h>
#include <support/debugrecorder.h>
#include <support/peakmemory.h>

#include <QFile>
#include <QTemporaryDir>
#include <QTest>

using namespace lorix;

namespace {

constexpr qint64 mebibyte = 1048576;
const QByteArray header = ContainerBuilder::headerText() + "\n";

QByteArray section(int number, qint64 previousmarker)
{
    return ContainerBuilder::sectionMarker(
        {{"title", QByteArray::number(number)},
         {"left", "1"},
         {"size", "1"},
         {"md5section", QByteArray(32, 'a')},
         {"previousmarker",
          previousmarker < 0 ? QByteArray() : QByteArray::number(previousmarker)}});
}

} // namespace

class TestHostile : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void largestFileOpensAndLargerIsRefused();
    void fileBytesBoundsWhatOpens();
    void markerLineBytesBoundsWhatIsAMarker();
    void fileWithoutLineFeedsNeedsLittleMemory();
    void largeDocumentNeedsLittleMemory();
    void chainInsideOneLineIsFollowedWithinTheBound();
    void chainInsideOneHugeLineEndsAtTheBound();
    void brokenChainInLongLinesEndsAtTheBound();
    void longHealthyChainIsReadWhole();
    void manyBrokenMarkersOnOneLineCostOnePass();
    void claimedSizesAllocateNothing();
    void thousandfoldStreamNeedsLittleMemory();

private:
    QString path() const { return m_dir.filePath(QStringLiteral("container")); }

    /// `front`, a hole, and `back` so that the file has `size` bytes.
    void writeSparse(const QByteArray& front, const QByteArray& back, qint64 size)
    {
        QFile::remove(path());
        QFile file(path());
        QVERIFY(file.open(QIODevice::WriteOnly));
        QCOMPARE(file.write(front), front.size());
        QVERIFY(file.resize(size));
        QVERIFY(file.seek(size - back.size()));
        QCOMPARE(file.write(back), back.size());
    }

    QTemporaryDir m_dir;
};

void TestHostile::largestFileOpensAndLargerIsRefused()
{
    const QByteArray last = "\n" + section(1, -1) + "\n";
    const qint64 largest = 2147483647;
    writeSparse(header, last, largest);
    FileIterator lines;
    QVERIFY(lines.open(path()));
    QCOMPARE(qint64(lines.getFileSize()), largest);
    QVERIFY(lines.lastLine());
    QCOMPARE(qint64(lines.curPos()), largest - last.size() + 1);
    QVERIFY(lines.gotoPos(2147483646));
    QCOMPARE(*lines.curLine(), QByteArray("\n"));
    QVERIFY(!lines.nextLine());
    QVERIFY(!lines.gotoPos(2147483647));
    QCOMPARE(lines.getBytes(2147483646, 1), QByteArray("\n"));
    QCOMPARE(lines.getBytes(2147483646, 2), QByteArray());
    LorixParser parser(Strict);
    PeakMemory memory;
    QVERIFY(parser.open(path()));
    QVERIFY2(memory.growth() < 4 * mebibyte, qPrintable(QString::number(memory.growth())));
    QCOMPARE(parser.getNumSections(), 1);
    QCOMPARE(qint64(parser.getSection(0)->position), largest - last.size() + 2);

    writeSparse(header, last, largest + 1);
    QVERIFY(!lines.open(path()));
    QVERIFY(lines.empty());
    QVERIFY(!parser.open(path()));
    QCOMPARE(parser.getNumSections(), 0);
}

void TestHostile::fileBytesBoundsWhatOpens()
{
    ContainerBuilder::writeFile(path(), header);
    LorixParser parser(Strict);
    Bounds bounds;
    bounds.fileBytes = header.size();
    parser.setBounds(bounds);
    QVERIFY(parser.open(path()));
    bounds.fileBytes = header.size() - 1;
    parser.setBounds(bounds);
    QVERIFY(!parser.open(path()));
}

void TestHostile::markerLineBytesBoundsWhatIsAMarker()
{
    ContainerBuilder builder;
    builder.start().section(SectionSpec().file(
        FileSpec(QStringLiteral("f"), "x").setLineSuffix(QByteArray(3000, 'x'))));
    builder.section(SectionSpec().setLineSuffix(QByteArray(5000, 'y')));
    builder.writeTo(path());
    const auto lineLength = [&builder](qint64 start) {
        return builder.bytes().indexOf('\n', start) + 1 - start;
    };
    const qint64 fileLine = lineLength(builder.files().first().line);
    const qint64 newestLine = lineLength(builder.sections().at(1).line);
    for (const ParseMode mode : {Strict, Tolerant}) {
        LorixParser parser(mode);
        Bounds bounds;
        bounds.markerLineBytes = newestLine;
        parser.setBounds(bounds);
        QVERIFY(parser.open(path()));
        QCOMPARE(parser.getNumSections(), 2);
        QCOMPARE(parser.getNumFiles(), 1);
        bounds.markerLineBytes = newestLine - 1;
        parser.setBounds(bounds);
        QVERIFY(parser.open(path()));
        QCOMPARE(parser.getNumSections(), 1);
        bounds.markerLineBytes = fileLine;
        parser.setBounds(bounds);
        QVERIFY(parser.open(path()));
        QCOMPARE(parser.getNumFiles(), 1);
        bounds.markerLineBytes = fileLine - 1;
        parser.setBounds(bounds);
        QVERIFY(parser.open(path()));
        QCOMPARE(parser.getNumFiles(), 0);
    }
}

void TestHostile::fileWithoutLineFeedsNeedsLittleMemory()
{
    // One line of zeros from the first byte on, and one that begins like a marker.
    writeSparse("", "x", 256 * mebibyte);
    LorixParser parser(Tolerant);
    PeakMemory memory;
    QVERIFY(!parser.open(path()));
    writeSparse(header + "%<--! $LORIX_SECTION [", "x", 256 * mebibyte);
    QVERIFY(parser.open(path()));
    QCOMPARE(parser.getNumSections(), 0);
    QVERIFY2(memory.growth() <= 4 * mebibyte, qPrintable(QString::number(memory.growth())));
}

void TestHostile::largeDocumentNeedsLittleMemory()
{
    QFile file(path());
    QVERIFY(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
    file.write(header);
    const QByteArray lines = (QByteArray(300, 'd') + '\n').repeated(3500);
    for (qint64 size = 0; size < 64 * mebibyte; size += lines.size())
        QCOMPARE(file.write(lines), lines.size());
    const qint64 at = file.pos();
    file.write(section(1, -1) + "\n");
    file.close();
    LorixParser parser(Tolerant);
    PeakMemory memory;
    QVERIFY(parser.open(path()));
    QVERIFY2(memory.growth() <= 4 * mebibyte, qPrintable(QString::number(memory.growth())));
    QCOMPARE(qint64(parser.getSection(0)->position), at + 1);
}

void TestHostile::chainInsideOneLineIsFollowedWithinTheBound()
{
    // Every link leads into the middle of one line, which is read from there to
    // its end each time: n markers cost about n * n / 2 of their lengths.
    const int count = 300;
    QByteArray line = "text ";
    qint64 previous = -1;
    for (int i = 0; i < count; ++i) {
        const qint64 here = line.size();
        line += section(i, previous < 0 ? -1 : here - previous);
        previous = here;
    }
    const qint64 last = header.size() + line.size() + 1;
    const QByteArray bytes =
        header + line + "\n" + section(count, last - header.size() - previous) + "\n";
    ContainerBuilder::writeFile(path(), bytes);
    LorixParser parser(Tolerant);
    QVERIFY(parser.open(path()));
    QCOMPARE(parser.getNumSections(), count + 1);
    QCOMPARE(parser.getSection(count)->title, QStringLiteral("0"));

    // What the whole chain needs: each link's rest of the line.
    Bounds bounds;
    bounds.chainBytes = 0;
    parser.setBounds(bounds);
    QVERIFY(parser.open(path()));
    const int within = parser.getNumSections();
    QVERIFY2(within > 1 && within < count, qPrintable(QString::number(within)));
    // One more section where just its bytes are allowed, and none before.
    const auto sections = [&](qint64 chainBytes) {
        bounds.chainBytes = chainBytes;
        parser.setBounds(bounds);
        return parser.open(path()) ? parser.getNumSections() : -1;
    };
    qint64 low = 0;
    qint64 high = bytes.size();
    QVERIFY(sections(high) > within);
    while (high - low > 1)
        (sections((low + high) / 2) > within ? high : low) = (low + high) / 2;
    QCOMPARE(sections(low), within);
    QCOMPARE(sections(high), within + 1);
}

void TestHostile::chainInsideOneHugeLineEndsAtTheBound()
{
    const int count = 50000;
    QByteArray line = "text ";
    qint64 previous = -1;
    for (int i = 0; i < count; ++i) {
        const qint64 here = line.size();
        line += section(i, previous < 0 ? -1 : here - previous);
        previous = here;
    }
    const qint64 last = header.size() + line.size() + 1;
    ContainerBuilder::writeFile(path(), header + line + "\n" +
                                            section(count, last - header.size() - previous) + "\n");
    for (const ParseMode mode : {Strict, Tolerant}) {
        LorixParser parser(mode);
        PeakMemory memory;
        QVERIFY(parser.open(path()));
        QVERIFY(parser.getNumSections() > 100);
        QVERIFY(parser.getNumSections() < count);
        QVERIFY2(memory.growth() < 256 * mebibyte, qPrintable(QString::number(memory.growth())));
    }
}

void TestHostile::brokenChainInLongLinesEndsAtTheBound()
{
    // Each link misses its marker and is searched for in long lines.
    const QByteArray longLine = QByteArray(200000, 'l') + "\n";
    QByteArray bytes = header;
    qint64 previous = -1;
    for (int i = 0; i < 200; ++i) {
        bytes += longLine;
        const qint64 here = bytes.size();
        bytes += section(i, previous < 0 ? -1 : here - previous + 5) + "\n";
        previous = here;
    }
    ContainerBuilder::writeFile(path(), bytes);
    LorixParser parser(Tolerant);
    PeakMemory memory;
    QVERIFY(parser.open(path()));
    QVERIFY2(parser.getNumSections() > 50, qPrintable(QString::number(parser.getNumSections())));
    QVERIFY2(memory.growth() < 16 * mebibyte, qPrintable(QString::number(memory.growth())));
    Bounds bounds;
    bounds.chainBytes = 0;
    parser.setBounds(bounds);
    QVERIFY(parser.open(path()));
    QVERIFY(parser.getNumSections() < 200);
}

void TestHostile::longHealthyChainIsReadWhole()
{
    QByteArray bytes = header;
    const int count = 50000;
    qint64 previous = -1;
    for (int i = 0; i < count; ++i) {
        const qint64 here = bytes.size();
        bytes += section(i, previous < 0 ? -1 : here - previous) + "\n";
        previous = here;
    }
    ContainerBuilder::writeFile(path(), bytes);
    Bounds bounds;
    bounds.chainBytes = 0;
    for (const ParseMode mode : {Strict, Tolerant}) {
        LorixParser parser(mode);
        parser.setBounds(bounds);
        QVERIFY(parser.open(path()));
        QCOMPARE(parser.getNumSections(), count);
    }
}

void TestHostile::manyBrokenMarkersOnOneLineCostOnePass()
{
    const QByteArray prefix = "%<--! $LORIX_SECTION ";
    const QByteArray filePrefix = "%<--! $LORIX_EMBEDDEDFILE_BEGIN ";
    ContainerBuilder::writeFile(path(), header + "x" + prefix.repeated(200000) + "\n" +
                                            (filePrefix + "\n").repeated(100000) +
                                            (prefix + "\n").repeated(100000));
    LorixParser parser(Tolerant);
    QVERIFY(parser.open(path()));
    QCOMPARE(parser.getNumSections(), 0);
    QCOMPARE(parser.getNumFiles(), 0);
}

void TestHostile::claimedSizesAllocateNothing()
{
    ContainerBuilder builder;
    SectionSpec spec;
    for (const char* field : {"filesize", "cfilesize", "blocksize", "offset"})
        spec.file(FileSpec(QStringLiteral("a"), "x").flate().set(field, "2147483647"))
            .file(FileSpec(QStringLiteral("b"), "x").set(field, "2147483647"));
    builder.start().section(spec).writeTo(path());
    LorixParser parser(Strict);
    DebugRecorder silence;
    PeakMemory memory;
    QVERIFY(parser.open(path()));
    QVERIFY(parser.getNumFiles() >= 4);
    const QString target = m_dir.filePath(QStringLiteral("target"));
    for (int id = 0; id < parser.getNumFiles(); ++id) {
        parser.getCompressedFile(id);
        parser.getFileContent(id);
        parser.calcChecksumsForFile(id);
        QVERIFY(parser.writeFileToDisk(id, target));
    }
    QVERIFY2(memory.growth() < 16 * mebibyte, qPrintable(QString::number(memory.growth())));
}

void TestHostile::thousandfoldStreamNeedsLittleMemory()
{
    const int size = 100 * mebibyte;
    QByteArray stream;
    {
        stream = ContainerBuilder::zlibStream(QByteArray(size, '\0'), 9);
    }
    QByteArray damaged = stream;
    damaged.back() = static_cast<char>(damaged.back() ^ 1);
    for (const QByteArray& stored : {stream, damaged}) {
        ContainerBuilder builder;
        builder.start()
            .section(SectionSpec().file(
                FileSpec(QStringLiteral("f")).flate().storeInstead(stored).set("filesize", "5")))
            .writeTo(path());
        LorixParser parser(Strict);
        QVERIFY(parser.open(path()));
        DebugRecorder silence;
        const QString target = m_dir.filePath(QStringLiteral("target"));
        PeakMemory memory;
        QVERIFY(parser.writeFileToDisk(0, target));
        QVERIFY2(memory.growth() <= 16 * mebibyte, qPrintable(QString::number(memory.growth())));
        QCOMPARE(QFile(target).size(), stored == stream ? qint64(size) : 0);
        QVERIFY(!parser.getFileContent(0));
        QVERIFY(!parser.calcChecksumsForFile(0).second.isEmpty());
        QVERIFY2(memory.growth() <= 16 * mebibyte, qPrintable(QString::number(memory.growth())));
        QFile::remove(target);
    }
}

QTEST_GUILESS_MAIN(TestHostile)
#include "tst_hostile.moc"
