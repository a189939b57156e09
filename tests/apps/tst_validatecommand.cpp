// SPDX-License-Identifier: BSD-3-Clause
#include "clirunner.h"

#include <apps/lorix/checkrun.h>
#include <apps/lorix/interrupt.h>

#include <support/containerbuilder.h>

#include <QFile>
#include <QJsonArray>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

#include <csignal>

#include <pty.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace lorix;
using namespace lorix::cli;

namespace {

ContainerBuilder twoSteps()
{
    ContainerBuilder builder;
    builder.start();
    builder.section(SectionSpec(QStringLiteral("one"))
                        .file(FileSpec(QStringLiteral("a.txt"), "aaaaaaaaaaaaaaaaaaa").flate())
                        .file(FileSpec(QStringLiteral("b.txt"), "plain bytes")));
    builder.section(SectionSpec(QStringLiteral("two"))
                        .file(FileSpec(QStringLiteral("c.txt"), "ccc").flate())
                        .markerFirst());
    return builder;
}

QStringList codesOf(const QJsonObject& object)
{
    QStringList codes;
    for (const QJsonValue& finding : object.value(QLatin1String("findings")).toArray())
        codes.append(finding.toObject().value(QLatin1String("code")).toString());
    return codes;
}

// "id:verdict" for each record of one kind.
QStringList verdictsOf(const QJsonObject& object, const char* kind)
{
    QStringList verdicts;
    for (const QJsonValue& value : object.value(QLatin1String(kind)).toArray()) {
        const QJsonObject record = value.toObject();
        verdicts.append(QStringLiteral("%1:%2")
                            .arg(record.value(QLatin1String("id")).toInt())
                            .arg(record.value(QLatin1String("valid")).toBool()));
    }
    return verdicts;
}

} // namespace

class TestValidateCommand : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { m_dir = std::make_unique<QTemporaryDir>(); }
    void cleanup() { m_dir.reset(); }

    void intactContainerIsValid();
    void tableSaysWhatWasWrong();
    void everyChangedByteIsReportedAndNamesTheRightItems();
    void findingsNameTheDamage_data();
    void findingsNameTheDamage();
    void digestsAreGivenExpectedAndFound();
    void warningsAloneAreNoReasonForNo();
    void anotherPredecessorIsReported();
    void brokenChainIsReported();
    void loopIsReported();
    void damagedNewestMarkerIsReported();
    void reportIsTheSameWhateverTheNumberOfJobs();
    void severalFilesGiveTheWorstCode();
    void callWithoutInputCannotBeUsed();
    void savedFilesAreCheckedAgainstAList();
    void savedFilesThatAreNotThereAreReported();
    void listWithoutDigestsCannotBeUsed();
    void documentCutShortMeanwhileIsReported();
    void interruptedRunChecksNoMore();
    void ctrlCEndsWithACleanTerminal();

private:
    QString path(const char* name) const { return m_dir->filePath(QString::fromLatin1(name)); }
    QJsonObject validate(const QByteArray& container, int expectedCode);

    std::unique_ptr<QTemporaryDir> m_dir;
};

QJsonObject TestValidateCommand::validate(const QByteArray& container, int expectedCode)
{
    ContainerBuilder::writeFile(path("c.lorix"), container);
    const CliCall call =
        runCli({QStringLiteral("--json"), QStringLiteral("validate"), path("c.lorix")});
    if (call.exitCode != expectedCode || call.objects().size() != 1)
        qFatal("exit code %d: %s%s", call.exitCode, call.out.constData(), call.err.constData());
    return call.objects().constFirst();
}

void TestValidateCommand::intactContainerIsValid()
{
    const QJsonObject object = validate(twoSteps().bytes(), 0);
    QCOMPARE(object.value(QLatin1String("valid")).toBool(), true);
    QVERIFY(!object.contains(QLatin1String("findings")));
    QCOMPARE(verdictsOf(object, "sections"), QStringList({"0:1", "1:1"}));
    QCOMPARE(verdictsOf(object, "files"), QStringList({"0:1", "1:1", "2:1"}));
    const CliCall call = runCli({QStringLiteral("validate"), path("c.lorix")});
    QCOMPARE(call.exitCode, 0);
    QVERIFY(call.out.contains(": valid, 2 sections, 3 files\n"));
    QVERIFY(call.err.isEmpty());
}

void TestValidateCommand::tableSaysWhatWasWrong()
{
    ContainerBuilder builder = twoSteps();
    QByteArray bytes = builder.bytes();
    bytes[builder.files().at(0).stored + 4] ^= 1;
    bytes[builder.files().at(1).stored] ^= 1;
    ContainerBuilder::writeFile(path("c.lorix"), bytes);
    const CliCall call = runCli({QStringLiteral("validate"), path("c.lorix")});
    QCOMPARE(call.exitCode, 1);
    const QList<QByteArray> lines = call.out.split('\n');
    QVERIFY(lines.at(0).endsWith(": NOT VALID, 2 sections, 3 files"));
    QVERIFY(lines.at(2).startsWith("section 0") && lines.at(2).contains(" ok "));
    QVERIFY(lines.at(3).startsWith("section 1") && lines.at(3).contains("the content differs"));
    QVERIFY(lines.at(4).startsWith("file 0") && lines.at(4).contains("the stored bytes differ; "));
    QVERIFY(lines.at(5).startsWith("file 1") && lines.at(5).contains("the content differs"));
    QVERIFY(lines.at(6).startsWith("file 2") && lines.at(6).contains(" ok "));
}

void TestValidateCommand::everyChangedByteIsReportedAndNamesTheRightItems()
{
    const ContainerBuilder builder = twoSteps();
    for (qsizetype s = 0; s < builder.sections().size(); ++s) {
        const PlacedSection& section = builder.sections().at(s);
        const qsizetype id = builder.sections().size() - 1 - s;
        for (qint64 at = section.start; at < section.end; ++at) {
            QByteArray bytes = builder.bytes();
            bytes[at] ^= 1;
            const QJsonObject object = validate(bytes, 1);
            const QByteArray where = "byte " + QByteArray::number(at) + " of section " +
                                     QByteArray::number(s) + ": " +
                                     codesOf(object).join(QLatin1Char(' ')).toUtf8();
            QVERIFY2(!object.value(QLatin1String("valid")).toBool(), where.constData());
            const QJsonArray sections = object.value(QLatin1String("sections")).toArray();
            const QStringList verdicts = verdictsOf(object, "sections");
            const QString bad = QStringLiteral("%1:0").arg(id);
            const QString good = QStringLiteral("%1:1").arg(1 - id);
            // Where the marker is none any more, its remains or the gap in the chain show.
            const QStringList codes = codesOf(object);
            if (sections.size() == 2)
                QVERIFY2(verdicts.contains(bad) && verdicts.contains(good), where.constData());
            else
                QVERIFY2(codes.contains(QLatin1String("section.marker.damaged")) ||
                             (s == 0 && codes.contains(QLatin1String("chain.broken"))),
                         where.constData());
            for (qsizetype f = 0; f < builder.files().size(); ++f) {
                const PlacedFile& file = builder.files().at(f);
                const bool inside = at >= file.stored && at < file.stored + file.storedSize;
                if (object.value(QLatin1String("files")).toArray().size() == 3)
                    QVERIFY2(
                        !inside ||
                            verdictsOf(object, "files").contains(QStringLiteral("%1:0").arg(f)),
                        where.constData());
            }
        }
    }
}

void TestValidateCommand::findingsNameTheDamage_data()
{
    QTest::addColumn<FileSpec>("file");
    QTest::addColumn<QString>("code");
    const QByteArray text(500, 't');
    const FileSpec plain(QStringLiteral("f"), text);
    const FileSpec flate = FileSpec(QStringLiteral("f"), text).flate();
    const QByteArray stream = flate.stored;
    QByteArray damaged = stream;
    damaged[damaged.size() - 1] = static_cast<char>(damaged.back() ^ 1);
    const QByteArray wrong(32, 'a');
    const auto row = [](const char* name, const FileSpec& file, const char* code) {
        QTest::newRow(name) << file << QString::fromLatin1(code);
    };
    row("content", FileSpec(plain).set("md5file", wrong), "file.content.mismatch");
    row("inflated content", FileSpec(flate).set("md5file", wrong), "file.content.mismatch");
    row("stored bytes", FileSpec(flate).set("md5cfile", wrong), "file.stored.mismatch");
    row("cut", FileSpec(flate).storeInstead(stream.chopped(1)), "file.stream.cut");
    row("damaged", FileSpec(flate).storeInstead(damaged), "file.stream.damaged");
    row("outside", FileSpec(plain).set("filesize", "99999"), "file.outside");
    row("no size", FileSpec(plain).set("filesize", ""), "file.outside");
    row("far outside", FileSpec(plain).set("offset", "2147483647"), "file.outside");
    row("no digest", FileSpec(plain).set("md5file", ""), "file.digest.missing");
    row("no stored digest", FileSpec(flate).set("md5cfile", ""), "file.digest.missing");
}

void TestValidateCommand::findingsNameTheDamage()
{
    QFETCH(FileSpec, file);
    QFETCH(QString, code);
    const ContainerBuilder builder =
        ContainerBuilder().start().section(SectionSpec(QStringLiteral("s")).file(file));
    const QJsonObject object = validate(builder.bytes(), 1);
    QCOMPARE(codesOf(object), QStringList({code}));
    QCOMPARE(verdictsOf(object, "files"), QStringList({"0:0"}));
}

void TestValidateCommand::digestsAreGivenExpectedAndFound()
{
    const QByteArray wrong(32, 'a');
    const ContainerBuilder builder = ContainerBuilder().start().section(
        SectionSpec(QStringLiteral("s"))
            .file(FileSpec(QStringLiteral("f"), "abc").set("md5file", wrong))
            .set("md5section", wrong));
    const QJsonArray findings =
        validate(builder.bytes(), 1).value(QLatin1String("findings")).toArray();
    QCOMPARE(findings.size(), 2);
    const QJsonObject section = findings.at(0).toObject();
    QCOMPARE(section.value(QLatin1String("code")).toString(),
             QStringLiteral("section.digest.mismatch"));
    QCOMPARE(section.value(QLatin1String("expected")).toString().toLatin1(), wrong);
    QCOMPARE(section.value(QLatin1String("found")).toString().toLatin1(),
             builder.sections().first().md5section);
    QCOMPARE(section.value(QLatin1String("offset")).toInt(), builder.sections().first().line);
    const QJsonObject file = findings.at(1).toObject();
    QCOMPARE(file.value(QLatin1String("expected")).toString().toLatin1(), wrong);
    QCOMPARE(file.value(QLatin1String("found")).toString().toLatin1(),
             ContainerBuilder::md5("abc"));
    QCOMPARE(file.value(QLatin1String("offset")).toInt(), builder.files().first().stored);
}

void TestValidateCommand::warningsAloneAreNoReasonForNo()
{
    ContainerBuilder builder = twoSteps();
    builder.file(FileSpec(QStringLiteral("loose"), "l").set("compression", "lzma"));
    QCOMPARE(codesOf(validate(builder.bytes(), 0)),
             QStringList({"section.trailing", "file.method.unknown", "file.sectionless"}));
    QCOMPARE(codesOf(validate(twoSteps().bytes() + " \r\n\n", 0)), QStringList());
}

void TestValidateCommand::anotherPredecessorIsReported()
{
    ContainerBuilder builder;
    builder.start().section(SectionSpec(QStringLiteral("one")));
    builder.section(SectionSpec(QStringLiteral("two")).set("previousmd5", QByteArray(32, 'b')));
    QCOMPARE(codesOf(validate(builder.bytes(), 1)), QStringList({"chain.previousmd5.mismatch"}));

    ContainerBuilder without;
    without.start().section(SectionSpec(QStringLiteral("one")));
    without.section(SectionSpec(QStringLiteral("two")).set("previousmd5", ""));
    QCOMPARE(codesOf(validate(without.bytes(), 0)), QStringList({"chain.previousmd5.missing"}));
}

void TestValidateCommand::brokenChainIsReported()
{
    ContainerBuilder builder;
    builder.start()
        .text(QByteArray(40, '\n'))
        .section(SectionSpec(QStringLiteral("one")).set("previousmarker", "30"));
    QCOMPARE(codesOf(validate(builder.bytes(), 1)), QStringList({"chain.broken"}));
}

void TestValidateCommand::loopIsReported()
{
    ContainerBuilder builder;
    builder.start().section(SectionSpec(QStringLiteral("one")).set("previousmarker", "0"));
    QCOMPARE(codesOf(validate(builder.bytes(), 1)), QStringList({"chain.loop"}));
}

void TestValidateCommand::damagedNewestMarkerIsReported()
{
    const ContainerBuilder builder = twoSteps();
    QByteArray bytes = builder.bytes();
    bytes[builder.sections().at(1).marker + 5] ^= 1;
    const QJsonObject object = validate(bytes, 1);
    QVERIFY(codesOf(object).contains(QLatin1String("section.marker.damaged")));
    QCOMPARE(codesOf(object).count(QLatin1String("section.marker.damaged")), 1);

    // The same without any section left, and without the text that it began with.
    ContainerBuilder single;
    single.start().section(SectionSpec(QStringLiteral("one")));
    bytes = single.bytes();
    bytes[single.sections().first().marker + 10] ^= 1;
    QCOMPARE(codesOf(validate(bytes, 1)), QStringList({"section.marker.damaged"}));
}

void TestValidateCommand::reportIsTheSameWhateverTheNumberOfJobs()
{
    ContainerBuilder builder;
    builder.start();
    for (int s = 0; s < 5; ++s) {
        SectionSpec section(QString::number(s));
        for (int f = 0; f < 6; ++f) {
            FileSpec file(QStringLiteral("f%1").arg(f), QByteArray(100000 * (f + 1) + s, 'f'));
            if (f % 2)
                file.flate();
            if (f == s)
                file.set("md5file", QByteArray(32, 'c'));
            section.file(file);
        }
        builder.section(section);
    }
    builder.writeTo(path("c.lorix"));
    QByteArray first;
    for (const char* jobs : {"1", "2", "3", "16"}) {
        const CliCall call =
            runCli({QStringLiteral("--json"), QStringLiteral("validate"), QStringLiteral("--jobs"),
                    QString::fromLatin1(jobs), path("c.lorix")});
        QCOMPARE(call.exitCode, 1);
        if (first.isEmpty())
            first = call.out;
        QCOMPARE(call.out, first);
    }
    QCOMPARE(first.count("file.content.mismatch"), 5);
}

void TestValidateCommand::severalFilesGiveTheWorstCode()
{
    twoSteps().writeTo(path("good"));
    const CliCall call = runCli({QStringLiteral("--json"), QStringLiteral("validate"), path("good"),
                                 path("missing"), path("good")});
    QCOMPARE(call.exitCode, 2);
    QCOMPARE(call.objects().size(), 3);
    QCOMPARE(call.objects().at(2).value(QLatin1String("valid")).toBool(), true);
}

void TestValidateCommand::callWithoutInputCannotBeUsed()
{
    QCOMPARE(runCli({QStringLiteral("validate")}).exitCode, 2);
}

void TestValidateCommand::savedFilesAreCheckedAgainstAList()
{
    const QString good = ContainerBuilder::writeFile(path("good"), QByteArray(3000000, 'g'));
    const QString bad = ContainerBuilder::writeFile(path("bad"), "bad");
    const QString empty = ContainerBuilder::writeFile(path("empty"), "");
    const QString list = ContainerBuilder::writeFile(
        path("list"), ContainerBuilder::md5(QByteArray(3000000, 'g')) + "  " + good.toUtf8() +
                          '\n' + ContainerBuilder::md5("other") + " *" + bad.toUtf8() + '\n' +
                          ContainerBuilder::md5("").toUpper() + "  " + empty.toUtf8() + "\nwhat\n");
    const CliCall call = runCli(
        {QStringLiteral("--json"), QStringLiteral("validate"), QStringLiteral("--saved"), list});
    QCOMPARE(call.exitCode, 1);
    const QJsonObject object = call.objects().constFirst();
    QCOMPARE(codesOf(object), QStringList({"saved.content.mismatch", "list.line"}));
    QStringList verdicts;
    for (const QJsonValue& value : object.value(QLatin1String("saved")).toArray())
        verdicts.append(value.toObject().value(QLatin1String("valid")).toBool()
                            ? QStringLiteral("ok")
                            : QStringLiteral("bad"));
    QCOMPARE(verdicts, QStringList({"ok", "bad", "ok"}));
    const CliCall text = runCli({QStringLiteral("validate"), QStringLiteral("--saved"), list});
    QVERIFY(text.out.contains("the content differs"));
}

void TestValidateCommand::savedFilesThatAreNotThereAreReported()
{
    const QByteArray digest = ContainerBuilder::md5("");
    const QString list = ContainerBuilder::writeFile(
        path("list"), digest + "  " + path("none").toUtf8() + '\n' + digest + "  " +
                          m_dir->path().toUtf8() + '\n');
    const CliCall call = runCli(
        {QStringLiteral("--json"), QStringLiteral("validate"), QStringLiteral("--saved"), list});
    QCOMPARE(call.exitCode, 1);
    QCOMPARE(codesOf(call.objects().constFirst()),
             QStringList({"saved.missing", "saved.unreadable"}));
}

void TestValidateCommand::listWithoutDigestsCannotBeUsed()
{
    const QString list = ContainerBuilder::writeFile(path("list"), "no digests\n");
    QCOMPARE(runCli({QStringLiteral("validate"), QStringLiteral("--saved"), list}).exitCode, 2);
    QCOMPARE(runCli({QStringLiteral("validate"), QStringLiteral("--saved"), path("none")}).exitCode,
             2);
}

void TestValidateCommand::documentCutShortMeanwhileIsReported()
{
    const ContainerBuilder builder = twoSteps();
    const QString file = builder.writeTo(path("c.lorix"));
    LorixParser parser;
    QVERIFY(parser.open(file));
    QList<CheckItem> items(2);
    items[0].size = 100;
    items[1].kind = CheckItem::File;
    items[1].id = 2;
    items[1].size = 10;
    CheckRun run(&parser, file, items);
    QVERIFY(QFile::resize(file, builder.sections().at(1).start));
    Interrupt::set(false);
    QVERIFY(run.run(1, [](qint64) {}));
    for (const CheckItem& item : items) {
        QVERIFY(item.checked && !item.valid);
        QCOMPARE(item.diagnosis.findings.size(), 1);
        QCOMPARE(item.diagnosis.findings.first().code, QStringLiteral("input.truncated"));
    }
}

void TestValidateCommand::interruptedRunChecksNoMore()
{
    const QString file = ContainerBuilder()
                             .start()
                             .file(FileSpec(QStringLiteral("a"), QByteArray(1000000, 'a')))
                             .file(FileSpec(QStringLiteral("b"), "b"))
                             .writeTo(path("c.lorix"));
    LorixParser parser;
    QVERIFY(parser.open(file));
    QList<CheckItem> items(2);
    for (int id = 0; id < 2; ++id) {
        items[id].kind = CheckItem::File;
        items[id].id = id;
        items[id].size = parser.getFile(id)->filesize;
    }
    CheckRun run(&parser, file, items);
    Interrupt::set(false);
    QVERIFY(!run.run(2, [](qint64) { Interrupt::set(true); }));
    QVERIFY(!items.at(0).checked);
    QVERIFY(!items.at(1).checked);
    Interrupt::set(false);
}

void TestValidateCommand::ctrlCEndsWithACleanTerminal()
{
    const QByteArray program = qgetenv("LORIX_PROGRAM");
    if (program.isEmpty())
        QSKIP("LORIX_PROGRAM names the program");
    // A hole as content takes long enough to hash and no room on the disk.
    FileSpec spec(QStringLiteral("hole"));
    spec.set("filesize", "2000000000")
        .set("cfilesize", "2000000000")
        .set("blocksize", "2000000002");
    const QByteArray file =
        ContainerBuilder().start().file(spec).writeTo(path("c.lorix")).toLocal8Bit();
    QVERIFY(QFile::resize(QString::fromLocal8Bit(file), 2100000000));

    int terminal = -1;
    const pid_t child = forkpty(&terminal, nullptr, nullptr, nullptr);
    if (child == 0) {
        execl(program.constData(), "lorix", "validate", "--jobs", "1", file.constData(), nullptr);
        _exit(127);
    }
    QVERIFY(child > 0);
    QByteArray output;
    char buffer[4096];
    bool asked = false;
    for (;;) {
        const ssize_t count = read(terminal, buffer, sizeof buffer);
        if (count <= 0)
            break;
        output.append(buffer, count);
        if (!asked && output.contains('%')) {
            asked = true;
            QCOMPARE(write(terminal, "\x03", 1), 1);
        }
    }
    int status = 0;
    QCOMPARE(waitpid(child, &status, 0), child);
    close(terminal);
    QVERIFY2(asked, output.constData());
    QVERIFY(WIFEXITED(status));
    QCOMPARE(WEXITSTATUS(status), 130);
    // The last thing written removes the progress line.
    QVERIFY2(output.endsWith("\r\x1b[K"), output.toPercentEncoding().constData());
    QVERIFY(!output.contains("valid,"));
}

QTEST_GUILESS_MAIN(TestValidateCommand)
#include "tst_validatecommand.moc"
