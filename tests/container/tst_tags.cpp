// SPDX-License-Identifier: BSD-3-Clause
#include <lorix/container/filetag.h>
#include <lorix/container/sectiontag.h>
#include <support/debugrecorder.h>
#include <support/referenceparser.h>

#include <QTest>

using namespace lorix;

class TestTags : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void freshRecordsAreZeroAndEmpty();
    void copiesHaveEveryMember();
    void printSectionTagNamesEveryMember();
    void printFileTagNamesEveryMember();
    void makeFileHashNamesTheContent_data();
    void makeFileHashNamesTheContent();
};

namespace {

SectionTag fullSection()
{
    return SectionTag{
        1,      2, 3, QStringLiteral("4v"),  QStringLiteral("5c"),  QStringLiteral("6t"),
        7,      8, 9, QStringLiteral("10m"), QStringLiteral("11p"), 12,
        "13tag"};
}

FileTag fullFile()
{
    return FileTag{1,
                   2,
                   3,
                   QStringLiteral("4t"),
                   QStringLiteral("5n"),
                   QStringLiteral("6d"),
                   QStringLiteral("7c"),
                   QStringLiteral("8z"),
                   9,
                   10,
                   11,
                   12,
                   QStringLiteral("13m"),
                   QStringLiteral("14c")};
}

} // namespace

void TestTags::freshRecordsAreZeroAndEmpty()
{
    QCOMPARE(describeSection(SectionTag()), describeSection(ReferenceSection()));
    QCOMPARE(describeFile(FileTag()), describeFile(ReferenceFile()));
    QCOMPARE(SectionTag().previousmarker, 0);
    QCOMPARE(FileTag().filesize, 0);
}

void TestTags::copiesHaveEveryMember()
{
    const SectionTag section = fullSection();
    SectionTag otherSection;
    otherSection = section;
    QCOMPARE(describeSection(SectionTag(section)), describeSection(section));
    QCOMPARE(describeSection(otherSection), describeSection(section));
    const FileTag file = fullFile();
    FileTag otherFile;
    otherFile = file;
    QCOMPARE(describeFile(FileTag(file)), describeFile(file));
    QCOMPARE(describeFile(otherFile), describeFile(file));
}

void TestTags::printSectionTagNamesEveryMember()
{
    DebugRecorder debug;
    printSectionTag(fullSection());
    QCOMPARE(debug.take(),
             QStringList(
                 {QStringLiteral("id 1"), QStringLiteral("position 2"), QStringLiteral("taglen 3"),
                  QStringLiteral("version \"4v\""), QStringLiteral("creator \"5c\""),
                  QStringLiteral("title \"6t\""), QStringLiteral("left 7"),
                  QStringLiteral("size 8"), QStringLiteral("index 9"),
                  QStringLiteral("md5section \"10m\""), QStringLiteral("previousmd5 \"11p\""),
                  QStringLiteral("previousmarker 12"), QStringLiteral("validationTag \"13tag\"")}));
}

void TestTags::printFileTagNamesEveryMember()
{
    DebugRecorder debug;
    printFileTag(fullFile());
    QCOMPARE(debug.take(),
             QStringList({QStringLiteral("id 1"), QStringLiteral("position 2"),
                          QStringLiteral("taglen 3"), QStringLiteral("filetype \"4t\""),
                          QStringLiteral("filename \"5n\""), QStringLiteral("desc \"6d\""),
                          QStringLiteral("comment \"7c\""), QStringLiteral("compression \"8z\""),
                          QStringLiteral("filesize 9"), QStringLiteral("cfilesize 10"),
                          QStringLiteral("blocksize 11"), QStringLiteral("offset 12"),
                          QStringLiteral("md5file \"13m\""), QStringLiteral("md5cfile \"14c\"")}));
}

void TestTags::makeFileHashNamesTheContent_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<int>("size");
    QTest::addColumn<int>("number");
    QTest::addColumn<QString>("hash");
    QTest::newRow("usual") << QStringLiteral("a.txt") << 12 << 3
                           << QStringLiteral("file: <3>-<a.txt>-<13m>-<12>");
    QTest::newRow("place markers stay")
        << QStringLiteral("%1%4") << -1 << 0 << QStringLiteral("file: <0>-<%1%4>-<13m>-<-1>");
    QTest::newRow("negative number")
        << QString() << 0 << -7 << QStringLiteral("file: <-7>-<>-<13m>-<0>");
}

void TestTags::makeFileHashNamesTheContent()
{
    QFETCH(QString, name);
    QFETCH(int, size);
    QFETCH(int, number);
    FileTag tag = fullFile();
    tag.filename = name;
    tag.filesize = size;
    QTEST(makeFileHash(tag, number), "hash");
}

QTEST_GUILESS_MAIN(TestTags)
#include "tst_tags.moc"
