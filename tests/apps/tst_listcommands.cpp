// SPDX-License-Identifier: BSD-3-Clause
// info, sections, files and cat: what they say of containers, right and damaged.
#include "clirunner.h"

#include <support/containerbuilder.h>

#include <QJsonArray>
#include <QTemporaryDir>
#include <QTest>

namespace {

QByteArray manyNumbers()
{
    QByteArray bytes;
    for (int i = 0; i < 50000; ++i)
        bytes += QByteArray::number(qint64(i) * i) + '\n';
    return bytes;
}

} // namespace

class TestListCommands : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void infoCountsWhatThereIs();
    void sectionsHoldEveryMember();
    void filesHoldEveryMemberAndTheirSection();
    void namesAreDecodedForPeopleAndKeptInJson();
    void catWritesTheContentByteForByte();
    void catOfUnknownIdIsRefused();
    void catSaysWhatIsDamaged_data();
    void catSaysWhatIsDamaged();

private:
    QScopedPointer<QTemporaryDir> m_dir;
    QScopedPointer<ContainerBuilder> m_builder;
    QString m_path;
};

void TestListCommands::init()
{
    m_dir.reset(new QTemporaryDir);
    m_builder.reset(new ContainerBuilder);
    m_builder->start();
    m_builder->section(SectionSpec(QStringLiteral("first [draft]\nline"))
                           .file(FileSpec(QStringLiteral("a]b.txt"),
                                          QByteArrayLiteral("stored as it is\0with zero"))));
    m_builder->section(SectionSpec(QStringLiteral("second"))
                           .file(FileSpec(QStringLiteral("numbers.txt"), manyNumbers()).flate())
                           .file(FileSpec(QStringLiteral("inner.lorix"), "no real one")));
    m_builder->file(FileSpec(QStringLiteral("loose.txt"), "loose"));
    m_path = m_builder->writeTo(m_dir->filePath(QStringLiteral("c.lorix")));
}

void TestListCommands::infoCountsWhatThereIs()
{
    const CliCall people = runCli({QStringLiteral("info"), m_path});
    QCOMPARE(people.exitCode, 0);
    QVERIFY(people.out.contains("2 steps, 4 embedded files"));
    QVERIFY(people.out.contains("1 file that belongs to no step"));
    QVERIFY(people.out.contains("   1                   first [draft]\\nline\n"));
    const QJsonObject info = runCli({QStringLiteral("info"), QStringLiteral("--json"), m_path})
                                 .objects()
                                 .at(0)["info"]
                                 .toObject();
    QCOMPARE(info["sections"].toInt(), 2);
    QCOMPARE(info["files"].toInt(), 4);
    QCOMPARE(info["nested"].toInt(), 1);
    QCOMPARE(info["sectionless"].toInt(), 1);
    QCOMPARE(info["steps"].toArray().at(0).toObject()["title"].toString(),
             QStringLiteral("second"));
    QCOMPARE(info["size"].toInt(), m_builder->bytes().size());
}

void TestListCommands::sectionsHoldEveryMember()
{
    const QJsonArray sections =
        runCli({QStringLiteral("sections"), QStringLiteral("--json"), m_path})
            .objects()
            .at(0)["sections"]
            .toArray();
    QCOMPARE(sections.size(), 2);
    const PlacedSection& newest = m_builder->sections()[1];
    const QJsonObject section = sections[0].toObject();
    QCOMPARE(section["id"].toInt(), 0);
    QCOMPARE(section["position"].toInt(), newest.marker + 1);
    QCOMPARE(section["taglen"].toInt(), newest.block - newest.marker - 1);
    QCOMPARE(section["title"].toString(), QStringLiteral("second"));
    QCOMPARE(section["left"].toInt(), newest.marker + 1 - newest.start);
    QCOMPARE(section["size"].toInt(), newest.end - newest.start);
    QCOMPARE(section["md5section"].toString().toLatin1(), newest.md5section);
    QCOMPARE(section["previousmd5"].toString().toLatin1(), m_builder->sections()[0].md5section);
    QCOMPARE(section["previousmarker"].toInt(), newest.line - m_builder->sections()[0].line);
    QCOMPARE(sections[1].toObject()["previousmarker"].toInt(), -1);
}

void TestListCommands::filesHoldEveryMemberAndTheirSection()
{
    const QJsonArray files = runCli({QStringLiteral("files"), QStringLiteral("--json"), m_path})
                                 .objects()
                                 .at(0)["files"]
                                 .toArray();
    QCOMPARE(files.size(), 4);
    const PlacedFile& placed = m_builder->files()[1];
    const QJsonObject file = files[1].toObject();
    QCOMPARE(file["filename"].toString(), QStringLiteral("numbers.txt"));
    QCOMPARE(file["section"].toInt(), 0);
    QCOMPARE(file["compression"].toString(), QStringLiteral("flate"));
    QCOMPARE(file["filesize"].toInt(), manyNumbers().size());
    QCOMPARE(file["cfilesize"].toInt(), placed.storedSize);
    QCOMPARE(file["blocksize"].toInt(), placed.blockEnd - placed.block);
    QCOMPARE(file["offset"].toInt(), placed.stored - placed.block);
    QCOMPARE(file["md5file"].toString().toLatin1(), ContainerBuilder::md5(manyNumbers()));
    QCOMPARE(files[0].toObject()["section"].toInt(), 1);
    QCOMPARE(files[3].toObject()["section"].toInt(), -1);
}

void TestListCommands::namesAreDecodedForPeopleAndKeptInJson()
{
    const CliCall people = runCli({QStringLiteral("files"), m_path});
    QVERIFY(people.out.contains("a]b.txt"));
    const CliCall json = runCli({QStringLiteral("files"), QStringLiteral("--json"), m_path});
    QCOMPARE(json.objects().at(0)["files"].toArray().at(0).toObject()["filename"].toString(),
             QStringLiteral("a\\]b.txt"));
    QVERIFY(runCli({QStringLiteral("sections"), m_path}).out.contains("first [draft]\\nline"));
}

void TestListCommands::catWritesTheContentByteForByte()
{
    const CliCall stored = runCli({QStringLiteral("cat"), m_path, QStringLiteral("0")});
    QCOMPARE(stored.exitCode, 0);
    QCOMPARE(stored.out, QByteArrayLiteral("stored as it is\0with zero"));
    const CliCall flate = runCli({QStringLiteral("cat"), m_path, QStringLiteral("1")});
    QCOMPARE(flate.exitCode, 0);
    QCOMPARE(flate.out, manyNumbers());
}

void TestListCommands::catOfUnknownIdIsRefused()
{
    const CliCall call = runCli({QStringLiteral("cat"), m_path, QStringLiteral("4")});
    QCOMPARE(call.exitCode, 2);
    QVERIFY(call.err.contains("there is no embedded file 4"));
    QVERIFY(call.out.isEmpty());
}

void TestListCommands::catSaysWhatIsDamaged_data()
{
    QTest::addColumn<QByteArray>("field");
    QTest::addColumn<QByteArray>("value");
    QTest::addColumn<QByteArray>("message");
    QTest::newRow("outside") << QByteArray("cfilesize") << QByteArray("999999")
                             << QByteArray("do not lie inside the document");
    QTest::newRow("cut") << QByteArray("cfilesize") << QByteArray("20") << QByteArray("cut short");
    QTest::newRow("no size") << QByteArray("cfilesize") << QByteArray()
                             << QByteArray("do not lie inside the document");
    QTest::newRow("shifted") << QByteArray("offset") << QByteArray("5") << QByteArray("damaged");
    QTest::newRow("method") << QByteArray("compression") << QByteArray("zip")
                            << QByteArray("method that is not known");
}

void TestListCommands::catSaysWhatIsDamaged()
{
    QFETCH(QByteArray, field);
    QFETCH(QByteArray, value);
    QFETCH(QByteArray, message);
    ContainerBuilder builder;
    builder.start();
    builder.section(
        SectionSpec(QStringLiteral("s"))
            .file(FileSpec(QStringLiteral("n.txt"), manyNumbers()).flate().set(field, value)));
    const QString path = builder.writeTo(m_dir->filePath(QStringLiteral("damaged.lorix")));
    const CliCall call = runCli({QStringLiteral("cat"), path, QStringLiteral("0")});
    QCOMPARE(call.exitCode, 1);
    QVERIFY2(call.err.contains(message), call.err.constData());
}

QTEST_GUILESS_MAIN(TestListCommands)
#include "tst_listcommands.moc"
