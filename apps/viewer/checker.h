// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <apps/viewer/checkresults.h>

#include <lorix/queues/validationqueue.h>

#include <QElapsedTimer>
#include <QTimer>

#include <memory>

namespace lorix::viewer {

/// Checks every step and every file of a history against what was recorded for
/// them, in small pieces between the events of the window.
class Checker : public QObject
{
    Q_OBJECT

public:
    explicit Checker(QObject* logTarget, QObject* parent = nullptr);
    ~Checker() override;

    /// Forgets all results and begins anew.
    void start(const QSharedPointer<History>& history);
    /// Stops; what has been found so far stays.
    void cancel();
    /// Stops and forgets.
    void clear();
    bool isRunning() const { return m_timer.isActive(); }
    const CheckResults& results() const { return m_results; }

Q_SIGNALS:
    /// Percent done, and what is being looked at.
    void progress(int percent, const QString& what);
    /// There are new results; now and then while it runs, and at the end.
    void changed();
    /// Everything is checked.
    void finished();

private:
    void nextContainer();
    void work();
    void addNotices();

    QObject* m_logTarget;
    QSharedPointer<History> m_history;
    CheckResults m_results;
    QTimer m_timer;
    QElapsedTimer m_sinceChanged;
    std::unique_ptr<ValidationQueue> m_queue;
    int m_container = -1;
    qint64 m_bytesBefore = 0;
    qint64 m_totalBytes = 0;
};

/// In words why a section or file is not what was recorded, as far as its
/// numbers tell.
QString whyDamaged(const SectionTag& section, qint64 fileBytes);
QString whyDamaged(const FileTag& file, qint64 fileBytes);

} // namespace lorix::viewer
