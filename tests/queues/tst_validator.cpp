// SPDX-License-Identifier: BSD-3-Clause
#include <lorix/queues/validator.h>
#include <support/containerbuilder.h>

#include <QMetaObject>
#include <QTest>

using namespace lorix;

namespace {

// RFC 1321, appendix A.5.
const QString md5OfNothing = QStringLiteral("d41d8cd98f00b204e9800998ecf8427e");
const QString md5OfAbc = QStringLiteral("900150983cd24fb0d6963f7d28e17f72");

QString md5(const QByteArray& bytes)
{
    return QString::fromLatin1(ContainerBuilder::md5(bytes));
}

QByteArray longText()
{
    QByteArray text;
    for (int line = 0; line < 5000; ++line)
        text += "line " + QByteArray::number(line * line) + '\n';
    return text;
}

} // namespace

class TestValidator : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void declaresNoSignalsOrSlots();
    void plainBytesAreComparedWithTheirDigest();
    void nothingFedHasTheDigestOfNothing();
    void upperCaseDigestNeverValidates();
    void streamNeedsBothDigests();
    void streamCutShortIsInvalidThoughItsBytesAreRight();
    void damagedStreamIsInvalid();
    void bytesBehindTheStreamsEndCountAsStored();
    void piecesOfAnySizeGiveTheSame_data();
    void piecesOfAnySizeGiveTheSame();
    void reinitStartsOver();
    void bytesFedAfterTheVerdictChangeNothing();
};

void TestValidator::declaresNoSignalsOrSlots()
{
    const QMetaObject& meta = Validator::staticMetaObject;
    QCOMPARE(meta.methodCount(), meta.methodOffset());
    QCOMPARE(meta.superClass(), &QObject::staticMetaObject);
}

void TestValidator::plainBytesAreComparedWithTheirDigest()
{
    Validator right(md5OfAbc, QString());
    right.update("abc");
    QVERIFY(right.isValid());
    Validator wrong(md5OfAbc, QString());
    wrong.update("abd");
    QVERIFY(!wrong.isValid());
    Validator unknown{QString(), QString()};
    unknown.update("abc");
    QVERIFY(!unknown.isValid());
}

void TestValidator::nothingFedHasTheDigestOfNothing()
{
    QVERIFY(Validator(md5OfNothing, QString()).isValid());
    QVERIFY(!Validator(md5OfNothing, md5OfNothing).isValid());
}

void TestValidator::upperCaseDigestNeverValidates()
{
    const QByteArray stream = ContainerBuilder::zlibStream("abc");
    Validator plain(md5OfAbc.toUpper(), QString());
    plain.update("abc");
    QVERIFY(!plain.isValid());
    Validator content(md5OfAbc.toUpper(), md5(stream));
    content.update(stream);
    QVERIFY(!content.isValid());
    Validator stored(md5OfAbc, md5(stream).toUpper());
    stored.update(stream);
    QVERIFY(!stored.isValid());
}

void TestValidator::streamNeedsBothDigests()
{
    const QByteArray stream = ContainerBuilder::zlibStream("abc");
    Validator right(md5OfAbc, md5(stream));
    right.update(stream);
    QVERIFY(right.isValid());
    Validator wrongStored(md5OfAbc, md5OfAbc);
    wrongStored.update(stream);
    QVERIFY(!wrongStored.isValid());
    Validator wrongContent(md5(stream), md5(stream));
    wrongContent.update(stream);
    QVERIFY(!wrongContent.isValid());
}

void TestValidator::streamCutShortIsInvalidThoughItsBytesAreRight()
{
    const QByteArray whole = ContainerBuilder::zlibStream("abc");
    for (qsizetype length = 0; length < whole.size(); ++length) {
        const QByteArray cut = whole.left(length);
        Validator validator(length == 0 ? md5OfNothing : md5OfAbc, md5(cut));
        validator.update(cut);
        QVERIFY2(!validator.isValid(), qPrintable(QString::number(length)));
    }
}

void TestValidator::damagedStreamIsInvalid()
{
    QByteArray stream = ContainerBuilder::zlibStream(longText());
    stream[stream.size() - 1] = static_cast<char>(stream.back() ^ 1);
    Validator validator(md5(longText()), md5(stream));
    validator.update(stream);
    QVERIFY(!validator.isValid());
}

void TestValidator::bytesBehindTheStreamsEndCountAsStored()
{
    const QByteArray stored = ContainerBuilder::zlibStream("abc") + "more";
    Validator validator(md5OfAbc, md5(stored));
    validator.update(stored);
    QVERIFY(validator.isValid());
    validator.reinit(md5OfAbc, md5(stored.chopped(4)));
    validator.update(stored);
    QVERIFY(!validator.isValid());
}

void TestValidator::piecesOfAnySizeGiveTheSame_data()
{
    QTest::addColumn<int>("length");
    for (const int length : {1, 2, 3, 7, 100, 4096, 1000000})
        QTest::addRow("%d", length) << length;
}

void TestValidator::piecesOfAnySizeGiveTheSame()
{
    QFETCH(int, length);
    const QByteArray stream = ContainerBuilder::zlibStream(longText());
    Validator packed(md5(longText()), md5(stream));
    for (qsizetype at = 0; at < stream.size(); at += length)
        packed.update(stream.mid(at, length));
    QVERIFY(packed.isValid());
    Validator plain(md5(stream), QString());
    for (qsizetype at = 0; at < stream.size(); at += length)
        plain.update(stream.mid(at, length));
    QVERIFY(plain.isValid());
}

void TestValidator::reinitStartsOver()
{
    const QByteArray stream = ContainerBuilder::zlibStream("abc");
    Validator validator(md5OfAbc, md5(stream));
    validator.update("no stream at all");
    QVERIFY(!validator.isValid());
    validator.reinit(md5OfAbc, md5(stream));
    validator.update(stream);
    QVERIFY(validator.isValid());
    validator.reinit(md5OfAbc, QString());
    validator.update("abc");
    QVERIFY(validator.isValid());
}

void TestValidator::bytesFedAfterTheVerdictChangeNothing()
{
    Validator validator(md5OfAbc, QString());
    validator.update("abc");
    QVERIFY(validator.isValid());
    validator.update("d");
    QVERIFY(validator.isValid());
}

QTEST_GUILESS_MAIN(TestValidator)
#include "tst_validator.moc"
