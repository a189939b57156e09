// SPDX-License-Identifier: BSD-3-Clause
#include <apps/viewer/extractor.h>

#include <apps/lorix/targetfolder.h>
#include <apps/lorix/text.h>
#include <apps/lorix/verifyingqueue.h>

#include <lorix/container/lorixparser.h>

#include <QDir>
#include <QElapsedTimer>

#include <algorithm>

namespace lorix::viewer {

namespace {

const int sliceMs = 12; // of work between two looks at the window's events
const int listedProblems = 8;

} // namespace

Extractor::Extractor(QObject* logTarget, QObject* parent) : QObject(parent), m_logTarget(logTarget)
{
    connect(&m_timer, &QTimer::timeout, this, [this] {
        QElapsedTimer slice;
        slice.start();
        while (slice.elapsed() < sliceMs) {
            if (step())
                continue;
            m_timer.stop();
            Q_EMIT finished();
            return;
        }
        const double total = static_cast<double>(std::max<qint64>(1, m_totalBytes));
        const int percent = static_cast<int>(static_cast<double>(m_doneBytes) * 100.0 / total);
        const int shown = std::min(m_next, static_cast<int>(m_jobs.size()) - 1);
        Q_EMIT progress(std::min(percent, 100), m_jobs.at(shown).name);
    });
}

Extractor::~Extractor()
{
    cancel();
}

void Extractor::prepare(const QSharedPointer<History>& history, const QList<ExtractJob>& jobs,
                        const QString& folder)
{
    cancel();
    m_history = history;
    m_jobs = jobs;
    m_folder = folder;
    m_next = 0;
    m_doneBytes = 0;
    m_totalBytes = 0;
    for (const ExtractJob& job : jobs)
        m_totalBytes += std::max<qint64>(0, job.bytes);
}

void Extractor::start(const QSharedPointer<History>& history, const QList<ExtractJob>& jobs,
                      const QString& folder)
{
    prepare(history, jobs, folder);
    m_timer.start(0);
}

void Extractor::runNow(const QSharedPointer<History>& history, const QList<ExtractJob>& jobs,
                       const QString& folder)
{
    prepare(history, jobs, folder);
    while (step()) {
    }
}

void Extractor::cancel()
{
    m_timer.stop();
    if (!m_queue)
        return;
    m_queue->cancelExtraction();
    m_queue.reset();
    cli::TargetFolder::discard(m_part);
}

// One chunk of one file, or the beginning or end of one. Whether there is more.
bool Extractor::step()
{
    if (m_next >= m_jobs.size())
        return false;
    ExtractJob& job = m_jobs[m_next];
    if (!m_queue) {
        if (job.outcome != ExtractJob::Waiting || !begin(job)) {
            m_doneBytes += std::max<qint64>(0, job.bytes);
            ++m_next;
        }
        return true;
    }
    const qint64 before = m_queue->contentBytes();
    const bool more = m_queue->process();
    m_doneBytes += m_queue->contentBytes() - before;
    if (!more) {
        end(job);
        ++m_next;
    }
    return true;
}

bool Extractor::begin(ExtractJob& job)
{
    m_target = std::make_unique<cli::TargetFolder>(m_folder, job.replace);
    QString problem;
    m_part = m_target->begin(job.name, problem);
    if (m_part.isEmpty()) {
        job.outcome = ExtractJob::Failed;
        job.problem = problem;
        return false;
    }
    LorixParser* const parser = m_history->containers().at(job.container).parser.data();
    m_queue = std::make_unique<cli::VerifyingQueue>(parser, true);
    m_queue->publishToLogSlot(m_logTarget);
    m_written = false;
    connect(m_queue.get(), &ExtractionQueue::fileProcessed, this,
            [this](int, bool valid) { m_written = valid; });
    m_queue->startItem();
    m_queue->addExtractees({{job.id, m_part}});
    return true;
}

void Extractor::end(ExtractJob& job)
{
    const auto tag = m_history->containers().at(job.container).parser->getFile(job.id);
    const bool whole = m_written && m_queue->contentBytes() == tag->filesize;
    const bool right = whole && m_queue->contentMd5() == tag->md5file;
    m_queue.reset();
    if (!whole) {
        // Half a file under the name of a whole one would mislead.
        cli::TargetFolder::discard(m_part);
        job.outcome = ExtractJob::Failed;
        job.problem = tr("its content in the document is damaged, so that it cannot be read");
        return;
    }
    job.problem = m_target->commit(m_part, job.name);
    job.outcome = job.problem.isEmpty() ? ExtractJob::Written : ExtractJob::Failed;
    if (job.problem.isEmpty() && !right) {
        job.outcome = ExtractJob::Damaged;
        job.problem = tr("it was written, but is not what was recorded");
    }
}

QString describeOutcome(const QList<ExtractJob>& jobs, const QString& folder)
{
    const auto count = [&](ExtractJob::Outcome outcome) {
        return std::count_if(jobs.cbegin(), jobs.cend(),
                             [=](const ExtractJob& job) { return job.outcome == outcome; });
    };
    const auto written = count(ExtractJob::Written) + count(ExtractJob::Damaged);
    QStringList lines{Extractor::tr("%1 of %2 files were extracted to %3")
                          .arg(written)
                          .arg(jobs.size())
                          .arg(QDir::toNativeSeparators(folder))};
    if (const auto skipped = count(ExtractJob::Skipped); skipped > 0)
        lines.append(Extractor::tr("%1 were skipped because they are there already.").arg(skipped));
    if (const auto waiting = count(ExtractJob::Waiting); waiting > 0)
        lines.append(Extractor::tr("%1 are missing because the work was stopped.").arg(waiting));
    const auto troubled = count(ExtractJob::Damaged) + count(ExtractJob::Failed);
    int listed = 0;
    for (const ExtractJob& job : jobs)
        if (!job.problem.isEmpty() && ++listed <= listedProblems)
            lines.append(QStringLiteral("⚠ %1: %2").arg(cli::printable(job.name), job.problem));
    if (troubled > listedProblems)
        lines.append(Extractor::tr("… and %1 more with a problem").arg(troubled - listedProblems));
    return lines.join(QLatin1Char('\n'));
}

} // namespace lorix::viewer
