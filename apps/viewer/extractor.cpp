// SPDX-License-Identifier: BSD-3-Clause
#include <apps/viewer/extractor.h>

#include <apps/viewer/targetwords.h>

#include <apps/lorix/structure.h>
#include <apps/lorix/targetfolder.h>
#include <apps/lorix/text.h>
#include <apps/lorix/verifyingqueue.h>

#include <lorix/container/lorixparser.h>

#include <QCryptographicHash>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>

#include <algorithm>

namespace lorix::viewer {

namespace {

const int sliceMs = 12; // of work between two looks at the window's events
const int listedProblems = 8;

bool isFlate(const FileTag& file)
{
    return file.compression == QLatin1String("flate");
}

WholeFile writeFile(const QString& container, const FileTag& tag, const QString& path)
{
    LorixParser parser;
    const auto found = parser.open(container) ? parser.getFile(tag.id) : nullptr;
    if (!found || found->position != tag.position || !parser.writeFileToDisk(tag.id, path))
        return WholeFile::Missing;
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly) || file.size() != tag.filesize)
        return WholeFile::Missing;
    QCryptographicHash hash(QCryptographicHash::Md5);
    hash.addData(&file);
    return QString::fromLatin1(hash.result().toHex()) == tag.md5file ? WholeFile::Right
                                                                     : WholeFile::Wrong;
}

} // namespace

Extractor::Extractor(QObject* logTarget, QObject* parent) : QObject(parent), m_logTarget(logTarget)
{
    connect(&m_timer, &QTimer::timeout, this, [this] {
        QElapsedTimer slice;
        slice.start();
        while (slice.elapsed() < sliceMs && !m_writer.isBusy()) {
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
    m_writer.cancel();
    if (m_part.isEmpty())
        return;
    if (m_queue)
        m_queue->cancelExtraction();
    m_queue.reset();
    cli::TargetFolder::discard(m_part);
    m_part.clear();
}

// One chunk of one file, or the beginning or end of one. Whether there is more.
bool Extractor::step()
{
    if (m_next >= m_jobs.size())
        return false;
    ExtractJob& job = m_jobs[m_next];
    if (job.outcome != ExtractJob::Waiting) {
        m_doneBytes += std::max<qint64>(0, job.bytes);
        ++m_next;
        return true;
    }
    if (!m_queue) {
        begin(job);
        return true;
    }
    const qint64 before = m_queue->contentBytes();
    const bool more = m_queue->process();
    m_doneBytes += m_queue->contentBytes() - before;
    if (more && m_queue->contentBytes() > job.bytes) {
        // No use in filling the disk with what cannot be right.
        m_queue->cancelExtraction();
        fail(job, tr("its content is larger than what was recorded"));
    } else if (!more) {
        end(job);
    }
    return true;
}

void Extractor::fail(ExtractJob& job, const QString& problem)
{
    m_queue.reset();
    if (!m_part.isEmpty())
        cli::TargetFolder::discard(m_part);
    m_part.clear();
    job.outcome = ExtractJob::Failed;
    job.problem = problem;
}

void Extractor::begin(ExtractJob& job)
{
    const HistoryContainer& container = m_history->containers().at(job.container);
    const auto tag = container.parser->getFile(job.id);
    if (cli::isOutside(*tag, container.bytes)) {
        fail(job, tr("it is not wholly in the document, which may have been cut off"));
        return;
    }
    if (!isFlate(*tag) && tag->compression != QLatin1String("none")) {
        fail(job, tr("it is packed in a way that this program does not know"));
        return;
    }
    m_target = std::make_unique<cli::TargetFolder>(m_folder, job.replace);
    QString problem;
    m_part = m_target->begin(job.name, problem);
    if (m_part.isEmpty()) {
        fail(job, targetWords(problem));
        return;
    }
    // The queue takes such a file for one that is stored as it is.
    if (isFlate(*tag) && tag->md5cfile.isEmpty()) {
        writeWhole(job, *tag, container.path);
        return;
    }
    m_queue = std::make_unique<cli::VerifyingQueue>(container.parser.data(), true);
    m_queue->publishToLogSlot(m_logTarget);
    m_written = false;
    m_complaint.clear();
    connect(m_queue.get(), QOverload<QString, int>::of(&LogSource::log), this,
            [this](const QString& message, int type) {
                if (type != 2)
                    return;
                m_complaint = message;
                m_systemsWord = m_queue->targetError();
            });
    connect(m_queue.get(), &ExtractionQueue::fileProcessed, this,
            [this](int, bool valid) { m_written = valid; });
    m_queue->startItem();
    m_queue->addExtractees({{job.id, m_part}});
}

// In one go, and therefore beside the window, with a parser of its own.
void Extractor::writeWhole(ExtractJob& job, const FileTag& tag, const QString& path)
{
    const QString part = m_part;
    if (!m_timer.isActive()) {
        endWhole(job, writeFile(path, tag, part));
        return;
    }
    m_timer.stop();
    const int number = m_next;
    m_writer.start([=](const Background::Cancelled& cancelled) -> Background::Finish {
        const WholeFile file = writeFile(path, tag, part);
        if (cancelled())
            cli::TargetFolder::discard(part);
        return [=] {
            endWhole(m_jobs[number], file);
            m_timer.start(0);
        };
    });
}

void Extractor::endWhole(ExtractJob& job, WholeFile file)
{
    if (file == WholeFile::Missing)
        fail(job, tr("its content in the document is damaged, so that it cannot be read"));
    else
        commit(job, file == WholeFile::Right);
}

void Extractor::end(ExtractJob& job)
{
    const auto tag = m_history->containers().at(job.container).parser->getFile(job.id);
    const bool whole = m_written && m_queue->contentBytes() == tag->filesize;
    const bool right = whole && m_queue->contentMd5() == tag->md5file;
    m_queue.reset();
    // Half a file under the name of a whole one would mislead.
    if (m_complaint.contains(QLatin1String("not write")))
        fail(job, targetWords(QStringLiteral("cannot be written: %1").arg(m_systemsWord)));
    else if (m_complaint.contains(QLatin1String("not read")))
        fail(job, tr("the document was cut short while it was read"));
    else if (!whole)
        fail(job, tr("its content in the document is damaged, so that it cannot be read"));
    else
        commit(job, right);
}

void Extractor::commit(ExtractJob& job, bool right)
{
    const QString problem = m_target->commit(m_part, job.name);
    m_part.clear();
    job.problem = problem.isEmpty() ? QString() : targetWords(problem);
    job.outcome = problem.isEmpty() ? ExtractJob::Written : ExtractJob::Failed;
    if (problem.isEmpty() && !right) {
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
