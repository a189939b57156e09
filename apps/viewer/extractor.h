// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <apps/viewer/extractplan.h>

#include <QObject>
#include <QTimer>

#include <memory>

namespace lorix::cli {
class TargetFolder;
class VerifyingQueue;
} // namespace lorix::cli

namespace lorix::viewer {

/// Writes files to a folder in small pieces between the events of the window.
/// Nothing is written outside of the folder, a name is only given to a file
/// that is complete, and each is compared with its recorded digest on the way.
class Extractor : public QObject
{
    Q_OBJECT

public:
    explicit Extractor(QObject* logTarget, QObject* parent = nullptr);
    ~Extractor() override;

    /// Begins; finished() follows, also when nothing can be written.
    void start(const QSharedPointer<History>& history, const QList<ExtractJob>& jobs,
               const QString& folder);
    /// Does all of it at once, for few and small files.
    void runNow(const QSharedPointer<History>& history, const QList<ExtractJob>& jobs,
                const QString& folder);
    /// Stops. What is complete stays; of the rest nothing is left.
    void cancel();
    bool isRunning() const { return m_timer.isActive(); }
    const QList<ExtractJob>& jobs() const { return m_jobs; }

Q_SIGNALS:
    void progress(int percent, const QString& name);
    void finished();

private:
    void prepare(const QSharedPointer<History>& history, const QList<ExtractJob>& jobs,
                 const QString& folder);
    bool step();
    bool begin(ExtractJob& job);
    void end(ExtractJob& job);

    QObject* m_logTarget;
    QSharedPointer<History> m_history;
    QList<ExtractJob> m_jobs;
    QString m_folder;
    QTimer m_timer;
    int m_next = 0;
    qint64 m_doneBytes = 0;
    qint64 m_totalBytes = 0;
    std::unique_ptr<cli::VerifyingQueue> m_queue; // of the job that is going on
    std::unique_ptr<cli::TargetFolder> m_target;
    QString m_part;
    bool m_written = false;
};

/// What has come of all jobs, in words.
QString describeOutcome(const QList<ExtractJob>& jobs, const QString& folder);

} // namespace lorix::viewer
