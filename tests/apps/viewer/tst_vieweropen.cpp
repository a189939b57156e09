// SPDX-License-Identifier: BSD-3-Clause
#include "apps/viewer/sampledocuments.h"
#include "apps/viewer/viewertest.h"

#include <apps/viewer/busybar.h>
#include <apps/viewer/detailspanel.h>
#include <apps/viewer/logpane.h>
#include <apps/viewer/outlinemodel.h>
#include <apps/viewer/pictureview.h>
#include <apps/viewer/previewimage.h>
#include <apps/viewer/previewpane.h>
#include <apps/viewer/settings.h>
#include <apps/viewer/verdictbar.h>
#include <apps/viewer/welcomepage.h>

#include <QAction>
#include <QElapsedTimer>
#include <QFile>
#include <QFileDialog>
#include <QHeaderView>
#include <QListWidget>
#include <QMenu>
#include <QMessageBox>
#include <QMimeData>
#include <QPointer>
#include <QPushButton>
#include <QTextBrowser>
#include <QTreeView>
#include <QtTest>

using namespace lorix::viewer;

/// Opening a document and looking at its history, as a person does it.
class TestViewerOpen : public ViewerTest
{
    Q_OBJECT

private Q_SLOTS:
    void init() { makeWindow(); }
    void cleanup() { m_window.reset(); }

    void welcomesWithoutDocument()
    {
        QVERIFY(m_window->welcome()->isVisible());
        QVERIFY(m_window->welcome()->problem().isEmpty());
        for (const char* name : {"check", "compare", "close", "fit"})
            QVERIFY2(!m_window->findChild<QAction*>(QLatin1String(name))->isEnabled(), name);
    }

    void showsStepsNewestFirst()
    {
        open("report.pdf", samples::report());
        const History& history = *m_window->history();
        QStringList titles;
        for (const int node : history.containers().first().nodes)
            titles.append(history.step(node).title);
        QCOMPARE(titles, QStringList({"Write the report", "Compute the temperatures",
                                      "Mesh the fin", "Draw the fin"}));
        QCOMPARE(history.containers().size(), 2);
        QCOMPARE(history.containers().at(1).name, QString("material.lorix"));
        QCOMPARE(history.containers().at(1).embedding,
                 placeOf("Compute the temperatures", "material.lorix"));
        QVERIFY(m_window->windowTitle().contains("report.pdf"));
    }

    void stepsInThePictureDoNotOverlap()
    {
        open("report.pdf", samples::report());
        const int count = static_cast<int>(m_window->history()->steps().size());
        for (int a = 0; a < count; ++a)
            for (int b = a + 1; b < count; ++b)
                QVERIFY(!m_window->picture()->boxOnScreen(a).intersects(
                    m_window->picture()->boxOnScreen(b)));
    }

    void clickOnBoxShowsTheStep()
    {
        open("report.pdf", samples::report());
        const Place place = placeOf("Mesh the fin");
        m_window->picture()->fit();
        const QRect box = m_window->picture()->boxOnScreen(place.node);
        QTest::mouseClick(m_window->picture()->viewport(), Qt::LeftButton, Qt::NoModifier,
                          QPoint(box.center().x(), box.top() + 6));
        QCOMPARE(m_window->current(), place);
        const QString page = m_window->details()->page()->toPlainText();
        for (const char* text : {"Mesh the fin", "12 000 triangles.", "anna", "mesher",
                                 "workstation-7", "2026-03-01 11:05:00", "fin.dxf", "fin.mesh",
                                 "Inputs (1)", "Outputs (1)", "ambient", "293.15 K"})
            QVERIFY2(page.contains(QLatin1String(text)), text);
        QVERIFY(!page.contains("ws_summary.xml"));
    }

    void arrowKeysWalkThroughThePicture()
    {
        open("report.pdf", samples::report());
        PictureView* const picture = m_window->picture();
        picture->setFocus();
        press(picture, Qt::Key_Down);
        QCOMPARE(m_window->current(), placeOf("Write the report"));
        press(picture, Qt::Key_Down);
        QCOMPARE(m_window->current(), placeOf("Compute the temperatures"));
        press(picture, Qt::Key_Right);
        QCOMPARE(m_window->current(), placeOf("Fit the conductivity"));
        press(picture, Qt::Key_Left);
        press(picture, Qt::Key_Return);
        QCOMPARE(m_window->current(), placeOf("Compute the temperatures", "fin.mesh"));
        press(picture, Qt::Key_End);
        QCOMPARE(m_window->current(), placeOf("Draw the fin"));
        press(picture, Qt::Key_Up);
        QCOMPARE(m_window->current(), placeOf("Mesh the fin"));
    }

    void keysZoomThePicture()
    {
        open("report.pdf", samples::report());
        PictureView* const picture = m_window->picture();
        const double before = picture->transform().m11();
        press(picture, Qt::Key_Plus);
        QVERIFY(picture->transform().m11() > before);
        press(picture, Qt::Key_Minus);
        press(picture, Qt::Key_Minus);
        QVERIFY(picture->transform().m11() < before);
    }

    void outlineNestsHistoriesBelowTheirFiles()
    {
        open("report.pdf", samples::report());
        const QAbstractItemModel& model = *m_window->outline()->model();
        QCOMPARE(model.rowCount(), 4);
        const QModelIndex step = model.index(1, 0);
        QCOMPARE(step.data().toString(), QString("Compute the temperatures"));
        const QModelIndex file = model.index(2, 0, step);
        QCOMPARE(file.data().toString(), QString("material.lorix"));
        QCOMPARE(model.rowCount(file), 2);
        QCOMPARE(model.index(1, 0, file).data().toString(), QString("Measure the samples"));
        QCOMPARE(model.index(2, OutlineModel::What, step).data().toString(), QString("Input"));
        QCOMPARE(model.index(2, OutlineModel::State, step).data().toString(),
                 QString("not checked"));
    }

    void outlineAndPictureSelectTheSame()
    {
        open("report.pdf", samples::report());
        trigger("showMessages");
        QTest::keyClick(m_window.get(), Qt::Key_2, Qt::ControlModifier);
        QTreeView* const outline = m_window->outline();
        QTRY_VERIFY(outline->isVisible());
        outline->setCurrentIndex(outline->model()->index(0, 0));
        press(outline, Qt::Key_Down);
        QCOMPARE(m_window->current(), placeOf("Write the report", "map.png"));
        QCOMPARE(m_window->picture()->current(), m_window->current());
    }

    void linkOnThePageLeadsToTheFile()
    {
        open("report.pdf", samples::report());
        m_window->setCurrent(placeOf("Mesh the fin"));
        const Place file = placeOf("Mesh the fin", "fin.mesh");
        Q_EMIT m_window->details()->page()->anchorClicked(
            QUrl(QStringLiteral("place:%1:%2").arg(file.node).arg(file.file)));
        QCOMPARE(m_window->current(), file);
        const QString page = m_window->details()->page()->toPlainText();
        QVERIFY(page.contains("Output"));
        QVERIFY(page.contains("58.6 KiB"));
        QVERIFY(page.contains(m_window->history()->file(file).uncompressedMD5));
    }

    void previewsTextImagesAndPdf()
    {
        open("report.pdf", samples::report());
        PreviewPane* const preview = m_window->details()->preview();
        m_window->setCurrent(placeOf("Compute the temperatures", "temperatures.csv"));
        QCOMPARE(preview->kind(), QString("text"));
        QVERIFY(preview->text().startsWith("x;y;temperature"));
        m_window->setCurrent(placeOf("Compute the temperatures", "map.png"));
        QTRY_COMPARE(preview->kind(), QString("image"));
        QCOMPARE(preview->image().size(), QSize(320, 200));
        m_window->setCurrent(placeOf("Write the report", "draft.pdf"));
        if (!canShowPdf())
            QSKIP("built without a PDF library");
        QTRY_COMPARE(preview->kind(), QString("image"));
        QVERIFY(preview->image().height() > preview->image().width());
    }

    void saysWhatToDoWithFilesThatCannotBeOpened_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<QString>("words");
        QTest::newRow("no history") << QByteArray("%PDF-1.4\nplain\n") << "Ask the sender";
        QTest::newRow("empty") << QByteArray("") << "carries no history";
        QTest::newRow("missing") << QByteArray() << "no such file";
    }

    void saysWhatToDoWithFilesThatCannotBeOpened()
    {
        QFETCH(QByteArray, bytes);
        QFETCH(QString, words);
        const QString file = path("other.pdf");
        if (!bytes.isNull())
            samples::write(file, bytes);
        open(file);
        QVERIFY(!m_window->history());
        QVERIFY(m_window->welcome()->isVisible());
        QVERIFY2(m_window->welcome()->problem().contains(words),
                 qPrintable(m_window->welcome()->problem()));
        QVERIFY(m_window->logPane()->text().contains("Error: "));
    }

    void openingCanBeStopped()
    {
        const QString file = samples::write(path("large.pdf"), samples::large(400, 20));
        QSignalSpy shown(m_window.get(), &MainWindow::documentShown);
        QSignalSpy failed(m_window.get(), &MainWindow::documentFailed);
        m_window->openDocument(file);
        QVERIFY(m_window->findChild<BusyBar*>()->isVisible());
        auto* const stop = m_window->findChild<QPushButton*>("stopButton");
        QTest::mouseClick(stop, Qt::LeftButton); // before anything can have come of it
        QVERIFY(!m_window->findChild<BusyBar*>()->isVisible());
        // What is opened next is what is shown, and nothing else is.
        open("report.pdf", samples::report());
        QVERIFY(m_window->windowTitle().contains("report.pdf"));
        m_window->openDocument(file);
        m_window->openDocument(path("report.pdf")); // in place of the other
        QTRY_COMPARE_WITH_TIMEOUT(shown.size(), 2, 60000);
        QCOMPARE(m_window->history()->path(), path("report.pdf"));
        QCOMPARE(failed.size(), 0);
        QCOMPARE(Settings::recentFiles(), QStringList({path("report.pdf")}));
    }

    void closingTheWindowWhileOpeningIsHarmless()
    {
        m_window->openDocument(samples::write(path("large.pdf"), samples::large(400, 20)));
        m_window.reset();
    }

    void tellsHowFarOpeningIs()
    {
        const QString file = samples::write(path("large.pdf"), samples::large(3000, 2));
        HistoryLoader loader(nullptr);
        QSignalSpy progress(&loader, &HistoryLoader::progress);
        QSignalSpy loaded(&loader, &HistoryLoader::loaded);
        loader.start(file);
        QTRY_COMPARE_WITH_TIMEOUT(loaded.size(), 1, 60000);
        for (const QList<QVariant>& told : progress)
            QVERIFY(told.first().toInt() >= 0 && told.first().toInt() <= 3000);
    }

    void whatIsOpenStaysOpenWhenAnotherCannotBeOpened()
    {
        open("report.pdf", samples::report());
        open("plain.pdf", "%PDF-1.4\nplain\n");
        QVERIFY(m_window->history());
        QVERIFY(m_window->picture()->isVisible());
        auto* const box = m_window->findChild<QMessageBox*>();
        QVERIFY(box && box->isVisible());
        QVERIFY2(box->text().contains("Ask the sender"), qPrintable(box->text()));
        press(box, Qt::Key_Return);
        QVERIFY(m_window->windowTitle().contains("report.pdf"));
    }

    void dialogGivenUpOpensNothing()
    {
        press(m_window.get(), Qt::Key_O, Qt::ControlModifier);
        QPointer<QFileDialog> dialog = m_window->findChild<QFileDialog*>("documentDialog");
        QVERIFY(dialog && dialog->isVisible());
        press(dialog, Qt::Key_Escape);
        QTRY_VERIFY(dialog.isNull());
        QVERIFY(m_window->welcome()->isVisible());
    }

    void refusesToTakeWhatIsNoFile()
    {
        QMimeData several;
        several.setUrls({QUrl::fromLocalFile(path("a.pdf")), QUrl::fromLocalFile(path("b.pdf"))});
        QMimeData text;
        text.setText("report.pdf");
        QMimeData remote;
        remote.setUrls({QUrl("https://example.org/report.pdf")});
        for (QMimeData* const data : {&several, &text, &remote}) {
            QDragEnterEvent enter(QPoint(50, 50), Qt::CopyAction, data, Qt::LeftButton,
                                  Qt::NoModifier);
            QCoreApplication::sendEvent(m_window.get(), &enter);
            QVERIFY(!enter.isAccepted());
        }
    }

    void tellsThatTheDocumentHasChangedOnDisk()
    {
        open("report.pdf", samples::report());
        QSignalSpy finished(m_window->checker(), &Checker::finished);
        click("checkButton");
        QTRY_COMPARE_WITH_TIMEOUT(finished.size(), 1, 60000);
        samples::write(path("report.pdf"), samples::otherReport());
        QTRY_VERIFY(m_window->verdict()->text().startsWith("The document was changed on disk"));
        QVERIFY(!m_window->checker()->results().isComplete());
        QSignalSpy shown(m_window.get(), &MainWindow::documentShown);
        click("checkButton"); // it reads "Open again" now
        QTRY_COMPARE_WITH_TIMEOUT(shown.size(), 1, 60000);
        QVERIFY(m_window->verdict()->text().startsWith("Not checked yet"));
        QCOMPARE(m_window->history()->step(0).title, QString("Review"));
    }

    void tellsThatTheDocumentIsGone()
    {
        open("report.pdf", samples::report());
        QVERIFY(QFile::remove(path("report.pdf")));
        QTRY_VERIFY(m_window->verdict()->text().startsWith("The document is not where it was"));
        for (int node = 0; node < m_window->history()->steps().size(); ++node)
            m_window->setCurrent({node, 0});
        press(m_window.get(), Qt::Key_F5);
        QSignalSpy failed(m_window.get(), &MainWindow::documentFailed);
        QTRY_COMPARE_WITH_TIMEOUT(failed.size(), 1, 60000);
        QVERIFY(m_window->history());
    }

    void opensWhatIsDropped()
    {
        const QString file = samples::write(path("dropped.pdf"), samples::report());
        QMimeData data;
        data.setUrls({QUrl::fromLocalFile(file)});
        QSignalSpy shown(m_window.get(), &MainWindow::documentShown);
        QDragEnterEvent enter(QPoint(50, 50), Qt::CopyAction, &data, Qt::LeftButton,
                              Qt::NoModifier);
        QCoreApplication::sendEvent(m_window.get(), &enter);
        QVERIFY(enter.isAccepted());
        QDropEvent drop(QPointF(50, 50), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(m_window.get(), &drop);
        QTRY_COMPARE(shown.size(), 1);
        QCOMPARE(m_window->history()->path(), file);
    }

    void remembersWhatWasOpened()
    {
        open("one.pdf", samples::report());
        open("two.pdf", samples::report());
        QCOMPARE(Settings::recentFiles(), QStringList({path("two.pdf"), path("one.pdf")}));
        trigger("close");
        QVERIFY(m_window->welcome()->isVisible());
        auto* const list = m_window->welcome()->findChild<QListWidget*>();
        QCOMPARE(list->count(), 2);
        QSignalSpy shown(m_window.get(), &MainWindow::documentShown);
        list->setFocus();
        press(list, Qt::Key_Down);
        QCOMPARE(list->currentRow(), 1);
        press(list, Qt::Key_Return);
        QTRY_COMPARE(shown.size(), 1);
        QVERIFY(m_window->history()->path().endsWith("one.pdf"));
    }

    void opensWhatTheMenuOfRecentFilesHas()
    {
        open("one & two.pdf", samples::report());
        trigger("close");
        QMenu* const menu = m_window->findChild<QMenu*>("recentMenu");
        QVERIFY(menu->isEnabled());
        QCOMPARE(menu->actions().size(), 1);
        QSignalSpy shown(m_window.get(), &MainWindow::documentShown);
        menu->popup(m_window->mapToGlobal(QPoint(20, 20)));
        press(menu, Qt::Key_Down);
        press(menu, Qt::Key_Return);
        QTRY_COMPARE(shown.size(), 1);
        QVERIFY(m_window->history()->path().endsWith("one & two.pdf"));
    }

    void recentFilesThatAreGoneAreForgotten()
    {
        open("one.pdf", samples::report());
        trigger("close");
        QVERIFY(QFile::remove(path("one.pdf")));
        QSignalSpy failed(m_window.get(), &MainWindow::documentFailed);
        auto* const list = m_window->welcome()->findChild<QListWidget*>();
        list->setFocus();
        press(list, Qt::Key_Return);
        QTRY_COMPARE(failed.size(), 1);
        QVERIFY(m_window->welcome()->problem().contains("no such file"));
        QVERIFY(Settings::recentFiles().isEmpty());
    }

    void remembersTheWindowAndTheColumns()
    {
        open("report.pdf", samples::report());
        clickTab(1);
        m_window->outline()->header()->resizeSection(OutlineModel::Name, 217);
        m_window->resize(901, 533);
        m_window->close();
        MainWindow second;
        QCOMPARE(second.size(), QSize(901, 533));
        QCOMPARE(second.outline()->header()->sectionSize(OutlineModel::Name), 217);
    }

    void survivesHostileNames()
    {
        QByteArray bytes = samples::report();
        bytes.replace("[title:Mesh the fin]", "[title:Mesh \x1b[31m<b>]");
        open("hostile.pdf", bytes);
        QVERIFY(m_window->history());
        for (int node = 0; node < m_window->history()->steps().size(); ++node)
            m_window->setCurrent({node, -1});
    }

    void drawsOnlyWhatIsVisible()
    {
        open("large.pdf", samples::large(300, 3));
        QCOMPARE(m_window->history()->steps().size(), 300);
        const auto visible = m_window->picture()->items(m_window->picture()->viewport()->rect());
        QVERIFY(visible.size() > 2);
        QVERIFY2(visible.size() < 60, qPrintable(QString::number(visible.size())));
        press(m_window->picture(), Qt::Key_End);
        QCOMPARE(m_window->current(), placeOf("Step 1"));
    }

    // Records, for whoever looks at the log; machines differ too much to assert.
    void recordsTheTimeToTheFirstPicture()
    {
        bool given = false;
        const int steps = qEnvironmentVariableIntValue("LORIX_VIEWER_STEPS", &given);
        const QString file =
            samples::write(path("large.pdf"), samples::large(given ? steps : 100, 20));
        QElapsedTimer timer;
        timer.start();
        open(file);
        const qint64 opened = timer.elapsed();
        QVERIFY(!m_window->picture()->grab().isNull());
        const qint64 drawn = timer.restart();
        m_window->picture()->zoomOut();
        QVERIFY(!m_window->picture()->grab().isNull());
        qInfo("opened in %lld ms, first picture after %lld ms, zoomed and drawn in %lld ms", opened,
              drawn, timer.restart());
        QCOMPARE(m_window->history()->steps().size(), given ? steps : 100);
    }

    void everyActionHasANameAndEveryViewToo()
    {
        open("report.pdf", samples::report());
        const QList<QWidget*> views{m_window->picture(), m_window->outline(),
                                    m_window->details()->page()};
        for (const QWidget* const view : views)
            QVERIFY(!view->accessibleName().isEmpty());
        for (const QAction* const action : m_window->findChildren<QAction*>())
            if (!action->isSeparator() && !action->objectName().isEmpty())
                QVERIFY2(!action->text().isEmpty(), qPrintable(action->objectName()));
    }
};

QTEST_MAIN(TestViewerOpen)
#include "tst_vieweropen.moc"
