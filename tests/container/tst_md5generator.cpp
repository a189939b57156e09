// SPDX-License-Identifier: BSD-3-Clause
#include <lorix/container/md5generator.h>

#include <QMetaObject>
#include <QTest>

using namespace lorix;

class TestMD5Generator : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void givesTheStandardsValues_data();
    void givesTheStandardsValues();
    void digestIsCachedUntilReset();
    void constructorFeedsItsArgument();
    void hasNoSignalsOrSlots();
};

void TestMD5Generator::givesTheStandardsValues_data()
{
    QTest::addColumn<QByteArray>("data");
    QTest::addColumn<QString>("digest");
    const auto row = [](const char* data, const char* digest) {
        QTest::newRow(data) << QByteArray(data) << QString::fromLatin1(digest);
    };
    row("", "d41d8cd98f00b204e9800998ecf8427e");
    row("a", "0cc175b9c0f1b6a831c399e269772661");
    row("abc", "900150983cd24fb0d6963f7d28e17f72");
    row("message digest", "f96b697d7cb7938d525a2f31aaf161d0");
    row("abcdefghijklmnopqrstuvwxyz", "c3fcd3d76192e4007dfb496cca67e13b");
    row("ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789",
        "d174ab98d277d9f5a5611c2c9f419d9f");
    row("12345678901234567890123456789012345678901234567890123456789012345678901234567890",
        "57edf4a22be3c955ac49da2e2107b67a");
}

void TestMD5Generator::givesTheStandardsValues()
{
    QFETCH(QByteArray, data);
    QFETCH(QString, digest);
    MD5Generator whole;
    whole.update(data);
    QCOMPARE(whole.getHexDigest(), digest);
    MD5Generator bytewise;
    for (const char byte : data)
        bytewise.update(QByteArray(1, byte));
    bytewise.update(QByteArray());
    QCOMPARE(bytewise.getHexDigest(), digest);
}

void TestMD5Generator::digestIsCachedUntilReset()
{
    MD5Generator generator("abc");
    const QString digest = generator.getHexDigest();
    generator.update("more");
    QCOMPARE(generator.getHexDigest(), digest);
    generator.reset();
    QCOMPARE(generator.getHexDigest(), QStringLiteral("d41d8cd98f00b204e9800998ecf8427e"));
    generator.reset();
    generator.update("abc");
    QCOMPARE(generator.getHexDigest(), digest);
}

void TestMD5Generator::constructorFeedsItsArgument()
{
    MD5Generator generator("ab");
    generator.update("c");
    QCOMPARE(generator.getHexDigest(), QStringLiteral("900150983cd24fb0d6963f7d28e17f72"));
    QCOMPARE(MD5Generator(QByteArray()).getHexDigest(), MD5Generator().getHexDigest());
}

void TestMD5Generator::hasNoSignalsOrSlots()
{
    const QMetaObject& meta = MD5Generator::staticMetaObject;
    QCOMPARE(meta.methodCount(), meta.methodOffset());
    QCOMPARE(meta.superClass(), &QObject::staticMetaObject);
}

QTEST_GUILESS_MAIN(TestMD5Generator)
#include "tst_md5generator.moc"
