// SPDX-License-Identifier: BSD-3-Clause
#include "apps/viewer/exampledocuments.h"
#include "apps/viewer/viewertest.h"

#include <apps/viewer/comparepage.h>
#include <apps/viewer/detailspanel.h>
#include <apps/viewer/extractdialog.h>
#include <apps/viewer/findpanel.h>
#include <apps/viewer/outlinemodel.h>
#include <apps/viewer/pictureview.h>
#include <apps/viewer/previewpane.h>
#include <apps/viewer/queryedit.h>
#include <apps/viewer/verdictbar.h>
#include <apps/viewer/welcomepage.h>

#include <QCheckBox>
#include <QFile>
#include <QLineEdit>
#include <QTextBrowser>
#include <QTreeView>
#include <QTreeWidget>
#include <QtTest>

using namespace lorix::viewer;

/// What people do with a document, with their keys and their mouse, on the
/// project's example as its tools make it and on a copy of it that is damaged.
class TestViewerActivities : public ViewerTest
{
    Q_OBJECT

    /// Opens a document by the dialog, from the keyboard alone.
    void openByDialog(const QString& path)
    {
        QSignalSpy shown(m_window.get(), &MainWindow::documentShown);
        press(m_window.get(), Qt::Key_O, Qt::ControlModifier);
        chooseInDialog("documentDialog", path);
        QTRY_COMPARE_WITH_TIMEOUT(shown.size(), 1, 60000);
    }

    QString page() const { return m_window->details()->page()->toPlainText(); }

    static QString oldest(bool damaged) { return damaged ? "Mush study" : "Mesh study"; }

    QModelIndex rowOf(const QString& title, const QString& file = QString()) const
    {
        return static_cast<OutlineModel*>(m_window->outline()->model())
            ->indexOf(placeOf(title, file));
    }

    void bothDocuments()
    {
        QTest::addColumn<QString>("document");
        QTest::addColumn<bool>("damaged");
        QTest::newRow("example") << examples::coolingFin() << false;
        QTest::newRow("damaged example") << examples::damaged() << true;
    }

    static QByteArray contentOf(const QString& path)
    {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(missing)");
    }

private Q_SLOTS:
    void initTestCase() { QVERIFY(!examples::coolingFin().isEmpty()); }
    void init() { makeWindow(); }
    void cleanup() { m_window.reset(); }

    void open_data() { bothDocuments(); }
    void open()
    {
        QFETCH(QString, document);
        QVERIFY(m_window->welcome()->isVisible());
        openByDialog(document);
        QVERIFY(!m_window->welcome()->isVisible());
        QVERIFY(m_window->picture()->isVisible());
        QVERIFY(m_window->windowTitle().startsWith(QFileInfo(document).fileName()));
        QVERIFY(page().contains("Documents inside"));
    }

    void opensByTheButtonOfTheWelcomePage()
    {
        QSignalSpy shown(m_window.get(), &MainWindow::documentShown);
        click("welcomeOpen");
        chooseInDialog("documentDialog", examples::coolingFin());
        QTRY_COMPARE_WITH_TIMEOUT(shown.size(), 1, 60000);
        // The next dialog begins in the folder of the last document.
        m_window.reset();
        m_window = std::make_unique<MainWindow>();
        m_window->show();
        m_window->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(m_window.get()));
        QSignalSpy again(m_window.get(), &MainWindow::documentShown);
        press(m_window.get(), Qt::Key_O, Qt::ControlModifier);
        chooseInDialog("documentDialog", QStringLiteral("damaged-fin.pdf"));
        QTRY_COMPARE_WITH_TIMEOUT(again.size(), 1, 60000);
    }

    void history_data() { bothDocuments(); }
    void history()
    {
        QFETCH(QString, document);
        QFETCH(bool, damaged);
        openByDialog(document);
        press(m_window.get(), Qt::Key_0, Qt::ControlModifier);
        const Place step = placeOf("Solve for the steady state");
        clickBox(step.node);
        QCOMPARE(m_window->current(), step);
        for (const char* text :
             {"Solve for the steady state", "Temperature field of the fin", "Mei Tanaka",
              "cluster-07", "fin.py", "fin.py solve fin.inp material.csv mesh.csv field.csv",
              "2026-03-04 10:05:00", "Inputs (1)", "Outputs (3)", "tolerance", "1e-7 K",
              "cells.along"})
            QVERIFY2(page().contains(QLatin1String(text)), text);
        // From the keyboard into the history that a file brings with it.
        press(m_window->picture(), Qt::Key_Down);
        QCOMPARE(m_window->current(), placeOf(oldest(damaged)));
        press(m_window->picture(), Qt::Key_Right);
        QCOMPARE(m_window->current(), placeOf("Fit a straight line"));
        press(m_window->picture(), Qt::Key_Down);
        QVERIFY(page().contains("6.4 mm"));
        // The outline has a file's page, with a preview.
        clickTab(1);
        QVERIFY(m_window->outline()->isVisible());
        clickRow(m_window->outline(), rowOf("Solve for the steady state", "field.csv"));
        QCOMPARE(m_window->current(), placeOf("Solve for the steady state", "field.csv"));
        for (const char* text :
             {"Output", "Temperature of every cell", "Fingerprint (MD5)", "text/csv", "packed"})
            QVERIFY2(page().contains(QLatin1String(text)), text);
        QTRY_COMPARE(m_window->details()->preview()->kind(), QString("text"));
        QCOMPARE(m_window->details()->preview()->text().toUtf8(),
                 contentOf(examples::original("field.csv")));
    }

    void linksOfThePageAreReachedByKeys()
    {
        openByDialog(examples::coolingFin());
        press(m_window->picture(), Qt::Key_Down);
        QTextBrowser* const browser = m_window->details()->page();
        browser->setFocus();
        press(browser, Qt::Key_Tab);
        press(browser, Qt::Key_Return);
        QCOMPARE(m_window->current(), placeOf("Report", "result.csv"));
    }

    void check()
    {
        openByDialog(examples::coolingFin());
        QSignalSpy finished(m_window->checker(), &Checker::finished);
        press(m_window.get(), Qt::Key_K, Qt::ControlModifier);
        QTRY_COMPARE_WITH_TIMEOUT(finished.size(), 1, 60000);
        QVERIFY2(m_window->verdict()->text().startsWith("Valid"),
                 qPrintable(m_window->verdict()->text()));
    }

    void checkOfTheDamagedOne()
    {
        openByDialog(examples::damaged());
        QSignalSpy finished(m_window->checker(), &Checker::finished);
        click("checkButton");
        QTRY_COMPARE_WITH_TIMEOUT(finished.size(), 1, 60000);
        // Two sections, the file, and the summary of the oldest step.
        QVERIFY2(m_window->verdict()->text().startsWith("Damaged: 4 of 20 parts"),
                 qPrintable(m_window->verdict()->text()));
        clickTab(1);
        const QModelIndex step = rowOf("Solve for the steady state");
        const QModelIndex file = rowOf("Solve for the steady state", "result.csv");
        const QModelIndex other = rowOf("Solve for the steady state", "field.csv");
        QCOMPARE(step.siblingAtColumn(OutlineModel::State).data().toString(), QString("damaged"));
        QCOMPARE(file.siblingAtColumn(OutlineModel::State).data().toString(), QString("damaged"));
        QCOMPARE(other.siblingAtColumn(OutlineModel::State).data().toString(), QString("valid"));
        click("showDamageButton");
        QCOMPARE(m_window->current(), placeOf("Solve for the steady state", "result.csv"));
        QVERIFY(page().contains("The content was changed after the file was added"));
        clickRow(m_window->outline(), rowOf(oldest(true)));
        QVERIFY(page().contains("Something in this step was changed after it was added"));
        clickRow(m_window->outline(), rowOf("Report"));
        QVERIFY(page().contains("valid: Unchanged since this step was added."));
    }

    void find_data() { bothDocuments(); }
    void find()
    {
        QFETCH(QString, document);
        openByDialog(document);
        press(m_window.get(), Qt::Key_F, Qt::ControlModifier);
        FindPanel* const panel = m_window->findPanel();
        QTRY_VERIFY(panel->edit()->isVisible());
        QVERIFY(panel->edit()->hasFocus());
        QTest::keyClicks(panel->edit(), "step:title %contains 'Solve' ");
        QTest::keyClicks(panel->edit(), "&& file:isoutfile && file:parentid == step:tagid ");
        const QImage before = m_window->picture()->grab().toImage();
        press(panel->edit(), Qt::Key_Return);
        QTRY_VERIFY_WITH_TIMEOUT(!panel->isBusy(), 60000);
        QCOMPARE(panel->message(), QString("3 matches."));
        QVERIFY2(m_window->picture()->grab().toImage() != before, "highlighted in the picture");
        clickRow(panel->list(), panel->list()->model()->index(1, 0));
        QCOMPARE(m_window->current(), placeOf("Solve for the steady state", "mesh.csv"));
        QCOMPARE(panel->list()->currentItem()->text(1), QString("file"));
        press(panel->list(), Qt::Key_Up);
        QCOMPARE(m_window->current(), placeOf("Solve for the steady state"));
        QCOMPARE(panel->list()->currentItem()->text(1), QString("step"));
    }

    void extract()
    {
        openByDialog(examples::coolingFin());
        clickTab(1);
        clickRow(m_window->outline(), rowOf("Solve for the steady state", "field.csv"));
        clickTool("extractSelected");
        auto* const dialog = m_window->findChild<ExtractDialog*>();
        QVERIFY(dialog);
        QTRY_VERIFY(dialog->isVisible());
        QVERIFY(QDir().mkpath(path("out")));
        click("extractBrowse");
        chooseInDialog("folderDialog", path("out"));
        QCOMPARE(dialog->findChild<QLineEdit*>("extractFolder")->text(), path("out"));
        QSignalSpy extracted(dialog, &ExtractDialog::extracted);
        click("extractStart");
        QTRY_COMPARE_WITH_TIMEOUT(extracted.size(), 1, 60000);
        QVERIFY(dialog->message().startsWith("1 of 1 files were extracted"));
        QCOMPARE(contentOf(path("out/field.csv")), contentOf(examples::original("field.csv")));
        QCOMPARE(QDir(path("out")).entryList(QDir::Files | QDir::Hidden),
                 QStringList({"field.csv"}));
    }

    void extractEverythingFromTheDamagedOne()
    {
        openByDialog(examples::damaged());
        press(m_window.get(), Qt::Key_E, Qt::ControlModifier | Qt::ShiftModifier);
        auto* const dialog = m_window->findChild<ExtractDialog*>();
        QVERIFY(dialog);
        QTRY_VERIFY(dialog->isVisible());
        auto* const line = dialog->findChild<QLineEdit*>("extractFolder");
        line->selectAll();
        QTest::keyClicks(line, path("out"));
        press(dialog->findChild<QCheckBox*>(), Qt::Key_Space);
        QSignalSpy extracted(dialog, &ExtractDialog::extracted);
        press(line, Qt::Key_Return);
        QTRY_COMPARE_WITH_TIMEOUT(extracted.size(), 1, 60000);
        const QString message = dialog->message();
        QVERIFY2(message.contains("result.csv: it was written, but is not what was recorded"),
                 qPrintable(message));
        // ... and so is the summary of the oldest step.
        QCOMPARE(message.count(QStringLiteral("⚠")), 2);
        QCOMPARE(contentOf(path("out/fin.inp")), contentOf(examples::original("fin.inp")));
        QVERIFY(contentOf(path("out/result.csv")) != contentOf(examples::original("result.csv")));
        QCOMPARE(contentOf(path("out/material.lorix.files/material.csv")),
                 contentOf(examples::original("material.csv")));
    }

    void compare()
    {
        openByDialog(examples::coolingFin());
        QSignalSpy shown(m_window->compare(), &ComparePage::shown);
        press(m_window.get(), Qt::Key_D, Qt::ControlModifier);
        chooseInDialog("documentDialog", examples::shorter());
        QTRY_VERIFY_WITH_TIMEOUT(!m_window->compare()->isBusy() && !shown.isEmpty(), 60000);
        QVERIFY2(m_window->compare()->summary().contains("1 are only on the left"),
                 qPrintable(m_window->compare()->summary()));
        QTreeWidget* const steps = m_window->compare()->steps();
        QCOMPARE(steps->topLevelItemCount(), 5);
        clickRow(steps, steps->model()->index(0, 0));
        QCOMPARE(steps->topLevelItem(0)->text(0), QString("Report"));
        QCOMPARE(steps->topLevelItem(0)->text(1), QString::fromUtf8("−  only on the left"));
        const QTreeWidget* const fields = m_window->compare()->fields();
        QVERIFY(fields->topLevelItemCount() > 5);
        QCOMPARE(fields->topLevelItem(0)->text(1), QString("Report"));
        QCOMPARE(fields->topLevelItem(0)->text(2), QString::fromUtf8("–"));
        click("nextMatch");
        QTRY_COMPARE_WITH_TIMEOUT(m_window->compare()->shownMatch(), 1, 60000);
    }

    void compareWithTheDamagedOne()
    {
        openByDialog(examples::damaged());
        QSignalSpy shown(m_window->compare(), &ComparePage::shown);
        clickTool("compare");
        chooseInDialog("documentDialog", examples::coolingFin());
        QTRY_VERIFY_WITH_TIMEOUT(!m_window->compare()->isBusy() && !shown.isEmpty(), 60000);
        QVERIFY2(m_window->compare()->summary().contains("4 steps are the same"),
                 qPrintable(m_window->compare()->summary()));
        QTreeWidget* const steps = m_window->compare()->steps();
        const auto mush = steps->findItems(QStringLiteral("Mush study"), Qt::MatchExactly, 0);
        QCOMPARE(mush.size(), 1);
        QCOMPARE(mush.first()->text(1), QString::fromUtf8("−  only on the left"));
        const auto mesh = steps->findItems(QStringLiteral("Mesh study"), Qt::MatchExactly, 2);
        QCOMPARE(mesh.size(), 1);
        clickRow(steps, steps->indexFromItem(mesh.first()));
        const QTreeWidgetItem* const title = m_window->compare()->fields()->topLevelItem(0);
        QCOMPARE(title->text(1), QString::fromUtf8("–"));
        QCOMPARE(title->text(2), QString("Mesh study"));
        QCOMPARE(title->text(3), QString("differs"));
    }
};

QTEST_MAIN(TestViewerActivities)
#include "tst_vieweractivities.moc"
