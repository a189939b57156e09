// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <apps/viewer/mainwindow.h>

#include <QAbstractItemView>
#include <QObject>
#include <QTemporaryDir>

#include <memory>

/// A window with settings of its own for each test, and documents to open.
class ViewerTest : public QObject
{
    Q_OBJECT

protected:
    /// Makes the programs settings go to a new folder, and a window that shows.
    void makeWindow();
    /// Opens a document as the command line does; waits until it is on show.
    void open(const QString& path);
    /// Writes bytes below the test's folder and opens them.
    void open(const QString& name, const QByteArray& bytes);
    /// Presses a key where the focus would be.
    void press(QWidget* widget, Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier);
    /// Clicks a button that has this object name.
    void click(const char* buttonName);
    /// Pastes a path into the file dialog that is open, and presses Return.
    void chooseInDialog(const char* dialogName, const QString& path);
    /// Clicks a row of a tree or list, or one of its tabs.
    void clickRow(QAbstractItemView* view, const QModelIndex& index);
    void clickTab(int index);
    /// Clicks the button of an action on the tool bar.
    void clickTool(const char* actionName);
    /// Clicks the box of a step in the picture.
    void clickBox(int node);
    /// Calls what a menu entry or its button calls.
    void trigger(const char* actionName);
    /// A path below the test's folder.
    QString path(const QString& name) const { return m_folder->filePath(name); }
    /// The place of the step with this title, or of one of its files.
    lorix::viewer::Place placeOf(const QString& title, const QString& file = QString()) const;

    std::unique_ptr<QTemporaryDir> m_folder;
    std::unique_ptr<lorix::viewer::MainWindow> m_window;
};
