// SPDX-License-Identifier: BSD-3-Clause
// What all commands that look at files have in common.
#include "clirunner.h"

#include <apps/lorix/filecommand.h>
#include <apps/lorix/interrupt.h>

#include <support/containerbuilder.h>

#include <QTemporaryDir>
#include <QTest>

#include <atomic>
#include <new>
#include <sys/stat.h>
#include <thread>

using namespace lorix::cli;

namespace {

// Says the name of each file; some of them need more memory than there is. One
// is stopped by the person once the last one is through.
class EchoCommand : public FileCommand
{
public:
    QString name() const override { return QStringLiteral("echo"); }
    QString summary() const override { return {}; }

protected:
    Answer examine(const Input& input, const View&, bool& skipped) const override
    {
        if (input.path.contains(u"huge"))
            throw std::bad_alloc();
        skipped = input.path.contains(u"skipped");
        if (input.path == u"stopped") {
            while (!m_lastIsThrough)
                std::this_thread::yield();
            Interrupt::set(true);
            skipped = true;
        }
        m_lastIsThrough = m_lastIsThrough || input.path == u"last";
        Answer answer = Answer::start(name(), input.path);
        answer.text = input.path + u'\n';
        return answer;
    }

private:
    mutable std::atomic<bool> m_lastIsThrough = false;
};

} // namespace

class TestFileCommand : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void lackOfMemoryForOneFileDoesNotStopTheRest_data();
    void lackOfMemoryForOneFileDoesNotStopTheRest();
    void nothingIsPrintedBehindAFileThatWasStopped();
    void everyCommandOnFilesTakesTheSameOptions_data();
    void everyCommandOnFilesTakesTheSameOptions();
    void answersAreTheSameForAnyNumberOfJobs_data();
    void answersAreTheSameForAnyNumberOfJobs();
    void fileIsRequired();
    void specialFilesInFoldersArePassedOver();
};

void TestFileCommand::lackOfMemoryForOneFileDoesNotStopTheRest_data()
{
    QTest::addColumn<QString>("jobs");
    QTest::newRow("one job") << QStringLiteral("1");
    QTest::newRow("three jobs") << QStringLiteral("3");
}

void TestFileCommand::lackOfMemoryForOneFileDoesNotStopTheRest()
{
    QFETCH(QString, jobs);
    std::FILE* out = std::tmpfile();
    std::FILE* err = std::tmpfile();
    CLI::App app;
    EchoCommand command;
    command.declare(app);
    std::vector<std::string> reversed = {"b", "skipped", "huge", "a", jobs.toStdString(), "--jobs"};
    app.parse(reversed);
    char text[256] = {};
    {
        Console console(out, err);
        QCOMPARE(command.run(console, GlobalOptions()), int(Failed));
    }
    std::rewind(out);
    QCOMPARE(QByteArray(text, qsizetype(std::fread(text, 1, sizeof text, out))),
             QByteArray("a\nb\n"));
    std::rewind(err);
    QCOMPARE(QByteArray(text, qsizetype(std::fread(text, 1, sizeof text, err))),
             QByteArray("lorix: huge: there is not enough memory for it\n"));
    std::fclose(out);
    std::fclose(err);
}

// Or whoever goes on from the output would find them in another order.
void TestFileCommand::nothingIsPrintedBehindAFileThatWasStopped()
{
    std::FILE* out = std::tmpfile();
    CLI::App app;
    EchoCommand command;
    command.declare(app);
    std::vector<std::string> reversed = {"last", "stopped", "first", "2", "--jobs"};
    app.parse(reversed);
    {
        Console console(out, stderr);
        QCOMPARE(command.run(console, GlobalOptions()), int(Interrupted));
    }
    Interrupt::set(false);
    char text[256] = {};
    std::rewind(out);
    QCOMPARE(QByteArray(text, qsizetype(std::fread(text, 1, sizeof text, out))),
             QByteArray("first\n"));
    std::fclose(out);
}

void TestFileCommand::everyCommandOnFilesTakesTheSameOptions_data()
{
    QTest::addColumn<QStringList>("call");
    for (const char* name : {"info", "sections", "files", "summary", "tree", "validate"})
        QTest::newRow(name) << QStringList{QLatin1String(name)};
    QTest::newRow("find") << QStringList({"find", "text"});
}

void TestFileCommand::everyCommandOnFilesTakesTheSameOptions()
{
    QFETCH(QStringList, call);
    const QTemporaryDir dir;
    QStringList names;
    for (const char* name : {"one", "two", "three"}) {
        ContainerBuilder builder;
        builder.start();
        builder.section(SectionSpec(QStringLiteral("text")));
        names.append(builder.writeTo(dir.filePath(QLatin1String(name))));
    }
    const QString list = dir.filePath(QStringLiteral("list"));
    ContainerBuilder::writeFile(list, names.join(u'\n').toUtf8());
    ContainerBuilder::writeFile(dir.filePath(QStringLiteral("done")), "");
    const CliCall result =
        runCli(call + QStringList({"--json", "--jobs", "2", "--files-from", list, "--since",
                                   "1999-01-01", "--skip-done", dir.filePath("done")}));
    QCOMPARE(result.exitCode, 0);
    QStringList files;
    for (const QJsonObject& object : result.objects())
        files.append(object["file"].toString());
    QCOMPARE(files, names);
}

void TestFileCommand::answersAreTheSameForAnyNumberOfJobs_data()
{
    everyCommandOnFilesTakesTheSameOptions_data();
}

void TestFileCommand::answersAreTheSameForAnyNumberOfJobs()
{
    QFETCH(QStringList, call);
    const QTemporaryDir dir;
    for (int i = 0; i < 150; ++i) {
        ContainerBuilder builder;
        builder.start();
        builder.section(SectionSpec(QString::number(i))
                            .file(FileSpec(QStringLiteral("a.txt"), QByteArray(i * 50, 'x'))));
        QByteArray bytes = builder.bytes();
        if (i % 10 == 3)
            bytes.replace("xx", "yx");
        if (i % 10 == 4)
            bytes.truncate(bytes.size() / 2);
        ContainerBuilder::writeFile(dir.filePath(QStringLiteral("%1.pdf").arg(i, 3)), bytes);
    }
    for (const char* format : {"--json", "--quiet"}) {
        const QStringList options = {QLatin1String(format), QStringLiteral("-r"), dir.path(),
                                     QStringLiteral("missing"), QStringLiteral("--jobs")};
        const CliCall one = runCli(call + options + QStringList{QStringLiteral("1")});
        QVERIFY(one.out.size() > 1000 || call.first() == u"find");
        for (const char* jobs : {"2", "5"}) {
            const CliCall many = runCli(call + options + QStringList{QLatin1String(jobs)});
            QCOMPARE(many.exitCode, one.exitCode);
            QCOMPARE(many.out, one.out);
            QCOMPARE(many.err, one.err);
        }
    }
}

void TestFileCommand::fileIsRequired()
{
    const CliCall call = runCli({QStringLiteral("info")});
    QCOMPARE(call.exitCode, 2);
    QCOMPARE(call.err, QByteArray("lorix: FILE is required; 'lorix info --help' says more\n"));
}

// Nobody ever writes into this pipe: who opened it would wait for ever.
void TestFileCommand::specialFilesInFoldersArePassedOver()
{
    const QTemporaryDir dir;
    const QByteArray pipe = dir.filePath(QStringLiteral("pipe")).toLocal8Bit();
    QCOMPARE(mkfifo(pipe.constData(), 0600), 0);
    ContainerBuilder builder;
    builder.start();
    builder.writeTo(dir.filePath(QStringLiteral("x.pdf")));
    const CliCall folder = runCli({QStringLiteral("info"), QStringLiteral("-r"), dir.path()});
    QCOMPARE(folder.exitCode, 0);
    QVERIFY(folder.out.contains("x.pdf"));
    const CliCall named = runCli({QStringLiteral("info"), QString::fromLocal8Bit(pipe)});
    QCOMPARE(named.exitCode, 2);
    QVERIFY(named.err.contains("this is no regular file"));
}

QTEST_GUILESS_MAIN(TestFileCommand)
#include "tst_filecommand.moc"
