// SPDX-License-Identifier: BSD-3-Clause
#include <lorix/runner/applicationdir.h>
#include <lorix/runner/lorixaddrunner.h>
#include <lorix/runner/lorixdelrunner.h>
#include <support/logrecorder.h>

#include <QDir>
#include <QFile>
#include <QRandomGenerator>
#include <QRegExp>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

#include <csignal>
#include <functional>

using namespace lorix;

namespace {

using Messages = QList<QPair<QString, int>>;

Messages exited(int code)
{
    return {qMakePair(QStringLiteral("Programm exited with error code: %1\n\n").arg(code), 0)};
}

Messages lines(const QStringList& texts)
{
    Messages result;
    for (const QString& text : texts)
        result.append(qMakePair(text + u'\n', 0));
    return result;
}

/// Counts and checks messages without keeping them.
class Counter : public QObject
{
    Q_OBJECT

public:
    qint64 characters = 0;
    qint64 messages = 0;
    QString last;

public Q_SLOTS:
    void log(const QString& message, int)
    {
        characters += message.size();
        ++messages;
        last = message;
    }
};

/// Calls a function with every message.
class Listener : public QObject
{
    Q_OBJECT

public:
    explicit Listener(std::function<void(const QString&)> heard) : m_heard(std::move(heard)) {}

public Q_SLOTS:
    void log(const QString& message, int) { m_heard(message); }

private:
    std::function<void(const QString&)> m_heard;
};

} // namespace

class TestLorixRunner : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void outputIsCutIntoLines_data();
    void outputIsCutIntoLines();
    void randomOutputAgreesWithTheRegularExpression();
    void endlessLineTakesLinearTime();
    void linesAreMarkedByTheirStart_data();
    void linesAreMarkedByTheirStart();

    void pythonIsFoundBySystem();
    void toolIsSearchedBesideTheBinary();
    void searchPathsAreTriedInOrder();
    void foldersAreNoTools();
    void absoluteSearchPathsAreStillRelative();

    void missingToolIsReported();
    void toolThatDoesNotStartIsReported();
    void missingPythonIsReported();
    void plainRunnerGivesNothing();
    void addToolGetsTheTextOnStandardInput();
    void delToolGetsOneArgument();
    void scriptIsRunByPython();
    void errorOutputIsMergedAndMarked();
    void exitCodeIsReturned_data();
    void exitCodeIsReturned();
    void outputOfHundredMegabytesIsRelayed();
    void inputAndOutputFlowAtTheSameTime();
    void childMayIgnoreItsInput_data();
    void childMayIgnoreItsInput();
    void childKilledFromOutsideEndsTheRun();
    void interceptComesWhileNothingIsWritten();
    void receiverOfInterceptMayHandleEvents();
    void grandchildDoesNotHoldTheRun();
    void piecesOfOutputFitTogether();
    void runnerCanBeUsedAgain();

private:
    void writeFile(const QString& name, const QByteArray& content, bool executable = true);
    QString path(const QString& name) const { return m_dir->filePath(name); }
    QString relative(const QString& name = QString()) const;
    void setUp(LorixRunner& runner) const { runner.setSearchPaths({relative()}); }

    QScopedPointer<QTemporaryDir> m_dir;
};

void TestLorixRunner::init()
{
    // Tools are searched for below the folder that holds the test program.
    m_dir.reset(new QTemporaryDir(getBinaryDir() + QStringLiteral("/tst_lorixrunner-XXXXXX")));
    QVERIFY(m_dir->isValid());
}

void TestLorixRunner::cleanup()
{
    m_dir.reset();
}

void TestLorixRunner::writeFile(const QString& name, const QByteArray& content, bool executable)
{
    QVERIFY(QDir().mkpath(QFileInfo(path(name)).path()));
    QFile file(path(name));
    QVERIFY(file.open(QIODevice::WriteOnly));
    QCOMPARE(file.write(content), content.size());
    file.close();
    if (executable)
        QVERIFY(file.setPermissions(file.permissions() | QFile::ExeOwner));
}

QString TestLorixRunner::relative(const QString& name) const
{
    return QDir(getBinaryDir()).relativeFilePath(m_dir->path()) +
           (name.isEmpty() ? QString() : u'/' + name);
}

void TestLorixRunner::outputIsCutIntoLines_data()
{
    QTest::addColumn<QStringList>("pieces");
    QTest::addColumn<QStringList>("unflushed");
    QTest::addColumn<QStringList>("flushed");

    const auto row = [](const char* name, const QStringList& pieces, const QStringList& unflushed,
                        const QStringList& flushed = {}) {
        QTest::newRow(name) << pieces << unflushed << flushed;
    };
    row("nothing", {""}, {});
    row("CR LF", {"a\r\nb"}, {"a"}, {"b"});
    row("LF", {"a\nb\n"}, {"a", "b"});
    row("CR", {"a\rb\r"}, {"a", "b"});
    row("LF CR", {"a\n\rb\r"}, {"a", "", "b"});
    row("CR CR LF", {"a\r\r\n"}, {"a", ""});
    row("empty lines", {"\n\r\n\r"}, {"", "", ""});
    row("pieces of a line", {"a", "b", "", "c\nd", "e"}, {"abc"}, {"de"});
    row("break alone", {"a", "\n"}, {"a"});
    row("break in pieces", {"a\r", "\nb"}, {"a", ""}, {"b"});
    row("other separators are no breaks", {QString(QChar(0x2028)) + u'\v' + u'\f' + QChar(0x85)},
        {}, {QString(QChar(0x2028)) + u'\v' + u'\f' + QChar(0x85)});
    row("NUL", {QString(QChar(0)) + u'\n'}, {QString(QChar(0))});
}

void TestLorixRunner::outputIsCutIntoLines()
{
    QFETCH(QStringList, pieces);
    QFETCH(QStringList, unflushed);
    QFETCH(QStringList, flushed);
    LogRecorder recorder;
    LorixaddRunner runner(&recorder);
    for (const QString& piece : pieces)
        runner.processOutput(piece, false);
    QCOMPARE(recorder.messages, lines(unflushed));
    runner.processOutput(QString(), true);
    QCOMPARE(recorder.messages, lines(unflushed + flushed));
    runner.processOutput(QString(), true);
    QCOMPARE(recorder.messages, lines(unflushed + flushed));
}

void TestLorixRunner::randomOutputAgreesWithTheRegularExpression()
{
    QRandomGenerator random(7101);
    const QString alphabet = QStringLiteral("\r\r\n\nab") + QChar(0x2028) + QChar(0);
    const QRegExp lineBreak(QStringLiteral("(\r\n)|[\n\r]"));
    for (int run = 0; run < 3000; ++run) {
        LogRecorder recorder;
        LorixaddRunner runner(&recorder);
        QString pending;
        QStringList expected;
        for (int count = random.bounded(6); count >= 0; --count) {
            QString text;
            for (int length = random.bounded(8); length > 0; --length)
                text += alphabet[random.bounded(alphabet.size())];
            const bool flush = random.bounded(5) == 0;
            runner.processOutput(text, flush);

            pending += text;
            QStringList pieces = lineBreak.splitString(pending, Qt::KeepEmptyParts);
            pending = pieces.takeLast();
            expected += pieces;
            if (flush && !pending.isEmpty()) {
                expected += pending;
                pending.clear();
            }
        }
        QCOMPARE(recorder.messages, lines(expected));
    }
}

void TestLorixRunner::endlessLineTakesLinearTime()
{
    Counter counter;
    LorixaddRunner runner(&counter);
    const QString piece(1000, u'x');
    for (int i = 0; i < 30000; ++i)
        runner.processOutput(piece, false);
    QCOMPARE(counter.messages, 0);
    runner.processOutput(QString(), true);
    QCOMPARE(counter.characters, 30000001);
}

void TestLorixRunner::linesAreMarkedByTheirStart_data()
{
    QTest::addColumn<QString>("line");
    QTest::addColumn<QString>("message");
    QTest::addColumn<int>("type");

    const auto row = [](const char* line, const char* message, int type) {
        QTest::newRow(line) << line << message << type;
    };
    row("***ERRORdisk full\n", "disk full\n", 2);
    row("***ERROR: x", ": x", 2);
    row("***ERROR", "", 2);
    row("***WARNING: x\n", ": x\n", 1);
    row("***WARNING", "", 1);
    row("***error x", "***error x", 0);
    row("**ERROR", "**ERROR", 0);
    row(" ***ERROR", " ***ERROR", 0);
    row("***ERRO", "***ERRO", 0);
    row("x ***ERROR", "x ***ERROR", 0);
    row("plain\n", "plain\n", 0);
    row("", "", 0);
    row("***ERROR***WARNING", "***WARNING", 2);
}

void TestLorixRunner::linesAreMarkedByTheirStart()
{
    QFETCH(QString, line);
    QFETCH(QString, message);
    QFETCH(int, type);
    LogRecorder recorder;
    LorixRunner runner(QStringLiteral("any"), &recorder);
    runner.processOutputLine(line);
    QCOMPARE(recorder.messages, Messages({qMakePair(message, type)}));
}

void TestLorixRunner::pythonIsFoundBySystem()
{
    QCOMPARE(LorixaddRunner(nullptr).findPython(), QStringLiteral("python"));
}

void TestLorixRunner::toolIsSearchedBesideTheBinary()
{
    LorixRunner runner(QStringLiteral("tst_lorixrunner-tool"));
    QCOMPARE(runner.searchInPath(QStringLiteral("."), QStringLiteral("tst_lorixrunner")),
             getBinaryDir() + QStringLiteral("/./tst_lorixrunner"));
    QCOMPARE(runner.findLorixrun(), QString());

    writeFile(QStringLiteral("lorixadd.py"), "");
    LorixaddRunner add;
    setUp(add);
    QCOMPARE(add.findLorixrun(), QString());
    add.setUsePy2Exe(false);
    QCOMPARE(add.findLorixrun(), path(QStringLiteral("lorixadd.py")));
    add.setUsePy2Exe(true);
    QCOMPARE(add.findLorixrun(), QString());
    writeFile(QStringLiteral("lorixadd.exe"), "");
    QCOMPARE(add.findLorixrun(), path(QStringLiteral("lorixadd.exe")));

    LorixdelRunner del;
    setUp(del);
    QCOMPARE(del.findLorixrun(), QString());
    writeFile(QStringLiteral("lorixdel.exe"), "");
    QCOMPARE(del.findLorixrun(), path(QStringLiteral("lorixdel.exe")));
}

void TestLorixRunner::searchPathsAreTriedInOrder()
{
    LorixaddRunner runner;
    runner.setUsePy2Exe(false);
    const QStringList paths({relative(), relative(QStringLiteral("one")),
                             relative(QStringLiteral("missing")), relative(QStringLiteral("two"))});
    runner.setSearchPaths(paths);
    QCOMPARE(runner.findLorixrun(), QString());
    writeFile(QStringLiteral("two/lorixadd.py"), "");
    QCOMPARE(runner.findLorixrun(), path(QStringLiteral("two/lorixadd.py")));
    writeFile(QStringLiteral("one/lorixadd.py"), "");
    QCOMPARE(runner.findLorixrun(), path(QStringLiteral("one/lorixadd.py")));
    runner.setSearchPaths({});
    QCOMPARE(runner.findLorixrun(), QString());
}

void TestLorixRunner::foldersAreNoTools()
{
    writeFile(QStringLiteral("lorixadd.exe/file"), "");
    LorixaddRunner runner;
    setUp(runner);
    QCOMPARE(runner.searchInPath(relative(), QStringLiteral("lorixadd.exe")), QString());
    QCOMPARE(runner.findLorixrun(), QString());
}

void TestLorixRunner::absoluteSearchPathsAreStillRelative()
{
    writeFile(QStringLiteral("lorixadd.exe"), "");
    LorixaddRunner runner;
    QCOMPARE(runner.searchInPath(m_dir->path(), QStringLiteral("lorixadd.exe")), QString());
    QCOMPARE(runner.searchInPath(u'/' + relative(), QStringLiteral("lorixadd.exe")),
             getBinaryDir() + QStringLiteral("//") + relative(QStringLiteral("lorixadd.exe")));
}

void TestLorixRunner::missingToolIsReported()
{
    LogRecorder recorder;
    LorixaddRunner add(&recorder);
    setUp(add);
    QSignalSpy rounds(&add, &LorixRunner::intercept);
    QCOMPARE(add.runProcess(QString()), -1000);
    add.setUsePy2Exe(false);
    QCOMPARE(add.runProcess(QString()), static_cast<int>(LorixRunner::ToolNotFound));
    LorixdelRunner del(&recorder);
    setUp(del);
    QCOMPARE(del.runProcess(QString()), -1000);
    QCOMPARE(
        recorder.messages,
        Messages({qMakePair(QStringLiteral("could not find any lorixadd.exe executable\n"), 2),
                  qMakePair(QStringLiteral("could not find any lorixadd.py executable\n"), 2),
                  qMakePair(QStringLiteral("could not find any lorixdel.exe executable\n"), 2)}));
    QCOMPARE(rounds.count(), 0);
}

void TestLorixRunner::toolThatDoesNotStartIsReported()
{
    writeFile(QStringLiteral("lorixadd.exe"), "#!/no/such/interpreter\n");
    LogRecorder recorder;
    LorixaddRunner runner(&recorder);
    setUp(runner);
    QCOMPARE(runner.runProcess(QStringLiteral("x")), -1001);
    QCOMPARE(recorder.messages,
             Messages({qMakePair(
                 path(QStringLiteral("lorixadd.exe")) + QStringLiteral(" failed to start\n"), 2)}));
}

void TestLorixRunner::missingPythonIsReported()
{
    writeFile(QStringLiteral("lorixdel.py"), "");
    LogRecorder recorder;
    LorixdelRunner runner(&recorder);
    setUp(runner);
    runner.setUsePy2Exe(false);
    const QByteArray searchPath = qgetenv("PATH");
    qputenv("PATH", QFile::encodeName(m_dir->path()));
    const int result = runner.runProcess(QStringLiteral("x"));
    qputenv("PATH", searchPath);
    QCOMPARE(result, static_cast<int>(LorixRunner::ToolNotStarted));
    QCOMPARE(recorder.messages,
             Messages({qMakePair(QStringLiteral("python failed to start\n"), 2)}));
}

void TestLorixRunner::plainRunnerGivesNothing()
{
    writeFile(QStringLiteral("other.exe"), "#!/bin/sh\necho \"$# arguments\"\ncat\necho end\n");
    LogRecorder recorder;
    LorixRunner runner(QStringLiteral("other"), &recorder);
    setUp(runner);
    QCOMPARE(runner.runProcess(QStringLiteral("unused")), 0);
    QCOMPARE(recorder.messages,
             lines({QStringLiteral("0 arguments"), QStringLiteral("end")}) + exited(0));
}

void TestLorixRunner::addToolGetsTheTextOnStandardInput()
{
    writeFile(QStringLiteral("lorixadd.exe"), "#!/bin/sh\necho \"$#:$*\"\ncat\n");
    LogRecorder recorder;
    LorixaddRunner runner(&recorder);
    setUp(runner);
    QCOMPARE(runner.runProcess(QString::fromUtf8("-s title \"\u00fc b\"\n\\$x\nend")), 0);
    QCOMPARE(recorder.messages,
             lines({QStringLiteral("1:--stdin"), QString::fromUtf8("-s title \"\u00fc b\""),
                    QStringLiteral("\\$x"), QStringLiteral("end")}) +
                 exited(0));
}

void TestLorixRunner::delToolGetsOneArgument()
{
    writeFile(QStringLiteral("lorixdel.exe"), "#!/bin/sh\necho \"$#:$1\"\ncat\n");
    LogRecorder recorder;
    LorixdelRunner runner(&recorder);
    setUp(runner);
    QCOMPARE(runner.runProcess(QString::fromUtf8("a b 'c' \"\u00fc\" $x")), 0);
    QCOMPARE(recorder.messages, lines({QString::fromUtf8("1:a b 'c' \"\u00fc\" $x")}) + exited(0));
}

void TestLorixRunner::scriptIsRunByPython()
{
    writeFile(QStringLiteral("lorixadd.py"),
              "import sys\nprint(sys.argv[1:], sys.stdin.read())\nsys.exit(4)\n", false);
    writeFile(QStringLiteral("lorixdel.py"), "import sys\nprint(sys.argv[1:])\n", false);
    LogRecorder recorder;
    LorixaddRunner add(&recorder);
    LorixdelRunner del(&recorder);
    for (LorixRunner* runner : {static_cast<LorixRunner*>(&add), static_cast<LorixRunner*>(&del)}) {
        setUp(*runner);
        runner->setUsePy2Exe(false);
    }
    QCOMPARE(add.runProcess(QStringLiteral("text")), 4);
    QCOMPARE(del.runProcess(QStringLiteral("a b")), 0);
    QCOMPARE(recorder.messages, lines({QStringLiteral("['--stdin'] text")}) + exited(4) +
                                    lines({QStringLiteral("['a b']")}) + exited(0));
}

void TestLorixRunner::errorOutputIsMergedAndMarked()
{
    writeFile(QStringLiteral("lorixadd.exe"),
              "#!/bin/sh\necho one\necho '***ERROR: two' >&2\necho '***WARNINGthree'\n"
              "printf four >&2\nexit 1\n");
    LogRecorder recorder;
    LorixaddRunner runner(&recorder);
    setUp(runner);
    QCOMPARE(runner.runProcess(QString()), 1);
    QCOMPARE(recorder.messages, Messages({qMakePair(QStringLiteral("one\n"), 0),
                                          qMakePair(QStringLiteral(": two\n"), 2),
                                          qMakePair(QStringLiteral("three\n"), 1),
                                          qMakePair(QStringLiteral("four\n"), 0)}) +
                                    exited(1));
}

void TestLorixRunner::exitCodeIsReturned_data()
{
    QTest::addColumn<QByteArray>("command");
    QTest::addColumn<int>("code");

    QTest::newRow("0") << QByteArray("exit 0") << 0;
    QTest::newRow("7") << QByteArray("exit 7") << 7;
    QTest::newRow("255") << QByteArray("exit 255") << 255;
    QTest::newRow("signal") << QByteArray("kill -9 $$") << SIGKILL;
}

void TestLorixRunner::exitCodeIsReturned()
{
    QFETCH(QByteArray, command);
    QFETCH(int, code);
    writeFile(QStringLiteral("lorixdel.exe"), "#!/bin/sh\n" + command + '\n');
    LogRecorder recorder;
    LorixdelRunner runner(&recorder);
    setUp(runner);
    QCOMPARE(runner.runProcess(QString()), code);
    QCOMPARE(recorder.messages, exited(code));
}

void TestLorixRunner::outputOfHundredMegabytesIsRelayed()
{
    const QByteArray line(999, 'x');
    writeFile(QStringLiteral("lorixadd.exe"),
              "#!/bin/sh\nyes " + line + " | head -c 100000000\nprintf end\n");
    Counter counter;
    LorixaddRunner runner(&counter);
    setUp(runner);
    QSignalSpy rounds(&runner, &LorixRunner::intercept);
    QCOMPARE(runner.runProcess(QString(100000, u'y')), 0);
    QCOMPARE(counter.messages, 100000 + 2);
    QCOMPARE(counter.last, exited(0).first().first);
    QCOMPARE(counter.characters - counter.last.size(), 100000000 + 4);
    QVERIFY(rounds.count() > 1);
}

void TestLorixRunner::inputAndOutputFlowAtTheSameTime()
{
    // Far more than the pipes between the two hold.
    writeFile(QStringLiteral("lorixadd.exe"), "#!/bin/sh\nexec cat\n");
    Counter counter;
    LorixaddRunner runner(&counter);
    setUp(runner);
    const QString text = QString(QString(99, u'z') + u'\n').repeated(200000);
    QCOMPARE(runner.runProcess(text), 0);
    QCOMPARE(counter.messages, 200000 + 1);
    QCOMPARE(counter.characters - counter.last.size(), text.size());
}

void TestLorixRunner::childMayIgnoreItsInput_data()
{
    QTest::addColumn<QByteArray>("commands");
    QTest::addColumn<int>("code");
    QTest::addColumn<QStringList>("output");

    QTest::newRow("never reads") << QByteArray("echo one\necho two\nexit 3") << 3
                                 << QStringList({"one", "two"});
    QTest::newRow("closes early") << QByteArray("head -c 10; exec 0<&-; echo; seq 3") << 0
                                  << QStringList({"yyyyyyyyyy", "1", "2", "3"});
    QTest::newRow("dies at once") << QByteArray("exit 5") << 5 << QStringList();
    QTest::newRow("is killed at once") << QByteArray("kill -15 $$") << SIGTERM << QStringList();
    QTest::newRow("closes its output")
        << QByteArray("exec 1>&- 2>&-; cat; exit 6") << 6 << QStringList();
}

void TestLorixRunner::childMayIgnoreItsInput()
{
    QFETCH(QByteArray, commands);
    QFETCH(int, code);
    QFETCH(QStringList, output);
    writeFile(QStringLiteral("lorixadd.exe"), "#!/bin/sh\n" + commands + '\n');
    LogRecorder recorder;
    LorixaddRunner runner(&recorder);
    setUp(runner);
    QCOMPARE(runner.runProcess(QString(10000000, u'y')), code);
    QCOMPARE(recorder.messages, lines(output) + exited(code));
}

void TestLorixRunner::childKilledFromOutsideEndsTheRun()
{
    writeFile(QStringLiteral("lorixadd.exe"), "#!/bin/sh\necho $$\nexec sleep 600\n");
    bool killed = false;
    QString last;
    Listener listener([&](const QString& message) {
        if (!killed)
            killed = ::kill(message.trimmed().toInt(), SIGKILL) == 0;
        last = message;
    });
    LorixaddRunner runner(&listener);
    setUp(runner);
    QCOMPARE(runner.runProcess(QString(1000000, u'y')), SIGKILL);
    QVERIFY(killed);
    QCOMPARE(last, exited(SIGKILL).first().first);
}

void TestLorixRunner::interceptComesWhileNothingIsWritten()
{
    // The child says nothing and waits for what only a receiver of intercept() does.
    writeFile(QStringLiteral("lorixdel.exe"),
              "#!/bin/sh\nwhile [ ! -e \"$1\" ]; do sleep 0.05; done\n");
    LogRecorder recorder;
    LorixdelRunner runner(&recorder);
    setUp(runner);
    const QString stop = path(QStringLiteral("stop"));
    int rounds = 0;
    connect(&runner, &LorixRunner::intercept, this, [&] {
        if (++rounds == 2)
            writeFile(QStringLiteral("stop"), "");
    });
    QCOMPARE(runner.runProcess(stop), 0);
    QVERIFY(rounds >= 2);
    QCOMPARE(recorder.messages, exited(0));
}

void TestLorixRunner::receiverOfInterceptMayHandleEvents()
{
    writeFile(QStringLiteral("lorixadd.exe"), "#!/bin/sh\ncat\nseq 20000\n");
    Counter counter;
    LorixaddRunner runner(&counter);
    setUp(runner);
    connect(&runner, &LorixRunner::intercept, this, [] { QCoreApplication::processEvents(); });
    QCOMPARE(runner.runProcess(QString(3000000, u'\n')), 0);
    QCOMPARE(counter.messages, 3000000 + 20000 + 1);
}

void TestLorixRunner::grandchildDoesNotHoldTheRun()
{
    writeFile(QStringLiteral("lorixadd.exe"), "#!/bin/sh\nsleep 600 &\necho $!\nexit 2\n");
    LogRecorder recorder;
    LorixaddRunner runner(&recorder);
    setUp(runner);
    QCOMPARE(runner.runProcess(QString()), 2);
    QCOMPARE(recorder.messages.size(), 2);
    const int grandchild = recorder.texts().first().trimmed().toInt();
    QVERIFY(grandchild > 1);
    QCOMPARE(::kill(grandchild, SIGKILL), 0);
}

void TestLorixRunner::piecesOfOutputFitTogether()
{
    // Each piece is written only after the piece before it was read.
    const QByteArray pieces[] = {"a\\r", "\\nb\\303", "\\274\\r", "c\\r", "\\n\\r", "\\n", "\\303"};
    QByteArray script("#!/bin/sh\ncd \"$1\"\n");
    int count = 0;
    for (const QByteArray& piece : pieces) {
        script += "while [ ! -e go" + QByteArray::number(count++) +
                  " ]; do sleep 0.02; done\nprintf '" + piece + "'\n";
    }
    writeFile(QStringLiteral("lorixdel.exe"), script);
    LogRecorder recorder;
    LorixdelRunner runner(&recorder);
    setUp(runner);
    int rounds = 0;
    writeFile(QStringLiteral("go0"), "");
    connect(&runner, &LorixRunner::intercept, this,
            [&] { writeFile(QStringLiteral("go%1").arg(++rounds), ""); });
    QCOMPARE(runner.runProcess(m_dir->path()), 0);
    QCOMPARE(recorder.messages, lines({QStringLiteral("a"), QString::fromUtf8("b\u00fc"),
                                       QStringLiteral("c"), QString(), QString(QChar(0xfffd))}) +
                                    exited(0));
}

void TestLorixRunner::runnerCanBeUsedAgain()
{
    writeFile(QStringLiteral("lorixdel.exe"), "#!/bin/sh\nprintf \"$1\"\n");
    LogRecorder recorder;
    LorixdelRunner runner(&recorder);
    setUp(runner);
    QCOMPARE(runner.runProcess(QStringLiteral("a")), 0);
    QCOMPARE(runner.runProcess(QStringLiteral("b")), 0);
    QCOMPARE(recorder.messages,
             lines({QStringLiteral("a")}) + exited(0) + lines({QStringLiteral("b")}) + exited(0));
}

QTEST_GUILESS_MAIN(TestLorixRunner)
#include "tst_lorixrunner.moc"
