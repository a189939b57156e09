// SPDX-License-Identifier: BSD-3-Clause
#include <apps/viewer/checker.h>

#include <apps/lorix/structure.h>
#include <apps/lorix/text.h>

#include <lorix/container/lorixparser.h>

#include <QCoreApplication>

#include <algorithm>

namespace lorix::viewer {

namespace {

const int sliceMs = 12;        // of work between two looks at the window's events
const int showEveryMs = 80;    // marks on screen follow the results in this rhythm
const int chunkBytes = 400000; // a few milliseconds of hashing

struct Text
{
    Q_DECLARE_TR_FUNCTIONS(Checker)
};

// A finding of the structure for people; nothing where the marks say it already.
QString wordsFor(const QString& code, const QString& title)
{
    const QString step = cli::printable(cli::decodedField(title));
    if (code == QLatin1String("chain.previousmd5.mismatch"))
        return Text::tr(
                   "the step before “%1” is not the one that was there when that step was added. "
                   "A step may have been exchanged or taken out.")
            .arg(step);
    if (code == QLatin1String("chain.broken"))
        return Text::tr(
                   "the history is broken off: an older step should come before “%1” but cannot "
                   "be found.")
            .arg(step);
    if (code == QLatin1String("chain.loop"))
        return Text::
            tr("the history leads back to itself at “%1”, so that older steps are out of reach.")
                .arg(step);
    if (code == QLatin1String("section.marker.damaged"))
        return Text::tr("there are remains of a step that cannot be read any more.");
    if (code == QLatin1String("section.trailing"))
        return Text::tr(
            "something was added behind the newest step. The steps are untouched, but no "
            "step says where that comes from.");
    if (code == QLatin1String("file.sectionless"))
        return Text::tr("there are files that belong to no step.");
    return {};
}

} // namespace

QString whyDamaged(const SectionTag& section, qint64 fileBytes)
{
    const qint64 start = qint64{section.position} - section.left;
    if (start < 0 || start + section.size > fileBytes)
        return Text::tr(
            "Part of this step is missing: the document is shorter than it was when the "
            "step was added. It may have been cut off on its way to you.");
    if (section.md5section.isEmpty())
        return Text::tr("No fingerprint was recorded for this step, so nothing proves that it is "
                        "unchanged.");
    return Text::tr(
        "Something in this step was changed after it was added: its bytes no longer have "
        "the fingerprint that was recorded.");
}

QString whyDamaged(const FileTag& file, qint64 fileBytes)
{
    const bool flate = file.compression == QLatin1String("flate");
    const qint64 start = qint64{file.position} + file.taglen + file.offset;
    const qint64 end = start + (flate ? file.cfilesize : file.filesize);
    if (start < 0 || end > fileBytes)
        return Text::tr(
            "Part of this file is missing: the document ends before the file does. It may "
            "have been cut off on its way to you.");
    if (!flate && file.compression != QLatin1String("none"))
        return Text::tr("This file is packed in a way that this program does not know.");
    if (file.md5file.isEmpty())
        return Text::tr("No fingerprint was recorded for this file, so nothing proves that it is "
                        "unchanged.");
    return Text::tr("The content was changed after the file was added: it no longer has the "
                    "fingerprint that was recorded.");
}

Checker::Checker(QObject* logTarget, QObject* parent) : QObject(parent), m_logTarget(logTarget)
{
    connect(&m_timer, &QTimer::timeout, this, &Checker::work);
}

Checker::~Checker() = default;

void Checker::start(const QSharedPointer<History>& history)
{
    clear();
    m_history = history;
    for (const HistoryContainer& container : history->containers())
        m_totalBytes += container.bytes;
    m_sinceChanged.start();
    m_timer.start(0);
    nextContainer();
}

void Checker::cancel()
{
    m_timer.stop();
    if (m_queue)
        m_queue->cancelValidation();
    m_queue.reset();
    Q_EMIT changed();
}

void Checker::clear()
{
    m_timer.stop();
    m_queue.reset();
    m_history.clear();
    m_results = CheckResults();
    m_container = -1;
    m_bytesBefore = 0;
    m_totalBytes = 0;
    Q_EMIT changed();
}

void Checker::nextContainer()
{
    if (m_container >= 0)
        m_bytesBefore += m_history->containers().at(m_container).bytes;
    m_queue.reset();
    if (++m_container >= m_history->containers().size()) {
        m_timer.stop();
        addNotices();
        m_results.setComplete();
        Q_EMIT changed();
        Q_EMIT finished();
        return;
    }
    const int index = m_container;
    const HistoryContainer& container = m_history->containers().at(index);
    m_queue = std::make_unique<ValidationQueue>(container.parser.data(), chunkBytes);
    m_queue->publishToLogSlot(m_logTarget);
    connect(m_queue.get(), &ValidationQueue::sectionProcessed, this, [=](int id, bool valid) {
        const auto section = m_history->containers().at(index).parser->getSection(id);
        m_results.setSection(
            index, id,
            valid ? Verdict{CheckState::Valid, Text::tr("Unchanged since this step was added.")}
                  : Verdict{CheckState::Damaged, whyDamaged(*section, container.bytes)});
    });
    connect(m_queue.get(), &ValidationQueue::fileProcessed, this, [=](int id, bool valid) {
        const auto file = m_history->containers().at(index).parser->getFile(id);
        m_results.setFile(
            index, id,
            valid ? Verdict{CheckState::Valid, Text::tr("Unchanged since this file was added.")}
                  : Verdict{CheckState::Damaged, whyDamaged(*file, container.bytes)});
    });
    connect(m_queue.get(), &ValidationQueue::percentFinishedChanged, this,
            [=](int percent, const QString& what) {
                const double done =
                    static_cast<double>(m_bytesBefore) +
                    static_cast<double>(container.bytes) * std::clamp(percent, 0, 100) / 100.0;
                const double total = std::max<double>(1.0, static_cast<double>(m_totalBytes));
                Q_EMIT progress(static_cast<int>(done * 100.0 / total),
                                lorix::cli::printable(lorix::cli::decodedField(what)));
            });
    m_queue->repopulate(container.parser.data());
}

void Checker::work()
{
    QElapsedTimer slice;
    slice.start();
    const auto* const queue = m_queue.get();
    // A receiver of the signals may cancel or start anew.
    while (m_queue && m_queue.get() == queue && slice.elapsed() < sliceMs) {
        if (!m_queue->process()) {
            if (m_queue && m_queue.get() == queue)
                nextContainer();
            break;
        }
    }
    if (m_queue && m_sinceChanged.elapsed() > showEveryMs) {
        m_sinceChanged.restart();
        Q_EMIT changed();
    }
}

// What concerns no single step or file: links between steps that do not fit,
// bytes that no step vouches for, containers inside that cannot be read.
void Checker::addNotices()
{
    for (const HistoryContainer& container : m_history->containers()) {
        QStringList seen; // once for each kind is enough to act upon
        for (const cli::Finding& finding :
             cli::structureFindings(*container.parser, container.bytes)) {
            const auto section = container.parser->getSection(finding.id);
            const QString words = wordsFor(finding.code, section ? section->title : QString());
            if (words.isEmpty() || seen.contains(finding.code))
                continue;
            seen.append(finding.code);
            m_results.addNotice({finding.severity == QLatin1String("error"),
                                 Text::tr("%1: %2").arg(container.name, words)});
        }
    }
    for (const SkippedContainer& skipped : m_history->tree().skippedContainers())
        m_results.addNotice(
            {skipped.reason == SkippedContainer::Unreadable,
             Text::tr("The history inside “%1” cannot be shown, and was not checked.")
                 .arg(lorix::cli::printable(lorix::cli::decodedField(skipped.filename)))});
}

} // namespace lorix::viewer
