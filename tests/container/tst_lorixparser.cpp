// SPDX-License-Identifier: BSD-3-Clause
#include <lorix/container/lorixparser.h>
#include <support/containerbuilder.h>
#include <support/logrecorder.h>
#include <support/randomruns.h>
#include <support/referenceparser.h>

#include <QTemporaryDir>
#include <QTest>

using namespace lorix;

namespace {

QStringList titles(const LorixParser& parser)
{
    QStringList result;
    for (const SectionTag& section : parser.getSections())
        result.append(section.title);
    return result;
}

QStringList names(const QList<FileTag>& files)
{
    QStringList result;
    for (const FileTag& file : files)
        result.append(file.filename);
    return result;
}

QStringList list(const char* blankSeparated)
{
    return QString::fromLatin1(blankSeparated).split(QLatin1Char(' '), Qt::SkipEmptyParts);
}

SectionSpec sectionOf(const char* title, int files = 1)
{
    SectionSpec spec{QString::fromLatin1(title)};
    for (int i = 0; i < files; ++i)
        spec.file(FileSpec(QString::fromLatin1(title) + QString::number(i), "content"));
    return spec;
}

QByteArray fillerLines(int count)
{
    return QByteArray("filler\n").repeated(count);
}

} // namespace

class TestLorixParser : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void declaresNoSignalsOrSlotsOfItsOwn();
    void modesHaveTheirNumbers();
    void freshParserIsEmpty();
    void headerStandsAmongTheFirstTenLines_data();
    void headerStandsAmongTheFirstTenLines();
    void headerLine_data();
    void headerLine();
    void failedOpenLeavesEmptyLists();
    void openReplacesWhatWasOpen();
    void emptyFileAfterAContainerIsNone();
    void containerWithoutMarkersOpens();
    void sectionRecordHoldsEveryField();
    void fileRecordHoldsEveryField();
    void emptyNumbersReadAsMinusOne();
    void numbersBeyond32BitsReadAsZero();
    void idsCountSectionsFromTheNewestAndFilesFromTheStart();
    void unknownIdsGiveNull();
    void recordsAreCopies();
    void validationTagFollowsTheLine_data();
    void validationTagFollowsTheLine();
    void digestIsThatOfTheRecordedBytes();
    void markerInsideALineIsFoundInTolerantModeOnly();
    void firstPrefixOfALineDecidesInTolerantMode();
    void lineThatStartsWithThePrefixIsNotSearchedFurther();
    void byteOrderMarkInFrontOfAMarker();
    void lineWithZeroByteIsNoMarker();
    void brokenLink_data();
    void brokenLink();
    void linkIntoTheMiddleOfALineNeedsNoTolerance();
    void tolerantSearchCoversNineLines_data();
    void tolerantSearchCoversNineLines();
    void chainThatReturnsEnds_data();
    void chainThatReturnsEnds();
    void emptyPreviousmarkerEndsTheChain();
    void previousmd5IsNotCompared();
    void filesAreSearchedStrictlyInBothModes();
    void jumpSkipsTheContentOfAFile();
    void lineReachedByTheJumpIsNeverExamined();
    void failedJumpGoesOnBehindTheMarker();
    void blockThatEndsInsideItsMarkerGoesOnBehindIt();
    void containment_data();
    void containment();
    void sectionlessFilesLieInNoSection();
    void fileInTwoSectionsIsListedInBoth();
    void overlappingSectionsListWhatLiesInThem();
    void parsingALineByHand();
    void searchesOnAClosedParserFindNothing();

private:
    QString write(const QByteArray& bytes)
    {
        return ContainerBuilder::writeFile(m_dir.filePath(QStringLiteral("container")), bytes);
    }
    QStringList titlesOf(const QByteArray& bytes, ParseMode mode)
    {
        LorixParser parser(mode);
        return parser.open(write(bytes)) ? titles(parser) : list("not opened");
    }
    QStringList filesOf(const QByteArray& bytes)
    {
        LorixParser parser(Strict);
        return parser.open(write(bytes)) ? names(parser.getFiles()) : list("not opened");
    }

    QTemporaryDir m_dir;
};

void TestLorixParser::declaresNoSignalsOrSlotsOfItsOwn()
{
    const QMetaObject& meta = LorixParser::staticMetaObject;
    QCOMPARE(meta.methodCount(), meta.methodOffset());
    QCOMPARE(meta.superClass(), &LogSource::staticMetaObject);
    LogRecorder log;
    LorixParser parser(Tolerant, &log);
    QCOMPARE(parser.parent(), nullptr);
}

void TestLorixParser::modesHaveTheirNumbers()
{
    QCOMPARE(int(Strict), 0);
    QCOMPARE(int(Tolerant), 1);
    QCOMPARE(ParseMode::Tolerant, Tolerant);
}

void TestLorixParser::freshParserIsEmpty()
{
    LorixParser parser(Tolerant);
    QCOMPARE(parser.getNumSections(), 0);
    QCOMPARE(parser.getNumFiles(), 0);
    QVERIFY(parser.getSections().isEmpty());
    QVERIFY(parser.getFiles().isEmpty());
    QVERIFY(parser.getSectionlessFiles().isEmpty());
}

void TestLorixParser::headerStandsAmongTheFirstTenLines_data()
{
    QTest::addColumn<int>("line");
    QTest::addColumn<bool>("found");
    for (int line = 1; line <= 12; ++line)
        QTest::addRow("line %d", line) << line << (line <= 10);
}

void TestLorixParser::headerStandsAmongTheFirstTenLines()
{
    QFETCH(int, line);
    for (const char* lineEnd : {"\n", "\r\n"}) {
        ContainerBuilder builder(lineEnd);
        builder.header(line).section(sectionOf("one"));
        LorixParser parser(Strict);
        QTEST(parser.open(builder.writeTo(m_dir.filePath(QStringLiteral("c")))), "found");
        QTEST(parser.headerFound(), "found");
        QCOMPARE(parser.getNumSections(), line <= 10 ? 1 : 0);
    }
}

void TestLorixParser::headerLine_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<bool>("found");
    const QByteArray header = ContainerBuilder::headerText();
    QTest::newRow("alone") << header << true;
    QTest::newRow("text behind") << header + "] anything\n" << true;
    QTest::newRow("text in front") << " " + header + "\n" << false;
    QTest::newRow("lower case") << header.toLower() + "\n" << false;
    QTest::newRow("other version") << QByteArray("%<--! $LORIX_PDF [version:1.1]\n") << false;
    QTest::newRow("unfinished") << header.chopped(1) + "\n" << false;
    QTest::newRow("byte order mark") << "\xef\xbb\xbf" + header + "\n" << true;
    QTest::newRow("broken text behind") << header + "\xff\xc3\n" << true;
    QTest::newRow("zero byte behind") << header + QByteArray("\0\n", 2) << false;
    QTest::newRow("line with zero byte before") << QByteArray("a\0b\n", 4) + header + "\n" << false;
    QTest::newRow("line with zero byte behind")
        << "a\n" + header + "\n" + QByteArray("a\0b\n", 4) << true;
    QTest::newRow("long line before") << QByteArray(30000, 'x') + "\n" + header << true;
    QTest::newRow("carriage returns are no lines") << "a\r" + header << false;
    QTest::newRow("empty") << QByteArray() << false;
    QTest::newRow("one line feed") << QByteArray("\n") << false;
    QTest::newRow("nine empty lines") << QByteArray(9, '\n') + header << true;
    QTest::newRow("ten empty lines") << QByteArray(10, '\n') + header << false;
}

void TestLorixParser::headerLine()
{
    QFETCH(QByteArray, bytes);
    LorixParser parser(Strict);
    QTEST(parser.open(write(bytes)), "found");
}

void TestLorixParser::failedOpenLeavesEmptyLists()
{
    ContainerBuilder builder;
    const QByteArray bytes = builder.start().section(sectionOf("one")).bytes();
    LorixParser parser(Strict);
    QVERIFY(parser.open(write(bytes)));
    QCOMPARE(parser.getNumFiles(), 1);
    QVERIFY(!parser.open(m_dir.filePath(QStringLiteral("missing"))));
    QCOMPARE(parser.getNumSections(), 0);
    QCOMPARE(parser.getNumFiles(), 0);
    QVERIFY(parser.open(write(bytes)));
    QVERIFY(!parser.open(write(bytes.mid(1))));
    QCOMPARE(parser.getNumSections(), 0);
    QCOMPARE(parser.getNumFiles(), 0);
    QVERIFY(!parser.open(m_dir.path()));
}

void TestLorixParser::openReplacesWhatWasOpen()
{
    LorixParser parser(Strict);
    ContainerBuilder one;
    QVERIFY(parser.open(write(one.start().section(sectionOf("one", 3)).bytes())));
    ContainerBuilder two;
    two.start().section(sectionOf("two")).section(sectionOf("three"));
    QVERIFY(parser.open(two.writeTo(m_dir.filePath(QStringLiteral("other")))));
    QCOMPARE(titles(parser), list("three two"));
    QCOMPARE(names(parser.getFiles()), list("two0 three0"));
}

void TestLorixParser::emptyFileAfterAContainerIsNone()
{
    LorixParser parser(Strict);
    QVERIFY(parser.open(write(ContainerBuilder::headerText())));
    QVERIFY(!parser.open(write("")));
    QVERIFY(!parser.headerFound());
    QVERIFY(!parser.findLastSection());
    QVERIFY(parser.findFiles().isEmpty());
}

void TestLorixParser::containerWithoutMarkersOpens()
{
    ContainerBuilder builder;
    for (const ParseMode mode : {Strict, Tolerant}) {
        LorixParser parser(mode);
        QVERIFY(parser.open(write(builder.start().bytes())));
        QCOMPARE(parser.getNumSections(), 0);
        QCOMPARE(parser.getNumFiles(), 0);
        QVERIFY(parser.getFilesInSection(0).isEmpty());
    }
}

void TestLorixParser::sectionRecordHoldsEveryField()
{
    ContainerBuilder builder("\r\n");
    builder.start();
    builder.section(SectionSpec(QStringLiteral("a]b")).set("index", "0017"));
    builder.section(SectionSpec(QString::fromUtf8("\xc3\xa4"))
                        .setCreator(QStringLiteral("c\\"))
                        .set("version", "2.x"));
    LorixParser parser(Strict);
    QVERIFY(parser.open(write(builder.bytes())));
    QCOMPARE(parser.getNumSections(), 2);
    const SectionTag newer = *parser.getSection(0);
    const SectionTag older = *parser.getSection(1);
    const PlacedSection place = builder.sections().at(1);
    QCOMPARE(newer.id, 0);
    QCOMPARE(newer.position, int(place.line + 1));
    QCOMPARE(newer.taglen, int(place.block - place.line - 1 - 1)); // one letter of two bytes
    QCOMPARE(newer.version, QStringLiteral("2.x"));
    QCOMPARE(newer.creator, QStringLiteral("c\\\\"));
    QCOMPARE(newer.title, QString::fromUtf8("\xc3\xa4"));
    QCOMPARE(newer.left, 1);
    QCOMPARE(newer.size, int(place.end - place.start));
    QCOMPARE(newer.index, 1);
    QCOMPARE(newer.md5section.toLatin1(), place.md5section);
    QCOMPARE(newer.previousmd5, older.md5section);
    QCOMPARE(newer.previousmarker, newer.position - older.position);
    QCOMPARE(older.id, 1);
    QCOMPARE(older.title, QStringLiteral("a\\]b"));
    QCOMPARE(older.title.size(), 4);
    QCOMPARE(older.index, 17);
    QCOMPARE(older.previousmd5, QString());
    QCOMPARE(older.previousmarker, -1);
    QCOMPARE(older.position + older.taglen, int(builder.sections().at(0).block));
}

void TestLorixParser::fileRecordHoldsEveryField()
{
    ContainerBuilder builder("\r\n");
    builder.start();
    builder.section(SectionSpec().file(FileSpec(QStringLiteral("n]"), "content content")
                                           .flate()
                                           .setType(QStringLiteral("t/t"))
                                           .setDesc(QStringLiteral("two\nlines"))
                                           .setComment(QStringLiteral("c"))));
    LorixParser parser(Strict);
    QVERIFY(parser.open(write(builder.bytes())));
    const FileTag file = *parser.getFile(0);
    const PlacedFile place = builder.files().at(0);
    QCOMPARE(file.id, 0);
    QCOMPARE(file.position, int(place.line + 1));
    QCOMPARE(file.position + file.taglen, int(place.block));
    QCOMPARE(file.filetype, QStringLiteral("t/t"));
    QCOMPARE(file.filename, QStringLiteral("n\\]"));
    QCOMPARE(file.desc, QStringLiteral("two\\nlines"));
    QCOMPARE(file.comment, QStringLiteral("c"));
    QCOMPARE(file.compression, QStringLiteral("flate"));
    QCOMPARE(file.filesize, 15);
    QCOMPARE(file.cfilesize, int(place.storedSize));
    QCOMPARE(file.blocksize, int(place.blockEnd - place.block));
    QCOMPARE(file.offset, 2);
    QCOMPARE(file.md5file.toLatin1(), ContainerBuilder::md5("content content"));
    QCOMPARE(file.md5cfile.toLatin1(),
             ContainerBuilder::md5(builder.bytes().mid(place.stored, place.storedSize)));
}

void TestLorixParser::emptyNumbersReadAsMinusOne()
{
    ContainerBuilder builder;
    FileSpec file(QStringLiteral("f"), "x");
    for (const char* field : {"filesize", "cfilesize", "blocksize", "offset"})
        file.set(field, "");
    SectionSpec section;
    for (const char* field : {"left", "size", "index"})
        section.set(field, "");
    LorixParser parser(Strict);
    QVERIFY(parser.open(write(builder.start().section(section.file(file)).bytes())));
    const FileTag tag = *parser.getFile(0);
    QCOMPARE(QList<int>({tag.filesize, tag.cfilesize, tag.blocksize, tag.offset}),
             QList<int>({-1, -1, -1, -1}));
    const SectionTag sectionTag = *parser.getSection(0);
    QCOMPARE(QList<int>({sectionTag.left, sectionTag.size, sectionTag.index}),
             QList<int>({-1, -1, -1}));
    QCOMPARE(sectionTag.previousmarker, -1);
}

void TestLorixParser::numbersBeyond32BitsReadAsZero()
{
    ContainerBuilder builder;
    FileSpec file(QStringLiteral("f"), "x");
    file.set("filesize", "2147483648").set("cfilesize", "4294967297");
    file.set("blocksize", "99999999999999999999").set("offset", "2147483647");
    LorixParser parser(Strict);
    QVERIFY(parser.open(write(
        builder.start().section(SectionSpec().file(file).set("index", "2147483648")).bytes())));
    const FileTag tag = *parser.getFile(0);
    QCOMPARE(QList<int>({tag.filesize, tag.cfilesize, tag.blocksize, tag.offset}),
             QList<int>({0, 0, 0, 2147483647}));
    QCOMPARE(parser.getSection(0)->index, 0);
    QCOMPARE(*parser.getCompressedFile(0), QByteArray());
}

void TestLorixParser::idsCountSectionsFromTheNewestAndFilesFromTheStart()
{
    ContainerBuilder builder;
    builder.start()
        .section(sectionOf("one", 2))
        .section(sectionOf("two", 1))
        .section(sectionOf("three", 0));
    LorixParser parser(Strict);
    QVERIFY(parser.open(write(builder.bytes())));
    QCOMPARE(titles(parser), list("three two one"));
    QCOMPARE(names(parser.getFiles()), list("one0 one1 two0"));
    for (int id = 0; id < 3; ++id) {
        QCOMPARE(parser.getSection(id)->id, id);
        QCOMPARE(parser.getSections().at(id).id, id);
        QCOMPARE(parser.getFile(id)->id, id);
        QCOMPARE(parser.getFiles().at(id).id, id);
    }
    QCOMPARE(names(parser.getFilesInSection(0)), QStringList());
    QCOMPARE(names(parser.getFilesInSection(1)), list("two0"));
    QCOMPARE(names(parser.getFilesInSection(2)), list("one0 one1"));
}

void TestLorixParser::unknownIdsGiveNull()
{
    ContainerBuilder builder;
    LorixParser parser(Strict);
    QVERIFY(parser.open(write(builder.start().section(sectionOf("one")).bytes())));
    for (const int id : {-1, 1, 2147483647, -2147483647 - 1}) {
        QVERIFY(!parser.getSection(id));
        QVERIFY(!parser.getFile(id));
        QVERIFY(!parser.getCompressedFile(id));
        QVERIFY(!parser.getFileContent(id));
        QVERIFY(parser.getFilesInSection(id).isEmpty());
    }
}

void TestLorixParser::recordsAreCopies()
{
    ContainerBuilder builder;
    LorixParser parser(Strict);
    QVERIFY(parser.open(write(builder.start().section(sectionOf("one")).bytes())));
    parser.getSection(0)->title = QStringLiteral("changed");
    parser.getFile(0)->filename = QStringLiteral("changed");
    QCOMPARE(parser.getSection(0)->title, QStringLiteral("one"));
    QCOMPARE(parser.getFile(0)->filename, QStringLiteral("one0"));
}

void TestLorixParser::validationTagFollowsTheLine_data()
{
    QTest::addColumn<QByteArray>("lineEnd");
    QTest::addColumn<QByteArray>("suffix");
    QTest::addColumn<QByteArray>("digest");
    QTest::addColumn<int>("longer");
    QTest::newRow("LF") << QByteArray("\n") << QByteArray() << QByteArray() << 0;
    QTest::newRow("CR LF") << QByteArray("\r\n") << QByteArray(" x") << QByteArray() << 0;
    QTest::newRow("empty digest") << QByteArray("\n") << QByteArray() << QByteArray("-") << 32;
    const QByteArray hex(32, 'd');
    QTest::newRow("repeated behind") << QByteArray("\n") << "[md5section:" + hex + "]" << hex << 0;
}

void TestLorixParser::validationTagFollowsTheLine()
{
    QFETCH(QByteArray, lineEnd);
    QFETCH(QByteArray, suffix);
    QFETCH(QByteArray, digest);
    QFETCH(int, longer);
    SectionSpec spec = sectionOf("one").setLineSuffix(suffix);
    if (!digest.isEmpty())
        spec.set("md5section", digest == "-" ? QByteArray() : digest);
    ContainerBuilder builder(lineEnd);
    builder.start().section(spec);
    LorixParser parser(Strict);
    QVERIFY(parser.open(write(builder.bytes())));
    const SectionTag section = *parser.getSection(0);
    const QByteArray line = builder.bytes().mid(builder.sections().first().line);
    QCOMPARE(section.validationTag.size(), line.size() - 1 + longer);
    QVERIFY(section.validationTag.startsWith("<--! $LORIX_SECTION ["));
    QVERIFY(section.validationTag.endsWith(lineEnd));
    QByteArray expected = line;
    expected.replace("[md5section:" + section.md5section.toLatin1() + "]",
                     "[md5section:" + QByteArray(32, '0') + "]");
    QCOMPARE("%" + section.validationTag, expected);
}

void TestLorixParser::digestIsThatOfTheRecordedBytes()
{
    ContainerBuilder builder;
    builder.start()
        .section(sectionOf("one", 2))
        .section(sectionOf("two", 3).markerAfter(1).setLinePrefix("endobj "));
    LorixParser parser(Tolerant);
    QVERIFY(parser.open(write(builder.bytes())));
    QCOMPARE(parser.getNumSections(), 2);
    for (const SectionTag& section : parser.getSections()) {
        QByteArray fed = builder.bytes().mid(section.position - section.left, section.left) +
                         section.validationTag;
        const qsizetype behind = section.position + section.validationTag.size();
        fed += builder.bytes().mid(behind, section.size - fed.size());
        QCOMPARE(ContainerBuilder::md5(fed), section.md5section.toLatin1());
    }
}

void TestLorixParser::markerInsideALineIsFoundInTolerantModeOnly()
{
    ContainerBuilder builder;
    builder.start().section(sectionOf("one")).section(sectionOf("two").setLinePrefix("text "));
    QCOMPARE(titlesOf(builder.bytes(), Strict), list("one"));
    LorixParser parser(Tolerant);
    QVERIFY(parser.open(write(builder.bytes())));
    QCOMPARE(titles(parser), list("two one"));
    const SectionTag section = *parser.getSection(0);
    QCOMPARE(section.position, int(builder.sections().at(1).line) + 1);
    QCOMPARE(section.taglen,
             int(builder.sections().at(1).block - builder.sections().at(1).marker) - 1);
    QVERIFY(section.validationTag.startsWith("ext %<--! $LORIX_SECTION"));
}

void TestLorixParser::firstPrefixOfALineDecidesInTolerantMode()
{
    ContainerBuilder builder;
    builder.start()
        .section(sectionOf("one"))
        .forgetChain()
        .section(sectionOf("two").setLinePrefix("x %<--! $LORIX_SECTION [broken] "));
    QCOMPARE(titlesOf(builder.bytes(), Tolerant), list("one"));
    ContainerBuilder other;
    other.start().section(sectionOf("one").setLinePrefix("x ").setLineSuffix(
        ContainerBuilder::sectionMarker({{"title", "second"}})));
    QCOMPARE(titlesOf(other.bytes(), Tolerant), list("one"));
}

void TestLorixParser::lineThatStartsWithThePrefixIsNotSearchedFurther()
{
    ContainerBuilder builder;
    builder.start()
        .section(sectionOf("one"))
        .forgetChain()
        .section(sectionOf("two").setLinePrefix("%<--! $LORIX_SECTION"));
    QCOMPARE(titlesOf(builder.bytes(), Tolerant), list("one"));
    QCOMPARE(titlesOf(builder.bytes(), Strict), list("one"));
}

void TestLorixParser::byteOrderMarkInFrontOfAMarker()
{
    // Decoding drops the mark, so that the text starts with the marker. Files
    // are looked up by their raw bytes and stay hidden.
    ContainerBuilder builder;
    builder.start().section(sectionOf("one").setLinePrefix("\xef\xbb\xbf"));
    builder.file(FileSpec(QStringLiteral("hidden")).setLinePrefix("\xef\xbb\xbf"));
    LorixParser parser(Strict);
    QVERIFY(parser.open(write(builder.bytes())));
    QCOMPARE(titles(parser), list("one"));
    QCOMPARE(parser.getSection(0)->position, int(builder.sections().first().line) + 1);
    QCOMPARE(names(parser.getFiles()), list("one0"));
}

void TestLorixParser::lineWithZeroByteIsNoMarker()
{
    const QByteArray zero("\0", 1);
    ContainerBuilder builder;
    builder.start().section(sectionOf("one"));
    builder.forgetChain().section(sectionOf("two").setLineSuffix(zero));
    builder.file(FileSpec(QStringLiteral("hidden")).setLineSuffix(zero));
    for (const ParseMode mode : {Strict, Tolerant}) {
        LorixParser parser(mode);
        QVERIFY(parser.open(write(builder.bytes())));
        QCOMPARE(titles(parser), list("one"));
        QCOMPARE(names(parser.getFiles()), list("one0 two0"));
    }
}

void TestLorixParser::brokenLink_data()
{
    QTest::addColumn<int>("off");
    QTest::addColumn<QStringList>("strict");
    QTest::addColumn<QStringList>("tolerant");
    QTest::newRow("right") << 0 << list("two one") << list("two one");
    QTest::newRow("3 bytes before") << 3 << list("two") << list("two one");
    QTest::newRow("3 bytes behind") << -3 << list("two") << list("two one");
    QTest::newRow("a line before") << 7 << list("two") << list("two one");
    QTest::newRow("far before") << 7 * 20 << list("two") << list("two");
    // The search begins where the failed jump left the lines, at the newer marker.
    QTest::newRow("before the file") << 1000000 << list("two") << list("two one");
}

void TestLorixParser::brokenLink()
{
    QFETCH(int, off);
    ContainerBuilder builder;
    builder.start().text(fillerLines(30));
    builder.section(sectionOf("one", 0).setLeadingBytes(fillerLines(1)));
    const qint64 distance = builder.bytes().size() + 7 - builder.sections().first().line;
    builder.section(sectionOf("two", 0)
                        .setLeadingBytes(fillerLines(1))
                        .set("previousmarker", QByteArray::number(distance + off)));
    QTEST(titlesOf(builder.bytes(), Strict), "strict");
    QTEST(titlesOf(builder.bytes(), Tolerant), "tolerant");
}

void TestLorixParser::linkIntoTheMiddleOfALineNeedsNoTolerance()
{
    ContainerBuilder builder;
    builder.start().section(sectionOf("one").setLinePrefix("text "));
    const qint64 marker = builder.sections().first().marker;
    const qint64 next = builder.bytes().size();
    builder.section(sectionOf("two", 0).set("previousmarker", QByteArray::number(next - marker)));
    LorixParser parser(Strict);
    QVERIFY(parser.open(write(builder.bytes())));
    QCOMPARE(titles(parser), list("two one"));
    QCOMPARE(parser.getSection(1)->position, int(marker) + 1);
    QVERIFY(parser.getSection(1)->validationTag.startsWith("<--! $LORIX_SECTION"));
}

void TestLorixParser::tolerantSearchCoversNineLines_data()
{
    QTest::addColumn<int>("linesOff");
    QTest::addColumn<bool>("found");
    for (int off = -6; off <= 6; ++off)
        QTest::addRow("%+d", off) << off << (off >= -4 && off <= 4);
}

void TestLorixParser::tolerantSearchCoversNineLines()
{
    QFETCH(int, linesOff);
    QFETCH(bool, found);
    // The link leads into the filler line that many lines away from the marker;
    // where the marker stands before that line, the offset is negative.
    const qint64 fillerLine = 7;
    ContainerBuilder builder;
    builder.start().text(fillerLines(10));
    builder.section(sectionOf("one", 0));
    const PlacedSection one = builder.sections().first();
    builder.text(fillerLines(10));
    const qint64 target = linesOff > 0   ? one.line - linesOff * fillerLine
                          : linesOff < 0 ? one.end + (-linesOff - 1) * fillerLine
                                         : one.line;
    for (const int inside : {0, 3}) {
        ContainerBuilder whole = builder;
        const qint64 distance = builder.bytes().size() - target - inside;
        whole.section(sectionOf("two", 0).set("previousmarker", QByteArray::number(distance)));
        QCOMPARE(titlesOf(whole.bytes(), Tolerant), found ? list("two one") : list("two"));
    }
}

void TestLorixParser::chainThatReturnsEnds_data()
{
    QTest::addColumn<QByteArray>("previousmarker");
    QTest::addColumn<QStringList>("expected");
    QTest::newRow("to itself") << QByteArray("0") << list("two");
    QTest::newRow("right") << QByteArray() << list("two one");
}

void TestLorixParser::chainThatReturnsEnds()
{
    QFETCH(QByteArray, previousmarker);
    QFETCH(QStringList, expected);
    ContainerBuilder builder;
    builder.start().section(sectionOf("one"));
    SectionSpec two = sectionOf("two");
    if (!previousmarker.isEmpty())
        two.set("previousmarker", previousmarker);
    builder.section(two);
    QCOMPARE(titlesOf(builder.bytes(), Strict), expected);
    QCOMPARE(titlesOf(builder.bytes(), Tolerant), expected);

    // Two sections on neighbouring lines that lead to each other in tolerant
    // mode: the older one's link leads nowhere, the search around finds itself.
    ContainerBuilder ring;
    ring.start().text(fillerLines(10));
    ring.section(sectionOf("one", 0).set("previousmarker", "3"));
    ring.section(sectionOf("two", 0));
    QCOMPARE(titlesOf(ring.bytes(), Strict), list("two one"));
    QCOMPARE(titlesOf(ring.bytes(), Tolerant), list("two one"));
}

void TestLorixParser::emptyPreviousmarkerEndsTheChain()
{
    ContainerBuilder builder;
    builder.start().section(sectionOf("one")).forgetChain().section(sectionOf("two"));
    for (const ParseMode mode : {Strict, Tolerant})
        QCOMPARE(titlesOf(builder.bytes(), mode), list("two"));
}

void TestLorixParser::previousmd5IsNotCompared()
{
    ContainerBuilder builder;
    builder.start()
        .section(sectionOf("one"))
        .section(sectionOf("two").set("previousmd5", QByteArray(32, 'f')));
    QCOMPARE(titlesOf(builder.bytes(), Strict), list("two one"));
}

void TestLorixParser::filesAreSearchedStrictlyInBothModes()
{
    ContainerBuilder builder;
    builder.start().file(FileSpec(QStringLiteral("a"), "x").setLinePrefix(" "));
    builder.file(FileSpec(QStringLiteral("b"), "x"));
    for (const ParseMode mode : {Strict, Tolerant}) {
        LorixParser parser(mode);
        QVERIFY(parser.open(write(builder.bytes())));
        QCOMPARE(names(parser.getFiles()), list("b"));
    }
}

void TestLorixParser::jumpSkipsTheContentOfAFile()
{
    ContainerBuilder inner;
    inner.start().section(sectionOf("inner"));
    const QByteArray behind = QByteArray("x").repeated(1000) + "\n";
    ContainerBuilder builder;
    builder.start();
    builder.section(SectionSpec(QStringLiteral("outer"))
                        .file(FileSpec(QStringLiteral("in.lorix"), inner.bytes() + behind))
                        .file(FileSpec(QStringLiteral("last"))));
    QCOMPARE(filesOf(builder.bytes()), list("in.lorix last"));
}

void TestLorixParser::lineReachedByTheJumpIsNeverExamined()
{
    // A marker that begins just where the jump lands is passed over; one line
    // further it is found, although both stand inside the block.
    for (const int linesBehind : {0, 1}) {
        ContainerBuilder inner;
        inner.file(FileSpec(QStringLiteral("inner"), "x"));
        FileSpec outer(QStringLiteral("outer"));
        ContainerBuilder trial;
        trial.start().file(outer);
        const PlacedFile place = trial.files().first();
        const QByteArray block = QByteArray("\n").repeated(linesBehind) + inner.bytes();
        // The jump goes to the marker's line + 1 + blocksize.
        const qint64 taglen = place.block - place.line - 1;
        const QByteArray front(1000, 'f');
        const QByteArray content = front + "\n" + block;
        outer.content = outer.stored = content;
        const qint64 landing = taglen + 1 + front.size() + 1; // behind the line's start
        outer.set("blocksize", QByteArray::number(landing + 3));
        ContainerBuilder builder;
        builder.start().file(outer);
        const PlacedFile real = builder.files().first();
        const qint64 target = real.line + 1 + landing + 3;
        const qint64 innerAt = builder.bytes().indexOf(inner.bytes());
        // Corrects the number, whose digits moved the block.
        const qint64 exact = landing + 3 + (innerAt - linesBehind - target);
        outer.set("blocksize", QByteArray::number(exact));
        ContainerBuilder final;
        final.start().file(outer);
        QCOMPARE(final.files().first().line + 1 + exact,
                 final.bytes().indexOf(inner.bytes()) - linesBehind);
        QCOMPARE(filesOf(final.bytes()), linesBehind ? list("outer inner") : list("outer"));
    }
}

void TestLorixParser::failedJumpGoesOnBehindTheMarker()
{
    for (const char* blocksize : {"1000000", "2147483647"}) {
        ContainerBuilder builder;
        builder.start().file(FileSpec(QStringLiteral("a"), "x").set("blocksize", blocksize));
        builder.file(FileSpec(QStringLiteral("b"), "x"));
        QCOMPARE(filesOf(builder.bytes()), list("a b"));
    }
}

void TestLorixParser::blockThatEndsInsideItsMarkerGoesOnBehindIt()
{
    for (const char* blocksize : {"", "0", "1", "99999999999"}) {
        ContainerBuilder builder;
        builder.start().file(FileSpec(QStringLiteral("a"), "x").set("blocksize", blocksize));
        builder.file(FileSpec(QStringLiteral("b"), "x"));
        QCOMPARE(filesOf(builder.bytes()), list("a b"));
    }
}

void TestLorixParser::containment_data()
{
    QTest::addColumn<int>("position");
    QTest::addColumn<int>("taglen");
    QTest::addColumn<int>("blocksize");
    QTest::addColumn<bool>("inside");
    // The section is [100, 300): position 151, left 51, size 200.
    QTest::newRow("fills it from its second byte") << 100 << 50 << 150 << true;
    QTest::newRow("one-based start at the section's start") << 100 << 50 << 50 << true;
    QTest::newRow("one before") << 99 << 50 << 50 << false;
    QTest::newRow("one behind") << 101 << 50 << 150 << false;
    QTest::newRow("ends with it") << 250 << 20 << 30 << true;
    QTest::newRow("far behind") << 301 << 0 << 0 << false;
    QTest::newRow("empty at the end") << 300 << 0 << 0 << true;
    QTest::newRow("beyond 32 bits") << 200 << 100 << 2147483647 << false;
    QTest::newRow("largest numbers") << 2147483647 << 2147483647 << 2147483647 << false;
    QTest::newRow("block of unknown size") << 300 << 1 << -1 << true;
}

void TestLorixParser::containment()
{
    QFETCH(int, position);
    QFETCH(int, taglen);
    QFETCH(int, blocksize);
    SectionTag section;
    section.position = 151;
    section.left = 51;
    section.size = 200;
    FileTag file;
    file.position = position;
    file.taglen = taglen;
    file.blocksize = blocksize;
    QTEST(LorixParser(Strict).fileInSection(file, section), "inside");
    section.position = 2147483647;
    section.left = -1;
    section.size = 2147483647;
    QVERIFY(!LorixParser(Strict).fileInSection(file, section)); // begins beyond 32 bits
}

void TestLorixParser::sectionlessFilesLieInNoSection()
{
    ContainerBuilder builder;
    builder.start().file(FileSpec(QStringLiteral("front"), "x"));
    builder.section(sectionOf("one", 2)).file(FileSpec(QStringLiteral("between"), "x"));
    builder.section(sectionOf("two")).file(FileSpec(QStringLiteral("behind"), "x"));
    LorixParser parser(Strict);
    QVERIFY(parser.open(write(builder.bytes())));
    QCOMPARE(names(parser.getSectionlessFiles()), list("front between behind"));
    ContainerBuilder alone;
    alone.start().file(FileSpec(QStringLiteral("a"), "x")).file(FileSpec(QStringLiteral("b")));
    QVERIFY(parser.open(write(alone.bytes())));
    QCOMPARE(parser.getNumSections(), 0);
    QCOMPARE(names(parser.getSectionlessFiles()), list("a b"));
}

void TestLorixParser::fileInTwoSectionsIsListedInBoth()
{
    ContainerBuilder builder;
    builder.start().section(sectionOf("one"));
    const qint64 start = builder.sections().first().start;
    const qint64 line = builder.bytes().size();
    // The second section claims the bytes of the first as well.
    builder.section(
        sectionOf("two", 0).set("left", QByteArray::number(line + 1 - start)).set("size", "2000"));
    LorixParser parser(Strict);
    QVERIFY(parser.open(write(builder.bytes())));
    QCOMPARE(names(parser.getFilesInSection(0)), list("one0"));
    QCOMPARE(names(parser.getFilesInSection(1)), list("one0"));
    QVERIFY(parser.getSectionlessFiles().isEmpty());
}

// Sections of any place and size over blocks of any claimed size.
void TestLorixParser::overlappingSectionsListWhatLiesInThem()
{
    const int runs = randomRuns(40);
    for (int run = 0; run < runs; ++run) {
        Dice dice(randomSeed(1) + quint32(run));
        ContainerBuilder builder;
        builder.start();
        const int files = dice.below(20);
        for (int i = 0; i < files; ++i)
            builder.file(
                FileSpec(QStringLiteral("f"), QByteArray(dice.below(50), 'c'))
                    .set("blocksize", QByteArray::number(dice.once(2)   ? dice.below(99)
                                                         : dice.once(2) ? 2147483647
                                                                        : dice.below(4000))));
        const int sections = dice.between(1, 12);
        for (int i = 0; i < sections; ++i)
            builder.section(
                sectionOf("s", dice.below(2))
                    .set("left", QByteArray::number(dice.below(int(builder.bytes().size()) + 9)))
                    .set("size", QByteArray::number(dice.below(int(builder.bytes().size()) + 99))));
        LorixParser parser(Strict);
        QVERIFY(parser.open(write(builder.bytes())));
        QCOMPARE(parser.getNumSections(), sections);
        QList<int> outside;
        for (const FileTag& file : parser.getFiles())
            outside.append(file.id);
        for (const SectionTag& section : parser.getSections()) {
            QList<int> inside;
            for (const FileTag& file : parser.getFiles())
                if (parser.fileInSection(file, section))
                    inside.append(file.id);
            QList<int> listed;
            for (const FileTag& file : parser.getFilesInSection(section.id))
                listed.append(file.id);
            QCOMPARE(listed, inside);
            for (const int id : inside)
                outside.removeAll(id);
        }
        QList<int> listed;
        for (const FileTag& file : parser.getSectionlessFiles())
            listed.append(file.id);
        QCOMPARE(listed, outside);
    }
}

void TestLorixParser::parsingALineByHand()
{
    ContainerBuilder builder;
    builder.start().section(sectionOf("one"));
    LorixParser parser(Strict);
    QVERIFY(parser.open(write(builder.bytes())));
    QVERIFY(parser.findLastSection());
    const QString line =
        QString::fromLatin1(ContainerBuilder::sectionMarker({{"title", "by hand"}, {"left", "7"}}));
    const auto section = parser.parseSection(line + QStringLiteral(" more"));
    QVERIFY(section);
    QCOMPARE(section->id, 0);
    QCOMPARE(section->title, QStringLiteral("by hand"));
    QCOMPARE(section->left, 7);
    QCOMPARE(section->taglen, int(line.size()) - 1);
    // Position and raw bytes are those of the line read last.
    QCOMPARE(section->position, parser.getSection(0)->position);
    QCOMPARE(parser.makeValidationTag(parser.getSection(0)->md5section),
             parser.getSection(0)->validationTag);
    QVERIFY(!parser.parseSection(QStringLiteral(" ") + line));
    QVERIFY(!parser.parseFile(line));
    const auto file = parser.parseFile(
        QString::fromLatin1(ContainerBuilder::fileMarker({{"filename", "by hand"}})));
    QVERIFY(file);
    QCOMPARE(file->filename, QStringLiteral("by hand"));
    QCOMPARE(file->offset, -1);
    QCOMPARE(file->position, parser.getSection(0)->position);
    QVERIFY(!parser.parseFile(QString()));
}

void TestLorixParser::searchesOnAClosedParserFindNothing()
{
    LorixParser parser(Tolerant);
    SectionTag tag;
    tag.position = 100;
    tag.previousmarker = 10;
    QVERIFY(!parser.headerFound());
    QVERIFY(!parser.findLastSection());
    QVERIFY(!parser.findPrevSection(tag));
    QVERIFY(parser.readSections().isEmpty());
    QVERIFY(parser.findFiles().isEmpty());
    QCOMPARE(parser.getBytes(0, 1), QByteArray());
    QCOMPARE(parser.makeValidationTag(QString()), QByteArray());
    const auto section =
        parser.parseSection(QString::fromLatin1(ContainerBuilder::sectionMarker({})));
    QVERIFY(section);
    QCOMPARE(section->validationTag, QByteArray());
}

QTEST_GUILESS_MAIN(TestLorixParser)
#include "tst_lorixparser.moc"
