// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <apps/viewer/checker.h>
#include <apps/viewer/historyloader.h>
#include <apps/viewer/marks.h>

#include <QMainWindow>
#include <QPair>
#include <QTemporaryDir>

#include <memory>

QT_BEGIN_NAMESPACE
class QFileSystemWatcher;
class QMenu;
class QStackedWidget;
class QTabWidget;
class QTreeView;
QT_END_NAMESPACE

namespace lorix::viewer {

class BusyBar;
class ComparePage;
class DetailsPanel;
class FindPanel;
class LogPane;
class OutlineModel;
class PictureView;
class VerdictBar;
class WelcomePage;

/// The window: one document, its history as picture and outline, and what can
/// be done with it. It connects the parts and does nothing itself.
class MainWindow : public QMainWindow
{
    Q_OBJECT

public:
    explicit MainWindow(QWidget* parent = nullptr);
    ~MainWindow() override;

    /// Begins to open a document; documentShown() or documentFailed() follows.
    void openDocument(const QString& path);
    const QSharedPointer<History>& history() const { return m_history; }
    /// What is selected, in picture, outline and details alike.
    const Place& current() const { return m_current; }
    void setCurrent(const Place& place);
    /// Asks for a document and compares the one that is open with it.
    void compareWith(const QString& path);

    /// Puts an embedded file into a folder that goes with the window, and gives
    /// its path; empty where that cannot be done. For dragging it away.
    QString fileForDrag(const Place& place);

    Checker* checker() const { return m_checker; }
    PictureView* picture() const { return m_picture; }
    QTreeView* outline() const { return m_outline; }
    DetailsPanel* details() const { return m_details; }
    VerdictBar* verdict() const { return m_verdict; }
    WelcomePage* welcome() const { return m_welcome; }
    ComparePage* compare() const { return m_compare; }
    FindPanel* findPanel() const { return m_find; }
    LogPane* logPane() const { return m_log; }

Q_SIGNALS:
    void documentShown();
    void documentFailed();

protected:
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    void buildCentre();
    void buildDocks();
    void buildActions();
    void buildFileActions();
    void buildViewActions();
    QAction* addAction(const QString& name, const QString& text, const QKeySequence& shortcut,
                       void (MainWindow::*slot)());
    void addSymbol(QAction* action, Symbol symbol);
    void connectParts();
    void restore();
    void refreshSymbols();
    void refreshRecent();
    void refreshActions();

    void chooseDocument();
    void chooseOther();
    void askForDocument(const QString& title, void (MainWindow::*use)(const QString&));
    void closeDocument();
    void showHistory(const QSharedPointer<History>& history);
    void showProblem(const QString& path, const QString& problem);
    void noticeChange();
    void reload();
    void startCheck();
    void stopWork();
    void showCheckResults();
    void selectFirstDamage();
    void showFind();
    void extractSelected();
    void extractAll();
    void extract(const QList<Place>& places);
    void dragAway(const Place& place);
    QList<Place> selectedPlaces() const;
    void showAbout();
    void dropHistory();

    LogPane* m_log;
    HistoryLoader* m_loader;
    Checker* m_checker;
    QSharedPointer<History> m_history;
    Place m_current;
    std::unique_ptr<QTemporaryDir> m_dragFolder;
    QFileSystemWatcher* m_watcher;

    QStackedWidget* m_centre;
    WelcomePage* m_welcome;
    QWidget* m_document;
    VerdictBar* m_verdict;
    QTabWidget* m_tabs;
    PictureView* m_picture;
    OutlineModel* m_model;
    QTreeView* m_outline;
    ComparePage* m_compare;
    DetailsPanel* m_details;
    FindPanel* m_find;
    BusyBar* m_busy;
    QDockWidget* m_detailsDock = nullptr;
    QDockWidget* m_findDock = nullptr;
    QDockWidget* m_logDock = nullptr;
    QMenu* m_recentMenu = nullptr;
    QToolBar* m_toolBar = nullptr;
    QList<QPair<QAction*, Symbol>> m_symbols;
    QList<QAction*> m_documentActions; ///< Those that need an open document.
};

} // namespace lorix::viewer
