// SPDX-License-Identifier: BSD-3-Clause
#include "clirunner.h"

#include <apps/lorix/extractrun.h>
#include <apps/lorix/interrupt.h>

#include <support/containerbuilder.h>

#include <QDirIterator>
#include <QFile>
#include <QJsonArray>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

using namespace lorix;
using namespace lorix::cli;

namespace {

FileSpec named(const char* name, const QByteArray& content)
{
    return FileSpec(QString::fromUtf8(name), content);
}

QByteArray contentOf(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("<no file>");
}

// Everything below a folder with its content, links as what they point at.
QStringList treeOf(const QString& folder)
{
    QStringList lines;
    QDirIterator all(folder, QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot,
                     QDirIterator::Subdirectories);
    while (all.hasNext()) {
        const QFileInfo info(all.next());
        const QString name = QDir(folder).relativeFilePath(info.filePath());
        if (info.isSymLink())
            lines.append(name + QStringLiteral(" -> ") + info.symLinkTarget());
        else if (info.isDir())
            lines.append(name + QLatin1Char('/'));
        else
            lines.append(name + QStringLiteral(" = ") +
                         QString::fromLatin1(ContainerBuilder::md5(contentOf(info.filePath()))));
    }
    lines.sort();
    return lines;
}

QStringList namesBelow(const QString& folder)
{
    QStringList names = treeOf(folder);
    for (QString& name : names)
        name = name.section(QStringLiteral(" = "), 0, 0);
    return names;
}

} // namespace

class TestExtractCommand : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup() { m_dir.reset(); }

    void everythingIsWritten();
    void idsAndPatternsChoose_data();
    void idsAndPatternsChoose();
    void whatIsNotThereIsReportedAndTheRestWritten();
    void dryRunWritesNothing();
    void hostileNamesStayInTheFolder();
    void linksInTheFolderAreNotFollowed();
    void linkAsTargetIsReplacedNotFollowed();
    void existingFilesAreKept();
    void overwriteReplaces();
    void clashesGetTheSameNamesOnEveryCall();
    void damageIsReportedAndNotKept_data();
    void damageIsReportedAndNotKept();
    void verifyFindsWrongDigests_data();
    void verifyFindsWrongDigests();
    void keepBadKeepsDamagedFiles();
    void streamThatGrowsBeyondItsSizeIsStopped();
    void flateWithoutStoredDigestIsInflated();
    void unknownMethodIsReported();
    void targetThatIsAFolderIsReported();
    void folderThatIsAFileIsReported();
    void folderThatCannotBeMadeIsReported();
    void fullDiskLeavesNothingBehind();
    void documentCutShortMeanwhileIsReported();
    void interruptedRunLeavesWholeFilesOnly();
    void jsonNamesTargets();
    void reportIsTheSameWhateverTheNumberOfJobs();

private:
    QString path(const QString& name) const { return m_dir->filePath(name); }
    QString out() const { return path(QStringLiteral("sandbox/out")); }
    QString write(const ContainerBuilder& builder) { return builder.writeTo(path("c.lorix")); }
    CliCall extract(const QStringList& arguments = {});

    std::unique_ptr<QTemporaryDir> m_dir;
};

void TestExtractCommand::init()
{
    m_dir = std::make_unique<QTemporaryDir>();
    QVERIFY(QDir(m_dir->path()).mkpath(QStringLiteral("sandbox/out")));
}

CliCall TestExtractCommand::extract(const QStringList& arguments)
{
    return runCli(QStringList({QStringLiteral("extract"), path(QStringLiteral("c.lorix")),
                               QStringLiteral("-d"), out()}) +
                  arguments);
}

void TestExtractCommand::everythingIsWritten()
{
    const QByteArray big(3000000, 'b');
    write(ContainerBuilder()
              .start()
              .section(SectionSpec(QStringLiteral("s"))
                           .file(named("a.txt", "aaa"))
                           .file(named("sub/b.txt", big).flate()))
              .file(named("empty", "")));
    const CliCall call = extract();
    QCOMPARE(call.exitCode, 0);
    QVERIFY2(call.err.isEmpty(), call.err.constData());
    QCOMPARE(namesBelow(out()), QStringList({"a.txt", "empty", "sub/", "sub/b.txt"}));
    QCOMPARE(contentOf(out() + "/a.txt"), QByteArray("aaa"));
    QCOMPARE(contentOf(out() + "/sub/b.txt"), big);
    QVERIFY(QFileInfo(out() + "/a.txt").permission(QFile::ReadOwner | QFile::WriteOwner));
}

void TestExtractCommand::idsAndPatternsChoose_data()
{
    QTest::addColumn<QStringList>("what");
    QTest::addColumn<QStringList>("written");
    QTest::newRow("id") << QStringList({"1"}) << QStringList({"b.txt"});
    QTest::newRow("name") << QStringList({"a.txt"}) << QStringList({"a.txt"});
    QTest::newRow("star") << QStringList({"*.txt"})
                          << QStringList({"a.txt", "b.txt", "sub/", "sub/d.txt"});
    QTest::newRow("question mark") << QStringList({"?.inp"}) << QStringList({"c.inp"});
    QTest::newRow("path") << QStringList({"sub/*"}) << QStringList({"sub/", "sub/d.txt"});
    QTest::newRow("brackets") << QStringList({"[ac].*"}) << QStringList({"a.txt", "c.inp"});
    QTest::newRow("several") << QStringList({"2", "a*", "a.txt"})
                             << QStringList({"a.txt", "c.inp"});
}

void TestExtractCommand::idsAndPatternsChoose()
{
    QFETCH(QStringList, what);
    write(ContainerBuilder()
              .start()
              .file(named("a.txt", "a"))
              .file(named("b.txt", "b"))
              .file(named("c.inp", "c"))
              .file(named("sub/d.txt", "d")));
    QCOMPARE(extract(what).exitCode, 0);
    QTEST(namesBelow(out()), "written");
}

void TestExtractCommand::whatIsNotThereIsReportedAndTheRestWritten()
{
    write(ContainerBuilder().start().file(named("a.txt", "a")));
    const CliCall call = extract({"7", "*.txt", "none*"});
    QCOMPARE(call.exitCode, 1);
    QCOMPARE(call.err.count('\n'), 2);
    QVERIFY(call.err.contains("\"7\"") && call.err.contains("\"none*\""));
    QCOMPARE(namesBelow(out()), QStringList({"a.txt"}));
}

void TestExtractCommand::dryRunWritesNothing()
{
    write(ContainerBuilder().start().file(named("a/b", "a")).file(named("c", "c")));
    ContainerBuilder::writeFile(out() + "/c", "old");
    const QStringList before = treeOf(m_dir->path());
    const CliCall call = extract({"--dry-run"});
    QCOMPARE(call.exitCode, 3);
    QVERIFY(call.out.contains("would be written") && call.out.contains("cannot be written"));
    QCOMPARE(treeOf(m_dir->path()), before);
}

void TestExtractCommand::hostileNamesStayInTheFolder()
{
    ContainerBuilder builder;
    builder.start();
    for (const char* name : {"../up", "../../up2", "/abs", "..\\win", "C:\\temp\\x", "a/../../b",
                             "..", "", "x\ny", "NUL", "//h/s", "sub/../../z", "....//w"})
        builder.file(named(name, name));
    const QString file = write(builder);
    const QStringList before = treeOf(m_dir->path());
    QCOMPARE(extract().exitCode, 0);
    QStringList outside;
    for (const QString& line : treeOf(m_dir->path()))
        if (!line.startsWith(QLatin1String("sandbox/out/")) || before.contains(line))
            outside.append(line);
    QCOMPARE(outside, before);
    QCOMPARE(namesBelow(out()),
             QStringList({"_NUL", "a/", "a/b", "abs", "file", "file-2", "h/", "h/s", "sub/",
                          "sub/z", "temp/", "temp/x", "up", "up2", "w", "win", "x_y"}));
}

void TestExtractCommand::linksInTheFolderAreNotFollowed()
{
    write(ContainerBuilder().start().file(named("sub/a", "a")).file(named("b", "b")));
    QVERIFY(QDir(m_dir->path()).mkpath(QStringLiteral("sandbox/elsewhere")));
    QVERIFY(QFile::link(path("sandbox/elsewhere"), out() + "/sub"));
    QVERIFY(QFile::link(path("sandbox/elsewhere/b"), out() + "/b"));
    const QStringList before = treeOf(m_dir->path());
    const CliCall call = extract();
    QCOMPARE(call.exitCode, 3);
    QVERIFY(call.err.contains("is a link"));
    QVERIFY(call.err.contains("exists already"));
    QCOMPARE(treeOf(m_dir->path()), before);
}

void TestExtractCommand::linkAsTargetIsReplacedNotFollowed()
{
    write(ContainerBuilder().start().file(named("b", "new")));
    ContainerBuilder::writeFile(path("sandbox/precious"), "old");
    QVERIFY(QFile::link(path("sandbox/precious"), out() + "/b"));
    QCOMPARE(extract({"--overwrite"}).exitCode, 0);
    QCOMPARE(contentOf(path("sandbox/precious")), QByteArray("old"));
    QVERIFY(!QFileInfo(out() + "/b").isSymLink());
    QCOMPARE(contentOf(out() + "/b"), QByteArray("new"));
}

void TestExtractCommand::existingFilesAreKept()
{
    write(ContainerBuilder().start().file(named("a", "new")).file(named("b", "b")));
    ContainerBuilder::writeFile(out() + "/a", "old");
    const CliCall call = extract();
    QCOMPARE(call.exitCode, 3);
    QVERIFY(call.err.contains("exists already; --overwrite replaces it"));
    QCOMPARE(contentOf(out() + "/a"), QByteArray("old"));
    QCOMPARE(contentOf(out() + "/b"), QByteArray("b"));
    QCOMPARE(namesBelow(out()), QStringList({"a", "b"}));
}

void TestExtractCommand::overwriteReplaces()
{
    write(ContainerBuilder().start().file(named("a", "new")));
    ContainerBuilder::writeFile(out() + "/a", "much older");
    QCOMPARE(extract({"--overwrite"}).exitCode, 0);
    QCOMPARE(contentOf(out() + "/a"), QByteArray("new"));
    QCOMPARE(namesBelow(out()), QStringList({"a"}));
}

void TestExtractCommand::clashesGetTheSameNamesOnEveryCall()
{
    write(ContainerBuilder()
              .start()
              .file(named("ws_summary.xml", "0"))
              .file(named("ws_summary.xml", "1"))
              .file(named("WS_Summary.xml", "2")));
    QCOMPARE(extract({"2"}).exitCode, 0);
    QCOMPARE(namesBelow(out()), QStringList({"WS_Summary-3.xml"}));
    QCOMPARE(extract({"0", "1"}).exitCode, 0);
    QCOMPARE(contentOf(out() + "/ws_summary.xml"), QByteArray("0"));
    QCOMPARE(contentOf(out() + "/ws_summary-2.xml"), QByteArray("1"));
    QCOMPARE(contentOf(out() + "/WS_Summary-3.xml"), QByteArray("2"));
}

void TestExtractCommand::damageIsReportedAndNotKept_data()
{
    QTest::addColumn<FileSpec>("file");
    QTest::addColumn<QByteArray>("code");
    const QByteArray text(300000, 't');
    const FileSpec flate = named("f", text).flate();
    QByteArray damaged = flate.stored;
    damaged[damaged.size() - 1] = static_cast<char>(damaged.back() ^ 1);
    QTest::newRow("cut") << FileSpec(flate).storeInstead(flate.stored.chopped(5))
                         << QByteArray("file.stream.damaged");
    QTest::newRow("damaged") << FileSpec(flate).storeInstead(damaged)
                             << QByteArray("file.stream.damaged");
    QTest::newRow("half") << FileSpec(flate).storeInstead(flate.stored.left(100))
                          << QByteArray("file.stream.cut");
    QTest::newRow("outside") << named("f", "x").set("filesize", "9999999")
                             << QByteArray("file.outside");
    QTest::newRow("no size") << named("f", "x").set("filesize", "") << QByteArray("file.outside");
    QTest::newRow("shorter") << FileSpec(flate).set("filesize", "299999")
                             << QByteArray("file.size.mismatch");
    QTest::newRow("longer") << FileSpec(flate).set("filesize", "300001")
                            << QByteArray("file.stream.cut");
}

void TestExtractCommand::damageIsReportedAndNotKept()
{
    QFETCH(FileSpec, file);
    QFETCH(QByteArray, code);
    write(ContainerBuilder().start().file(file).file(named("good", "g")));
    const CliCall call = extract();
    if (qstrcmp(QTest::currentDataTag(), "cut") == 0) {
        // Whether the content is complete before the checksum decides what shows.
        QVERIFY(call.exitCode == 0 || call.err.contains("file.stream"));
        return;
    }
    QCOMPARE(call.exitCode, 1);
    QVERIFY2(call.err.contains("[" + code + "]"), call.err.constData());
    QCOMPARE(namesBelow(out()), QStringList({"good"}));
}

void TestExtractCommand::verifyFindsWrongDigests_data()
{
    QTest::addColumn<FileSpec>("file");
    QTest::addColumn<QByteArray>("code");
    const QByteArray wrong(32, '9');
    QTest::newRow("plain") << named("f", "abc").set("md5file", wrong)
                           << QByteArray("file.content.mismatch");
    QTest::newRow("content") << named("f", "abc").flate().set("md5file", wrong)
                             << QByteArray("file.content.mismatch");
    QTest::newRow("stored") << named("f", "abc").flate().set("md5cfile", wrong)
                            << QByteArray("file.stored.mismatch");
    QTest::newRow("no stored digest")
        << named("f", "abc").flate().set("md5cfile", "").set("md5file", wrong)
        << QByteArray("file.content.mismatch");
}

void TestExtractCommand::verifyFindsWrongDigests()
{
    QFETCH(FileSpec, file);
    QFETCH(QByteArray, code);
    write(ContainerBuilder().start().file(file).file(named("good", "g").flate()));
    QCOMPARE(extract().exitCode, 0);
    QCOMPARE(namesBelow(out()), QStringList({"f", "good"}));
    QVERIFY(QFile::remove(out() + "/f"));
    const CliCall call = extract({"--verify", "--overwrite"});
    QCOMPARE(call.exitCode, 1);
    QVERIFY2(call.err.contains("[" + code + "]"), call.err.constData());
    QVERIFY(call.out.contains("verified") && call.out.contains("DAMAGED, not kept"));
    QCOMPARE(namesBelow(out()), QStringList({"good"}));
}

void TestExtractCommand::keepBadKeepsDamagedFiles()
{
    const FileSpec flate = named("f", QByteArray(300000, 't')).flate();
    write(ContainerBuilder().start().file(FileSpec(flate).storeInstead(flate.stored.left(100))));
    const CliCall call = extract({"--keep-bad"});
    QCOMPARE(call.exitCode, 1);
    QVERIFY(call.out.contains("DAMAGED, kept"));
    const QByteArray kept = contentOf(out() + "/f");
    QVERIFY(!kept.isEmpty() && flate.content.startsWith(kept));
}

void TestExtractCommand::streamThatGrowsBeyondItsSizeIsStopped()
{
    // Half a gigabyte in half a megabyte: five steps, of which the first is too much.
    QByteArray stream = ContainerBuilder::zlibStream(QByteArray(60000000, '\0'));
    QVERIFY(stream.size() < 100000);
    write(ContainerBuilder().start().file(
        named("bomb", "x").flate().storeInstead(stream + QByteArray(1000000, '!'))));
    const CliCall call = extract();
    QCOMPARE(call.exitCode, 1);
    QVERIFY(call.err.contains("[file.size.mismatch]"));
    QCOMPARE(namesBelow(out()), QStringList());
}

void TestExtractCommand::flateWithoutStoredDigestIsInflated()
{
    write(ContainerBuilder().start().file(named("f", "abcabc").flate().set("md5cfile", "")));
    QCOMPARE(extract({"--verify"}).exitCode, 0);
    QCOMPARE(contentOf(out() + "/f"), QByteArray("abcabc"));
}

void TestExtractCommand::unknownMethodIsReported()
{
    write(ContainerBuilder().start().file(named("f", "abc").set("compression", "lzma")));
    const CliCall call = extract();
    QCOMPARE(call.exitCode, 1);
    QVERIFY(call.err.contains("[file.method.unknown]"));
    QCOMPARE(namesBelow(out()), QStringList());
}

void TestExtractCommand::targetThatIsAFolderIsReported()
{
    write(ContainerBuilder().start().file(named("f", "abc")).file(named("g", "g")));
    QVERIFY(QDir(out()).mkdir(QStringLiteral("f")));
    for (const QStringList& arguments : {QStringList(), QStringList({"--overwrite"})}) {
        const CliCall call = extract(arguments);
        QCOMPARE(call.exitCode, 3);
        QVERIFY(call.err.contains("/out/f: there is a folder of that name"));
        QCOMPARE(namesBelow(out()), QStringList({"f/", "g"}));
        QVERIFY(QFile::remove(out() + "/g"));
    }
}

void TestExtractCommand::folderThatIsAFileIsReported()
{
    const QString file = write(ContainerBuilder().start().file(named("f", "abc")));
    const CliCall call = runCli({QStringLiteral("extract"), file, QStringLiteral("-d"), file});
    QCOMPARE(call.exitCode, 3);
    QVERIFY(call.err.contains("the target folder is a file"));
}

void TestExtractCommand::folderThatCannotBeMadeIsReported()
{
    if (!QFileInfo(QStringLiteral("/proc/self")).isDir())
        QSKIP("needs a folder in which nobody can write");
    const QString file = write(ContainerBuilder().start().file(named("f", "abc")));
    CliCall call = runCli({QStringLiteral("extract"), file, QStringLiteral("-d"),
                           QStringLiteral("/proc/self/net/out")});
    QCOMPARE(call.exitCode, 3);
    QVERIFY2(call.err.contains("/out/f: the target folder cannot be made: "), call.err.constData());
    call = runCli(
        {QStringLiteral("extract"), file, QStringLiteral("-d"), QStringLiteral("/proc/self")});
    QCOMPARE(call.exitCode, 3);
    QVERIFY2(call.err.contains("/proc/self/f: cannot be written: "), call.err.constData());
}

void TestExtractCommand::fullDiskLeavesNothingBehind()
{
    const QByteArray program = qgetenv("LORIX_PROGRAM");
    if (program.isEmpty())
        QSKIP("LORIX_PROGRAM names the program");
    const QByteArray big(400000, 'b');
    write(ContainerBuilder()
              .start()
              .file(named("big", big))
              .file(named("big2", big).flate())
              .file(named("small", "s")));
    // No file may grow beyond 256 blocks of 512 bytes, or of 1024 with some shells.
    QProcess shell;
    shell.start(QStringLiteral("/bin/sh"),
                {QStringLiteral("-c"), QStringLiteral("ulimit -f 256; exec \"$@\""),
                 QStringLiteral("sh"), QString::fromLocal8Bit(program), QStringLiteral("extract"),
                 path(QStringLiteral("c.lorix")), QStringLiteral("-d"), out()});
    QVERIFY(shell.waitForFinished());
    QCOMPARE(shell.exitStatus(), QProcess::NormalExit);
    QCOMPARE(shell.exitCode(), 3);
    const QByteArray messages = shell.readAllStandardError();
    QVERIFY2(messages.contains("/out/big: cannot be written: File too large"),
             messages.constData());
    QVERIFY2(messages.contains("/out/big2: cannot be written: "), messages.constData());
    QCOMPARE(namesBelow(out()), QStringList({"small"}));
}

void TestExtractCommand::documentCutShortMeanwhileIsReported()
{
    const ContainerBuilder builder =
        ContainerBuilder().start().file(named("a", "a")).file(named("b", QByteArray(500, 'b')));
    const QString file = write(builder);
    LorixParser parser;
    QVERIFY(parser.open(file));
    QList<ExtractItem> items(2);
    for (int id = 0; id < 2; ++id) {
        items[id].file = *parser.getFile(id);
        items[id].name = items[id].file.filename;
    }
    const TargetFolder folder(out(), false);
    ExtractRun run(parser, file, folder, {}, items);
    QVERIFY(QFile::resize(file, builder.files().at(1).stored + 100));
    Interrupt::set(false);
    QVERIFY(run.run([](qint64) {}));
    QVERIFY(items.at(0).written);
    QVERIFY(!items.at(1).written);
    QCOMPARE(items.at(1).findings.size(), 1);
    QCOMPARE(items.at(1).findings.first().code, QStringLiteral("input.truncated"));
    QCOMPARE(namesBelow(out()), QStringList({"a"}));
}

void TestExtractCommand::interruptedRunLeavesWholeFilesOnly()
{
    const QString file = write(ContainerBuilder()
                                   .start()
                                   .file(named("a", QByteArray(900000, 'a')))
                                   .file(named("b", QByteArray(500000, 'b'))));
    LorixParser parser;
    QVERIFY(parser.open(file));
    QList<ExtractItem> items(2);
    for (int id = 0; id < 2; ++id) {
        items[id].file = *parser.getFile(id);
        items[id].name = items[id].file.filename;
    }
    const TargetFolder folder(out(), false);
    ExtractRun run(parser, file, folder, {}, items);
    Interrupt::set(false);
    QVERIFY(!run.run([](qint64 done) { Interrupt::set(done > 1000000); }));
    Interrupt::set(false);
    QCOMPARE(namesBelow(out()), QStringList({"a"}));
    QCOMPARE(contentOf(out() + "/a"), QByteArray(900000, 'a'));
}

void TestExtractCommand::jsonNamesTargets()
{
    write(ContainerBuilder()
              .start()
              .file(named("../a", "a"))
              .file(named("b", "b").set("compression", "lzma")));
    const CliCall call = extract({"--json"});
    QCOMPARE(call.exitCode, 1);
    const QJsonObject object = call.objects().constFirst();
    QCOMPARE(object.value(QLatin1String("directory")).toString(), out());
    const QJsonArray files = object.value(QLatin1String("files")).toArray();
    QCOMPARE(files.size(), 2);
    QCOMPARE(files.at(0).toObject().value(QLatin1String("filename")).toString(),
             QStringLiteral("../a"));
    QCOMPARE(files.at(0).toObject().value(QLatin1String("target")).toString(), out() + "/a");
    QCOMPARE(files.at(0).toObject().value(QLatin1String("written")).toBool(), true);
    QCOMPARE(files.at(1).toObject().value(QLatin1String("written")).toBool(), false);
}

void TestExtractCommand::reportIsTheSameWhateverTheNumberOfJobs()
{
    ContainerBuilder builder;
    builder.start();
    for (int f = 0; f < 12; ++f)
        builder.file(named(f % 3 ? "x/f" : "f", QByteArray(50000 * (13 - f), char('a' + f)))
                         .set("md5file", QByteArray(32, 'c')));
    write(builder);
    QByteArray first;
    for (const char* jobs : {"1", "2", "7"}) {
        const CliCall call = extract({"--json", "--verify", "--keep-bad", "--overwrite", "--jobs",
                                      QString::fromLatin1(jobs)});
        QCOMPARE(call.exitCode, 1);
        if (first.isEmpty())
            first = call.out;
        QCOMPARE(call.out, first);
        QCOMPARE(namesBelow(out()).size(), 13);
    }
}

QTEST_GUILESS_MAIN(TestExtractCommand)
#include "tst_extractcommand.moc"
