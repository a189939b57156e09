// SPDX-License-Identifier: BSD-3-Clause
#include <lorix/container/fileiterator.h>
#include <support/containerbuilder.h>
#include <support/randomruns.h>
#include <support/referenceiterator.h>

#include <QFile>
#include <QTemporaryDir>
#include <QTest>

using namespace lorix;

namespace {

/// What both iterators can do next.
struct Move
{
    enum Kind { First, Next, Last, Prev, Goto, Read };
    Kind kind = First;
    int pos = 0;
    int len = 0;

    QByteArray name() const
    {
        static const char* const names[] = {"first", "next", "last", "prev", "goto", "read"};
        QByteArray result = names[kind];
        if (kind >= Goto)
            result += ' ' + QByteArray::number(pos);
        if (kind == Read)
            result += '+' + QByteArray::number(len);
        return result;
    }
};

template <typename Iterator>
QByteArray state(const Iterator& lines)
{
    const auto line = lines.curLine();
    const auto text = lines.curLineAsString();
    return QByteArray::number(lines.curPos()) + (lines.reachedStart() ? " start" : "") +
           (lines.reachedEnd() ? " end" : "") + (lines.empty() ? " empty" : "") +
           (lines.curLineStartsWithBytes("a") ? " a" : "") + ' ' +
           QByteArray::number(lines.getFileSize()) +
           (line ? " line <" + *line + '>' : QByteArray(" no line")) +
           (text ? " text <" + text->toUtf8() + '>' : QByteArray(" no text"));
}

template <typename Iterator>
QByteArray perform(Iterator& lines, const Move& move)
{
    switch (move.kind) {
    case Move::First:
        return lines.firstLine() ? "true" : "false";
    case Move::Next:
        return lines.nextLine() ? "true" : "false";
    case Move::Last:
        return lines.lastLine() ? "true" : "false";
    case Move::Prev:
        return lines.prevLine() ? "true" : "false";
    case Move::Goto:
        return lines.gotoPos(move.pos) ? "true" : "false";
    case Move::Read:
        return lines.getBytes(move.pos, move.len);
    }
    return {};
}

Move randomMove(Dice& dice, int size)
{
    Move move;
    const int choice = dice.below(16);
    if (choice < 5)
        move.kind = Move::Next;
    else if (choice < 10)
        move.kind = Move::Prev;
    else if (choice < 11)
        move.kind = Move::First;
    else if (choice < 12)
        move.kind = Move::Last;
    else
        move.kind = choice < 15 ? Move::Goto : Move::Read;
    move.pos = dice.between(-1, size + 1);
    move.len = dice.between(-1, size < 10 ? size + 1 : 300);
    return move;
}

/// Opens `bytes` and makes random moves, after each of which both iterators
/// must be the same. The result is empty, or says where they part.
QByteArray firstDifference(FileIterator& lines, const QString& path, const QByteArray& bytes,
                           Dice& dice, int moves)
{
    ReferenceIterator expected;
    if (!lines.open(path))
        return "does not open";
    expected.open(bytes);
    if (!bytes.isEmpty() && state(lines) != state(expected))
        return "after open: " + state(lines) + "\nexpected: " + state(expected);
    QByteArray history;
    for (int i = 0; i < moves; ++i) {
        const Move move = randomMove(dice, static_cast<int>(bytes.size()));
        history += move.name() + ", ";
        const QByteArray result = perform(lines, move);
        const QByteArray wanted = perform(expected, move);
        if (result != wanted)
            return history + "gives " + result + "\nexpected: " + wanted;
        // An empty file keeps the bytes of the line read before it was opened.
        if (!bytes.isEmpty() && state(lines) != state(expected))
            return history + "state: " + state(lines) + "\nexpected: " + state(expected);
    }
    return {};
}

} // namespace

class TestFileIterator : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void closedIteratorHasNothing();
    void missingFileDoesNotOpen();
    void folderDoesNotOpen();
    void openStandsOnTheFirstLine();
    void closingKeepsTheBytesOfTheLine();
    void openClosesFirst();
    void emptyFileOpensWithoutLines();
    void emptyFileLeavesTheLineOfTheOneBefore();
    void linesEndWithLineFeedsOnly();
    void lastLine_data();
    void lastLine();
    void gotoPosStartsInsideALine();
    void gotoPosOutsideLeavesEverythingUnchanged();
    void changeOfDirectionGivesTheLineAgain();
    void endAndStartAreReached();
    void longLineIsReadWholeInBothDirections_data();
    void longLineIsReadWholeInBothDirections();
    void lineTooLongToBeKeptReadsTheSame_data();
    void lineTooLongToBeKeptReadsTheSame();
    void failedMoveKeepsALineOfAnyLength_data();
    void failedMoveKeepsALineOfAnyLength();
    void lineWithZeroByteHasNoText();
    void textIsDecodedFromUtf8();
    void startsWithComparesRawBytes();
    void getBytesReadsOnlyInsideTheFile_data();
    void getBytesReadsOnlyInsideTheFile();
    void getBytesMovesNothing();
    void onLineIsAlwaysFalse();
    void everyShortFileAgreesWithTheReference();
    void largeFilesAgreeWithTheReference();

private:
    QString write(const QByteArray& bytes)
    {
        return ContainerBuilder::writeFile(m_dir.filePath(QStringLiteral("lines")), bytes);
    }

    QTemporaryDir m_dir;
};

void TestFileIterator::closedIteratorHasNothing()
{
    FileIterator lines;
    QCOMPARE(lines.curPos(), -1);
    QVERIFY(!lines.curLine());
    QVERIFY(!lines.curLineAsString());
    QVERIFY(lines.empty());
    QCOMPARE(lines.getFileSize(), 0);
    QVERIFY(!lines.reachedStart());
    QVERIFY(!lines.reachedEnd()); // 0 is greater than -1 + 0
    QVERIFY(!lines.gotoPos(0));
    QCOMPARE(lines.getBytes(0, 0), QByteArray());
    QVERIFY(!lines.lastLine());
    QVERIFY(lines.reachedStart());
    QVERIFY(lines.reachedEnd());
    QCOMPARE(lines.curPos(), -1);
    QVERIFY(!lines.firstLine());
    QCOMPARE(lines.curPos(), 0); // where a first line would begin
    QVERIFY(!lines.nextLine());
    QVERIFY(!lines.prevLine());
    QCOMPARE(lines.curPos(), 0);
}

void TestFileIterator::missingFileDoesNotOpen()
{
    FileIterator lines;
    QVERIFY(lines.open(write("a\nb\n")));
    QVERIFY(!lines.open(m_dir.filePath(QStringLiteral("missing"))));
    QVERIFY(lines.empty());
    QCOMPARE(lines.getFileSize(), 0);
    QCOMPARE(lines.getBytes(0, 1), QByteArray());
    QCOMPARE(lines.curPos(), -1);
    QVERIFY(lines.open(write("c")));
    QCOMPARE(*lines.curLine(), QByteArray("c"));
}

void TestFileIterator::folderDoesNotOpen()
{
    FileIterator lines;
    QVERIFY(!lines.open(m_dir.path()));
    QVERIFY(lines.empty());
}

void TestFileIterator::openStandsOnTheFirstLine()
{
    FileIterator lines;
    QVERIFY(lines.open(write("one\ntwo\n")));
    QCOMPARE(*lines.curLine(), QByteArray("one\n"));
    QCOMPARE(lines.curPos(), 0);
    QVERIFY(!lines.empty());
    QCOMPARE(lines.getFileSize(), 8);
    QVERIFY(lines.nextLine());
    QCOMPARE(*lines.curLine(), QByteArray("two\n"));
    QCOMPARE(lines.curPos(), 4);
    QVERIFY(!lines.nextLine());
    QCOMPARE(*lines.curLine(), QByteArray("two\n"));
    QCOMPARE(lines.curPos(), 8); // the move failed, its place is known all the same
}

void TestFileIterator::closingKeepsTheBytesOfTheLine()
{
    FileIterator lines;
    QVERIFY(lines.open(write("one\ntwo\n")));
    lines.closeFile();
    QVERIFY(lines.curLineStartsWithBytes("one"));
    QVERIFY(!lines.curLine());
    QVERIFY(!lines.curLineAsString());
    QCOMPARE(lines.curPos(), -1);
    QVERIFY(lines.empty());
    lines.closeFile();
    QVERIFY(lines.curLineStartsWithBytes("one"));
}

void TestFileIterator::openClosesFirst()
{
    FileIterator lines;
    QVERIFY(lines.open(write("one\ntwo\n")));
    QVERIFY(lines.nextLine());
    QVERIFY(lines.open(ContainerBuilder::writeFile(m_dir.filePath(QStringLiteral("b")), "b")));
    QCOMPARE(*lines.curLine(), QByteArray("b"));
    QCOMPARE(lines.curPos(), 0);
    QCOMPARE(lines.getFileSize(), 1);
}

void TestFileIterator::emptyFileOpensWithoutLines()
{
    FileIterator lines;
    QVERIFY(lines.open(write("")));
    QVERIFY(lines.empty());
    QCOMPARE(lines.curPos(), -1);
    QVERIFY(lines.reachedStart());
    QVERIFY(lines.reachedEnd());
    QVERIFY(!lines.firstLine());
    QVERIFY(!lines.lastLine());
    QVERIFY(!lines.nextLine());
    QVERIFY(!lines.prevLine());
    QVERIFY(!lines.gotoPos(0));
    QVERIFY(lines.curLine());
    QCOMPARE(*lines.curLine(), QByteArray());
    QCOMPARE(lines.curPos(), 0);
}

void TestFileIterator::emptyFileLeavesTheLineOfTheOneBefore()
{
    FileIterator lines;
    QVERIFY(lines.open(write("old\n")));
    QVERIFY(lines.open(write("")));
    QVERIFY(!lines.firstLine());
    QCOMPARE(*lines.curLine(), QByteArray("old\n"));
}

void TestFileIterator::linesEndWithLineFeedsOnly()
{
    FileIterator lines;
    QVERIFY(lines.open(write("a\rb\r\n\r\nc\r")));
    QCOMPARE(*lines.curLine(), QByteArray("a\rb\r\n"));
    QVERIFY(lines.nextLine());
    QCOMPARE(*lines.curLine(), QByteArray("\r\n"));
    QVERIFY(lines.nextLine());
    QCOMPARE(*lines.curLine(), QByteArray("c\r"));
    QVERIFY(!lines.nextLine());
}

void TestFileIterator::lastLine_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QByteArray>("line");
    QTest::addColumn<int>("pos");
    QTest::newRow("unterminated") << QByteArray("a\nbc") << QByteArray("bc") << 2;
    QTest::newRow("terminated") << QByteArray("a\nbc\n") << QByteArray("bc\n") << 2;
    QTest::newRow("two line feeds") << QByteArray("a\n\n") << QByteArray("\n") << 2;
    QTest::newRow("only one") << QByteArray("\n") << QByteArray("\n") << 0;
    QTest::newRow("one line") << QByteArray("abc") << QByteArray("abc") << 0;
    QTest::newRow("line feed on the chunk's first byte") << "x\n" + QByteArray(10239, 'b') + '\n'
                                                         << QByteArray(10239, 'b') + '\n'
                                                         << 2;
    QTest::newRow("line that is the last chunk")
        << "x\n" + QByteArray(10240, 'b') << QByteArray(10240, 'b') << 2;
}

void TestFileIterator::lastLine()
{
    QFETCH(QByteArray, bytes);
    FileIterator lines;
    QVERIFY(lines.open(write(bytes)));
    QVERIFY(lines.lastLine());
    QTEST(*lines.curLine(), "line");
    QTEST(lines.curPos(), "pos");
}

void TestFileIterator::gotoPosStartsInsideALine()
{
    FileIterator lines;
    QVERIFY(lines.open(write("first\nsecond\nthird\n")));
    QVERIFY(lines.gotoPos(8));
    QCOMPARE(*lines.curLine(), QByteArray("cond\n"));
    QCOMPARE(lines.curPos(), 8);
    QVERIFY(lines.prevLine());
    QCOMPARE(*lines.curLine(), QByteArray("second\n"));
    QCOMPARE(lines.curPos(), 6);
    QVERIFY(lines.gotoPos(12));
    QCOMPARE(*lines.curLine(), QByteArray("\n"));
    QVERIFY(lines.nextLine());
    QCOMPARE(*lines.curLine(), QByteArray("third\n"));
}

void TestFileIterator::gotoPosOutsideLeavesEverythingUnchanged()
{
    FileIterator lines;
    QVERIFY(lines.open(write("ab\ncd\n")));
    QVERIFY(lines.nextLine());
    const QByteArray before = state(lines);
    QVERIFY(!lines.gotoPos(6));
    QVERIFY(!lines.gotoPos(-1));
    QVERIFY(!lines.gotoPos(2147483647));
    QCOMPARE(state(lines), before);
    QVERIFY(lines.gotoPos(5));
}

void TestFileIterator::changeOfDirectionGivesTheLineAgain()
{
    FileIterator lines;
    QVERIFY(lines.open(write("one\ntwo\nthree")));
    QVERIFY(lines.nextLine());
    QCOMPARE(*lines.curLine(), QByteArray("two\n"));
    QVERIFY(lines.prevLine());
    QCOMPARE(*lines.curLine(), QByteArray("two\n"));
    QCOMPARE(lines.curPos(), 4);
    QVERIFY(lines.prevLine());
    QCOMPARE(*lines.curLine(), QByteArray("one\n"));
    QVERIFY(lines.nextLine());
    QCOMPARE(*lines.curLine(), QByteArray("one\n"));
    QVERIFY(lines.nextLine());
    QCOMPARE(*lines.curLine(), QByteArray("two\n"));
}

void TestFileIterator::endAndStartAreReached()
{
    FileIterator lines;
    QVERIFY(lines.open(write("a\nb\n")));
    QVERIFY(!lines.reachedEnd());
    QVERIFY(!lines.reachedStart());
    QVERIFY(lines.nextLine());
    QVERIFY(lines.reachedEnd());
    QVERIFY(lines.prevLine());
    QVERIFY(lines.prevLine());
    QVERIFY(lines.reachedStart());
    QVERIFY(!lines.prevLine());
    QCOMPARE(lines.curPos(), 0);
    QVERIFY(lines.reachedStart());
}

void TestFileIterator::longLineIsReadWholeInBothDirections_data()
{
    QTest::addColumn<int>("length");
    for (const int length : {5119, 5120, 10238, 10239, 10240, 10241, 20479, 20480, 20481, 51200})
        QTest::addRow("%d", length) << length;
}

void TestFileIterator::longLineIsReadWholeInBothDirections()
{
    QFETCH(int, length);
    const QByteArray longLine = QByteArray(length, 'x') + '\n';
    FileIterator lines;
    QVERIFY(lines.open(write("a\n" + longLine + "b\n")));
    QVERIFY(lines.nextLine());
    QCOMPARE(*lines.curLine(), longLine);
    QCOMPARE(lines.curPos(), 2);
    QVERIFY(lines.nextLine());
    QCOMPARE(*lines.curLine(), QByteArray("b\n"));
    QVERIFY(lines.lastLine());
    QVERIFY(lines.prevLine());
    QCOMPARE(*lines.curLine(), longLine);
    QCOMPARE(lines.curPos(), 2);
    QVERIFY(lines.prevLine());
    QCOMPARE(*lines.curLine(), QByteArray("a\n"));
    QVERIFY(lines.gotoPos(length / 2));
    QCOMPARE(*lines.curLine(), longLine.mid(length / 2 - 2));
    QVERIFY(lines.prevLine());
    QCOMPARE(*lines.curLine(), longLine);
}

void TestFileIterator::lineTooLongToBeKeptReadsTheSame_data()
{
    QTest::addColumn<int>("length");
    QTest::addColumn<bool>("zero");
    for (const int length : {1048574, 1048575, 1048576, 1048577, 3000000})
        for (const bool zero : {false, true})
            QTest::addRow("%d-%d", length, zero) << length << zero;
}

void TestFileIterator::lineTooLongToBeKeptReadsTheSame()
{
    QFETCH(int, length);
    QFETCH(bool, zero);
    QByteArray bytes = "b\n" + QByteArray(length, 'a') + "\nc\n";
    if (zero)
        bytes[length] = '\0';
    using Moves = QList<Move>;
    const Moves moves = {{Move::Next}, {Move::Next},         {Move::Last},      {Move::Prev},
                         {Move::Prev}, {Move::Goto, 700000}, {Move::Prev},      {Move::Next},
                         {Move::Next}, {Move::Prev},         {Move::Goto, 100}, {Move::Read, 1, 9}};
    FileIterator lines;
    ReferenceIterator expected;
    QVERIFY(lines.open(write(bytes)));
    expected.open(bytes);
    for (const Move& move : moves) {
        QCOMPARE(perform(lines, move), perform(expected, move));
        QVERIFY2(state(lines) == state(expected), move.name().constData());
    }
    lines.closeFile();
    expected.closeFile();
    QVERIFY(lines.curLineStartsWithBytes("aaaa"));
    QVERIFY(expected.curLineStartsWithBytes("aaaa"));
}

void TestFileIterator::failedMoveKeepsALineOfAnyLength_data()
{
    QTest::addColumn<int>("length");
    for (const int length : {3, 1048576, 1048577, 2000000})
        QTest::addRow("%d", length) << length;
}

void TestFileIterator::failedMoveKeepsALineOfAnyLength()
{
    QFETCH(int, length);
    const QByteArray line(length, 'a');
    FileIterator lines;
    QVERIFY(lines.open(write("b\n" + line)));
    QVERIFY(lines.nextLine());
    for (int i = 0; i < 2; ++i) {
        QVERIFY(!lines.nextLine());
        QCOMPARE(lines.curPos(), length + 2);
        QVERIFY(*lines.curLine() == line);
        QVERIFY(*lines.curLineAsString() == QString::fromLatin1(line));
        QVERIFY(lines.curLineStartsWithBytes("aaa"));
    }
    lines.closeFile();
    QVERIFY(lines.curLineStartsWithBytes("aaa"));
}

void TestFileIterator::lineWithZeroByteHasNoText()
{
    FileIterator lines;
    QVERIFY(lines.open(write(QByteArray("a\0b\nc\n", 6))));
    QVERIFY(!lines.curLineAsString());
    QCOMPARE(*lines.curLine(), QByteArray("a\0b\n", 4));
    QVERIFY(lines.nextLine());
    QCOMPARE(*lines.curLineAsString(), QStringLiteral("c\n"));
    QVERIFY(FileIterator::containsNulls(QByteArray("a\0", 2)));
    QVERIFY(!FileIterator::containsNulls(QByteArray("a")));
    QVERIFY(!FileIterator::containsNulls(QByteArray()));
}

void TestFileIterator::textIsDecodedFromUtf8()
{
    FileIterator lines;
    QVERIFY(lines.open(write("\xc3\xa4\xe2\x82\xac\xff\r\n")));
    QCOMPARE(*lines.curLineAsString(), QString::fromUtf8("\xc3\xa4\xe2\x82\xac\xef\xbf\xbd\r\n"));
}

void TestFileIterator::startsWithComparesRawBytes()
{
    FileIterator lines;
    QVERIFY(lines.open(write("\xff%abc\n")));
    QVERIFY(lines.curLineStartsWithBytes("\xff%a"));
    QVERIFY(lines.curLineStartsWithBytes(""));
    QVERIFY(lines.curLineStartsWithBytes("\xff%abc\n"));
    QVERIFY(!lines.curLineStartsWithBytes("\xff%abc\nd"));
    QVERIFY(!lines.curLineStartsWithBytes("%"));
}

void TestFileIterator::getBytesReadsOnlyInsideTheFile_data()
{
    QTest::addColumn<int>("pos");
    QTest::addColumn<int>("len");
    QTest::addColumn<QByteArray>("bytes");
    QTest::newRow("all") << 0 << 8 << QByteArray("ab\ncd\nef");
    QTest::newRow("last byte") << 7 << 1 << QByteArray("f");
    QTest::newRow("one beyond") << 7 << 2 << QByteArray();
    QTest::newRow("at the end") << 8 << 0 << QByteArray();
    QTest::newRow("nothing") << 3 << 0 << QByteArray();
    QTest::newRow("middle") << 1 << 3 << QByteArray("b\nc");
    QTest::newRow("before") << -1 << 3 << QByteArray();
    QTest::newRow("negative length") << 1 << -1 << QByteArray();
    QTest::newRow("beyond 32 bits") << 2 << 2147483647 << QByteArray();
    QTest::newRow("far behind") << 2147483647 << 2147483647 << QByteArray();
    QTest::newRow("far before") << -2147483647 - 1 << 4 << QByteArray();
}

void TestFileIterator::getBytesReadsOnlyInsideTheFile()
{
    QFETCH(int, pos);
    QFETCH(int, len);
    FileIterator lines;
    QVERIFY(lines.open(write("ab\ncd\nef")));
    QTEST(lines.getBytes(pos, len), "bytes");
}

void TestFileIterator::getBytesMovesNothing()
{
    FileIterator lines;
    QVERIFY(lines.open(write("ab\n" + QByteArray(30000, 'x') + "\ncd\n")));
    const QByteArray before = state(lines);
    QCOMPARE(lines.getBytes(1, 3), QByteArray("b\nx"));
    QCOMPARE(state(lines), before);
    QVERIFY(lines.nextLine());
    QCOMPARE(lines.getBytes(0, 1), QByteArray("a"));
    QVERIFY(lines.nextLine());
    QCOMPARE(*lines.curLine(), QByteArray("cd\n"));
}

void TestFileIterator::onLineIsAlwaysFalse()
{
    FileIterator lines;
    QVERIFY(!lines.onLine());
    QVERIFY(lines.open(write("a\n")));
    QVERIFY(!lines.onLine());
}

void TestFileIterator::everyShortFileAgreesWithTheReference()
{
    const char alphabet[] = {'a', '\n', '\r', '\0'};
    const QString path = m_dir.filePath(QStringLiteral("short"));
    QFile file(path);
    QVERIFY(file.open(QIODevice::ReadWrite | QIODevice::Unbuffered));
    FileIterator lines;
    Dice dice(randomSeed(1));
    for (int length = 0; length <= 8; ++length) {
        QByteArray bytes(length, 'a');
        for (int number = 0; number < 1 << 2 * length; ++number) {
            for (int i = 0; i < length; ++i)
                bytes[i] = alphabet[number >> 2 * i & 3];
            if (number == 0)
                QVERIFY(file.resize(length));
            QVERIFY(file.seek(0) && file.write(bytes) == length);
            const QByteArray difference = firstDifference(lines, path, bytes, dice, 20);
            if (!difference.isEmpty())
                QFAIL(("file <" + bytes.toPercentEncoding() + ">: " + difference).constData());
        }
    }
}

void TestFileIterator::largeFilesAgreeWithTheReference()
{
    const QByteArray alphabets[] = {"ab\n", "abcdefghijklmnopqrstuvwxyz\n", "x"};
    FileIterator lines;
    for (int run = 0; run < randomRuns(400); ++run) {
        const quint32 seed = randomSeed(1000) + static_cast<quint32>(run);
        Dice dice(seed);
        const int size =
            dice.oneOf(QList<int>{5120, 10240, 15360, 20480, 30720, 51200}) + dice.between(-2, 2);
        QByteArray bytes = dice.bytes(size, alphabets[dice.below(3)]);
        if (dice.once(2))
            bytes.replace("\n", "x");
        for (int i = dice.below(12); i > 0; --i) {
            const int border = dice.below(size / 5120 + 1) * 5120;
            const int place = dice.once(2) ? border : size - border;
            bytes[qBound(0, place + dice.between(-2, 2), size - 1)] = '\n';
        }
        if (dice.once(2))
            bytes[dice.below(size)] = '\0';
        const QByteArray difference = firstDifference(lines, write(bytes), bytes, dice, 40);
        if (!difference.isEmpty())
            QFAIL(("seed " + QByteArray::number(seed) + ": " + difference.left(2000)).constData());
    }
}

QTEST_GUILESS_MAIN(TestFileIterator)
#include "tst_fileiterator.moc"
