// SPDX-License-Identifier: BSD-3-Clause
#include <support/containerbuilder.h>

#include <QTemporaryDir>
#include <QTest>

class TestContainerBuilder : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void writesEveryByteOfASmallContainer();
    void bracketTextEscapesThreeCharacters();
    void zlibStreamInflatesAgain();
    void digestOfASectionIsTakenOverZeros_data();
    void digestOfASectionIsTakenOverZeros();
    void sectionsAreChained();
    void placesPointAtWhatTheyName();
    void blocksAreCountedInCharactersOfTheMarker();
    void rawFieldsReplaceOnlyThemselves();
    void headerStandsOnTheLineAskedFor();
};

void TestContainerBuilder::writesEveryByteOfASmallContainer()
{
    ContainerBuilder builder;
    builder.header().text("doc\n");
    builder.section(SectionSpec(QStringLiteral("t")).file(FileSpec(QStringLiteral("n"), "abc")));
    const QByteArray file = "%<--! $LORIX_EMBEDDEDFILE_BEGIN [filetype:text/plain][filename:n]"
                            "[desc:][comment:][compression:none][filesize:3][cfilesize:3]"
                            "[blocksize:5][offset:1][md5file:900150983cd24fb0d6963f7d28e17f72]"
                            "[md5cfile:]-->\nabc\n";
    const QByteArray before = "%<--! $LORIX_SECTION [version:1.0][creator:builder][title:t][left:";
    const QByteArray after = "][previousmd5:][previousmarker:]-->\n";
    const qsizetype left = file.size() + 1;
    // Three digits for left and for size, as this container is small.
    const qsizetype size = file.size() + before.size() + 3 + 7 + 3 + 22 + 32 + after.size();
    const QByteArray zeroed = file + before + QByteArray::number(left) +
                              "][size:" + QByteArray::number(size) +
                              "][index:0][md5section:" + QByteArray(32, '0') + after;
    QCOMPARE(zeroed.size(), size);
    QByteArray expected = zeroed;
    expected.replace(QByteArray(32, '0'), ContainerBuilder::md5(zeroed));
    QCOMPARE(builder.bytes(), "%<--! $LORIX_PDF [version:1.0]\ndoc\n" + expected);
}

void TestContainerBuilder::bracketTextEscapesThreeCharacters()
{
    QCOMPARE(ContainerBuilder::bracketText(QString::fromUtf8("a]b\\c\nd[\xc3\xa4")),
             QByteArray("a\\]b\\\\c\\nd[\xc3\xa4"));
}

void TestContainerBuilder::zlibStreamInflatesAgain()
{
    const QByteArray content(5000, 'x');
    const QByteArray stream = ContainerBuilder::zlibStream(content, 9);
    QVERIFY(stream.size() < 100);
    QCOMPARE(qUncompress(QByteArray("\0\0\x13\x88", 4) + stream), content);
}

void TestContainerBuilder::digestOfASectionIsTakenOverZeros_data()
{
    QTest::addColumn<QByteArray>("lineEnd");
    QTest::addColumn<int>("markerAt");
    QTest::addColumn<QByteArray>("prefix");
    for (const QByteArray& lineEnd : {QByteArray("\n"), QByteArray("\r\n")})
        for (int markerAt = 0; markerAt < 3; ++markerAt)
            for (const QByteArray& prefix : {QByteArray(), QByteArray("endobj ")})
                QTest::addRow("%lld-%d-%lld", static_cast<long long>(lineEnd.size()), markerAt,
                              static_cast<long long>(prefix.size()))
                    << lineEnd << markerAt << prefix;
}

void TestContainerBuilder::digestOfASectionIsTakenOverZeros()
{
    QFETCH(QByteArray, lineEnd);
    QFETCH(int, markerAt);
    QFETCH(QByteArray, prefix);
    ContainerBuilder builder(lineEnd);
    builder.start().section(SectionSpec(QStringLiteral("s"))
                                .file(FileSpec(QStringLiteral("a"), "aaa"))
                                .file(FileSpec(QStringLiteral("b"), "bbb").flate())
                                .setLinePrefix(prefix)
                                .setTrailingBytes("tail" + lineEnd)
                                .markerAfter(markerAt));
    const PlacedSection place = builder.sections().first();
    QByteArray section = builder.bytes().mid(place.start, place.end - place.start);
    QVERIFY(section.contains("[size:" + QByteArray::number(section.size()) + "]"));
    QVERIFY(section.contains("[left:" + QByteArray::number(place.line - place.start + 1) + "]"));
    QCOMPARE(section.count(place.md5section), 1);
    section.replace(place.md5section, QByteArray(32, '0'));
    QCOMPARE(ContainerBuilder::md5(section), place.md5section);
}

void TestContainerBuilder::sectionsAreChained()
{
    ContainerBuilder builder;
    builder.start();
    builder.section(SectionSpec(QStringLiteral("1")));
    builder.section(SectionSpec(QStringLiteral("2")).file(FileSpec(QStringLiteral("x"))));
    builder.forgetChain().section(SectionSpec(QStringLiteral("3")));
    const auto sections = builder.sections();
    const QByteArray second = builder.bytes().mid(sections[1].line);
    QVERIFY(second.contains("[previousmd5:" + sections[0].md5section + "][previousmarker:" +
                            QByteArray::number(sections[1].line - sections[0].line) + "]-->\n"));
    const QByteArray third = builder.bytes().mid(sections[2].line);
    QVERIFY(third.endsWith("[previousmd5:][previousmarker:]-->\n"));
}

void TestContainerBuilder::placesPointAtWhatTheyName()
{
    ContainerBuilder builder("\r\n");
    builder.start().file(FileSpec(QStringLiteral("alone"), "0123456789").setLinePrefix("xx"));
    builder.section(SectionSpec().setLinePrefix("yyy").file(
        FileSpec(QStringLiteral("f"), "stored").setGap("gap").setTail("tail").setLineSuffix("!")));
    const QByteArray bytes = builder.bytes();
    QCOMPARE(builder.files().size(), 2);
    for (const PlacedFile& file : builder.files()) {
        QCOMPARE(bytes.at(file.line - 1), '\n');
        QCOMPARE(bytes.mid(file.marker, 17), QByteArray("%<--! $LORIX_EMBE"));
        QCOMPARE(bytes.mid(file.block - 3, 3), QByteArray("-->"));
        QCOMPARE(bytes.mid(file.blockEnd - 2, 2), QByteArray("\r\n"));
    }
    const PlacedFile inside = builder.files().at(1);
    QCOMPARE(bytes.mid(inside.stored, inside.storedSize), QByteArray("stored"));
    QCOMPARE(bytes.mid(inside.block, inside.blockEnd - inside.block),
             QByteArray("!\r\ngapstoredtail\r\n"));
    QVERIFY(bytes.contains("[blocksize:18][offset:6]"));
    QCOMPARE(inside.section, 0);
    QCOMPARE(builder.files().at(0).section, -1);
    const PlacedSection section = builder.sections().first();
    QCOMPARE(section.line + 3, section.marker);
    QCOMPARE(bytes.mid(section.marker, 20), QByteArray("%<--! $LORIX_SECTION"));
    QCOMPARE(section.end, bytes.size());
}

void TestContainerBuilder::blocksAreCountedInCharactersOfTheMarker()
{
    // Two bytes, three bytes, and four bytes that are two UTF-16 units.
    const QString name = QString::fromUtf8("\xc3\xa4\xe2\x82\xac\xf0\x9f\x98\x80");
    ContainerBuilder builder;
    builder.file(FileSpec(name, "0123"));
    const QByteArray bytes = builder.bytes();
    const PlacedFile file = builder.files().first();
    const qint64 characters = QString::fromUtf8(bytes.left(file.block)).size();
    QCOMPARE(file.block - characters, 5);
    QVERIFY(bytes.contains("[blocksize:11][offset:6]"));
    QCOMPARE(bytes.mid(characters + 6, 4), QByteArray("0123"));
    QCOMPARE(characters + 11, bytes.size());
}

void TestContainerBuilder::rawFieldsReplaceOnlyThemselves()
{
    ContainerBuilder right;
    right.section(SectionSpec().file(FileSpec(QStringLiteral("f"), "abc")));
    for (const char* field : {"md5section", "left", "version", "previousmarker"}) {
        ContainerBuilder wrong;
        wrong.section(SectionSpec()
                          .file(FileSpec(QStringLiteral("f"), "abc").set("md5file", "zz"))
                          .set(field, "\xff!"));
        QVERIFY(wrong.bytes().contains("[md5file:zz][md5cfile:]"));
        QVERIFY(wrong.bytes().contains(QByteArray("[") + field + ":\xff!]"));
        QVERIFY(!wrong.sections().first().md5section.isEmpty());
        QCOMPARE(wrong.sections().first().end, wrong.bytes().size());
    }
    QVERIFY(right.bytes().contains("[version:1.0]"));
}

void TestContainerBuilder::headerStandsOnTheLineAskedFor()
{
    for (int line = 1; line <= 11; ++line) {
        const QByteArray bytes = ContainerBuilder().header(line, " extra").bytes();
        QCOMPARE(bytes.split('\n').at(line - 1), "%<--! $LORIX_PDF [version:1.0] extra");
    }
}

QTEST_GUILESS_MAIN(TestContainerBuilder)
#include "tst_containerbuilder.moc"
