// SPDX-License-Identifier: BSD-3-Clause
#include "apps/viewer/sampledocuments.h"
#include "apps/viewer/viewertest.h"

#include <apps/viewer/comparepage.h>

#include <QCheckBox>
#include <QTreeWidget>
#include <QtTest>

using namespace lorix::viewer;

/// Comparing the open document with another one.
class TestViewerCompare : public ViewerTest
{
    Q_OBJECT

    void compareWith(const QString& name, const QByteArray& bytes)
    {
        samples::write(path(name), bytes);
        QSignalSpy shown(m_window->compare(), &ComparePage::shown);
        m_window->compareWith(path(name));
        QTRY_VERIFY_WITH_TIMEOUT(!m_window->compare()->isBusy(), 60000);
        QVERIFY(shown.size() > 0);
    }

    QStringList rows() const
    {
        QStringList texts;
        const QTreeWidget* const steps = m_window->compare()->steps();
        for (int i = 0; i < steps->topLevelItemCount(); ++i) {
            const QTreeWidgetItem* const item = steps->topLevelItem(i);
            texts.append(item->text(0).trimmed() + " | " + item->text(1) + " | " +
                         item->text(2).trimmed());
        }
        return texts;
    }

private Q_SLOTS:
    void init()
    {
        makeWindow();
        open("report.pdf", samples::report());
    }
    void cleanup() { m_window.reset(); }

    void sameDocumentHasTheSameHistory()
    {
        compareWith("copy.pdf", samples::report());
        QVERIFY2(m_window->compare()->summary().contains("the same history (6 steps)"),
                 qPrintable(m_window->compare()->summary()));
        QCOMPARE(rows().size(), 6);
        for (const QString& row : rows())
            QVERIFY2(row.contains("=  same"), qPrintable(row));
    }

    void alignsStepsAndMarksDifferences()
    {
        compareWith("other.pdf", samples::otherReport());
        const QStringList found = rows();
        QVERIFY2(found.filter("Write the report |").size() == 1, qPrintable(found.join('\n')));
        QVERIFY2(found.contains(QString::fromUtf8("Draw the fin | −  only on the left | –")),
                 qPrintable(found.join('\n')));
        QVERIFY2(found.contains(QString::fromUtf8("– | +  only on the right | Review")),
                 qPrintable(found.join('\n')));
        const QStringList changed = found.filter("With which tool");
        QCOMPARE(changed.size(), 1);
        QVERIFY(changed.first().startsWith("Compute the temperatures |"));
        QVERIFY(changed.first().endsWith("| Compute the temperatures"));
    }

    void stepsThatHaveMovedAreShownAsSuch()
    {
        compareWith("reordered.pdf", samples::reorderedReport());
        const QStringList moved = rows().filter(QString::fromUtf8("⇅  moved to another place"));
        QVERIFY2(!moved.isEmpty(), qPrintable(rows().join('\n')));
        for (const QString& row : moved) {
            const QStringList cells = row.split(" | ");
            QCOMPARE(cells.first(), cells.last());
        }
        QVERIFY(!m_window->compare()->summary().contains(" 0 have moved"));
    }

    void showsFieldByFieldWhatDiffers()
    {
        compareWith("other.pdf", samples::otherReport());
        QTreeWidget* const steps = m_window->compare()->steps();
        steps->setFocus();
        steps->setCurrentItem(steps->topLevelItem(0));
        while (!steps->currentItem()->text(0).contains("Compute the temperatures"))
            QTest::keyClick(steps, Qt::Key_Down);
        const QTreeWidget* const fields = m_window->compare()->fields();
        bool seen = false;
        for (int i = 0; i < fields->topLevelItemCount(); ++i) {
            const QTreeWidgetItem* const line = fields->topLevelItem(i);
            if (line->text(0) == "With which tool") {
                seen = true;
                QCOMPARE(line->text(1), QString("python"));
                QCOMPARE(line->text(2), QString("octave"));
                QCOMPARE(line->text(3), QString("differs"));
            }
            if (line->text(0) == "By whom")
                QCOMPARE(line->text(3), QString("same"));
        }
        QVERIFY(seen);
    }

    void onlyDifferencesHidesWhatIsTheSame()
    {
        compareWith("other.pdf", samples::otherReport());
        const qsizetype all = rows().size();
        auto* const box = m_window->compare()->findChild<QCheckBox*>();
        QTest::keyClick(box, Qt::Key_Space);
        QVERIFY(rows().size() < all);
        for (const QString& row : rows())
            QVERIFY(!row.contains("=  same"));
    }

    void givesTheNextBestMatchOnRequest()
    {
        compareWith("other.pdf", samples::otherReport());
        const QStringList best = rows();
        click("nextMatch");
        QTRY_COMPARE_WITH_TIMEOUT(m_window->compare()->shownMatch(), 1, 60000);
        QVERIFY(m_window->compare()->summary().startsWith("Match number 2"));
        QVERIFY(rows() != best);
        click("betterMatch");
        QCOMPARE(m_window->compare()->shownMatch(), 0);
        QCOMPARE(rows(), best);
    }

    void saysWhyAnotherFileCannotBeCompared()
    {
        compareWith("plain.pdf", "no history here\n");
        QVERIFY(m_window->compare()->summary().contains("cannot be compared"));
        QVERIFY(rows().isEmpty());
    }

    void comparesHistoriesThatShareNothing()
    {
        compareWith("large.pdf", samples::large(6, 1));
        QVERIFY(rows().size() >= 6);
    }
};

QTEST_MAIN(TestViewerCompare)
#include "tst_viewercompare.moc"
