// SPDX-License-Identifier: BSD-3-Clause
#include "apps/viewer/exampledocuments.h"

#include <QFile>
#include <QProcess>
#include <QSettings>
#include <QTemporaryDir>
#include <QtTest>

/// The program as it is started from a shell or from the desktop.
class TestViewerProgram : public QObject
{
    Q_OBJECT

    QTemporaryDir m_home;

    void prepare(QProcess& program, const QStringList& arguments)
    {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert("XDG_CONFIG_HOME", m_home.path());
        environment.insert("HOME", m_home.path());
        program.setProcessEnvironment(environment);
        program.setProcessChannelMode(QProcess::MergedChannels);
        program.setProgram(qEnvironmentVariable("LORIX_VIEWER"));
        program.setArguments(arguments);
    }

    /// What the program remembers of documents that it has opened.
    QStringList opened() const
    {
        const QString file = m_home.filePath(QStringLiteral("lorix/lorix-viewer.conf"));
        return QSettings(file, QSettings::IniFormat).value("recentFiles").toStringList();
    }

    QString outputOf(const QStringList& arguments)
    {
        QProcess program;
        prepare(program, arguments);
        program.start();
        if (!program.waitForFinished(60000) || program.exitCode() != 0)
            return {};
        return QString::fromUtf8(program.readAll());
    }

private Q_SLOTS:
    void opensTheFileThatIsNamed_data()
    {
        QTest::addColumn<QString>("document");
        QVERIFY(!examples::coolingFin().isEmpty());
        QTest::newRow("example") << examples::coolingFin();
        QTest::newRow("damaged example") << examples::damaged();
    }

    void opensTheFileThatIsNamed()
    {
        QFETCH(QString, document);
        QVERIFY(!opened().contains(document));
        QProcess program;
        prepare(program, {document});
        program.start();
        QVERIFY2(program.waitForStarted(), qPrintable(program.errorString()));
        QTRY_VERIFY_WITH_TIMEOUT(opened().contains(document), 60000);
        QCOMPARE(opened().first(), document);
        QCOMPARE(program.state(), QProcess::Running);
        program.terminate();
        QVERIFY(program.waitForFinished(60000));
    }

    void saysHowItIsUsed()
    {
        const QString help = outputOf({"--help"});
        QVERIFY2(help.contains("[FILE]"), qPrintable(help));
        QVERIFY(help.contains("Shows the history that a document carries."));
        QVERIFY(outputOf({"--version"}).contains("1.83"));
    }
};

QTEST_GUILESS_MAIN(TestViewerProgram)
#include "tst_viewerprogram.moc"
