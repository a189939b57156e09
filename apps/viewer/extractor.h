// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <apps/viewer/background.h>
#include <apps/viewer/extractplan.h>

#include <QObject>
#include <QTimer>

#include <memory>

namespace lorix::cli {
class TargetFolder;
class VerifyingQueue;
} // namespace lorix::cli

namespace lorix::viewer {

/// What has come of a file that was written in one go.
enum class WholeFile { Missing, Wrong, Right };

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
    bool isRunning() const { return m_timer.isActive() || m_writer.isBusy(); }
    const QList<ExtractJob>& jobs() const { return m_jobs; }

Q_SIGNALS:
    void progress(int percent, const QString& name);
    void finished();

private:
    void prepare(const QSharedPointer<History>& history, const QList<ExtractJob>& jobs,
                 const QString& folder);
    bool step();
    void begin(ExtractJob& job);
    void end(ExtractJob& job);
    void fail(ExtractJob& job, const QString& problem);
    void commit(ExtractJob& job, bool right);
    void writeWhole(ExtractJob& job, const FileTag& tag, const QString& path);
    void endWhole(ExtractJob& job, WholeFile file);

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
    QString m_complaint; // of the queue
    QString m_systemsWord;
    Background m_writer;
};

/// What has come of all jobs, in words.
QString describeOutcome(const QList<ExtractJob>& jobs, const QString& folder);

} // namespace lorix::viewer
