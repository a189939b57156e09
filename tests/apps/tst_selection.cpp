// SPDX-License-Identifier: BSD-3-Clause
// --since and --skip-done: what an earlier run has seen to is left out.
#include "clirunner.h"

#include <apps/lorix/donelist.h>

#include <support/containerbuilder.h>

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QJsonDocument>
#include <QTemporaryDir>
#include <QTest>

using lorix::cli::DoneList;

class TestSelection : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void whatAnOutputHasIsLeftOut();
    void cutAndForeignLinesCountForNothing_data();
    void cutAndForeignLinesCountForNothing();
    void cutLineIsMeasured();
    void failuresAreDoneToo();
    void anotherCommandsOutputDoesNotCount();
    void anotherQuerysOutputDoesNotCount();
    void olderFilesAreLeftOut_data();
    void olderFilesAreLeftOut();
    void missingFilesAreNotOlder();
    void badOptionsAreRefused_data();
    void badOptionsAreRefused();
    void nothingLeftIsDone();

private:
    QString path(const QString& name) const { return m_dir->filePath(name); }
    QStringList filesOf(const CliCall& call) const;
    CliCall all(const QStringList& options) const;

    QScopedPointer<QTemporaryDir> m_dir;
};

void TestSelection::init()
{
    m_dir.reset(new QTemporaryDir);
    QVERIFY(QDir(m_dir->path()).mkpath(QStringLiteral("in")));
    for (const char* name : {"in/a", "in/b", "in/c", "in/d"}) {
        ContainerBuilder builder;
        builder.start();
        builder.section(SectionSpec(QLatin1String(name)));
        builder.writeTo(path(QLatin1String(name)));
    }
}

QStringList TestSelection::filesOf(const CliCall& call) const
{
    QStringList files;
    for (const QJsonObject& object : call.objects())
        files.append(QDir(path(QStringLiteral("in"))).relativeFilePath(object["file"].toString()));
    return files;
}

CliCall TestSelection::all(const QStringList& options) const
{
    return runCli(QStringList{QStringLiteral("info"), QStringLiteral("--json"),
                              QStringLiteral("-r"), path(QStringLiteral("in"))} +
                  options);
}

void TestSelection::whatAnOutputHasIsLeftOut()
{
    const CliCall whole = all({});
    QCOMPARE(filesOf(whole), QStringList({"a", "b", "c", "d"}));
    const QList<QByteArray> lines = whole.out.split('\n');
    const QString done = path(QStringLiteral("done"));
    ContainerBuilder::writeFile(done, lines[2] + '\n' + lines[0] + '\n');
    const CliCall rest = all({QStringLiteral("--skip-done"), done});
    QCOMPARE(rest.exitCode, 0);
    QCOMPARE(filesOf(rest), QStringList({"b", "d"}));
    QCOMPARE(rest.out, lines[1] + '\n' + lines[3] + '\n');
    QVERIFY(rest.err.contains("2 files left out"));
    QVERIFY(all({QStringLiteral("-q"), QStringLiteral("--skip-done"), done}).err.isEmpty());
}

void TestSelection::cutAndForeignLinesCountForNothing_data()
{
    QTest::addColumn<QByteArray>("line");
    QTest::newRow("no line feed") << QByteArray("LINE");
    QTest::newRow("cut in the middle") << QByteArray("LIN");
    QTest::newRow("cut and gone on") << QByteArray("{\"command\":\"inLINE\n");
    QTest::newRow("no schema") << QByteArray("{\"command\":\"info\",\"file\":\"PATH\"}\n");
    QTest::newRow("no object") << QByteArray("[\"PATH\"]\n\n\"PATH\"\n");
    QTest::newRow("file is no text")
        << QByteArray("{\"command\":\"info\",\"file\":7,\"schema\":\"lorix/1\"}\n");
    QTest::newRow("no JSON") << QByteArray("PATH\nlorix: PATH\n\0\xff\n", 20);
    QTest::newRow("nothing") << QByteArray();
}

void TestSelection::cutAndForeignLinesCountForNothing()
{
    QFETCH(QByteArray, line);
    const QByteArray whole = all({}).out.split('\n').at(0);
    line.replace("LINE", whole);
    line.replace("LIN", whole.left(whole.size() - 1));
    line.replace("PATH", path(QStringLiteral("in/a")).toUtf8());
    const QString done = path(QStringLiteral("done"));
    ContainerBuilder::writeFile(done, line);
    QCOMPARE(filesOf(all({QStringLiteral("--skip-done"), done})),
             QStringList({"a", "b", "c", "d"}));
}

void TestSelection::cutLineIsMeasured()
{
    const QByteArray first = all({}).out.split('\n').at(0);
    const auto everything = [](const QJsonObject&) { return true; };
    for (const qsizetype kept : {qsizetype(0), qsizetype(1), first.size() - 1, first.size()}) {
        ContainerBuilder::writeFile(path(QStringLiteral("done")), first + '\n' + first.left(kept));
        QFile file(path(QStringLiteral("done")));
        QVERIFY(file.open(QIODevice::ReadOnly));
        DoneList done;
        QVERIFY(done.read(file, everything));
        QCOMPARE(done.cutBytes(), kept);
        QVERIFY(done.contains(path(QStringLiteral("in/a"))));
        QVERIFY(!done.contains(path(QStringLiteral("in/b"))));
    }
}

void TestSelection::failuresAreDoneToo()
{
    const QString missing = path(QStringLiteral("missing"));
    const CliCall first = runCli({QStringLiteral("info"), QStringLiteral("--json"), missing});
    QCOMPARE(first.exitCode, 2);
    ContainerBuilder::writeFile(path(QStringLiteral("done")), first.out);
    const CliCall second = runCli({QStringLiteral("info"), QStringLiteral("--json"), missing,
                                   QStringLiteral("--skip-done"), path(QStringLiteral("done"))});
    QCOMPARE(second.exitCode, 0);
    QVERIFY(second.out.isEmpty());
}

void TestSelection::anotherCommandsOutputDoesNotCount()
{
    ContainerBuilder::writeFile(path(QStringLiteral("done")), all({}).out);
    const CliCall call =
        runCli({QStringLiteral("validate"), QStringLiteral("--json"), path(QStringLiteral("in/a")),
                QStringLiteral("--skip-done"), path(QStringLiteral("done"))});
    QCOMPARE(filesOf(call), QStringList({"a"}));
}

void TestSelection::anotherQuerysOutputDoesNotCount()
{
    const auto find = [&](const char* query) {
        return runCli({QStringLiteral("find"), QStringLiteral("--json"), QLatin1String(query),
                       path(QStringLiteral("in/a")), QStringLiteral("--skip-done"),
                       path(QStringLiteral("done"))});
    };
    ContainerBuilder::writeFile(path(QStringLiteral("done")), "");
    ContainerBuilder::writeFile(path(QStringLiteral("done")), find("one").out);
    QVERIFY(find("one").out.isEmpty());
    QCOMPARE(filesOf(find("two")), QStringList({"a"}));
}

void TestSelection::olderFilesAreLeftOut_data()
{
    QTest::addColumn<QString>("since");
    QTest::addColumn<QStringList>("files");
    const QStringList later = {"c", "d"};
    QTest::newRow("a day") << QStringLiteral("2026-03-02") << later;
    QTest::newRow("a minute") << QStringLiteral("2026-03-02T10:00") << later;
    QTest::newRow("a second") << QStringLiteral("2026-03-02T10:00:01") << QStringList{"d"};
    QTest::newRow("another zone") << QStringLiteral("2026-03-02T12:00:01+02:00")
                                  << QStringList{"d"};
    QTest::newRow("a file") << QStringLiteral("FILE") << later;
    QTest::newRow("long ago") << QStringLiteral("1999-12-31") << QStringList({"a", "b", "c", "d"});
    QTest::newRow("in the future") << QStringLiteral("2999-12-31") << QStringList();
}

void TestSelection::olderFilesAreLeftOut()
{
    QFETCH(QString, since);
    QFETCH(QStringList, files);
    qputenv("TZ", "UTC");
    const QDateTime noon(QDate(2026, 3, 2), QTime(10, 0), Qt::UTC);
    const qint64 seconds[] = {-90000, -36001, 0, 3600};
    for (int i = 0; i < 4; ++i) {
        QFile file(path(QStringLiteral("in/") + QLatin1Char(char('a' + i))));
        QVERIFY(file.open(QIODevice::ReadWrite));
        QVERIFY(file.setFileTime(noon.addSecs(seconds[i]), QFileDevice::FileModificationTime));
    }
    if (since == u"FILE")
        since = path(QStringLiteral("in/c"));
    QCOMPARE(filesOf(all({QStringLiteral("--since"), since})), files);
}

void TestSelection::missingFilesAreNotOlder()
{
    const CliCall call = runCli({QStringLiteral("info"), path(QStringLiteral("missing")),
                                 QStringLiteral("--since"), QStringLiteral("2026-01-01")});
    QCOMPARE(call.exitCode, 2);
}

void TestSelection::badOptionsAreRefused_data()
{
    QTest::addColumn<QStringList>("options");
    QTest::addColumn<QByteArray>("message");
    QTest::newRow("no time") << QStringList({"--since", "yesterday"})
                             << QByteArray("\"yesterday\" is neither a file nor a time");
    QTest::newRow("no output") << QStringList({"--skip-done", "/nowhere/at/all"})
                               << QByteArray("cannot be read");
    QTest::newRow("a folder") << QStringList({"--skip-done", "/"}) << QByteArray("cannot be read");
}

void TestSelection::badOptionsAreRefused()
{
    QFETCH(QStringList, options);
    QFETCH(QByteArray, message);
    const CliCall call = all(options);
    QCOMPARE(call.exitCode, 2);
    QVERIFY2(call.err.contains(message), call.err.constData());
    QVERIFY(call.out.isEmpty());
}

void TestSelection::nothingLeftIsDone()
{
    ContainerBuilder::writeFile(path(QStringLiteral("done")), all({}).out);
    const CliCall call = all({QStringLiteral("--skip-done"), path(QStringLiteral("done"))});
    QCOMPARE(call.exitCode, 0);
    QVERIFY(call.out.isEmpty());
    QVERIFY(call.err.contains("4 files left out"));
}

QTEST_GUILESS_MAIN(TestSelection)
#include "tst_selection.moc"
