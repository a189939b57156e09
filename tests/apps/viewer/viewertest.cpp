// SPDX-License-Identifier: BSD-3-Clause
#include "apps/viewer/viewertest.h"

#include "apps/viewer/sampledocuments.h"

#include <QAction>
#include <QCoreApplication>
#include <QPushButton>
#include <QSettings>
#include <QSignalSpy>
#include <QtTest>

using namespace lorix::viewer;

void ViewerTest::makeWindow()
{
    m_window.reset();
    m_folder = std::make_unique<QTemporaryDir>();
    QVERIFY(m_folder->isValid());
    QCoreApplication::setOrganizationName(QStringLiteral("lorix-test"));
    QCoreApplication::setApplicationName(QStringLiteral("lorix-viewer-test"));
    QSettings::setDefaultFormat(QSettings::IniFormat);
    QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, m_folder->path());
    m_window = std::make_unique<MainWindow>();
    m_window->show();
    QVERIFY(QTest::qWaitForWindowExposed(m_window.get()));
}

void ViewerTest::open(const QString& path)
{
    QSignalSpy shown(m_window.get(), &MainWindow::documentShown);
    QSignalSpy failed(m_window.get(), &MainWindow::documentFailed);
    m_window->openDocument(path);
    QTRY_VERIFY_WITH_TIMEOUT(shown.size() + failed.size() > 0, 60000);
}

void ViewerTest::open(const QString& name, const QByteArray& bytes)
{
    open(samples::write(path(name), bytes));
}

void ViewerTest::press(QWidget* widget, Qt::Key key, Qt::KeyboardModifiers modifiers)
{
    QTest::keyClick(widget, key, modifiers);
}

void ViewerTest::click(const char* buttonName)
{
    QTest::qWait(20); // what has just been shown gets its place
    QPushButton* button = nullptr;
    for (QWidget* const window : QApplication::topLevelWidgets())
        if (auto* const found = window->findChild<QPushButton*>(QLatin1String(buttonName)))
            button = found;
    QVERIFY2(button, buttonName);
    QVERIFY2(button->isEnabled() && button->isVisible(), buttonName);
    QTest::mouseClick(button, Qt::LeftButton);
}

void ViewerTest::trigger(const char* actionName)
{
    auto* const action = m_window->findChild<QAction*>(QLatin1String(actionName));
    QVERIFY2(action, actionName);
    QVERIFY2(action->isEnabled(), actionName);
    action->trigger();
}

Place ViewerTest::placeOf(const QString& title, const QString& file) const
{
    const History& history = *m_window->history();
    for (int node = 0; node < history.steps().size(); ++node) {
        if (history.step(node).title != title)
            continue;
        if (file.isEmpty())
            return {node, -1};
        const int count = static_cast<int>(history.step(node).step.files.size());
        for (int i = 0; i < count; ++i)
            if (history.fileName({node, i}) == file)
                return {node, i};
    }
    return {};
}
