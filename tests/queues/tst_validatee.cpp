// SPDX-License-Identifier: BSD-3-Clause
#include <lorix/queues/extractee.h>
#include <lorix/queues/storedrange.h>
#include <lorix/queues/validatee.h>

#include <QTest>

#include <limits>

using namespace lorix;

namespace {

constexpr int largest = std::numeric_limits<int>::max();

FileTag flateFile()
{
    FileTag tag;
    tag.id = 4;
    tag.position = 101;
    tag.taglen = 250;
    tag.offset = 2;
    tag.filename = QStringLiteral("mesh.txt");
    tag.compression = QStringLiteral("flate");
    tag.filesize = 900;
    tag.cfilesize = 300;
    tag.md5file = QStringLiteral("content");
    tag.md5cfile = QStringLiteral("stored");
    return tag;
}

} // namespace

class TestValidatee : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void sectionBeginsLeftOfItsPosition();
    void sectionWithoutTitleIsCalledSo();
    void flateFileIsItsStoredBytes();
    void fileOfAnyOtherMethodIsItsContent_data();
    void fileOfAnyOtherMethodIsItsContent();
    void savedFileKeepsPathDigestAndSize();
    void offsetsBeyondTheFormatStayBeyondEveryFile();
    void extracteeHoldsWhatIsReadAndWritten();
};

void TestValidatee::sectionBeginsLeftOfItsPosition()
{
    SectionTag tag;
    tag.id = 3;
    tag.position = 1000;
    tag.left = 400;
    tag.size = 700;
    tag.title = QStringLiteral("Meshing");
    tag.md5section = QStringLiteral("digest");
    tag.validationTag = "tag";
    const Validatee item = Validatee::fromSection(tag);
    QCOMPARE(item.type, 0);
    QCOMPARE(item.id, 3);
    QCOMPARE(item.start, 600);
    QCOMPARE(item.size, 700);
    QCOMPARE(item.tagPosition, 1000);
    QCOMPARE(item.validationTag, QByteArray("tag"));
    QCOMPARE(item.md5, QStringLiteral("digest"));
    QVERIFY(item.cmd5.isEmpty());
    QCOMPARE(item.name, QStringLiteral("Meshing"));
}

void TestValidatee::sectionWithoutTitleIsCalledSo()
{
    QCOMPARE(Validatee::fromSection(SectionTag()).name, QStringLiteral("<no title>"));
}

void TestValidatee::flateFileIsItsStoredBytes()
{
    const Validatee item = Validatee::fromFile(flateFile());
    QCOMPARE(item.type, 1);
    QCOMPARE(item.id, 4);
    QCOMPARE(item.start, 353);
    QCOMPARE(item.size, 300);
    QCOMPARE(item.tagPosition, -1);
    QVERIFY(item.validationTag.isEmpty());
    QCOMPARE(item.md5, QStringLiteral("content"));
    QCOMPARE(item.cmd5, QStringLiteral("stored"));
    QCOMPARE(item.name, QStringLiteral("mesh.txt"));
}

void TestValidatee::fileOfAnyOtherMethodIsItsContent_data()
{
    QTest::addColumn<QString>("method");
    for (const char* method : {"none", "", "lzma", "FLATE"})
        QTest::addRow("<%s>", method) << QString::fromLatin1(method);
}

void TestValidatee::fileOfAnyOtherMethodIsItsContent()
{
    QFETCH(QString, method);
    FileTag tag = flateFile();
    tag.compression = method;
    const Validatee item = Validatee::fromFile(tag);
    QCOMPARE(item.size, 900);
    QVERIFY(item.cmd5.isEmpty());
    QCOMPARE(item.md5, QStringLiteral("content"));
}

void TestValidatee::savedFileKeepsPathDigestAndSize()
{
    const Validatee item =
        Validatee::fromSavedFile({QStringLiteral("/tmp/a"), QStringLiteral("digest"), 77});
    QCOMPARE(item.type, 2);
    QCOMPARE(item.name, QStringLiteral("/tmp/a"));
    QCOMPARE(item.md5, QStringLiteral("digest"));
    QVERIFY(item.cmd5.isEmpty());
    QCOMPARE(item.size, 77);
    QCOMPARE(item.tagPosition, -1);
}

void TestValidatee::offsetsBeyondTheFormatStayBeyondEveryFile()
{
    FileTag file = flateFile();
    file.offset = largest;
    QCOMPARE(storedStart(file), largest);
    QCOMPARE(Validatee::fromFile(file).start, largest);
    SectionTag section;
    section.position = largest;
    section.left = -1;
    QCOMPARE(Validatee::fromSection(section).start, largest);
    section.position = 1;
    section.left = largest;
    QCOMPARE(Validatee::fromSection(section).start, 1 - largest);
}

void TestValidatee::extracteeHoldsWhatIsReadAndWritten()
{
    const Extractee flate = Extractee::fromFile(flateFile(), QStringLiteral("/tmp/x"));
    QCOMPARE(flate.id, 4);
    QCOMPARE(flate.start, 353);
    QCOMPARE(flate.size, 300);
    QCOMPARE(flate.md5, QStringLiteral("content"));
    QCOMPARE(flate.cmd5, QStringLiteral("stored"));
    QCOMPARE(flate.target, QStringLiteral("/tmp/x"));
    FileTag tag = flateFile();
    tag.compression = QStringLiteral("none");
    const Extractee plain = Extractee::fromFile(tag, QString());
    QCOMPARE(plain.size, 900);
    QVERIFY(plain.cmd5.isEmpty());
}

QTEST_GUILESS_MAIN(TestValidatee)
#include "tst_validatee.moc"
