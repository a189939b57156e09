// SPDX-License-Identifier: BSD-3-Clause
#include <lorix/summary/makesummaries.h>
#include <lorix/summary/tagdistance.h>
#include <summary/plainmatching.h>
#include <support/debugrecorder.h>

#include <QTest>

using namespace lorix;

namespace {

FileTag tagNamed(int id, const QString& name)
{
    FileTag tag;
    tag.id = id;
    tag.filename = name;
    tag.filesize = 5;
    tag.cfilesize = 5;
    tag.md5file = QStringLiteral("0123456789abcdef0123456789abcdef");
    tag.compression = QStringLiteral("none");
    return tag;
}

// What an XML summary says when it says of an embedded file just what its
// marker does.
FileSummary fileFor(const FileTag& tag)
{
    FileSummary file = makeFileSummaryFromFileTag(tag);
    file.tagId = -1;
    file.embedded = true;
    file.fromTags = false;
    file.filePurpose = QStringLiteral("InFile");
    return file;
}

Summary summaryOf(const QList<FileSummary>& files)
{
    Summary summary;
    summary.tagId = -1;
    summary.title = QStringLiteral("title");
    summary.md5 = QStringLiteral("signature");
    summary.fromXml = true;
    summary.files = files;
    return summary;
}

TagHash hashOf(const QList<FileTag>& tags, int section)
{
    TagHash hash;
    for (const FileTag& tag : tags)
        hash.insert(makeFileHash(tag, section), qMakePair(tag, section));
    return hash;
}

SectionTag sectionNumbered(int id)
{
    SectionTag section;
    section.id = id;
    section.index = 99;
    section.title = QStringLiteral("title of the marker");
    return section;
}

QList<int> tagIds(const Summary& summary)
{
    QList<int> ids;
    for (const FileSummary& file : summary.files)
        ids.append(file.tagId);
    return ids;
}

// The ids of the tags left, by key, in the order in which they are visited.
QMap<QString, QList<int>> left(const TagHash& hash)
{
    QMap<QString, QList<int>> ids;
    for (auto it = hash.begin(); it != hash.end(); ++it)
        ids[it.key()].append(it->first.id);
    return ids;
}

QString oneOf(QRandomGenerator& random, const QStringList& values)
{
    return values.at(random.bounded(int(values.size())));
}

// Of few values each, so that tags are often alike.
FileTag randomTag(QRandomGenerator& random, int id, int variety)
{
    FileTag tag = tagNamed(id, oneOf(random, {"a", "b", "a>-<b"}));
    tag.md5file = oneOf(random, {"c", "c", "b>-<c"});
    tag.filesize = random.bounded(5) == 0 ? 1 : 2;
    tag.filetype = QString::number(random.bounded(variety));
    tag.desc = QString::number(random.bounded(variety));
    tag.comment = QString::number(random.bounded(variety));
    tag.md5cfile = QString::number(random.bounded(variety));
    tag.cfilesize = random.bounded(variety);
    tag.compression = QString::number(random.bounded(variety));
    return tag;
}

} // namespace

class TestMakeSummaries : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void distanceWeighsEachField_data();
    void distanceWeighsEachField();
    void weightsAddUp();
    void filesAreEqualByNameAndBothDigests();
    void stepsAreAlwaysEqual();
    void unmatchedTagsMakeASummaryOfTheirOwn();
    void augmentingKeepsTheSummaryAndSetsItsNumber();
    void fileTakesTheTagThatHoldsItsBytes();
    void acceptedDifferencesStillMatch_data();
    void acceptedDifferencesStillMatch();
    void notEmbeddedFilesAreNeverMatched();
    void alikeTagsAreTakenLastInsertedFirst();
    void nearerTagIsTakenBeforeALaterInsertedOne();
    void tagsOfOtherSectionsAreLeftAlone();
    void leftoverTagsFollowByAscendingNumberAndStay();
    void collidingKeysAreToldApartByDistance();
    void randomHistoriesMatchAsThePlainWay_data();
    void randomHistoriesMatchAsThePlainWay();
    void manyCopiesOfOneFileAreMatchedInOneGo_data();
    void manyCopiesOfOneFileAreMatchedInOneGo();
};

void TestMakeSummaries::distanceWeighsEachField_data()
{
    QTest::addColumn<FileTag>("tag");
    QTest::addColumn<int>("apart");

    const FileTag same = tagNamed(0, QStringLiteral("a"));
    QTest::newRow("same") << same << 0;
    FileTag tag = same;
    tag.id = 7;
    tag.position = 8;
    tag.blocksize = 9;
    tag.offset = 10;
    QTest::newRow("other place") << tag << 0;
    const QString other = QStringLiteral("other");
    const std::pair<QString FileTag::*, int> texts[] = {
        {&FileTag::filename, 20},  {&FileTag::md5file, 20}, {&FileTag::filetype, 1},
        {&FileTag::desc, 1},       {&FileTag::comment, 1},  {&FileTag::md5cfile, 2},
        {&FileTag::compression, 2}};
    int row = 0;
    for (const auto& text : texts) {
        tag = same;
        tag.*text.first = other;
        QTest::addRow("text %d", row++) << tag << text.second;
    }
    tag = same;
    tag.filesize = 6;
    QTest::newRow("filesize") << tag << 20;
    tag = same;
    tag.cfilesize = 6;
    QTest::newRow("cfilesize") << tag << 2;
}

void TestMakeSummaries::distanceWeighsEachField()
{
    QFETCH(FileTag, tag);
    QTEST(distance(tag, fileFor(tagNamed(0, QStringLiteral("a")))), "apart");
}

void TestMakeSummaries::weightsAddUp()
{
    QCOMPARE(lorix::distance(FileTag(), FileSummary()), 22); // both sizes: 0 and -1
    FileTag tag;
    tag.filename = tag.md5file = tag.filetype = tag.desc = tag.comment = tag.md5cfile =
        tag.compression = QStringLiteral("x");
    QCOMPARE(::distance(tag, FileSummary()), 69);
}

void TestMakeSummaries::filesAreEqualByNameAndBothDigests()
{
    FileTag tag = tagNamed(0, QStringLiteral("a"));
    tag.md5cfile = QStringLiteral("d");
    FileSummary file = fileFor(tag);
    file.uncompressedSize = 77;
    file.description = QStringLiteral("other");
    QVERIFY(filesEqual(file, tag));
    for (QString FileSummary::*member :
         {&FileSummary::filename, &FileSummary::uncompressedMD5, &FileSummary::compressedMD5}) {
        FileSummary other = file;
        other.*member += QLatin1Char('x');
        QVERIFY(!filesEqual(other, tag));
    }
}

void TestMakeSummaries::stepsAreAlwaysEqual()
{
    Workflowstep step;
    step.title = QStringLiteral("a");
    step.tagId = 3;
    QVERIFY(workflowstepsEqual(step, sectionNumbered(1)));
    QVERIFY(workflowstepsEqual(Workflowstep(), SectionTag()));
}

void TestMakeSummaries::unmatchedTagsMakeASummaryOfTheirOwn()
{
    const Summary summary = makeUnmatchedTagSummary(
        {tagNamed(4, QStringLiteral("b")), tagNamed(2, QStringLiteral("a"))});
    QCOMPARE(summary.title, QStringLiteral("<unmatched files>"));
    QCOMPARE(summary.tagId, 0);
    QVERIFY(!summary.fromXml);
    QCOMPARE(tagIds(summary), QList<int>({4, 2}));
    QVERIFY(summary.files.at(0).fromTags);
    QCOMPARE(makeUnmatchedTagSummary({}).title, QStringLiteral("<unmatched files>"));
    QVERIFY(makeUnmatchedTagSummary({}).files.isEmpty());
}

void TestMakeSummaries::augmentingKeepsTheSummaryAndSetsItsNumber()
{
    TagHash hash;
    const Summary given = summaryOf({});
    const Summary augmented = augmentSummary(given, sectionNumbered(4), hash);
    QCOMPARE(augmented.tagId, 4);
    QCOMPARE(given.tagId, -1);
    QCOMPARE(augmented.title, QStringLiteral("title"));
    QCOMPARE(augmented.md5, QStringLiteral("signature"));
    QVERIFY(augmented.fromXml);
    QVERIFY(augmented.files.isEmpty());
}

void TestMakeSummaries::fileTakesTheTagThatHoldsItsBytes()
{
    const FileTag a = tagNamed(10, QStringLiteral("a"));
    const FileTag b = tagNamed(11, QStringLiteral("b"));
    TagHash hash = hashOf({a, b}, 3);
    const Summary augmented =
        augmentSummary(summaryOf({fileFor(b), fileFor(a)}), sectionNumbered(3), hash);
    QCOMPARE(tagIds(augmented), QList<int>({11, 10}));
    QVERIFY(!augmented.files.at(0).fromTags);
    QCOMPARE(augmented.files.at(0).filePurpose, QStringLiteral("InFile"));
    QVERIFY(hash.isEmpty());
}

void TestMakeSummaries::acceptedDifferencesStillMatch_data()
{
    QTest::addColumn<FileTag>("tag");
    QTest::addColumn<bool>("matches");

    const FileTag same = tagNamed(6, QStringLiteral("a"));
    FileTag tag = same;
    tag.desc = QStringLiteral("other");
    QTest::newRow("description") << tag << true;
    tag.filetype = tag.comment = tag.md5cfile = tag.compression = QStringLiteral("other");
    tag.cfilesize = 4;
    QTest::newRow("all that may differ") << tag << true;
    tag = same;
    tag.filesize = 6;
    QTest::newRow("size") << tag << false;
    tag = same;
    tag.filename = QStringLiteral("A");
    QTest::newRow("name") << tag << false;
    tag = same;
    tag.md5file.clear();
    QTest::newRow("digest") << tag << false;
}

void TestMakeSummaries::acceptedDifferencesStillMatch()
{
    QFETCH(FileTag, tag);
    QFETCH(bool, matches);
    const DebugRecorder quiet;
    TagHash hash = hashOf({tag}, 0);
    const FileSummary file = fileFor(tagNamed(0, QStringLiteral("a")));
    const Summary augmented = augmentSummary(summaryOf({file}), sectionNumbered(0), hash);
    QCOMPARE(tagIds(augmented), matches ? QList<int>({6}) : QList<int>({-1, 6}));
    QCOMPARE(augmented.files.at(0).description, file.description);
    QCOMPARE(hash.isEmpty(), matches);
}

void TestMakeSummaries::notEmbeddedFilesAreNeverMatched()
{
    const DebugRecorder quiet;
    const FileTag tag = tagNamed(5, QStringLiteral("a"));
    TagHash hash = hashOf({tag}, 0);
    FileSummary file = fileFor(tag);
    file.embedded = false;
    const Summary augmented = augmentSummary(summaryOf({file}), sectionNumbered(0), hash);
    QCOMPARE(tagIds(augmented), QList<int>({-1, 5}));
    QCOMPARE(hash.size(), 1);
}

void TestMakeSummaries::alikeTagsAreTakenLastInsertedFirst()
{
    const QString name = QStringLiteral("a");
    const FileSummary file = fileFor(tagNamed(0, name));
    for (const int count : {3, 40}) {
        QList<FileTag> tags;
        QList<FileSummary> files;
        QList<int> expected;
        for (int id = 0; id < count; ++id) {
            tags.append(tagNamed(id, name));
            files.append(file);
            expected.prepend(id);
        }
        files.append(file);
        expected.append(-1);
        TagHash hash = hashOf(tags, 0);
        QCOMPARE(tagIds(augmentSummary(summaryOf(files), sectionNumbered(0), hash)), expected);
        QVERIFY(hash.isEmpty());
    }
}

void TestMakeSummaries::nearerTagIsTakenBeforeALaterInsertedOne()
{
    FileTag right = tagNamed(1, QStringLiteral("a"));
    right.desc = QStringLiteral("right");
    FileTag wrong = right;
    wrong.id = 2;
    wrong.desc = QStringLiteral("wrong");
    FileTag worse = right;
    worse.id = 3;
    worse.compression = QStringLiteral("flate");
    for (const int copies : {1, 20}) {
        const DebugRecorder quiet;
        QList<FileTag> tags{right};
        for (int i = 0; i < copies; ++i)
            tags << wrong << worse;
        TagHash hash = hashOf(tags, 0);
        const Summary augmented = augmentSummary(
            summaryOf({fileFor(right), fileFor(right), fileFor(worse)}), sectionNumbered(0), hash);
        QCOMPARE(tagIds(augmented).mid(0, 3), QList<int>({1, 2, 3}));
        QCOMPARE(hash.size(), 2 * copies - 2);
    }
}

void TestMakeSummaries::tagsOfOtherSectionsAreLeftAlone()
{
    const FileTag tag = tagNamed(1, QStringLiteral("a"));
    TagHash hash = hashOf({tag}, 1);
    DebugRecorder debug;
    const Summary augmented = augmentSummary(summaryOf({fileFor(tag)}), sectionNumbered(2), hash);
    QCOMPARE(tagIds(augmented), QList<int>({-1}));
    QCOMPARE(hash.size(), 1);
    QCOMPARE(debug.take(), QStringList());
}

void TestMakeSummaries::leftoverTagsFollowByAscendingNumberAndStay()
{
    QList<FileTag> tags;
    for (const int id : {7, 3, 9, 1, 5})
        tags.append(tagNamed(id, QString::number(id)));
    TagHash hash = hashOf(tags, 0);
    DebugRecorder debug;
    const Summary augmented =
        augmentSummary(summaryOf({fileFor(tags.at(2))}), sectionNumbered(0), hash);
    QCOMPARE(tagIds(augmented), QList<int>({9, 1, 3, 5, 7}));
    QCOMPARE(hash.size(), 4);
    for (const FileSummary& file : augmented.files.mid(1)) {
        QVERIFY(file.fromTags);
        QVERIFY(!file.embedded);
        QCOMPARE(file.filePurpose, QStringLiteral("Undefined"));
    }
    const QStringList lines = debug.take();
    QCOMPARE(lines.size(), 4 * 22);
    QCOMPARE(lines.mid(0, 3),
             QStringList({QStringLiteral("foundMismatch"), QStringLiteral("  TagID 1"),
                          QStringLiteral("  Filename \"1\"")}));
    QCOMPARE(lines.at(22), QStringLiteral("foundMismatch"));
    QCOMPARE(lines.at(23), QStringLiteral("  TagID 3"));
}

void TestMakeSummaries::collidingKeysAreToldApartByDistance()
{
    FileTag tag = tagNamed(1, QStringLiteral("a>-<b"));
    tag.md5file = QStringLiteral("c");
    FileSummary file = fileFor(tag);
    file.filename = QStringLiteral("a");
    file.uncompressedMD5 = QStringLiteral("b>-<c");
    QCOMPARE(makeFileHash(file, 0), makeFileHash(tag, 0));
    const DebugRecorder quiet;
    TagHash hash = hashOf({tag}, 0);
    QCOMPARE(tagIds(augmentSummary(summaryOf({file}), sectionNumbered(0), hash)),
             QList<int>({-1, 1}));
}

void TestMakeSummaries::randomHistoriesMatchAsThePlainWay_data()
{
    QTest::addColumn<int>("most");
    QTest::addColumn<int>("variety");
    QTest::addColumn<int>("runs");
    QTest::newRow("few tags") << 8 << 2 << 8000;
    QTest::newRow("many tags alike") << 80 << 2 << 1000;
    QTest::newRow("many tags unlike") << 80 << 4 << 1000;
    QTest::newRow("very many tags") << 600 << 3 << 40;
}

void TestMakeSummaries::randomHistoriesMatchAsThePlainWay()
{
    QFETCH(int, most);
    QFETCH(int, variety);
    QFETCH(int, runs);
    QRandomGenerator random(most + variety);
    const DebugRecorder quiet;
    int matched = 0;
    for (int run = plain::runs(runs); run > 0; --run) {
        TagHash hash;
        plain::Entries entries;
        const int count = random.bounded(most + 1);
        for (int id = 0; id < count; ++id) {
            const FileTag tag = randomTag(random, id, variety);
            const int section = random.bounded(8) == 0 ? 1 : 0;
            // Now and then under a key that says otherwise.
            const int keySection = random.bounded(16) == 0 ? 1 - section : section;
            hash.insert(makeFileHash(tag, keySection), qMakePair(tag, section));
            entries.prepend(
                {plain::key(tag.filename, tag.md5file, tag.filesize, keySection), tag, section});
        }
        for (const int section : {0, 1}) {
            QList<FileSummary> files;
            for (int n = random.bounded(most + 1); n > 0; --n) {
                files.append(fileFor(randomTag(random, 0, variety)));
                files.last().embedded = random.bounded(10) != 0;
            }
            const Summary expected = plain::augment(summaryOf(files), section, entries);
            const Summary found = augmentSummary(summaryOf(files), sectionNumbered(section), hash);
            QCOMPARE(plain::members(found), plain::members(expected));
            QMap<QString, QList<int>> expectedLeft;
            for (const plain::Entry& entry : entries)
                expectedLeft[entry.key].append(entry.tag.id);
            QCOMPARE(left(hash), expectedLeft);
            matched += count - int(hash.size());
        }
    }
    QVERIFY(matched > 1000);
}

void TestMakeSummaries::manyCopiesOfOneFileAreMatchedInOneGo_data()
{
    QTest::addColumn<bool>("alike");
    QTest::newRow("alike") << true;
    QTest::newRow("none as described") << false;
}

// Comparing every file with every tag would be ten thousand million
// comparisons; the time limit of the suite is the only clock.
void TestMakeSummaries::manyCopiesOfOneFileAreMatchedInOneGo()
{
    QFETCH(bool, alike);
    const int count = 100000;
    QList<FileTag> tags;
    QList<FileSummary> files;
    for (int id = 0; id < count; ++id) {
        FileTag tag = tagNamed(id, QStringLiteral("a"));
        files.append(fileFor(tag));
        if (!alike) {
            tag.desc = QString::number(id);
            files.last().comment = QString::number(id);
        }
        tags.append(tag);
    }
    TagHash hash = hashOf(tags, 0);
    const Summary augmented = augmentSummary(summaryOf(files), sectionNumbered(0), hash);
    QCOMPARE(augmented.files.size(), count);
    QCOMPARE(augmented.files.first().tagId, count - 1);
    QCOMPARE(augmented.files.last().tagId, 0);
    QVERIFY(hash.isEmpty());
}

QTEST_GUILESS_MAIN(TestMakeSummaries)
#include "tst_makesummaries.moc"
