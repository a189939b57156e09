// SPDX-License-Identifier: BSD-3-Clause
#include <lorix/runner/applicationdir.h>

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

#include <cstdio>

class TestApplicationDir : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void binaryDirIsTheProgramsFolder();
    void answersFollowTheFolder_data();
    void answersFollowTheFolder();
};

void TestApplicationDir::binaryDirIsTheProgramsFolder()
{
    QCOMPARE(getBinaryDir(), QDir(QCoreApplication::applicationDirPath()).canonicalPath());
    QCOMPARE(getApplicationDir(), getBinaryDir());
    QCOMPARE(lorix::getBinaryDir(), getBinaryDir());
    QCOMPARE(lorix::getApplicationDir(), getBinaryDir());
}

void TestApplicationDir::answersFollowTheFolder_data()
{
    QTest::addColumn<QString>("folder");
    QTest::addColumn<QString>("application");
    QTest::newRow("plain") << QStringLiteral("bin") << QStringLiteral("bin");
    QTest::newRow("bundle") << QStringLiteral("x/App.app/Contents/MacOS") << QStringLiteral("x");
    QTest::newRow("bundle without name") << QStringLiteral("a/Contents/MacOS") << QString();
    QTest::newRow("other case") << QStringLiteral("A/contents/macos")
                                << QStringLiteral("A/contents/macos");
    QTest::newRow("longer name") << QStringLiteral("A/xContents/MacOS")
                                 << QStringLiteral("A/xContents/MacOS");
    QTest::newRow("below") << QStringLiteral("A/Contents/MacOS/bin")
                           << QStringLiteral("A/Contents/MacOS/bin");
}

// This program, put into the folder, tells what it sees there.
void TestApplicationDir::answersFollowTheFolder()
{
    QFETCH(QString, folder);
    QFETCH(QString, application);
    QTemporaryDir dir;
    const QString root = QDir(dir.path()).canonicalPath();
    QVERIFY(QDir(root).mkpath(folder));
    const QString program = root + QLatin1Char('/') + folder + QStringLiteral("/program");
    QVERIFY(QFile::copy(QCoreApplication::applicationFilePath(), program));
    QProcess process;
    process.start(program, {QStringLiteral("--tell")});
    QVERIFY(process.waitForFinished(60000));
    const QString expected =
        root + QLatin1Char('/') + folder + QLatin1Char('\n') +
        (application.isEmpty() ? root : root + QLatin1Char('/') + application) + QLatin1Char('\n');
    QCOMPARE(QString::fromUtf8(process.readAllStandardOutput()), expected);
}

int main(int argc, char* argv[])
{
    QCoreApplication application(argc, argv);
    if (argc > 1 && qstrcmp(argv[1], "--tell") == 0) {
        std::printf("%s\n%s\n", qPrintable(getBinaryDir()), qPrintable(getApplicationDir()));
        return 0;
    }
    TestApplicationDir test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_applicationdir.moc"
