// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <apps/viewer/background.h>
#include <apps/viewer/history.h>

namespace lorix::viewer {

/// Reads a document's history beside the window.
class HistoryLoader : public QObject
{
    Q_OBJECT

public:
    /// `logTarget` receives the messages of what is read.
    explicit HistoryLoader(QObject* logTarget, QObject* parent = nullptr);

    /// Begins to read `path`; what was being read before is given up.
    void start(const QString& path);
    /// Gives up; nothing is emitted any more.
    void cancel() { m_background.cancel(); }
    bool isBusy() const { return m_background.isBusy(); }

Q_SIGNALS:
    void loaded(const QSharedPointer<lorix::viewer::History>& history);
    /// How many steps have been read so far; now and then.
    void progress(int steps);
    /// The document cannot be opened; `problem` says in words why.
    void failed(const QString& path, const QString& problem);

private:
    QObject* m_logTarget;
    Background m_background;
};

} // namespace lorix::viewer
