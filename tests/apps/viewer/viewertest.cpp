// SPDX-License-Identifier: BSD-3-Clause
#include "apps/viewer/viewertest.h"

#include "apps/viewer/sampledocuments.h"

#include <apps/viewer/pictureview.h>

#include <QAction>
#include <QClipboard>
#include <QCoreApplication>
#include <QFileDialog>
#include <QLineEdit>
#include <QLoggingCategory>
#include <QPointer>
#include <QPushButton>
#include <QSettings>
#include <QSignalSpy>
#include <QTabBar>
#include <QTabWidget>
#include <QToolBar>
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
    QCoreApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
    // What the library notes for its developers would drown the rest.
    QLoggingCategory::setFilterRules(QStringLiteral("default.debug=false"));
    m_window = std::make_unique<MainWindow>();
    m_window->show();
    m_window->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(m_window.get()));
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

void ViewerTest::chooseInDialog(const char* dialogName, const QString& path)
{
    const auto find = [&]() -> QFileDialog* {
        for (QWidget* const window : QApplication::topLevelWidgets())
            if (window->isVisible() && window->objectName() == QLatin1String(dialogName))
                return qobject_cast<QFileDialog*>(window);
        return nullptr;
    };
    QTRY_VERIFY2(find(), dialogName);
    QPointer<QFileDialog> dialog = find();
    auto* const line = dialog->findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
    QVERIFY(line);
    line->setFocus();
    line->selectAll();
    // What is typed letter by letter, the dialog completes when its list comes in.
    QGuiApplication::clipboard()->setText(path);
    QTest::keyClick(line, Qt::Key_V, Qt::ControlModifier);
    QTest::keyClick(line, Qt::Key_Return);
    QTRY_VERIFY(dialog.isNull());
    // A desktop gives the focus back to the window below; without one nobody does.
    QWidget* const below = QApplication::activeModalWidget();
    QWidget* const next = below ? below : m_window.get();
    next->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(next));
}

void ViewerTest::clickRow(QAbstractItemView* view, const QModelIndex& index)
{
    QVERIFY(index.isValid());
    view->scrollTo(index);
    QTest::mouseClick(view->viewport(), Qt::LeftButton, Qt::NoModifier,
                      view->visualRect(index).center());
}

void ViewerTest::clickTab(int index)
{
    auto* const bar = m_window->findChild<QTabWidget*>(QStringLiteral("views"))->tabBar();
    QTest::mouseClick(bar, Qt::LeftButton, Qt::NoModifier, bar->tabRect(index).center());
}

void ViewerTest::clickTool(const char* actionName)
{
    auto* const action = m_window->findChild<QAction*>(QLatin1String(actionName));
    auto* const bar = m_window->findChild<QToolBar*>(QStringLiteral("toolBar"));
    QVERIFY2(action && bar->widgetForAction(action), actionName);
    QVERIFY2(action->isEnabled(), actionName);
    QTest::mouseClick(bar->widgetForAction(action), Qt::LeftButton);
}

void ViewerTest::clickBox(int node)
{
    const QRect box = m_window->picture()->boxOnScreen(node);
    QTest::mouseClick(m_window->picture()->viewport(), Qt::LeftButton, Qt::NoModifier,
                      QPoint(box.center().x(), box.top() + box.height() / 12));
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
