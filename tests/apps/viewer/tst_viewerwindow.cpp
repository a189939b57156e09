// SPDX-License-Identifier: BSD-3-Clause
#include "apps/viewer/sampledocuments.h"
#include "apps/viewer/viewertest.h"

#include <apps/viewer/pictureview.h>
#include <apps/viewer/verdictbar.h>

#include <QGuiApplication>
#include <QScreen>
#include <QtTest>

using namespace lorix::viewer;

/// A real window on a display; runs under a virtual one.
class TestViewerWindow : public ViewerTest
{
    Q_OBJECT

private Q_SLOTS:
    void opensShowsAndChecksOnADisplay()
    {
        QCOMPARE(QGuiApplication::platformName(), QString("xcb"));
        makeWindow();
        open("report.pdf", samples::report());
        QTest::keyClick(m_window->picture(), Qt::Key_Down);
        QCOMPARE(m_window->current(), placeOf("Write the report"));
        QSignalSpy finished(m_window->checker(), &Checker::finished);
        click("checkButton");
        QTRY_COMPARE_WITH_TIMEOUT(finished.size(), 1, 60000);
        QVERIFY(m_window->verdict()->text().startsWith("Valid"));
        // What stands on the screen has more than one colour.
        const QImage screen =
            m_window->screen()->grabWindow(m_window->winId()).toImage().scaled(64, 64);
        QSet<QRgb> colours;
        for (int y = 0; y < screen.height(); ++y)
            for (int x = 0; x < screen.width(); ++x)
                colours.insert(screen.pixel(x, y));
        QVERIFY(colours.size() > 5);
        m_window.reset();
    }
};

QTEST_MAIN(TestViewerWindow)
#include "tst_viewerwindow.moc"
