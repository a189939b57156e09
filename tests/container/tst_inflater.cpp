// SPDX-License-Identifier: BSD-3-Clause
#include <lorix/container/inflater.h>
#include <support/containerbuilder.h>
#include <support/referenceinflater.h>
#include <support/zlibstreams.h>

#include <QTest>

using namespace lorix;

namespace {

constexpr int bufferSize = 1048576;

QByteArray describe(const QByteArray& output, bool finished, bool valid)
{
    return QByteArray::number(output.size()) + " bytes " + ContainerBuilder::md5(output) +
           (finished ? " finished" : "") + (valid ? "" : " invalid");
}

/// Feeds `stream` in the given pieces to both inflaters and says where they part.
QByteArray firstDifference(const QByteArray& stream, const QList<int>& pieces, bool resetAfter)
{
    Inflater inflater;
    ReferenceInflater reference;
    int done = 0;
    for (const int piece : pieces) {
        const QByteArray input = stream.mid(done, piece);
        const QByteArray actual = inflater.inflateData(input);
        const QByteArray expected = reference.inflateData(input);
        const QByteArray state = describe(actual, inflater.hasFinished(), inflater.isValid());
        const QByteArray wanted = describe(expected, reference.hasFinished(), reference.isValid());
        if (state != wanted || actual != expected)
            return "at " + QByteArray::number(done) + '+' + QByteArray::number(piece) + ": " +
                   state + ", expected: " + wanted;
        done += piece;
    }
    if (!resetAfter)
        return {};
    inflater.reset();
    const QByteArray again = ContainerBuilder::zlibStream("again");
    return inflater.inflateData(again) == "again" ? QByteArray() : QByteArray("after reset");
}

QByteArray randomContent(Dice& dice)
{
    switch (dice.below(6)) {
    case 0:
        return dice.anyBytes(dice.below(3000));
    case 1:
        return dice.bytes(dice.below(6000), "ab");
    case 2:
        return {};
    case 3:
        return QByteArray(dice.below(60000), 'r');
    default: {
        QByteArray words;
        for (int i = dice.below(400); i > 0; --i)
            words += dice.bytes(dice.between(1, 4), "aeiou") + ' ';
        return words;
    }
    }
}

} // namespace

class TestInflater : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void freshInflaterIsValidAndUnfinished();
    void inflatesAStreamInOnePiece();
    void inflatesAStreamByteByByte();
    void emptyInputChangesNothing();
    void inputBehindTheEndIsIgnored();
    void damageDiscardsTheWholeCall();
    void damageLeavesEarlierOutputAlone();
    void finishedStaysAsItWasOnDamage();
    void resetStartsAnew();
    void initGivesZlibsResult();
    void inputThatEndsWhereTheBufferIsFullIsDamage();
    void outputAroundTheBufferSize_data();
    void outputAroundTheBufferSize();
    void wholeAndDamagedStreamsAgreeWithTheReference();
    void largeStreamsAgreeWithTheReference();
};

void TestInflater::freshInflaterIsValidAndUnfinished()
{
    Inflater inflater;
    QVERIFY(inflater.isValid());
    QVERIFY(!inflater.hasFinished());
}

void TestInflater::inflatesAStreamInOnePiece()
{
    Inflater inflater;
    QCOMPARE(inflater.inflateData(ContainerBuilder::zlibStream("hello")), QByteArray("hello"));
    QVERIFY(inflater.hasFinished());
    QVERIFY(inflater.isValid());
}

void TestInflater::inflatesAStreamByteByByte()
{
    Inflater inflater;
    QByteArray output;
    const QByteArray stream = ContainerBuilder::zlibStream("hello hello hello");
    for (const char byte : stream) {
        QVERIFY(!inflater.hasFinished());
        output += inflater.inflateData(QByteArray(1, byte));
    }
    QCOMPARE(output, QByteArray("hello hello hello"));
    QVERIFY(inflater.hasFinished());
}

void TestInflater::emptyInputChangesNothing()
{
    const QByteArray stream = ContainerBuilder::zlibStream("hello");
    Inflater inflater;
    QCOMPARE(inflater.inflateData(QByteArray()), QByteArray());
    QVERIFY(inflater.isValid());
    const QByteArray start = inflater.inflateData(stream.left(4));
    QCOMPARE(inflater.inflateData(QByteArray()), QByteArray());
    QVERIFY(inflater.isValid());
    QVERIFY(!inflater.hasFinished());
    QCOMPARE(start + inflater.inflateData(stream.mid(4)), QByteArray("hello"));
    QCOMPARE(inflater.inflateData(QByteArray()), QByteArray());
    QVERIFY(inflater.hasFinished());
    QVERIFY(inflater.isValid());
}

void TestInflater::inputBehindTheEndIsIgnored()
{
    Inflater inflater;
    QCOMPARE(inflater.inflateData(ContainerBuilder::zlibStream("hello") + "rubbish"),
             QByteArray("hello"));
    QVERIFY(inflater.hasFinished());
    QCOMPARE(inflater.inflateData("rubbish"), QByteArray());
    QCOMPARE(inflater.inflateData(ContainerBuilder::zlibStream("more")), QByteArray());
    QVERIFY(inflater.hasFinished());
    QVERIFY(inflater.isValid());
}

void TestInflater::damageDiscardsTheWholeCall()
{
    // Two buffers of output come out before the checksum turns out wrong.
    QByteArray stream = ContainerBuilder::zlibStream(QByteArray(3 * bufferSize, 'x'));
    stream.back() = static_cast<char>(stream.back() ^ 1);
    Inflater inflater;
    QCOMPARE(inflater.inflateData(stream), QByteArray());
    QVERIFY(!inflater.isValid());
    QVERIFY(!inflater.hasFinished());
    QCOMPARE(inflater.inflateData(ContainerBuilder::zlibStream("more")), QByteArray());
    QVERIFY(!inflater.isValid());
}

void TestInflater::damageLeavesEarlierOutputAlone()
{
    const QByteArray content = "0123456789";
    QByteArray stream = ContainerBuilder::zlibStream(content, 0);
    stream.back() = static_cast<char>(stream.back() ^ 1);
    Inflater inflater;
    // Stored as they are: 7 bytes of headers stand in front.
    QCOMPARE(inflater.inflateData(stream.left(7 + 4)), QByteArray("0123"));
    QVERIFY(inflater.isValid());
    QCOMPARE(inflater.inflateData(stream.mid(7 + 4)), QByteArray());
    QVERIFY(!inflater.isValid());
}

void TestInflater::finishedStaysAsItWasOnDamage()
{
    Inflater inflater;
    QCOMPARE(inflater.inflateData("no zlib stream"), QByteArray());
    QVERIFY(!inflater.hasFinished());
    QVERIFY(!inflater.isValid());
}

void TestInflater::resetStartsAnew()
{
    Inflater inflater;
    QCOMPARE(inflater.inflateData("no zlib stream"), QByteArray());
    inflater.reset();
    QVERIFY(inflater.isValid());
    QCOMPARE(inflater.inflateData(ContainerBuilder::zlibStream("one")), QByteArray("one"));
    QVERIFY(inflater.hasFinished());
    inflater.reset();
    QVERIFY(!inflater.hasFinished());
    QVERIFY(inflater.inflateData(ContainerBuilder::zlibStream("two").left(4)).size() < 3);
    inflater.reset();
    QCOMPARE(inflater.inflateData(ContainerBuilder::zlibStream("three")), QByteArray("three"));
}

void TestInflater::initGivesZlibsResult()
{
    Inflater inflater;
    QCOMPARE(inflater.inflateData("no zlib stream"), QByteArray());
    QCOMPARE(inflater.init(), 0); // the failure has ended the stream
    QVERIFY(inflater.isValid());
    QVERIFY(!inflater.hasFinished());
    QCOMPARE(inflater.inflateData(ContainerBuilder::zlibStream("one")), QByteArray("one"));
    QCOMPARE(inflater.init(), 0); // in the middle of a stream, too
    QVERIFY(!inflater.hasFinished());
    QVERIFY(inflater.inflateData(ContainerBuilder::zlibStream("two").left(4)).size() < 3);
    QCOMPARE(inflater.init(), 0);
    QCOMPARE(inflater.inflateData(ContainerBuilder::zlibStream("three")), QByteArray("three"));
}

void TestInflater::inputThatEndsWhereTheBufferIsFullIsDamage()
{
    // Stored blocks let the input end with the very byte that fills the buffer.
    QByteArray content(bufferSize + 10, 'a');
    const QByteArray stream = ContainerBuilder::zlibStream(content, 0);
    ReferenceInflater reference;
    int exact = 0;
    for (int piece = bufferSize; piece < bufferSize + 200 && exact == 0; ++piece) {
        reference.reset();
        if (reference.inflateData(stream.left(piece)).isEmpty())
            exact = piece;
    }
    QVERIFY(exact > 0);
    Inflater inflater;
    QCOMPARE(inflater.inflateData(stream.left(exact - 1)).size(), bufferSize - 1);
    inflater.reset();
    QCOMPARE(inflater.inflateData(stream.left(exact)), QByteArray());
    QVERIFY(!inflater.isValid());
    QVERIFY(!inflater.hasFinished());
    inflater.reset();
    QCOMPARE(inflater.inflateData(stream.left(exact + 1)).size(), bufferSize + 1);
    QVERIFY(inflater.isValid());
}

void TestInflater::outputAroundTheBufferSize_data()
{
    QTest::addColumn<int>("size");
    for (const int buffers : {1, 2, 4})
        for (const int more : {-1, 0, 1})
            QTest::addRow("%d%+d", buffers, more) << buffers * bufferSize + more;
}

void TestInflater::outputAroundTheBufferSize()
{
    QFETCH(int, size);
    const QByteArray content(size, 'q');
    for (const int level : {0, 1, 9}) {
        const QByteArray stream = ContainerBuilder::zlibStream(content, level);
        Inflater inflater;
        QCOMPARE(inflater.inflateData(stream), content);
        QVERIFY(inflater.hasFinished());
        const int count = static_cast<int>(stream.size());
        for (const int cut : {1, 4, 5, 6, count / 2})
            QCOMPARE(firstDifference(stream, {count - cut, cut}, true), QByteArray());
    }
}

void TestInflater::wholeAndDamagedStreamsAgreeWithTheReference()
{
    for (int run = 0; run < randomRuns(4000); ++run) {
        const quint32 seed = randomSeed(1) + static_cast<quint32>(run);
        Dice dice(seed);
        QByteArray stream = randomZlibStream(dice, randomContent(dice));
        if (!dice.once(5))
            stream = damagedZlibStream(dice, stream);
        QList<int> pieces;
        const int size = static_cast<int>(stream.size());
        const int most = dice.oneOf(QList<int>{3, 20, size + 1, size + 1});
        for (int left = size; left > 0; left -= pieces.last())
            pieces.append(qMin(left, dice.between(1, qMax(1, most))));
        const QByteArray difference = firstDifference(stream, pieces, dice.once(4));
        QVERIFY2(difference.isEmpty(),
                 ("seed " + QByteArray::number(seed) + ' ' + difference).constData());
    }
}

void TestInflater::largeStreamsAgreeWithTheReference()
{
    for (int run = 0; run < randomRuns(25); ++run) {
        const quint32 seed = randomSeed(1) + static_cast<quint32>(run);
        Dice dice(seed);
        const QByteArray unit = dice.anyBytes(dice.between(1, 100000));
        const QByteArray content =
            unit.repeated(dice.below(3 * bufferSize) / static_cast<int>(unit.size()) + 1);
        QByteArray stream = randomZlibStream(dice, content);
        if (dice.once(2))
            stream = damagedZlibStream(dice, stream);
        const int size = static_cast<int>(stream.size());
        const int cut = dice.below(size);
        const QByteArray difference = firstDifference(stream, {cut, size - cut}, false);
        QVERIFY2(difference.isEmpty(),
                 ("seed " + QByteArray::number(seed) + ' ' + difference).constData());
    }
}

QTEST_GUILESS_MAIN(TestInflater)
#include "tst_inflater.moc"
