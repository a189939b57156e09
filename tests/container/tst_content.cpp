// SPDX-License-Identifier: BSD-3-Clause
#include <lorix/container/lorixparser.h>
#include <support/containerbuilder.h>
#include <support/debugrecorder.h>
#include <support/logrecorder.h>

#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include <ctime>
#include <fcntl.h>
#include <sys/stat.h>
#include <thread>
#include <unistd.h>

using namespace lorix;

namespace {
std::clock_t ticks = 0;
std::clock_t ticksPerCall = 0;
} // namespace

// Stands in for the system's clock, in the library as well.
extern "C" __attribute__((visibility("default"))) std::clock_t clock() noexcept
{
    ticks += ticksPerCall;
    return ticks;
}

namespace {

constexpr int mebibyte = 1048576;

const QString emptyDigest = QStringLiteral("d41d8cd98f00b204e9800998ecf8427e");

QString hex(const QByteArray& bytes)
{
    return QString::fromLatin1(ContainerBuilder::md5(bytes));
}

// Does not compress, so that chunks of the stream are chunks of the content.
QByteArray noise(int count)
{
    QByteArray result(count, Qt::Uninitialized);
    quint32 state = 1;
    for (char& byte : result) {
        state = state * 1664525 + 1013904223;
        byte = static_cast<char>(state >> 24);
    }
    return result;
}

// A block of a stream that holds its bytes as they are.
QByteArray storedBlock(const QByteArray& bytes, bool last = false)
{
    const auto size = static_cast<unsigned int>(bytes.size());
    QByteArray block(1, last ? '\1' : '\0');
    for (const unsigned int byte : {size, size >> 8, ~size, ~size >> 8})
        block += static_cast<char>(byte & 255);
    return block + bytes;
}

} // namespace

class TestContent : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void storedBytesAreThoseOfTheContainer();
    void storedBytesOutsideAreEmpty();
    void contentOfBothMethods();
    void contentOfAnUnknownMethodIsNull();
    void contentNeedsTheExactSize_data();
    void contentNeedsTheExactSize();
    void emptyFileHasEmptyContent();
    void brokenStreamOfAnEmptyFileHasEmptyContent();
    void noneFileReadsCfilesizeBytes();
    void decompressPutsTheSizeInFront();
    void decompressOfBrokenStreamsIsEmpty();
    void decompressIgnoresAWrongSize_data();
    void decompressIgnoresAWrongSize();
    void checksums_data();
    void checksums();
    void checksumsOfWhatCannotBeReadAreEmpty();
    void writesBothMethods();
    void writeLogsEveryStep();
    void writeTimesInTicks_data();
    void writeTimesInTicks();
    void sizesAreLoggedInMebibytes_data();
    void sizesAreLoggedInMebibytes();
    void unknownFileWritesNothing();
    void unwritableTargetFails();
    void unknownMethodLeavesAnEmptyTarget();
    void fullDiskIsAnError();
    void targetIsReplaced();
    void damagedStreamKeepsTheChunksBefore();
    void damagedChunkLeavesNothingOfItself();
    void damagedChunkWritesNothingToAPipe();
    void bytesOutsideTheContainerAreLeftOut();
    void streamsOfSeveralChunksComeOutWhole();
    void chunkThatFillsTheBufferExactlyIsDamage();

private:
    void open(LorixParser& parser, const FileSpec& spec)
    {
        ContainerBuilder builder;
        builder.start().section(SectionSpec().file(spec));
        m_bytes = builder.bytes();
        m_place = builder.files().first();
        QVERIFY(parser.open(builder.writeTo(m_dir.filePath(QStringLiteral("container")))));
        QCOMPARE(parser.getNumFiles(), 1);
    }
    QByteArray written() const
    {
        QFile file(m_target);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("no file");
    }

    QTemporaryDir m_dir;
    QString m_target = m_dir.filePath(QStringLiteral("target"));
    QByteArray m_bytes;
    PlacedFile m_place;
};

void TestContent::init()
{
    ticks = 5000;
    ticksPerCall = 0;
    QFile::remove(m_target);
}

void TestContent::storedBytesAreThoseOfTheContainer()
{
    LorixParser parser(Strict);
    open(parser, FileSpec(QStringLiteral("f"), "content").flate());
    const QByteArray stored = m_bytes.mid(m_place.stored, m_place.storedSize);
    QCOMPARE(*parser.getCompressedFile(0), stored);
    QCOMPARE(parser.getBytes(int(m_place.stored), int(m_place.storedSize)), stored);
    QCOMPARE(parser.getBytes(int(m_bytes.size()) - 1, 2), QByteArray());
    QCOMPARE(parser.getBytes(int(m_bytes.size()) - 1, 1), QByteArray("\n"));
}

void TestContent::storedBytesOutsideAreEmpty()
{
    const QList<QPair<QByteArray, QByteArray>> numbers = {{"offset", "100000"},
                                                          {"offset", "2147483647"},
                                                          {"cfilesize", "100000"},
                                                          {"cfilesize", ""},
                                                          {"cfilesize", "2147483647"}};
    for (const auto& number : numbers) {
        LorixParser parser(Strict);
        open(parser, FileSpec(QStringLiteral("f"), "content").set(number.first, number.second));
        const auto stored = parser.getCompressedFile(0);
        QVERIFY(stored);
        QCOMPARE(*stored, QByteArray());
        const auto content = parser.getFileContent(0);
        QVERIFY(content);
        QCOMPARE(*content, QByteArray());
    }
    // One byte before the block is still a place in the file.
    LorixParser parser(Strict);
    open(parser, FileSpec(QStringLiteral("f"), "content").set("offset", ""));
    QCOMPARE(*parser.getCompressedFile(0), QByteArray(">\nconte"));
}

void TestContent::contentOfBothMethods()
{
    const QByteArray content = noise(3000);
    LorixParser parser(Strict);
    open(parser, FileSpec(QStringLiteral("f"), content));
    QCOMPARE(*parser.getFileContent(0), content);
    open(parser, FileSpec(QStringLiteral("f"), content).flate());
    QCOMPARE(*parser.getFileContent(0), content);
    open(parser, FileSpec(QString::fromUtf8("\xc3\xa4\xf0\x9f\x98\x80"), content).flate());
    QCOMPARE(*parser.getFileContent(0), content);
}

void TestContent::contentOfAnUnknownMethodIsNull()
{
    for (const char* method : {"", "None", "FLATE", "flate ", "gzip"}) {
        LorixParser parser(Strict);
        open(parser, FileSpec(QStringLiteral("f"), "content").set("compression", method));
        QVERIFY(!parser.getFileContent(0));
        QCOMPARE(*parser.getCompressedFile(0), QByteArray("content"));
    }
}

void TestContent::contentNeedsTheExactSize_data()
{
    QTest::addColumn<QByteArray>("filesize");
    QTest::addColumn<bool>("found");
    QTest::newRow("exact") << QByteArray("7") << true;
    QTest::newRow("one less") << QByteArray("6") << false;
    QTest::newRow("one more") << QByteArray("8") << false;
    QTest::newRow("none") << QByteArray("0") << false;
    QTest::newRow("empty") << QByteArray("") << false;
    QTest::newRow("largest") << QByteArray("2147483647") << false;
}

void TestContent::contentNeedsTheExactSize()
{
    QFETCH(QByteArray, filesize);
    QFETCH(bool, found);
    LorixParser parser(Strict);
    open(parser, FileSpec(QStringLiteral("f"), "content").flate().set("filesize", filesize));
    const auto content = parser.getFileContent(0);
    QCOMPARE(content != nullptr, found);
    if (content)
        QCOMPARE(*content, QByteArray("content"));
    // What is stored as it is needs no size.
    open(parser, FileSpec(QStringLiteral("f"), "content").set("filesize", filesize));
    QCOMPARE(*parser.getFileContent(0), QByteArray("content"));
}

void TestContent::emptyFileHasEmptyContent()
{
    LorixParser parser(Strict);
    for (const bool flate : {false, true}) {
        FileSpec spec(QStringLiteral("f"));
        open(parser, flate ? spec.flate() : spec);
        const auto content = parser.getFileContent(0);
        QVERIFY(content);
        QCOMPARE(*content, QByteArray());
        QFile::remove(m_target);
        DebugRecorder silence;
        QVERIFY(parser.writeFileToDisk(0, m_target));
        QCOMPARE(written(), QByteArray());
    }
}

void TestContent::brokenStreamOfAnEmptyFileHasEmptyContent()
{
    // A broken stream inflates to nothing, and nothing is what was expected.
    LorixParser parser(Strict);
    open(parser, FileSpec(QStringLiteral("f")).flate().storeInstead("no stream"));
    const auto content = parser.getFileContent(0);
    QVERIFY(content);
    QCOMPARE(*content, QByteArray());
    open(parser, FileSpec(QStringLiteral("f"), "c").flate().storeInstead("no stream"));
    QVERIFY(!parser.getFileContent(0));
}

void TestContent::noneFileReadsCfilesizeBytes()
{
    LorixParser parser(Strict);
    open(parser, FileSpec(QStringLiteral("f"), "0123456789").set("cfilesize", "4"));
    QCOMPARE(*parser.getFileContent(0), QByteArray("0123"));
    QVERIFY(parser.writeFileToDisk(0, m_target));
    QCOMPARE(written(), QByteArray("0123"));
    QCOMPARE(parser.calcChecksumsForFile(0).first, hex("0123"));
}

void TestContent::decompressPutsTheSizeInFront()
{
    const LorixParser parser(Strict);
    const QByteArray stream = ContainerBuilder::zlibStream("content");
    QByteArray data = stream;
    QCOMPARE(parser.decompressBytes(data, 7), QByteArray("content"));
    QCOMPARE(data, QByteArray("\0\0\0\x07", 4) + stream);
    data = "x";
    DebugRecorder silence;
    QCOMPARE(parser.decompressBytes(data, 0x01020304), QByteArray());
    QCOMPARE(data, QByteArray("\x01\x02\x03\x04x"));
    data.clear();
    QCOMPARE(parser.decompressBytes(data, 0), QByteArray());
    QCOMPARE(data, QByteArray(4, '\0'));
}

void TestContent::decompressOfBrokenStreamsIsEmpty()
{
    const LorixParser parser(Strict);
    const QByteArray stream = ContainerBuilder::zlibStream(noise(300));
    DebugRecorder silence;
    for (int cut = 0; cut < stream.size(); cut += 7) {
        QByteArray data = stream.left(cut);
        QCOMPARE(parser.decompressBytes(data, 300), QByteArray());
    }
    QByteArray data = stream;
    data.back() = static_cast<char>(data.back() ^ 1);
    QCOMPARE(parser.decompressBytes(data, 300), QByteArray());
    data = stream + "rubbish behind";
    QCOMPARE(parser.decompressBytes(data, 300), noise(300));
}

void TestContent::decompressIgnoresAWrongSize_data()
{
    QTest::addColumn<unsigned int>("size");
    for (const unsigned int size : {0u, 1u, 299u, 301u, 100000u, 2147483648u, 4294967295u})
        QTest::addRow("%u", size) << size;
}

void TestContent::decompressIgnoresAWrongSize()
{
    QFETCH(unsigned int, size);
    const QByteArray stream = ContainerBuilder::zlibStream(noise(300));
    QByteArray data = stream;
    QCOMPARE(LorixParser(Strict).decompressBytes(data, size), noise(300));
    QCOMPARE(data.mid(4), stream);
    QByteArray head;
    for (const unsigned int byte : {size >> 24, size >> 16, size >> 8, size})
        head += static_cast<char>(byte & 255);
    QCOMPARE(data.left(4), head);
    // The four bytes are the usual ones of Qt's own function.
    if (size < 1000000)
        QCOMPARE(qUncompress(data), noise(300));
}

void TestContent::checksums_data()
{
    QTest::addColumn<bool>("flate");
    QTest::addColumn<QByteArray>("compression");
    QTest::newRow("none") << false << QByteArray("none");
    QTest::newRow("flate") << true << QByteArray("flate");
    QTest::newRow("unknown") << false << QByteArray("zip");
}

void TestContent::checksums()
{
    QFETCH(bool, flate);
    QFETCH(QByteArray, compression);
    for (const QByteArray& content : {QByteArray("content"), QByteArray(), noise(100000)}) {
        FileSpec spec(QStringLiteral("f"), content);
        if (flate)
            spec.flate();
        LorixParser parser(Strict);
        // The size that the marker claims plays no part.
        open(parser, spec.set("compression", compression).set("filesize", "3"));
        const auto digests = parser.calcChecksumsForFile(0);
        QCOMPARE(digests.first, hex(spec.stored));
        QCOMPARE(digests.second, flate ? hex(content) : QString());
    }
    LorixParser parser(Strict);
    open(parser, FileSpec(QStringLiteral("f"), "content").flate().storeInstead("no stream"));
    QCOMPARE(parser.calcChecksumsForFile(0), qMakePair(hex("no stream"), emptyDigest));
}

void TestContent::checksumsOfWhatCannotBeReadAreEmpty()
{
    const QPair<QString, QString> none;
    LorixParser parser(Strict);
    QCOMPARE(parser.calcChecksumsForFile(0), none);
    for (const char* size : {"100000", ""}) {
        open(parser, FileSpec(QStringLiteral("f"), "content").flate().set("cfilesize", size));
        QCOMPARE(parser.calcChecksumsForFile(0), none);
    }
    QCOMPARE(parser.calcChecksumsForFile(-1), none);
    QCOMPARE(parser.calcChecksumsForFile(1), none);
}

void TestContent::writesBothMethods()
{
    const QByteArray content = noise(100000);
    LorixParser parser(Strict);
    open(parser, FileSpec(QStringLiteral("f"), content));
    QVERIFY(parser.writeFileToDisk(0, m_target));
    QCOMPARE(written(), content);
    open(parser, FileSpec(QStringLiteral("f"), content).flate());
    DebugRecorder debug;
    QVERIFY(parser.writeFileToDisk(0, m_target));
    QCOMPARE(written(), content);
    const QStringList notes = debug.take();
    QCOMPARE(notes.size(), 1);
    QVERIFY(notes.first().startsWith(QStringLiteral("unextract")));
    QVERIFY(notes.first().contains(QLatin1Char('"') + m_target + QLatin1Char('"')));
}

void TestContent::writeLogsEveryStep()
{
    LogRecorder log;
    LorixParser parser(Strict, &log);
    open(parser, FileSpec(QStringLiteral("f"), QByteArray(1234567, 'x')).set("cfilesize", "2345"));
    QVERIFY(log.messages.isEmpty());
    const QString target = m_dir.filePath(QStringLiteral("%1 %2"));
    QVERIFY(parser.writeFileToDisk(0, target));
    using Messages = QList<QPair<QString, int>>;
    QCOMPARE(log.messages, Messages({{QStringLiteral("[writeFileToDisk] file: ") + target, 0},
                                     {QStringLiteral("original/embedded file size: 1.18/0.00 MB "
                                                     "(1234567/2345 bytes)"),
                                      0},
                                     {QStringLiteral("[writeFileToDisk] total: 0s."), 0}}));
}

void TestContent::writeTimesInTicks_data()
{
    QTest::addColumn<int>("elapsed");
    QTest::addColumn<QString>("text");
    QTest::newRow("tick") << 1 << QStringLiteral("0.01");
    QTest::newRow("250") << 250 << QStringLiteral("2.5");
    QTest::newRow("many digits") << 12345678 << QStringLiteral("123457");
    QTest::newRow("very many") << 1234567890 << QStringLiteral("1.23457e+07");
}

void TestContent::writeTimesInTicks()
{
    QFETCH(int, elapsed);
    QFETCH(QString, text);
    LogRecorder log;
    LorixParser parser(Strict, &log);
    open(parser, FileSpec(QStringLiteral("f"), "content"));
    ticksPerCall = elapsed; // once at the start and once at the end
    QVERIFY(parser.writeFileToDisk(0, m_target));
    QCOMPARE(log.texts().last(),
             QStringLiteral("[writeFileToDisk] total: ") + text + QStringLiteral("s."));
}

void TestContent::sizesAreLoggedInMebibytes_data()
{
    QTest::addColumn<QByteArray>("filesize");
    QTest::addColumn<QString>("text");
    QTest::newRow("zero") << QByteArray("0") << QStringLiteral("0.00/0.00 MB (0/0 bytes)");
    QTest::newRow("empty") << QByteArray("") << QStringLiteral("-0.00/0.00 MB (-1/0 bytes)");
    QTest::newRow("half a hundredth")
        << QByteArray("5243") << QStringLiteral("0.01/0.00 MB (5243/0 bytes)");
    QTest::newRow("one") << QByteArray("1048576")
                         << QStringLiteral("1.00/0.00 MB (1048576/0 bytes)");
    QTest::newRow("largest") << QByteArray("2147483647")
                             << QStringLiteral("2048.00/0.00 MB (2147483647/0 bytes)");
}

void TestContent::sizesAreLoggedInMebibytes()
{
    QFETCH(QByteArray, filesize);
    QFETCH(QString, text);
    LogRecorder log;
    LorixParser parser(Strict, &log);
    open(parser, FileSpec(QStringLiteral("f")).set("filesize", filesize));
    QVERIFY(parser.writeFileToDisk(0, m_target));
    QCOMPARE(log.texts().at(1), QStringLiteral("original/embedded file size: ") + text);
}

void TestContent::unknownFileWritesNothing()
{
    LogRecorder log;
    LorixParser parser(Strict, &log);
    open(parser, FileSpec(QStringLiteral("f"), "content"));
    QVERIFY(!parser.writeFileToDisk(1, m_target));
    QVERIFY(!parser.writeFileToDisk(-1, m_target));
    QVERIFY(!QFile::exists(m_target));
    const QString line = QStringLiteral("[writeFileToDisk] file: ") + m_target;
    QCOMPARE(log.texts(), QStringList({line, line}));
}

void TestContent::unwritableTargetFails()
{
    LogRecorder log;
    LorixParser parser(Strict, &log);
    open(parser, FileSpec(QStringLiteral("f"), "content"));
    DebugRecorder silence;
    const QString target = m_dir.filePath(QStringLiteral("missing/target"));
    QVERIFY(!parser.writeFileToDisk(0, target));
    QVERIFY(!parser.writeFileToDisk(0, m_dir.path()));
    QCOMPARE(log.messages.size(), 2);
}

void TestContent::unknownMethodLeavesAnEmptyTarget()
{
    LogRecorder log;
    LorixParser parser(Strict, &log);
    open(parser, FileSpec(QStringLiteral("f"), "content").set("compression", "zip"));
    QVERIFY(!parser.writeFileToDisk(0, m_target));
    QCOMPARE(written(), QByteArray());
    QCOMPARE(log.texts(), QStringList({QStringLiteral("[writeFileToDisk] file: ") + m_target,
                                       QStringLiteral("*** ERROR: invalid compression method.")}));
    QCOMPARE(log.messages.last().second, 0);
}

void TestContent::fullDiskIsAnError()
{
    if (!QFile::exists(QStringLiteral("/dev/full")))
        QSKIP("needs the full device");
    const QString full = QStringLiteral("/dev/full");
    for (const bool flate : {false, true}) {
        LogRecorder log;
        LorixParser parser(Strict, &log);
        FileSpec spec(QStringLiteral("f"), "content");
        open(parser, flate ? spec.flate() : spec);
        DebugRecorder silence;
        QVERIFY(!parser.writeFileToDisk(0, full));
        QCOMPARE(log.messages.size(), 3);
        QCOMPARE(log.messages.last(), qMakePair(QStringLiteral("*** ERROR: IO Error."), 0));
    }
    // Nothing to write cannot fail to be written, not even out of a broken stream.
    LorixParser parser(Strict);
    DebugRecorder silence;
    open(parser, FileSpec(QStringLiteral("f")));
    QVERIFY(parser.writeFileToDisk(0, full));
    open(parser, FileSpec(QStringLiteral("f"), noise(3000)).flate());
    QByteArray stream = m_bytes.mid(m_place.stored, m_place.storedSize);
    stream.back() = static_cast<char>(stream.back() ^ 1);
    open(parser, FileSpec(QStringLiteral("f"), noise(3000)).flate().storeInstead(stream));
    QVERIFY(parser.writeFileToDisk(0, full));
}

void TestContent::targetIsReplaced()
{
    ContainerBuilder::writeFile(m_target, QByteArray(5000, 'o'));
    LorixParser parser(Strict);
    open(parser, FileSpec(QStringLiteral("f"), "content"));
    QVERIFY(parser.writeFileToDisk(0, m_target));
    QCOMPARE(written(), QByteArray("content"));
}

void TestContent::damagedStreamKeepsTheChunksBefore()
{
    // Stored blocks: the first chunk of 4 MiB inflates to a little less.
    const QByteArray content = noise(9 * mebibyte);
    QByteArray stream = ContainerBuilder::zlibStream(content, 0);
    stream.back() = static_cast<char>(stream.back() ^ 1);
    LogRecorder log;
    LorixParser parser(Strict, &log);
    open(parser, FileSpec(QStringLiteral("f"), content).flate().storeInstead(stream));
    DebugRecorder silence;
    QVERIFY(parser.writeFileToDisk(0, m_target));
    const QByteArray result = written();
    QVERIFY(content.startsWith(result));
    QVERIFY(result.size() > 7 * mebibyte);
    QVERIFY(result.size() <= 8 * mebibyte);
    QVERIFY(log.texts().last().startsWith(QStringLiteral("[writeFileToDisk] total: ")));
}

void TestContent::damagedChunkLeavesNothingOfItself()
{
    // The only chunk inflates to 40 MiB before its damage shows.
    const QByteArray content(40 * mebibyte, 'x');
    QByteArray stream = ContainerBuilder::zlibStream(content, 1);
    stream.back() = static_cast<char>(stream.back() ^ 1);
    LorixParser parser(Strict);
    open(parser, FileSpec(QStringLiteral("f"), content).flate().storeInstead(stream));
    DebugRecorder silence;
    QVERIFY(parser.writeFileToDisk(0, m_target));
    QCOMPARE(written(), QByteArray());
    QVERIFY(!parser.getFileContent(0));
}

void TestContent::damagedChunkWritesNothingToAPipe()
{
    const QByteArray content(3 * mebibyte, 'x');
    const QByteArray stream = ContainerBuilder::zlibStream(content, 1);
    QByteArray damaged = stream;
    damaged.back() = static_cast<char>(damaged.back() ^ 1);
    for (const QByteArray& stored : {stream, damaged}) {
        LorixParser parser(Strict);
        open(parser, FileSpec(QStringLiteral("f"), content).flate().storeInstead(stored));
        const QByteArray path = QFile::encodeName(m_target);
        QFile::remove(m_target);
        QCOMPARE(::mkfifo(path.constData(), 0600), 0);
        QByteArray received;
        std::thread reader([&received, &path] {
            const int pipe = ::open(path.constData(), O_RDONLY);
            char buffer[65536];
            for (ssize_t count = 1; count > 0;) {
                count = ::read(pipe, buffer, sizeof buffer);
                if (count > 0)
                    received.append(buffer, count);
            }
            ::close(pipe);
        });
        bool succeeded = false;
        {
            DebugRecorder silence;
            succeeded = parser.writeFileToDisk(0, m_target);
        }
        reader.join();
        QVERIFY(succeeded);
        QCOMPARE(received.size(), stored == stream ? content.size() : 0);
    }
}

void TestContent::bytesOutsideTheContainerAreLeftOut()
{
    // Whole chunks inside the container are read, the one that leaves it is not.
    const QByteArray content = noise(5 * mebibyte);
    LorixParser parser(Strict);
    open(parser, FileSpec(QStringLiteral("f"), content)
                     .set("cfilesize", QByteArray::number(100 * mebibyte)));
    QVERIFY(parser.writeFileToDisk(0, m_target));
    QCOMPARE(written(), content.left(4 * mebibyte));
    open(parser, FileSpec(QStringLiteral("f"), content).set("cfilesize", "2147483647"));
    QVERIFY(parser.writeFileToDisk(0, m_target));
    QCOMPARE(written(), content.left(4 * mebibyte));
    open(parser, FileSpec(QStringLiteral("f"), content).set("cfilesize", ""));
    QVERIFY(parser.writeFileToDisk(0, m_target));
    QCOMPARE(written(), QByteArray());
    open(parser, FileSpec(QStringLiteral("f"), content).set("offset", "2147483647"));
    QVERIFY(parser.writeFileToDisk(0, m_target));
    QCOMPARE(written(), QByteArray());
}

void TestContent::streamsOfSeveralChunksComeOutWhole()
{
    const QByteArray content = noise(9 * mebibyte) + QByteArray(20 * mebibyte, 'x');
    LorixParser parser(Strict);
    DebugRecorder silence;
    for (const int level : {0, 1}) {
        open(parser, FileSpec(QStringLiteral("f"), content).flate(level));
        QVERIFY(parser.writeFileToDisk(0, m_target));
        QVERIFY(written() == content);
    }
    open(parser, FileSpec(QStringLiteral("f"), content));
    QVERIFY(parser.writeFileToDisk(0, m_target));
    QVERIFY(written() == content);
}

void TestContent::chunkThatFillsTheBufferExactlyIsDamage()
{
    // The first chunk of 4 MiB ends with the very byte that fills the output
    // buffer for the third time: the inflater finds no more input, which counts
    // as damage, and takes back what the chunk had given.
    QByteArray plain = noise(3 * mebibyte);
    QByteArray blocks;
    for (int done = 0; done < plain.size(); done += 65535)
        blocks += storedBlock(plain.mid(done, 65535));
    QByteArray stream("\x78\x01", 2);
    // Blocks of five and of six bytes that inflate to nothing fill the chunk up.
    for (int left = 4 * mebibyte - 2 - static_cast<int>(blocks.size()); left > 0;) {
        const bool six = left % 5 != 0;
        stream += six ? QByteArray("\x02\0\0\0\xff\xff", 6) : storedBlock(QByteArray());
        left -= six ? 6 : 5;
    }
    stream += blocks;
    QCOMPARE(stream.size(), 4 * mebibyte);
    stream += storedBlock("end", true);
    plain += "end";
    quint32 a = 1;
    quint32 b = 0;
    for (const char byte : plain) {
        a = (a + static_cast<unsigned char>(byte)) % 65521;
        b = (b + a) % 65521;
    }
    for (const quint32 byte : {b >> 8, b & 255, a >> 8, a & 255})
        stream += static_cast<char>(byte);
    LorixParser parser(Strict);
    open(parser, FileSpec(QStringLiteral("f"), plain).flate().storeInstead(stream));
    QVERIFY(*parser.getFileContent(0) == plain);
    DebugRecorder silence;
    QVERIFY(parser.writeFileToDisk(0, m_target));
    QCOMPARE(written(), QByteArray());
}

QTEST_GUILESS_MAIN(TestContent)
#include "tst_content.moc"
