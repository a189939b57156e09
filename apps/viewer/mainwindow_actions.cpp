// SPDX-License-Identifier: BSD-3-Clause
// The window's menus, tool bar and dialogs.
#include <apps/viewer/mainwindow.h>

#include <apps/viewer/comparepage.h>
#include <apps/viewer/logpane.h>
#include <apps/viewer/outlinemodel.h>
#include <apps/viewer/pictureview.h>
#include <apps/viewer/settings.h>
#include <apps/viewer/welcomepage.h>

#include <apps/lorix/text.h>

#include <lorix/runner/version.h>

#include <QAction>
#include <QDockWidget>
#include <QFileDialog>
#include <QFileInfo>
#include <QMenuBar>
#include <QMessageBox>
#include <QTabWidget>
#include <QToolBar>
#include <QTreeView>

namespace lorix::viewer {

QAction* MainWindow::addAction(const QString& name, const QString& text,
                               const QKeySequence& shortcut, void (MainWindow::*slot)())
{
    auto* const action = new QAction(text, this);
    action->setObjectName(name);
    action->setShortcut(shortcut);
    connect(action, &QAction::triggered, this, [this, slot] { (this->*slot)(); });
    return action;
}

void MainWindow::addSymbol(QAction* action, Symbol symbol)
{
    QString shortText = action->text();
    shortText.remove(QLatin1Char('&')).remove(QStringLiteral(" …"));
    action->setIconText(shortText);
    m_symbols.append({action, symbol});
    m_toolBar->addAction(action);
}

void MainWindow::buildActions()
{
    m_toolBar = addToolBar(tr("Tools"));
    m_toolBar->setObjectName(QStringLiteral("toolBar"));
    m_toolBar->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    buildFileActions();
    buildViewActions();
    QMenu* const help = menuBar()->addMenu(tr("&Help"));
    help->addAction(
        addAction(QStringLiteral("about"), tr("&About lorix viewer"), {}, &MainWindow::showAbout));
    refreshSymbols();
}

void MainWindow::buildFileActions()
{
    QMenu* const file = menuBar()->addMenu(tr("&File"));
    QAction* const open = addAction(QStringLiteral("open"), tr("&Open …"), QKeySequence::Open,
                                    &MainWindow::chooseDocument);
    open->setToolTip(tr("Open a document and look at its history"));
    file->addAction(open);
    m_recentMenu = file->addMenu(tr("Open &recent"));
    m_recentMenu->setObjectName(QStringLiteral("recentMenu"));
    QAction* const again = addAction(QStringLiteral("reload"), tr("Open a&gain"),
                                     QKeySequence::Refresh, &MainWindow::reload);
    again->setToolTip(tr("Read the document anew"));
    file->addAction(again);
    QAction* const close = addAction(QStringLiteral("close"), tr("&Close"), QKeySequence::Close,
                                     &MainWindow::closeDocument);
    file->addAction(close);
    file->addSeparator();
    auto* const quit = new QAction(tr("&Quit"), this);
    quit->setShortcut(QKeySequence::Quit);
    connect(quit, &QAction::triggered, this, &QWidget::close);
    file->addAction(quit);
    addSymbol(open, Symbol::Open);

    QMenu* const document = menuBar()->addMenu(tr("&Document"));
    QAction* const check = addAction(QStringLiteral("check"), tr("&Check"),
                                     QKeySequence(Qt::CTRL | Qt::Key_K), &MainWindow::startCheck);
    check->setToolTip(tr("Check that every step and every file is unchanged"));
    QAction* const compare =
        addAction(QStringLiteral("compare"), tr("Co&mpare with …"),
                  QKeySequence(Qt::CTRL | Qt::Key_D), &MainWindow::chooseOther);
    compare->setToolTip(tr("Compare the history with that of another document"));
    QAction* const extractAction =
        addAction(QStringLiteral("extractSelected"), tr("&Extract …"),
                  QKeySequence(Qt::CTRL | Qt::Key_E), &MainWindow::extractSelected);
    extractAction->setToolTip(tr("Save the selected files, or all files of the selected step"));
    QAction* const everything =
        addAction(QStringLiteral("extractAll"), tr("Extract e&verything …"),
                  QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_E), &MainWindow::extractAll);
    QAction* const find =
        addAction(QStringLiteral("find"), tr("&Find …"), QKeySequence::Find, &MainWindow::showFind);
    find->setToolTip(tr("Ask for steps and files by what is known about them"));
    document->addAction(check);
    document->addAction(find);
    document->addAction(extractAction);
    document->addAction(everything);
    document->addAction(compare);
    addSymbol(check, Symbol::Check);
    addSymbol(find, Symbol::Find);
    addSymbol(extractAction, Symbol::Extract);
    addSymbol(compare, Symbol::Compare);
    m_documentActions << again << close << check << find << extractAction << everything << compare;
}

void MainWindow::buildViewActions()
{
    QMenu* const view = menuBar()->addMenu(tr("&View"));
    const auto add = [&](const QString& name, const QString& text, const QKeySequence& shortcut,
                         Symbol symbol, void (PictureView::*slot)()) {
        auto* const action = new QAction(text, this);
        action->setObjectName(name);
        action->setShortcut(shortcut);
        connect(action, &QAction::triggered, m_picture, slot);
        view->addAction(action);
        addSymbol(action, symbol);
        m_documentActions << action;
    };
    m_toolBar->addSeparator();
    add(QStringLiteral("zoomIn"), tr("Zoom &in"), QKeySequence::ZoomIn, Symbol::ZoomIn,
        &PictureView::zoomIn);
    add(QStringLiteral("zoomOut"), tr("Zoom &out"), QKeySequence::ZoomOut, Symbol::ZoomOut,
        &PictureView::zoomOut);
    add(QStringLiteral("fit"), tr("&Fit"), QKeySequence(Qt::CTRL | Qt::Key_0), Symbol::Fit,
        &PictureView::fit);
    view->addSeparator();
    const QKeySequence keys[] = {QKeySequence(Qt::CTRL | Qt::Key_1),
                                 QKeySequence(Qt::CTRL | Qt::Key_2),
                                 QKeySequence(Qt::CTRL | Qt::Key_3)};
    for (int tab = 0; tab < m_tabs->count(); ++tab) {
        auto* const action = new QAction(m_tabs->tabText(tab), this);
        action->setShortcut(keys[tab]);
        connect(action, &QAction::triggered, this, [this, tab] {
            m_tabs->setCurrentIndex(tab);
            m_tabs->currentWidget()->setFocus();
        });
        view->addAction(action);
        m_documentActions << action;
    }
    view->addSeparator();
    view->addAction(m_detailsDock->toggleViewAction());
    m_logDock->toggleViewAction()->setObjectName(QStringLiteral("showMessages"));
    m_logDock->toggleViewAction()->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_M));
    view->addAction(m_logDock->toggleViewAction());
}

void MainWindow::refreshSymbols()
{
    for (const auto& [action, symbol] : std::as_const(m_symbols))
        action->setIcon(symbolIcon(symbol, palette()));
    m_model->setPalette(palette());
}

void MainWindow::refreshRecent()
{
    const QStringList files = Settings::recentFiles();
    m_recentMenu->clear();
    m_recentMenu->setEnabled(!files.isEmpty());
    for (const QString& path : files) {
        QString shown = cli::printable(path);
        shown.replace(QLatin1Char('&'), QStringLiteral("&&"));
        connect(m_recentMenu->addAction(shown), &QAction::triggered, this,
                [this, path] { openDocument(path); });
    }
    m_welcome->setRecentFiles(files);
}

void MainWindow::refreshActions()
{
    for (QAction* const action : std::as_const(m_documentActions))
        action->setEnabled(m_history != nullptr);
}

void MainWindow::chooseDocument()
{
    askForDocument(tr("Open a document"), &MainWindow::openDocument);
}

void MainWindow::chooseOther()
{
    if (m_history)
        askForDocument(tr("Compare with another document"), &MainWindow::compareWith);
}

// The dialog keeps no one waiting: a check goes on while it is open.
void MainWindow::askForDocument(const QString& title, void (MainWindow::*use)(const QString&))
{
    auto* const dialog =
        new QFileDialog(this, title, Settings::lastFolder(QStringLiteral("open")),
                        tr("Documents with a history (*.pdf *.lorix);;All files (*)"));
    dialog->setObjectName(QStringLiteral("documentDialog"));
    dialog->setFileMode(QFileDialog::ExistingFile);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    connect(dialog, &QFileDialog::fileSelected, this, [this, use](const QString& path) {
        Settings::setLastFolder(QStringLiteral("open"), QFileInfo(path).path());
        (this->*use)(path);
    });
    dialog->open();
}

void MainWindow::showAbout()
{
    QMessageBox::about(this, tr("About lorix viewer"),
                       tr("Shows how a document came about, whether it is untouched, and gets the "
                          "files out.\n\n%1")
                           .arg(getVersion()));
}

} // namespace lorix::viewer
