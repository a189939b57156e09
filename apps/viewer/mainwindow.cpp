// SPDX-License-Identifier: BSD-3-Clause
#include <apps/viewer/mainwindow.h>

#include <apps/viewer/busybar.h>
#include <apps/viewer/comparepage.h>
#include <apps/viewer/detailspanel.h>
#include <apps/viewer/findpanel.h>
#include <apps/viewer/logpane.h>
#include <apps/viewer/outlinemodel.h>
#include <apps/viewer/pictureview.h>
#include <apps/viewer/queryedit.h>
#include <apps/viewer/settings.h>
#include <apps/viewer/verdictbar.h>
#include <apps/viewer/welcomepage.h>

#include <apps/lorix/text.h>

#include <QCloseEvent>
#include <QDockWidget>
#include <QFileDialog>
#include <QFileInfo>
#include <QFileSystemWatcher>
#include <QHeaderView>
#include <QMessageBox>
#include <QMimeData>
#include <QStackedWidget>
#include <QStatusBar>
#include <QTabBar>
#include <QTabWidget>
#include <QTreeView>
#include <QVBoxLayout>

namespace lorix::viewer {

MainWindow::MainWindow(QWidget* parent)
    : QMainWindow(parent), m_log(new LogPane(this)), m_loader(new HistoryLoader(m_log, this)),
      m_checker(new Checker(m_log, this)), m_watcher(new QFileSystemWatcher(this)),
      m_centre(new QStackedWidget), m_welcome(new WelcomePage), m_document(new QWidget),
      m_verdict(new VerdictBar), m_tabs(new QTabWidget), m_picture(new PictureView),
      m_model(new OutlineModel(this)), m_outline(new QTreeView), m_compare(new ComparePage(m_log)),
      m_details(new DetailsPanel), m_find(new FindPanel), m_busy(new BusyBar)
{
    setAcceptDrops(true);
    m_model->setResults(&m_checker->results());
    m_picture->setResults(&m_checker->results());
    m_details->setResults(&m_checker->results());
    buildCentre();
    buildDocks();
    buildActions();
    connectParts();
    statusBar()->addPermanentWidget(m_busy, 1);
    restore();
    dropHistory();
}

MainWindow::~MainWindow()
{
    // What works beside the window must not find it half gone.
    delete m_loader;
    m_checker->disconnect(this);
    m_compare->disconnect(this);
    delete m_compare;
    m_find->disconnect(this);
    delete m_find;
}

void MainWindow::buildCentre()
{
    m_outline->setModel(m_model);
    m_outline->setUniformRowHeights(true);
    m_outline->setAlternatingRowColors(true);
    m_outline->setSelectionMode(QAbstractItemView::ExtendedSelection);
    m_outline->setDragEnabled(true);
    m_outline->setDragDropMode(QAbstractItemView::DragOnly);
    m_model->setFileProvider([this](const Place& place) { return fileForDrag(place); });
    m_outline->setAccessibleName(tr("Outline of the history"));
    m_outline->header()->setStretchLastSection(true);
    m_tabs->setDocumentMode(true);
    m_tabs->setAccessibleName(tr("Views of the document"));
    m_tabs->tabBar()->setAccessibleName(tr("Views of the document"));
    m_tabs->addTab(m_picture, tr("&Picture"));
    m_tabs->addTab(m_outline, tr("&Outline"));
    m_tabs->addTab(m_compare, tr("&Comparison"));
    m_tabs->setObjectName(QStringLiteral("views"));
    auto* const layout = new QVBoxLayout(m_document);
    layout->setContentsMargins(6, 6, 6, 0);
    layout->addWidget(m_verdict);
    layout->addWidget(m_tabs, 1);
    m_centre->addWidget(m_welcome);
    m_centre->addWidget(m_document);
    setCentralWidget(m_centre);
}

void MainWindow::buildDocks()
{
    m_detailsDock = new QDockWidget(tr("Details"));
    m_detailsDock->setObjectName(QStringLiteral("detailsDock"));
    m_detailsDock->setWidget(m_details);
    addDockWidget(Qt::RightDockWidgetArea, m_detailsDock);
    m_logDock = new QDockWidget(tr("Messages"));
    m_logDock->setObjectName(QStringLiteral("logDock"));
    m_logDock->setWidget(m_log);
    addDockWidget(Qt::BottomDockWidgetArea, m_logDock);
    m_findDock = new QDockWidget(tr("Find"));
    m_findDock->setObjectName(QStringLiteral("findDock"));
    m_findDock->setWidget(m_find);
    addDockWidget(Qt::BottomDockWidgetArea, m_findDock);
    tabifyDockWidget(m_logDock, m_findDock);
    m_findDock->hide();
    resizeDocks({m_detailsDock}, {400}, Qt::Horizontal);
    resizeDocks({m_logDock}, {220}, Qt::Vertical);
    m_logDock->hide();
}

void MainWindow::connectParts()
{
    connect(m_loader, &HistoryLoader::loaded, this, &MainWindow::showHistory);
    connect(m_loader, &HistoryLoader::failed, this, &MainWindow::showProblem);
    connect(m_loader, &HistoryLoader::progress, m_busy,
            [this](int steps) { m_busy->setDetail(tr("%1 steps so far").arg(steps)); });
    connect(m_watcher, &QFileSystemWatcher::fileChanged, this, &MainWindow::noticeChange);
    connect(m_verdict, &VerdictBar::reloadRequested, this, &MainWindow::reload);
    connect(m_welcome, &WelcomePage::openRequested, this, &MainWindow::chooseDocument);
    connect(m_welcome, &WelcomePage::fileChosen, this, &MainWindow::openDocument);
    connect(m_picture, &PictureView::placeChosen, this, &MainWindow::setCurrent);
    connect(m_picture, &PictureView::dragRequested, this, &MainWindow::dragAway);
    connect(m_details, &DetailsPanel::extractRequested, this,
            [this](const Place& place) { extract({place}); });
    connect(m_details, &DetailsPanel::placeChosen, this, &MainWindow::setCurrent);
    connect(m_outline->selectionModel(), &QItemSelectionModel::currentChanged, this,
            [this](const QModelIndex& index) { setCurrent(m_model->placeOf(index)); });
    connect(m_verdict, &VerdictBar::checkRequested, this, &MainWindow::startCheck);
    connect(m_verdict, &VerdictBar::stopRequested, this, &MainWindow::stopWork);
    connect(m_verdict, &VerdictBar::damageRequested, this, &MainWindow::selectFirstDamage);
    connect(m_busy, &BusyBar::stopRequested, this, &MainWindow::stopWork);
    connect(m_checker, &Checker::progress, this, [this](int percent, const QString& what) {
        m_busy->setPercent(percent, what);
        m_verdict->showRunning(percent);
    });
    connect(m_checker, &Checker::changed, this, [this] {
        m_model->refreshStates();
        m_picture->refreshStates();
    });
    connect(m_checker, &Checker::finished, this, &MainWindow::showCheckResults);
    connect(m_compare, &ComparePage::chooseRequested, this, &MainWindow::chooseOther);
    connect(m_find, &FindPanel::placeChosen, this, &MainWindow::setCurrent);
    connect(m_find, &FindPanel::matchesChanged, m_picture, &PictureView::setMatches);
    connect(m_log, &LogPane::trouble, this, [this] {
        statusBar()->showMessage(tr("There are new warnings or errors among the messages."), 8000);
    });
}

void MainWindow::openDocument(const QString& path)
{
    stopWork();
    m_busy->begin(tr("Reading %1").arg(cli::printable(QFileInfo(path).fileName())));
    m_log->log(tr("Reading %1").arg(path), 0);
    m_loader->start(path);
}

void MainWindow::dropHistory()
{
    if (!m_watcher->files().isEmpty())
        m_watcher->removePaths(m_watcher->files());
    m_history.clear();
    m_current = Place();
    m_checker->clear();
    m_picture->setHistory({});
    m_model->setHistory({});
    m_details->setHistory({});
    m_compare->setHistory({});
    m_find->setHistory({});
    m_verdict->showNotChecked();
    m_centre->setCurrentWidget(m_welcome);
    m_detailsDock->hide();
    setWindowTitle(tr("lorix viewer"));
    setWindowFilePath(QString());
    refreshRecent();
    refreshActions();
}

void MainWindow::closeDocument()
{
    m_loader->cancel();
    m_busy->end();
    m_welcome->setProblem(QString());
    dropHistory();
}

void MainWindow::showHistory(const QSharedPointer<History>& history)
{
    dropHistory();
    m_busy->end();
    m_welcome->setProblem(QString());
    m_history = history;
    m_watcher->addPath(history->path());
    Settings::addRecentFile(history->path());
    refreshRecent();
    m_model->setHistory(history);
    m_details->setHistory(history);
    m_compare->setHistory(history);
    m_find->setHistory(history);
    m_centre->setCurrentWidget(m_document);
    m_tabs->setCurrentWidget(m_picture);
    m_detailsDock->show();
    m_picture->setHistory(history);
    for (int row = 0; row < m_model->rowCount() && row < 50; ++row)
        m_outline->expand(m_model->index(row, 0));
    setWindowTitle(tr("%1 – lorix viewer").arg(cli::printable(history->name())));
    setWindowFilePath(history->path());
    refreshActions();
    m_log->log(tr("%1: %2 steps, %3 embedded files")
                   .arg(history->name())
                   .arg(history->steps().size())
                   .arg(history->embeddedFiles()),
               0);
    m_picture->setFocus();
    Q_EMIT documentShown();
}

void MainWindow::showProblem(const QString& path, const QString& problem)
{
    m_busy->end();
    Settings::removeRecentFile(path);
    refreshRecent();
    const QString text =
        tr("“%1” cannot be opened. %2").arg(cli::printable(QFileInfo(path).fileName()), problem);
    m_log->log(text, 2);
    if (m_history) {
        // What is open stays open.
        auto* const box = new QMessageBox(QMessageBox::Warning, tr("Open a document"), text,
                                          QMessageBox::Ok, this);
        box->setTextFormat(Qt::PlainText);
        box->setAttribute(Qt::WA_DeleteOnClose);
        box->open();
    } else {
        m_welcome->setProblem(text);
    }
    Q_EMIT documentFailed();
}

// Marks that were found for other bytes would mislead.
void MainWindow::noticeChange()
{
    if (!m_history || m_history->isAsOnDisk())
        return;
    if (m_checker->isRunning())
        m_busy->end();
    m_checker->clear();
    m_verdict->showChanged(QFileInfo::exists(m_history->path()));
    m_details->refreshStates();
    m_log->log(m_verdict->text(), 1);
    refreshActions();
}

void MainWindow::reload()
{
    if (m_history)
        openDocument(m_history->path());
}

void MainWindow::setCurrent(const Place& place)
{
    if (!m_history || place == m_current || !m_history->contains(place))
        return;
    m_current = place;
    m_picture->setCurrent(place);
    m_details->setCurrent(place);
    const QModelIndex index = m_model->indexOf(place);
    if (m_model->placeOf(m_outline->currentIndex()) != place) {
        m_outline->setCurrentIndex(index);
        m_outline->scrollTo(index);
    }
    refreshActions();
}

void MainWindow::startCheck()
{
    if (!m_history)
        return;
    m_busy->begin(tr("Checking"));
    m_verdict->showRunning(0);
    m_log->log(tr("Checking %1").arg(m_history->name()), 0);
    m_checker->start(m_history);
    refreshActions();
}

void MainWindow::stopWork()
{
    if (m_loader->isBusy()) {
        m_loader->cancel();
        statusBar()->showMessage(tr("Stopped; nothing was opened."), 8000);
    }
    if (m_checker->isRunning()) {
        m_checker->cancel();
        showCheckResults();
    }
    m_busy->end();
}

void MainWindow::showCheckResults()
{
    m_busy->end();
    const CheckResults& results = m_checker->results();
    m_verdict->showResults(results);
    m_details->refreshStates();
    for (const Notice& notice : results.notices())
        m_log->log(notice.text, notice.isError ? 2 : 1);
    m_log->log(m_verdict->text(), results.damaged() > 0 ? 2 : 0);
    refreshActions();
}

void MainWindow::selectFirstDamage()
{
    const CheckResults& results = m_checker->results();
    for (int node = 0; node < m_history->steps().size(); ++node) {
        if (results.of(*m_history, {node, -1}).state != CheckState::Damaged)
            continue;
        Place place{node, -1};
        const int files = static_cast<int>(m_history->step(node).step.files.size());
        for (int file = 0; file < files && !place.isFile(); ++file)
            if (results.of(*m_history, {node, file}).state == CheckState::Damaged)
                place.file = file;
        setCurrent(place);
        return;
    }
    m_details->setCurrent(Place());
}

void MainWindow::showFind()
{
    m_findDock->show();
    m_findDock->raise();
    m_find->edit()->setFocus();
}

void MainWindow::compareWith(const QString& path)
{
    m_tabs->setCurrentWidget(m_compare);
    m_compare->compareWith(path);
}

void MainWindow::dragEnterEvent(QDragEnterEvent* event)
{
    const QList<QUrl> urls = event->mimeData()->urls();
    if (event->source() == nullptr && urls.size() == 1 && urls.first().isLocalFile())
        event->acceptProposedAction();
}

void MainWindow::dropEvent(QDropEvent* event)
{
    openDocument(event->mimeData()->urls().first().toLocalFile());
    event->acceptProposedAction();
}

void MainWindow::restore()
{
    m_outline->setColumnWidth(OutlineModel::Name, 340);
    m_outline->setColumnWidth(OutlineModel::What, 160);
    m_outline->setColumnWidth(OutlineModel::When, 150);
    resize(1180, 760);
    restoreGeometry(Settings::state(QStringLiteral("window")));
    restoreState(Settings::state(QStringLiteral("docks")));
    m_outline->header()->restoreState(Settings::state(QStringLiteral("outline")));
}

void MainWindow::closeEvent(QCloseEvent* event)
{
    // The details are hidden while no document is open; that is no wish of the person's.
    if (m_history)
        Settings::setState(QStringLiteral("docks"), saveState());
    Settings::setState(QStringLiteral("window"), saveGeometry());
    Settings::setState(QStringLiteral("outline"), m_outline->header()->saveState());
    event->accept();
}

void MainWindow::changeEvent(QEvent* event)
{
    QMainWindow::changeEvent(event);
    if (event->type() == QEvent::PaletteChange)
        refreshSymbols();
}

} // namespace lorix::viewer
