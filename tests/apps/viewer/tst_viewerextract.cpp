// SPDX-License-Identifier: BSD-3-Clause
#include "apps/viewer/sampledocuments.h"
#include "apps/viewer/viewertest.h"

#include <apps/viewer/extractdialog.h>
#include <apps/viewer/logpane.h>
#include <apps/viewer/outlinemodel.h>
#include <apps/viewer/pictureview.h>

#include <QCheckBox>
#include <QDirIterator>
#include <QLineEdit>
#include <QMimeData>
#include <QPushButton>
#include <QTreeView>
#include <QWindow>
#include <QtTest>

using namespace lorix::viewer;

/// Getting files out of a document.
class TestViewerExtract : public ViewerTest
{
    Q_OBJECT

    ExtractDialog* dialog() const { return m_window->findChild<ExtractDialog*>(); }

    /// Types the folder as a person would, and presses the button.
    void extractTo(const QString& folder)
    {
        QVERIFY(dialog());
        auto* const line = dialog()->findChild<QLineEdit*>("extractFolder");
        line->selectAll();
        QTest::keyClicks(line, folder);
        QTest::mouseClick(dialog()->findChild<QPushButton*>("extractStart"), Qt::LeftButton);
    }

    QString wait(QSignalSpy& extracted)
    {
        if (extracted.isEmpty())
            extracted.wait(60000);
        return extracted.isEmpty() ? QString() : extracted.first().first().toString();
    }

    /// Everything below the test's folder but the settings and the document.
    QStringList sandbox() const
    {
        QStringList files;
        QDirIterator it(m_folder->path(), QDir::Files | QDir::Hidden | QDir::System,
                        QDirIterator::Subdirectories);
        while (it.hasNext()) {
            const QString name = QDir(m_folder->path()).relativeFilePath(it.next());
            if ((!name.endsWith(".pdf") || name.contains(QLatin1Char('/'))) &&
                !name.endsWith(".ini") && !name.endsWith(".conf"))
                files.append(name);
        }
        files.sort();
        return files;
    }

    QByteArray content(const QString& name) const
    {
        QFile file(path(name));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(missing)");
    }

    /// Where a file's line stands in the picture, found by clicking down the box of its step.
    QPoint lineOf(const Place& place)
    {
        m_window->setCurrent({place.node, -1});
        PictureView* const picture = m_window->picture();
        // A click may scroll what it chooses into view.
        for (int y = 0; y < picture->boxOnScreen(place.node).height(); y += 3) {
            const QRect box = picture->boxOnScreen(place.node);
            QTest::mouseClick(picture->viewport(), Qt::LeftButton, {},
                              QPoint(box.center().x(), box.top() + y));
            const QPoint above = picture->boxOnScreen(place.node).topLeft() - box.topLeft();
            if (m_window->current() == place)
                return QPoint(box.center().x(), box.top() + y + 2) + above;
        }
        return {};
    }

    /// Presses the mouse there and moves it to the right.
    void pull(const QPoint& where, int pixels)
    {
        QWindow* const window = m_window->windowHandle();
        const QPoint start = m_window->picture()->viewport()->mapTo(m_window.get(), where);
        QTest::mousePress(window, Qt::LeftButton, Qt::NoModifier, start);
        QTest::mouseMove(window, start + QPoint(pixels, 0));
        QTest::mouseRelease(window, Qt::LeftButton, Qt::NoModifier, start + QPoint(pixels, 0));
    }

private Q_SLOTS:
    void init() { makeWindow(); }
    void cleanup() { m_window.reset(); }

    void extractsTheSelectedFile()
    {
        open("report.pdf", samples::report());
        m_window->setCurrent(placeOf("Measure the samples", "readings.csv"));
        click("extractThisFile");
        QSignalSpy extracted(dialog(), &ExtractDialog::extracted);
        extractTo(path("out"));
        QVERIFY(wait(extracted).startsWith("1 of 1 files were extracted"));
        QCOMPARE(sandbox(), QStringList({"out/material.lorix.files/readings.csv"}));
        QCOMPARE(content("out/material.lorix.files/readings.csv"),
                 QByteArray("A1;205\nA2;207\nA3;204\n"));
        QVERIFY(m_window->logPane()->text().contains("1 of 1 files"));
    }

    void extractsAllFilesOfAStep()
    {
        open("report.pdf", samples::report());
        m_window->setCurrent(placeOf("Draw the fin"));
        trigger("extractSelected");
        QSignalSpy extracted(dialog(), &ExtractDialog::extracted);
        extractTo(path("out"));
        QVERIFY(wait(extracted).startsWith("3 of 3"));
        QCOMPARE(sandbox(), QStringList({"out/fin.dxf", "out/sketch.txt", "out/ws_summary.xml"}));
    }

    void extractsEverythingWithNestedFiles()
    {
        open("report.pdf", samples::report());
        trigger("extractAll");
        QSignalSpy extracted(dialog(), &ExtractDialog::extracted);
        QTest::keyClick(dialog()->findChild<QCheckBox*>(), Qt::Key_Space);
        extractTo(path("out"));
        QVERIFY2(wait(extracted).startsWith("22 of 22"), qPrintable(dialog()->message()));
        const QStringList files = sandbox();
        QCOMPARE(files.size(), 22);
        QVERIFY(files.contains("out/temperatures.csv"));
        QVERIFY(files.contains("out/material.lorix"));
        QVERIFY(files.contains("out/material.lorix.files/conductivity.txt"));
    }

    void asksOnceAboutClashes_data()
    {
        QTest::addColumn<QString>("button");
        QTest::addColumn<QByteArray>("sketch");
        QTest::addColumn<QStringList>("files");
        const QStringList three{"out/fin.dxf", "out/sketch.txt", "out/ws_summary.xml"};
        QTest::newRow("skip") << "clashSkip" << QByteArray("mine") << three;
        QTest::newRow("replace") << "clashReplace" << QByteArray("20 mm x 60 mm\n") << three;
        QTest::newRow("keep both")
            << "clashKeepBoth" << QByteArray("mine")
            << QStringList({"out/fin (2).dxf", "out/fin.dxf", "out/sketch (2).txt",
                            "out/sketch.txt", "out/ws_summary.xml"});
    }

    void asksOnceAboutClashes()
    {
        QFETCH(QString, button);
        QFETCH(QByteArray, sketch);
        QFETCH(QStringList, files);
        open("report.pdf", samples::report());
        QVERIFY(QDir().mkpath(path("out")));
        samples::write(path("out/sketch.txt"), "mine");
        samples::write(path("out/fin.dxf"), "mine");
        m_window->setCurrent(placeOf("Draw the fin"));
        trigger("extractSelected");
        QSignalSpy extracted(dialog(), &ExtractDialog::extracted);
        extractTo(path("out"));
        QVERIFY2(dialog()->message().startsWith("2 of 3 files are in this folder already"),
                 qPrintable(dialog()->message()));
        QCOMPARE(content("out/sketch.txt"), QByteArray("mine"));
        click(qPrintable(button));
        QVERIFY(!wait(extracted).isEmpty());
        QCOMPARE(sandbox(), files);
        QCOMPARE(content("out/sketch.txt"), sketch);
    }

    void saysWhatIsDamaged()
    {
        open("damaged.pdf", samples::damagedReport());
        m_window->setCurrent(placeOf("Compute the temperatures"));
        trigger("extractSelected");
        QSignalSpy extracted(dialog(), &ExtractDialog::extracted);
        extractTo(path("out"));
        const QString message = wait(extracted);
        QVERIFY2(message.contains("temperatures.csv: "), qPrintable(message));
        QVERIFY(message.startsWith("5 of 6") || message.startsWith("6 of 6"));
        QVERIFY(sandbox().filter(".part").isEmpty());
        QVERIFY(sandbox().contains("out/map.png"));
    }

    void neverWritesOutsideTheFolder()
    {
        QByteArray bytes = samples::large(1, 3);
        bytes.replace("[filename:file-0-0.txt]", "[filename:../../up.txt]");
        bytes.replace("[filename:file-0-1.txt]", "[filename:/tmp/abs.txt]");
        open("hostile.pdf", bytes);
        trigger("extractAll");
        QSignalSpy extracted(dialog(), &ExtractDialog::extracted);
        extractTo(path("a/b"));
        QVERIFY(wait(extracted).startsWith("3 of 3"));
        QCOMPARE(sandbox().size(), 3);
        for (const QString& name : sandbox())
            QVERIFY2(name.startsWith("a/b/"), qPrintable(name));
    }

    void saysWhyAFolderCannotBeWrittenTo()
    {
        open("report.pdf", samples::report());
        samples::write(path("file.txt"), "a file, no folder");
        m_window->setCurrent(placeOf("Draw the fin", "sketch.txt"));
        trigger("extractSelected");
        QSignalSpy extracted(dialog(), &ExtractDialog::extracted);
        extractTo(path("file.txt"));
        const QString message = wait(extracted);
        QVERIFY2(message.startsWith("0 of 1") && message.contains("the target folder is a file"),
                 qPrintable(message));
    }

    void dragsAFileOut()
    {
        open("report.pdf", samples::report());
        const Place place = placeOf("Draw the fin", "sketch.txt");
        auto* const model = static_cast<OutlineModel*>(m_window->outline()->model());
        const QModelIndex index = model->indexOf(place);
        QVERIFY(index.flags() & Qt::ItemIsDragEnabled);
        const std::unique_ptr<QMimeData> data(model->mimeData({index}));
        QVERIFY(data);
        QCOMPARE(data->urls().size(), 1);
        QFile dragged(data->urls().first().toLocalFile());
        QVERIFY(dragged.open(QIODevice::ReadOnly));
        QCOMPARE(dragged.readAll(), QByteArray("20 mm x 60 mm\n"));
        QVERIFY(dragged.fileName().endsWith("/sketch.txt"));
        m_window.reset();
        QVERIFY2(!QFile::exists(dragged.fileName()), "it goes with the window");
    }

    void pullingAFileInThePictureDragsIt()
    {
        open("report.pdf", samples::report());
        const Place place = placeOf("Draw the fin", "sketch.txt");
        const QPoint line = lineOf(place);
        QVERIFY(!line.isNull());
        const QPoint head(line.x(), m_window->picture()->boxOnScreen(place.node).top() + 4);
        QSignalSpy dragged(m_window->picture(), &PictureView::dragRequested);
        const int distance = QApplication::startDragDistance();

        pull(line, distance - 1);
        QCOMPARE(dragged.size(), 0);
        pull(head, 2 * distance);
        QVERIFY2(dragged.isEmpty(), "a step is no file");
        pull(line, distance);
        QCOMPARE(dragged.size(), 1);
        QCOMPARE(dragged.first().first().value<Place>(), place);
    }
};

QTEST_MAIN(TestViewerExtract)
#include "tst_viewerextract.moc"
