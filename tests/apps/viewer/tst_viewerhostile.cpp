// SPDX-License-Identifier: BSD-3-Clause
#include "apps/viewer/sampledocuments.h"
#include "apps/viewer/viewertest.h"

#include <apps/viewer/detailspanel.h>
#include <apps/viewer/extractdialog.h>
#include <apps/viewer/outlinemodel.h>
#include <apps/viewer/pictureview.h>
#include <apps/viewer/previewimage.h>
#include <apps/viewer/previewpane.h>
#include <apps/viewer/verdictbar.h>
#include <apps/viewer/words.h>

#include <support/containerbuilder.h>

#include <QBuffer>
#include <QDirIterator>
#include <QElapsedTimer>
#include <QImage>
#include <QLabel>
#include <QLineEdit>
#include <QPointer>
#include <QPushButton>
#include <QTextBrowser>
#include <QTreeView>
#include <QtTest>

#include <csignal>
#include <sys/resource.h>
#include <unistd.h>

using namespace lorix::viewer;

/// Documents and folders that mean no good, or have had bad luck.
class TestViewerHostile : public ViewerTest
{
    Q_OBJECT

    static QByteArray documentOf(const QList<FileSpec>& files, const QString& title = "step")
    {
        ContainerBuilder builder;
        builder.start();
        SectionSpec section(title);
        for (const FileSpec& file : files)
            section.file(file);
        builder.section(section);
        return builder.bytes();
    }

    /// Looks at everything, in every view.
    void lookAtAll()
    {
        for (int node = 0; node < m_window->history()->steps().size(); ++node) {
            const int files = static_cast<int>(m_window->history()->step(node).step.files.size());
            for (int file = -1; file < files; ++file) {
                m_window->setCurrent({node, file});
                QTRY_VERIFY_WITH_TIMEOUT(m_window->details()->preview()->kind() != "wait", 60000);
            }
        }
        clickTab(1);
        QVERIFY(!m_window->grab().isNull());
        clickTab(0);
        QVERIFY(!m_window->grab().isNull());
    }

    QString previewOf(const FileSpec& file)
    {
        open("preview.pdf", documentOf({file}));
        m_window->setCurrent({0, 0});
        PreviewPane* const preview = m_window->details()->preview();
        for (int i = 0; i < 600 && preview->kind() == "wait"; ++i)
            QTest::qWait(100);
        return preview->kind();
    }

    /// Extracts everything to a folder; the summary.
    QString extractAll(const QString& folder, const char* clashButton = nullptr)
    {
        trigger("extractAll");
        const QPointer<ExtractDialog> dialog = m_window->findChild<ExtractDialog*>();
        dialog->findChild<QLineEdit*>("extractFolder")->setText(folder);
        QSignalSpy extracted(dialog.data(), &ExtractDialog::extracted);
        if (dialog->findChild<QPushButton*>("extractStart")->isEnabled()) {
            click("extractStart");
            if (clashButton)
                click(clashButton);
            if (extracted.isEmpty())
                extracted.wait(60000);
        }
        const QString message = dialog->message();
        dialog->close();
        if (!QTest::qWaitFor([&] { return dialog.isNull(); }, 60000))
            qWarning("the dialog stays open");
        return message;
    }

    QByteArray content(const QString& name) const
    {
        QFile file(path(name));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(missing)");
    }

    /// Everything below the test's folder, with what links lead to.
    QStringList sandbox() const
    {
        QStringList names;
        QDirIterator it(m_folder->path(),
                        QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot,
                        QDirIterator::Subdirectories);
        while (it.hasNext())
            names.append(QDir(m_folder->path()).relativeFilePath(it.next()));
        names.sort();
        return names;
    }

private Q_SLOTS:
    void init() { makeWindow(); }
    void cleanup() { m_window.reset(); }

    void namesAreNeverTakenForHtml()
    {
        const QString evil = QStringLiteral("<b>bold</b><img src='file:///etc/passwd'>.txt");
        open("html.pdf", documentOf({FileSpec(evil, "text")}, "<h1>big</h1>"));
        m_window->setCurrent({0, 0});
        QTextBrowser* const page = m_window->details()->page();
        QVERIFY2(page->toPlainText().contains(evil), qPrintable(page->toPlainText()));
        QVERIFY(!page->toHtml().contains("<img"));
        m_window->setCurrent({0, -1});
        QVERIFY(page->toPlainText().contains("<h1>big</h1>"));
        const QModelIndex row = m_window->outline()->model()->index(0, 0);
        QCOMPARE(row.data().toString(), QString("<h1>big</h1>"));
        const QString tip = row.data(Qt::ToolTipRole).toString();
        QVERIFY2(!tip.contains("<h1>") && tip.contains("&lt;h1&gt;"), qPrintable(tip));
        trigger("extractAll");
        for (const QLabel* const label : m_window->findChildren<QLabel*>())
            QVERIFY2(label->textFormat() == Qt::PlainText || !Qt::mightBeRichText(label->text()),
                     qPrintable(label->text()));
        m_window->findChild<ExtractDialog*>()->close();
        lookAtAll();
    }

    void controlCharactersAreShownAsSuch()
    {
        const QString evil = QString::fromUtf8("a\x1b[31m\r\tb\xe2\x80\xae"
                                               "fdp.exe");
        open("control.pdf", documentOf({FileSpec(evil, "text")}, evil));
        const QString name = m_window->history()->fileName({0, 0});
        for (const QChar letter : name)
            QVERIFY2(letter.isPrint(), qPrintable(name));
        for (const QChar letter : m_window->history()->step(0).title)
            QVERIFY(letter.isPrint());
        lookAtAll();
    }

    void veryLongNamesAreCut()
    {
        const QString longName = QString(3000000, 'w');
        FileSpec file(longName, "text");
        file.desc = longName;
        open("long.pdf", documentOf({file, FileSpec("b", "text")}, longName));
        QVERIFY(m_window->history());
        QVERIFY(m_window->history()->step(0).title.size() < 400);
        QVERIFY(m_window->history()->fileName({0, 0}).size() < 400);
        lookAtAll();
        QVERIFY(m_window->details()->page()->toPlainText().size() < 100000);
    }

    void damageAnywhereIsEndured_data()
    {
        QTest::addColumn<int>("seed");
        for (int seed = 1; seed <= 12; ++seed)
            QTest::newRow(qPrintable(QString::number(seed))) << seed;
    }

    void damageAnywhereIsEndured()
    {
        QFETCH(int, seed);
        QByteArray bytes = samples::report();
        QRandomGenerator random(static_cast<quint32>(seed));
        for (int i = 0; i < 40; ++i)
            bytes[random.bounded(static_cast<int>(bytes.size()))] =
                static_cast<char>(random.bounded(256));
        if (seed % 3 == 0)
            bytes.truncate(random.bounded(static_cast<int>(bytes.size())));
        open("damaged.pdf", bytes);
        if (!m_window->history())
            return;
        lookAtAll();
        QSignalSpy finished(m_window->checker(), &Checker::finished);
        click("checkButton");
        QTRY_COMPARE_WITH_TIMEOUT(finished.size(), 1, 60000);
        QVERIFY2(!m_window->verdict()->text().startsWith("Valid"),
                 qPrintable(m_window->verdict()->text()));
        lookAtAll();
        QVERIFY(!extractAll(path("out")).isEmpty());
        for (const QString& name : sandbox())
            QVERIFY2(!name.endsWith(".part"), qPrintable(name));
    }

    void largeTextsAreCutForThePreview()
    {
        QByteArray lines;
        while (lines.size() < 3000000)
            lines += "one line of many\n";
        QCOMPARE(previewOf(FileSpec("lines.txt", lines)), QString("text"));
        QVERIFY(m_window->details()->preview()->text().size() < 300000);
        QVERIFY(m_window->details()->preview()->text().contains("only the beginning"));
        QCOMPARE(previewOf(FileSpec("line.txt", QByteArray(3000000, 'x'))), QString("text"));
        QVERIFY(m_window->details()->preview()->text().size() < 20000);
        QCOMPARE(previewOf(FileSpec("huge.txt", QByteArray(PreviewPane::largest + 1, 'x'))),
                 QString("note"));
    }

    void textsOfOlderProgramsAreRead()
    {
        QCOMPARE(previewOf(FileSpec("latin.txt", "W\xe4rme\n")), QString("text"));
        QCOMPARE(m_window->details()->preview()->text(), QString::fromUtf8("Wärme\n"));
        QCOMPARE(previewOf(FileSpec("empty.txt", "")), QString("note"));
        QCOMPARE(previewOf(FileSpec("bytes.bin", QByteArray(3000, '\0'))), QString("note"));
    }

    void imagesThatExplodeAreRefused()
    {
        // 30 000 by 30 000 black points take a few kilobytes and 3.6 GB.
        QImage image(30000, 30000, QImage::Format_Mono);
        QVERIFY(!image.isNull());
        image.fill(0);
        QByteArray bytes;
        QBuffer buffer(&bytes);
        buffer.open(QIODevice::WriteOnly);
        QVERIFY(image.save(&buffer, "PNG"));
        image = QImage();
        const QImage small = previewImage(bytes, [] { return false; });
        QVERIFY(small.isNull() || std::max(small.width(), small.height()) <= 1600);
        // The same, said to be in full colour.
        bytes[24] = 8;
        bytes[25] = 6;
        QVERIFY(previewImage(bytes, [] { return false; }).isNull());
    }

    void drawingsThatNeverEndAreRefused()
    {
        const auto look = [](const QByteArray& svg) {
            return !previewImage("<svg xmlns='http://www.w3.org/2000/svg' width='100' "
                                 "height='100' xmlns:xlink='http://www.w3.org/1999/xlink'>" +
                                     svg + "</svg>",
                                 [] { return false; })
                        .isNull();
        };
        QVERIFY(look("<rect width='50' height='50'/>"));
        QByteArray uses = "<g id='a0'><rect width='5' height='5'/></g>";
        for (int i = 1; i < 30; ++i)
            uses +=
                "<g id='a" + QByteArray::number(i) + "'>" +
                QByteArray("<use xlink:href='#a" + QByteArray::number(i - 1) + "'/>").repeated(9) +
                "</g>";
        QVERIFY(!look(uses));
        QVERIFY(!look(QByteArray("<g>").repeated(200000) + QByteArray("</g>").repeated(200000)));
    }

    void pageOfAnySizeIsDrawnSmall()
    {
        if (!canShowPdf())
            QSKIP("built without a PDF library");
        QByteArray pdf = "%PDF-1.4\n1 0 obj\n<</Type/Catalog/Pages 2 0 R>>\nendobj\n2 0 obj\n"
                         "<</Type/Pages/Kids[3 0 R]/Count 1>>\nendobj\n3 0 obj\n<</Type/Page"
                         "/Parent 2 0 R/MediaBox[0 0 900000 14]>>\nendobj\n"
                         "trailer\n<</Root 1 0 R>>\n%%EOF\n";
        const QImage page = previewImage(pdf, [] { return false; });
        QVERIFY(page.isNull() || std::max(page.width(), page.height()) <= 1700);
        QVERIFY(previewImage(pdf.left(60), [] { return false; }).isNull());
    }

    void streamThatExplodesDoesNotFillTheDisk()
    {
        FileSpec bomb("bomb.txt", QByteArray(40000000, '\0'));
        bomb.flate(9);
        bomb.set("filesize", "100");
        open("bomb.pdf", documentOf({bomb}));
        const QString message = extractAll(path("out"));
        QVERIFY2(message.startsWith("0 of 1"), qPrintable(message));
        QVERIFY(sandbox().filter(".part").isEmpty());
        QVERIFY(sandbox().filter("bomb.txt").isEmpty());
    }

    void linksInTheFolderAreNotFollowed()
    {
        QVERIFY(QDir().mkpath(path("out")) && QDir().mkpath(path("elsewhere")));
        samples::write(path("elsewhere/mine.txt"), "mine");
        QVERIFY(QFile::link(path("elsewhere/mine.txt"), path("out/a.txt")));
        QVERIFY(QFile::link(path("elsewhere/new.txt"), path("out/b.txt"))); // leads nowhere
        QVERIFY(QFile::link(path("elsewhere"), path("out/sub")));
        open("links.pdf", documentOf({FileSpec("a.txt", "theirs"), FileSpec("b.txt", "theirs"),
                                      FileSpec("sub/c.txt", "theirs")}));
        const QString message = extractAll(path("out"), "clashReplace");
        QVERIFY2(message.startsWith("2 of 3"), qPrintable(message));
        QVERIFY2(message.contains("nothing is written through links"), qPrintable(message));
        QCOMPARE(content("elsewhere/mine.txt"), QByteArray("mine"));
        QCOMPARE(QDir(path("elsewhere")).entryList(QDir::AllEntries | QDir::NoDotAndDotDot),
                 QStringList({"mine.txt"}));
        QCOMPARE(content("out/a.txt"), QByteArray("theirs"));
        QVERIFY(!QFileInfo(path("out/a.txt")).isSymLink());
    }

    void fullDiskIsToldAndLeavesNothingBehind()
    {
        open("big.pdf", documentOf({FileSpec("small.txt", "small"),
                                    FileSpec("big.bin", QByteArray(3000000, 'x'))}));
        // A bound on the size of files stops a write as a full disk does.
        rlimit before{};
        QCOMPARE(::getrlimit(RLIMIT_FSIZE, &before), 0);
        rlimit full = before;
        full.rlim_cur = 1000000;
        const auto oldHandler = std::signal(SIGXFSZ, SIG_IGN);
        QCOMPARE(::setrlimit(RLIMIT_FSIZE, &full), 0);
        const QString message = extractAll(path("out"));
        QCOMPARE(::setrlimit(RLIMIT_FSIZE, &before), 0);
        std::signal(SIGXFSZ, oldHandler);
        QVERIFY2(message.startsWith("1 of 2"), qPrintable(message));
        QVERIFY2(message.contains("big.bin: it cannot be written") && message.contains("Make room"),
                 qPrintable(message));
        QCOMPARE(
            QDir(path("out")).entryList(QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden),
            QStringList({"small.txt"}));
    }

    void documentCutShortWhileItIsOpenIsEndured()
    {
        FileSpec big("big.bin", QByteArray(2000000, 'x'));
        open("cut.pdf", documentOf({big, FileSpec("b.txt", "text")}));
        QFile file(path("cut.pdf"));
        QVERIFY(file.resize(5000));
        lookAtAll();
        QVERIFY(extractAll(path("out")).contains("0 of 2"));
        QCOMPARE(QDir(path("out")).entryList(QDir::Files | QDir::Hidden), QStringList());
        m_window->findChild<QAction*>("check")->trigger();
        QTRY_VERIFY_WITH_TIMEOUT(!m_window->checker()->isRunning(), 60000);
        QVERIFY(!m_window->verdict()->text().startsWith("Valid"));
    }

    void foldersThatCannotBeWrittenToAreTold()
    {
        open("report.pdf", samples::report());
        QVERIFY2(extractAll("/proc/nowhere").startsWith("0 of"), "no place to write");
        QVERIFY2(extractAll(path("report.pdf")).contains("the target folder is a file"),
                 "the document itself");
        QCOMPARE(content("report.pdf"), samples::report());
    }

    void clashesAreAskedAboutAndGivenUpByEscape()
    {
        open("report.pdf", samples::report());
        QVERIFY(QDir().mkpath(path("out")));
        samples::write(path("out/sketch.txt"), "mine");
        trigger("extractAll");
        auto* const dialog = m_window->findChild<ExtractDialog*>();
        dialog->findChild<QLineEdit*>("extractFolder")->setText(path("out"));
        click("extractStart");
        press(dialog, Qt::Key_Escape);
        QTRY_VERIFY(!m_window->findChild<ExtractDialog*>());
        QCOMPARE(content("out/sketch.txt"), QByteArray("mine"));
        QCOMPARE(QDir(path("out")).entryList(QDir::Files | QDir::Hidden),
                 QStringList({"sketch.txt"}));
    }

    void packedFileWithoutFingerprintIsExtractedToo()
    {
        FileSpec file("packed.txt", QByteArray(50000, 'p'));
        file.flate();
        file.set("md5cfile", "");
        open("packed.pdf", documentOf({file}));
        const QString message = extractAll(path("out"));
        QVERIFY2(message.startsWith("1 of 1") && !message.contains("⚠"), qPrintable(message));
        QCOMPARE(content("out/packed.txt"), QByteArray(50000, 'p'));
    }
};

QTEST_MAIN(TestViewerHostile)
#include "tst_viewerhostile.moc"
