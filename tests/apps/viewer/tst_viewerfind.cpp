// SPDX-License-Identifier: BSD-3-Clause
#include "apps/viewer/sampledocuments.h"
#include "apps/viewer/viewertest.h"

#include <apps/viewer/findpanel.h>
#include <apps/viewer/pictureview.h>
#include <apps/viewer/queryedit.h>

#include <lorix/query/lorixfindquery.h>

#include <QAbstractItemView>
#include <QCompleter>
#include <QMenu>
#include <QPushButton>
#include <QTreeWidget>
#include <QtTest>

using namespace lorix::viewer;

/// Asking a history questions.
class TestViewerFind : public ViewerTest
{
    Q_OBJECT

    QueryEdit* edit() const { return m_window->findPanel()->edit(); }

    /// Opens the panel as a person does, types, and presses Return.
    void ask(const QString& query)
    {
        trigger("find");
        edit()->clear();
        edit()->insertPlainText(query);
        press(edit(), Qt::Key_Return);
        QTRY_VERIFY_WITH_TIMEOUT(!m_window->findPanel()->isBusy(), 60000);
    }

    QStringList found() const
    {
        QStringList lines;
        const QTreeWidget* const list = m_window->findPanel()->list();
        for (int i = 0; i < list->topLevelItemCount(); ++i)
            lines.append(list->topLevelItem(i)->text(1) + "=" + list->topLevelItem(i)->text(0));
        lines.sort();
        return lines;
    }

private Q_SLOTS:
    void init()
    {
        makeWindow();
        open("report.pdf", samples::report());
    }
    void cleanup() { m_window.reset(); }

    void findsStepsAcrossNestedDocuments()
    {
        ask("s:tool == 'python'");
        QCOMPARE(found(), QStringList({"s=Compute the temperatures", "s=Fit the conductivity"}));
        QCOMPARE(m_window->findPanel()->message(), QString("2 matches."));
    }

    void listsEachFileThatMatches()
    {
        ask("f:filename %matches '*.csv'");
        QCOMPARE(found(), QStringList({"f=readings.csv", "f=readings.csv", "f=temperatures.csv"}));
    }

    void namesTheVariablesOfAMatch()
    {
        ask("s:title %contains 'Mesh' && f:isoutfile && f:parentid == s:tagid");
        QCOMPARE(found(), QStringList({"f=1.  fin.mesh", "s=1.  Mesh the fin"}));
    }

    void typingKeysAndReturnFinds()
    {
        QTest::keyClick(m_window.get(), Qt::Key_F, Qt::ControlModifier);
        QTRY_VERIFY(edit()->isVisible());
        QTest::keyClicks(edit(), "sketch");
        press(edit(), Qt::Key_Return);
        QTRY_VERIFY(!m_window->findPanel()->isBusy());
        QVERIFY(found().contains("found=sketch.txt"));
    }

    void choosingAMatchSelectsIt()
    {
        ask("f:filename == 'fit.py'");
        QTreeWidget* const list = m_window->findPanel()->list();
        list->setFocus();
        press(list, Qt::Key_Down);
        QCOMPARE(m_window->current(), placeOf("Fit the conductivity", "fit.py"));
    }

    void matchesChangeThePicture()
    {
        m_window->picture()->fit();
        const QImage before = m_window->picture()->grab().toImage();
        trigger("find");
        QTest::qWait(20);
        const QImage shown = m_window->picture()->grab().toImage();
        ask("s:tool == 'mesher'");
        QVERIFY(m_window->picture()->grab().toImage() != shown);
        QVERIFY(!before.isNull());
    }

    void underlinesMistakesWhileTyping()
    {
        trigger("find");
        QTest::keyClicks(edit(), "s:tool == ");
        QCOMPARE(edit()->errors().size(), 1);
        QVERIFY(m_window->findPanel()->message().contains("something must follow"));
        QVERIFY(!m_window->findPanel()->findChild<QPushButton*>("findButton")->isEnabled());
        edit()->setQuery("s:nosuch == 1");
        const auto marks = edit()->extraSelections();
        QCOMPARE(marks.size(), 1);
        QCOMPARE(marks.first().cursor.selectedText(), QString("s:nosuch"));
        QCOMPARE(marks.first().format.underlineStyle(), QTextCharFormat::WaveUnderline);
        QVERIFY(m_window->findPanel()->message().contains("There is no attribute “nosuch”"));
        edit()->setQuery("s:title == 1");
        QVERIFY(edit()->extraSelections().isEmpty());
    }

    void completesAttributesAndOperators()
    {
        QCOMPARE(edit()->completionsFor("s:too"), QStringList({"s:tool", "s:toolpath"}));
        QCOMPARE(edit()->completionsFor("s:tool %ma"), QStringList({"%matches "}));
        QVERIFY(edit()->completionsFor("s:us").contains("s:user{ambient}"));
        QVERIFY(edit()->completionsFor("plain").isEmpty());
        trigger("find");
        QTest::keyClicks(edit(), "s:toolp");
        QTRY_VERIFY(edit()->completer()->popup()->isVisible());
        QTest::keyClick(edit()->completer()->popup(), Qt::Key_Return);
        QCOMPARE(edit()->query(), QString("s:toolpath"));
    }

    void everyExampleIsAQuery()
    {
        for (const auto& [query, meaning] : FindPanel::examples()) {
            edit()->setQuery(query);
            QVERIFY2(edit()->errors().isEmpty(), qPrintable(query));
            QVERIFY(!meaning.isEmpty());
        }
    }

    void anExampleIsAskedWhenChosen()
    {
        trigger("find");
        auto* const button = m_window->findPanel()->findChild<QPushButton*>("examplesButton");
        button->menu()->actions().at(1)->trigger();
        QTRY_VERIFY(!m_window->findPanel()->isBusy());
        QCOMPARE(found().size(), 2);
    }

    void saysSoWhenNothingMatches()
    {
        ask("s:tool == 'nobody has it'");
        QVERIFY(found().isEmpty());
        QCOMPARE(m_window->findPanel()->message(), QString("Nothing in this history matches."));
    }

    void agreesWithTheLibrary_data()
    {
        QTest::addColumn<QString>("query");
        for (const char* query :
             {"report", "s:user == 'anna'", "s:user == 'nobody'", "a:tool == b:tool && a:iswfs",
              "a:filename == b:filename", "f:filesize > 50kb", "!s:iswfs", "x y z"})
            QTest::newRow(query) << QString::fromLatin1(query);
    }

    void agreesWithTheLibrary()
    {
        QFETCH(QString, query);
        ask(query);
        bool matches = false;
        for (const HistoryContainer& container : m_window->history()->containers())
            matches = lorix::LorixFindQuery(query).matches(*container.parser) || matches;
        QCOMPARE(!found().isEmpty(), matches);
    }

    void damagedDocumentCanBeAskedToo()
    {
        open("damaged.pdf", samples::damagedReport());
        ask("f:filename == 'temperatures.csv'");
        QCOMPARE(found(), QStringList({"f=temperatures.csv"}));
    }
};

QTEST_MAIN(TestViewerFind)
#include "tst_viewerfind.moc"
