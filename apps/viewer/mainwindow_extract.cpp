// SPDX-License-Identifier: BSD-3-Clause
// The ways by which files leave the window.
#include <apps/viewer/mainwindow.h>

#include <apps/viewer/busybar.h>
#include <apps/viewer/extractdialog.h>
#include <apps/viewer/logpane.h>
#include <apps/viewer/outlinemodel.h>
#include <apps/viewer/pictureview.h>

#include <apps/lorix/text.h>

#include <QDir>
#include <QDrag>
#include <QEventLoop>
#include <QGuiApplication>
#include <QMimeData>
#include <QPointer>
#include <QStatusBar>
#include <QTimer>
#include <QTreeView>
#include <QUrl>

namespace lorix::viewer {

namespace {

// A file must be on disk before its drag begins.
const qint64 largestDrag = 256 * 1024 * 1024;
const qint64 largestAtOnce = 2 * 1024 * 1024; // what takes no time to speak of

// The window answers meanwhile; letting the button go gives the drag up.
void runWhileDragging(Extractor& extractor, const QSharedPointer<History>& history,
                      const QList<ExtractJob>& jobs, const QString& folder)
{
    QEventLoop loop;
    QTimer released;
    QObject::connect(&released, &QTimer::timeout, &loop, [&] {
        if (QGuiApplication::mouseButtons() & Qt::LeftButton)
            return;
        extractor.cancel();
        loop.quit();
    });
    QObject::connect(&extractor, &Extractor::finished, &loop, &QEventLoop::quit);
    released.start(30);
    extractor.start(history, jobs, folder);
    loop.exec();
}

} // namespace

QList<Place> MainWindow::selectedPlaces() const
{
    QList<Place> places;
    if (m_outline->isVisible())
        for (const QModelIndex& index : m_outline->selectionModel()->selectedRows())
            places.append(m_model->placeOf(index));
    if (places.isEmpty() && !m_current.isNull())
        places.append(m_current);
    return places;
}

void MainWindow::extractSelected()
{
    extract(selectedPlaces());
}

void MainWindow::extractAll()
{
    extract({});
}

void MainWindow::extract(const QList<Place>& places)
{
    if (!m_history)
        return;
    auto* const dialog = new ExtractDialog(m_history, places, m_log, this);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    connect(dialog, &ExtractDialog::extracted, this,
            [this](const QString& message) { m_log->log(message, 0); });
    dialog->open();
}

QString MainWindow::fileForDrag(const Place& place)
{
    const QList<ExtractJob> jobs = planFor(*m_history, {place});
    if (jobs.size() != 1)
        return {};
    if (jobs.first().bytes > largestDrag) {
        statusBar()->showMessage(
            tr("This file is too large to be dragged away; use “Extract” instead."), 8000);
        return {};
    }
    // Each drag has a folder of its own: the one before may still be read from.
    if (!m_dragFolder)
        m_dragFolder = std::make_unique<QTemporaryDir>();
    QTemporaryDir folder(m_dragFolder->filePath(QStringLiteral("XXXXXX")));
    folder.setAutoRemove(false);
    Extractor extractor(m_log);
    const QPointer<MainWindow> self(this);
    if (jobs.first().bytes <= largestAtOnce) {
        extractor.runNow(m_history, jobs, folder.path());
    } else {
        m_busy->begin(tr("Preparing %1 …").arg(cli::printable(jobs.first().name)));
        runWhileDragging(extractor, m_history, jobs, folder.path());
        if (!self)
            return {};
        m_busy->end();
    }
    const ExtractJob& job = extractor.jobs().first();
    if (job.outcome == ExtractJob::Waiting)
        return {};
    if (job.outcome != ExtractJob::Written) {
        statusBar()->showMessage(cli::printable(job.name) + QStringLiteral(": ") + job.problem,
                                 8000);
        if (job.outcome != ExtractJob::Damaged)
            return {};
    }
    return QDir(folder.path()).filePath(job.name);
}

void MainWindow::dragAway(const Place& place)
{
    const QString path = fileForDrag(place);
    if (path.isEmpty())
        return;
    auto* const carried = new QMimeData;
    carried->setUrls({QUrl::fromLocalFile(path)});
    auto* const drag = new QDrag(m_picture);
    drag->setMimeData(carried);
    drag->exec(Qt::CopyAction);
}

} // namespace lorix::viewer
