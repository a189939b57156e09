// SPDX-License-Identifier: BSD-3-Clause
// The ways by which files leave the window.
#include <apps/viewer/mainwindow.h>

#include <apps/viewer/extractdialog.h>
#include <apps/viewer/logpane.h>
#include <apps/viewer/outlinemodel.h>
#include <apps/viewer/pictureview.h>

#include <QDir>
#include <QDrag>
#include <QMimeData>
#include <QStatusBar>
#include <QTreeView>
#include <QUrl>

namespace lorix::viewer {

namespace {

const qint64 largestDrag = 64 * 1024 * 1024; // it must be on disk before the drag begins

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
    extractor.runNow(m_history, jobs, folder.path());
    const ExtractJob& job = extractor.jobs().first();
    if (job.outcome != ExtractJob::Written) {
        statusBar()->showMessage(tr("%1: %2").arg(job.name, job.problem), 8000);
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
