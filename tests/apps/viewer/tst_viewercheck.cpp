// SPDX-License-Identifier: BSD-3-Clause
#include "apps/viewer/sampledocuments.h"
#include "apps/viewer/viewertest.h"

#include <apps/viewer/detailspanel.h>
#include <apps/viewer/logpane.h>
#include <apps/viewer/marks.h>
#include <apps/viewer/outlinemodel.h>
#include <apps/viewer/verdictbar.h>

#include <support/containerbuilder.h>

#include <QElapsedTimer>
#include <QTextBrowser>
#include <QTimer>
#include <QTreeView>
#include <QtTest>

using namespace lorix::viewer;

/// Checking a document, and reading what has come out.
class TestViewerCheck : public ViewerTest
{
    Q_OBJECT

    void check()
    {
        QSignalSpy finished(m_window->checker(), &Checker::finished);
        click("checkButton");
        QTRY_COMPARE_WITH_TIMEOUT(finished.size(), 1, 60000);
    }

    CheckState stateOf(const QString& title, const QString& file = QString()) const
    {
        return m_window->checker()->results().of(*m_window->history(), placeOf(title, file)).state;
    }

private Q_SLOTS:
    void init() { makeWindow(); }
    void cleanup() { m_window.reset(); }

    void saysNotCheckedBeforeTheButton()
    {
        open("report.pdf", samples::report());
        QVERIFY(m_window->verdict()->text().startsWith("Not checked"));
        QCOMPARE(stateOf("Mesh the fin"), CheckState::NotChecked);
    }

    void untouchedDocumentIsValidThroughout()
    {
        open("report.pdf", samples::report());
        check();
        QVERIFY2(m_window->verdict()->text().startsWith("Valid: all"),
                 qPrintable(m_window->verdict()->text()));
        const History& history = *m_window->history();
        for (int node = 0; node < history.steps().size(); ++node) {
            const int files = static_cast<int>(history.step(node).step.files.size());
            for (int file = -1; file < files; ++file)
                QCOMPARE(m_window->checker()->results().of(history, {node, file}).state,
                         CheckState::Valid);
        }
        // 6 steps; their files: 3 + 3 + 6 + 3, and inside 3 + 4.
        QCOMPARE(m_window->checker()->results().checked(), 6 + 15 + 7);
    }

    void damageIsMarkedWhereItIsWithTheReason()
    {
        open("damaged.pdf", samples::damagedReport());
        check();
        QVERIFY2(m_window->verdict()->text().startsWith("Damaged: 2 of 28 parts"),
                 qPrintable(m_window->verdict()->text()));
        QCOMPARE(stateOf("Compute the temperatures", "temperatures.csv"), CheckState::Damaged);
        QCOMPARE(stateOf("Compute the temperatures"), CheckState::Damaged);
        QCOMPARE(stateOf("Compute the temperatures", "map.png"), CheckState::Valid);
        QCOMPARE(stateOf("Write the report"), CheckState::Valid);
        QCOMPARE(stateOf("Measure the samples"), CheckState::Valid);
        click("showDamageButton");
        QCOMPARE(m_window->current(), placeOf("Compute the temperatures", "temperatures.csv"));
        const QString page = m_window->details()->page()->toPlainText();
        QVERIFY(page.contains("damaged"));
        QVERIFY(page.contains("The content was changed after the file was added"));
        QVERIFY(m_window->logPane()->text().contains("Error: Damaged"));
    }

    void outlineTellsStatesInWords()
    {
        open("damaged.pdf", samples::damagedReport());
        check();
        const QAbstractItemModel& model = *m_window->outline()->model();
        const QModelIndex step = model.index(1, 0);
        QCOMPARE(model.index(1, OutlineModel::State).data().toString(), QString("damaged"));
        QCOMPARE(model.index(0, OutlineModel::State).data().toString(), QString("valid"));
        QCOMPARE(model.index(3, OutlineModel::State, step).data().toString(), QString("damaged"));
        QVERIFY(
            model.index(3, 0, step).data(Qt::AccessibleTextRole).toString().endsWith("damaged"));
    }

    void bytesTakenOutOfTheFirstStepAreDamage()
    {
        QByteArray bytes = samples::report();
        const qsizetype at = bytes.indexOf("[desc:The drawing]");
        QVERIFY(at > 0);
        bytes.replace(at, 18, "[desc:The sketch!]");
        open("renamed.pdf", bytes);
        check();
        QVERIFY(m_window->verdict()->text().startsWith("Damaged: 1 of"));
        QCOMPARE(stateOf("Draw the fin"), CheckState::Damaged);
        QCOMPARE(stateOf("Draw the fin", "fin.dxf"), CheckState::Valid);
    }

    void checkingCanBeStopped()
    {
        open("large.pdf", samples::large(400, 20));
        QSignalSpy progress(m_window->checker(), &Checker::progress);
        click("checkButton");
        QTRY_VERIFY(progress.size() > 0);
        QVERIFY(m_window->checker()->isRunning());
        click("checkButton"); // it reads "Stop" now
        QVERIFY(!m_window->checker()->isRunning());
        QVERIFY(!m_window->checker()->results().isComplete());
        QVERIFY2(m_window->verdict()->text().startsWith("Stopped"),
                 qPrintable(m_window->verdict()->text()));
    }

    void closingWhileCheckingIsHarmless()
    {
        open("large.pdf", samples::large(100, 20));
        click("checkButton");
        trigger("close");
        QVERIFY(!m_window->checker()->isRunning());
        QVERIFY(!m_window->history());
    }

    void exchangedStepIsToldInWords()
    {
        QByteArray bytes = samples::report();
        // Another digest for the predecessor of the newest section.
        const qsizetype at = bytes.lastIndexOf("[previousmd5:") + 13;
        bytes[at] = bytes.at(at) == '0' ? '1' : '0';
        open("exchanged.pdf", bytes);
        check();
        QVERIFY(!m_window->checker()->results().notices().isEmpty());
        QVERIFY(m_window->checker()->results().notices().first().text.contains(
            "is not the one that was there"));
        QVERIFY(m_window->verdict()->text().startsWith("Damaged"));
    }

    // Records, for whoever looks at the log; machines differ too much to assert.
    void recordsHowLongTheWindowIsKeptWaiting()
    {
        bool given = false;
        const int megabytes = qEnvironmentVariableIntValue("LORIX_VIEWER_MB", &given);
        QByteArray content((given ? megabytes : 16) * 1024 * 1024, 'x');
        ContainerBuilder builder;
        builder.start();
        builder.section(
            SectionSpec(QStringLiteral("big")).file(FileSpec(QStringLiteral("big.bin"), content)));
        content.clear();
        open("big.pdf", builder.bytes());
        builder = ContainerBuilder();
        QElapsedTimer sinceTick;
        qint64 longest = 0;
        int ticks = 0;
        QTimer ticker;
        connect(&ticker, &QTimer::timeout, this, [&] {
            longest = std::max(longest, sinceTick.restart());
            ++ticks;
        });
        QElapsedTimer all;
        all.start();
        sinceTick.start();
        ticker.start(5);
        check();
        qInfo("checked in %lld ms; the window waited %lld ms at most (%d ticks)", all.elapsed(),
              longest, ticks);
        QVERIFY(m_window->verdict()->text().startsWith("Valid"));
    }

    void whatWasAddedBehindTheNewestStepIsToldAndIsNoDamage()
    {
        open("longer.pdf", samples::report() + "1 0 obj\n(more)\nendobj\n");
        check();
        QVERIFY2(m_window->verdict()->text().startsWith("Valid"),
                 qPrintable(m_window->verdict()->text()));
        QVERIFY(m_window->verdict()->text().contains("added behind the newest step"));
        QVERIFY(m_window->logPane()->text().contains("Warning: "));
    }

    void untouchedDocumentHasNoNotices()
    {
        open("report.pdf", samples::report());
        check();
        QCOMPARE(m_window->checker()->results().notices().size(), 0);
    }

    void marksDifferInShapeNotInColourAlone()
    {
        QList<QImage> shapes;
        for (const CheckState state :
             {CheckState::NotChecked, CheckState::Valid, CheckState::Damaged})
            shapes.append(markIcon(state, QPalette())
                              .pixmap(32, 32)
                              .toImage()
                              .convertToFormat(QImage::Format_Alpha8));
        QVERIFY(shapes.at(0) != shapes.at(1));
        QVERIFY(shapes.at(1) != shapes.at(2));
        QVERIFY(shapes.at(0) != shapes.at(2));
    }
};

QTEST_MAIN(TestViewerCheck)
#include "tst_viewercheck.moc"
