// SPDX-License-Identifier: BSD-3-Clause
#include <apps/lorix/extractrun.h>

#include <apps/lorix/container.h>
#include <apps/lorix/crew.h>
#include <apps/lorix/interrupt.h>
#include <apps/lorix/structure.h>
#include <apps/lorix/text.h>
#include <apps/lorix/verifyingqueue.h>

#include <lorix/queues/storedrange.h>

#include <QFile>
#include <QFileInfo>

#include <algorithm>

namespace lorix::cli {

namespace {

constexpr qint64 chunkBytes = 100000;

void addFinding(ExtractItem& item, const char* code, const QString& words,
                const QString& expected = QString(), const QString& found = QString())
{
    Finding finding;
    finding.code = QLatin1String(code);
    finding.severity = QStringLiteral("error");
    finding.id = item.file.id;
    finding.offset = storedStart(item.file);
    finding.expected = expected;
    finding.found = found;
    finding.message = QStringLiteral("file %1, %2: %3")
                          .arg(item.file.id)
                          .arg(quoted(decodedField(item.file.filename)), words);
    item.findings.append(finding);
}

bool isFlate(const FileTag& file)
{
    return file.compression == QLatin1String("flate");
}

QString md5OfFile(const QString& path)
{
    MD5Generator digest;
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    for (QByteArray piece = file.read(chunkBytes); !piece.isEmpty(); piece = file.read(chunkBytes))
        digest.update(piece);
    return digest.getHexDigest();
}

} // namespace

ExtractRun::ExtractRun(LorixParser& parser, const QString& path, const TargetFolder& folder,
                       const Options& options, QList<ExtractItem>& items)
    : m_parser(parser), m_path(path), m_fileBytes(QFileInfo(path).size()), m_folder(folder),
      m_options(options), m_items(items)
{
    for (int i = 0; i < items.size(); ++i) {
        m_order.append(i);
        m_totalBytes += std::max(storedSize(items.at(i).file), 0);
    }
    std::stable_sort(m_order.begin(), m_order.end(), [&items](int a, int b) {
        return storedSize(items.at(a).file) > storedSize(items.at(b).file);
    });
}

ExtractItem* ExtractRun::takeNext()
{
    const int next = m_next++;
    if (next >= m_order.size() || Interrupt::requested())
        return nullptr;
    return m_first + m_order.at(next);
}

bool ExtractRun::run(const std::function<void(qint64)>& tick)
{
    m_first = m_items.data(); // Detached here, before several threads write to it.
    const auto tell = [&] { tick(m_done); };
    runCrew(
        usefulJobs(m_options.jobs, m_items.size(), m_totalBytes), [&] { work(m_parser, tell); },
        [this] {
            LorixParser parser;
            if (openAgain(parser, m_path, m_parser))
                work(parser, [] {});
        },
        tell);
    return !Interrupt::requested();
}

void ExtractRun::work(LorixParser& parser, const std::function<void()>& afterStep)
{
    VerifyingQueue queue(&parser, m_options.verify);
    while (ExtractItem* item = takeNext())
        extract(queue, parser, *item, afterStep);
}

void ExtractRun::extract(VerifyingQueue& queue, LorixParser& parser, ExtractItem& item,
                         const std::function<void()>& afterStep)
{
    if (isOutside(item.file, m_fileBytes)) {
        addFinding(item, "file.outside", QStringLiteral("reaches outside the file"));
        return;
    }
    if (!isFlate(item.file) && item.file.compression != QLatin1String("none")) {
        addFinding(item, "file.method.unknown",
                   QStringLiteral("is stored by a method that is not known: %1")
                       .arg(quoted(item.file.compression)));
        return;
    }
    const QString part = m_folder.begin(item.name, item.failure);
    if (part.isEmpty())
        return;
    const bool complete = isFlate(item.file) && item.file.md5cfile.isEmpty()
                              ? writeWithoutStoredDigest(parser, item, part)
                              : write(queue, item, part, afterStep);
    if (complete && (item.findings.isEmpty() || m_options.keepBad)) {
        item.failure = m_folder.commit(part, item.name);
        item.written = item.failure.isEmpty();
    } else {
        TargetFolder::discard(part);
    }
}

// Whether the file stands there as far as it can be had; findings say where it
// is not what it should be.
bool ExtractRun::write(VerifyingQueue& queue, ExtractItem& item, const QString& part,
                       const std::function<void()>& afterStep)
{
    QString complaint;
    QString systemsWord;
    bool whole = false;
    QObject guard;
    QObject::connect(&queue, QOverload<QString, int>::of(&LogSource::log), &guard,
                     [&](const QString& message, int type) {
                         if (type == 2) {
                             complaint = message;
                             systemsWord = queue.targetError();
                         }
                     });
    QObject::connect(&queue, &ExtractionQueue::fileProcessed, &guard,
                     [&whole](int, bool valid) { whole = valid; });
    queue.startItem();
    queue.addExtractees({{item.file.id, part}});
    qint64 counted = 0;
    for (bool more = true; more;) {
        more = queue.process();
        const qint64 rest = storedSize(item.file) - counted;
        counted += more ? std::min(chunkBytes, rest) : rest;
        m_done += more ? std::min(chunkBytes, rest) : rest;
        afterStep();
        if (more && Interrupt::requested()) {
            queue.cancelExtraction();
            return false;
        }
        // No use in filling the disk with what cannot be right.
        if (queue.contentBytes() > item.file.filesize) {
            queue.cancelExtraction();
            addFinding(item, "file.size.mismatch",
                       QStringLiteral("the content is larger than the %1 bytes recorded")
                           .arg(item.file.filesize));
            return true;
        }
    }
    if (complaint.contains(QLatin1String("not write"))) {
        item.failure = QStringLiteral("cannot be written: %1").arg(systemsWord);
        return false;
    }
    if (complaint.contains(QLatin1String("not read"))) {
        addFinding(item, "input.truncated",
                   QStringLiteral("the document was cut short while it was read"));
        return true;
    }
    if (!whole)
        addFinding(item, "file.stream.damaged", QStringLiteral("the stream is damaged"));
    else if (queue.contentBytes() != item.file.filesize)
        addFinding(item, "file.stream.cut",
                   QStringLiteral("has %1 of the %2 bytes recorded")
                       .arg(queue.contentBytes())
                       .arg(item.file.filesize));
    if (m_options.verify)
        verify(queue, item);
    return true;
}

void ExtractRun::verify(VerifyingQueue& queue, ExtractItem& item) const
{
    if (isFlate(item.file) && queue.storedMd5() != item.file.md5cfile)
        addFinding(item, "file.stored.mismatch", QStringLiteral("the stored bytes differ"),
                   item.file.md5cfile, queue.storedMd5());
    if (queue.contentMd5() != item.file.md5file)
        addFinding(item, "file.content.mismatch", QStringLiteral("the content differs"),
                   item.file.md5file, queue.contentMd5());
}

// The queue takes such a file for one that is stored as it is.
bool ExtractRun::writeWithoutStoredDigest(LorixParser& parser, ExtractItem& item,
                                          const QString& part)
{
    const bool written = parser.writeFileToDisk(item.file.id, part);
    m_done += storedSize(item.file);
    if (!written) {
        item.failure = QStringLiteral("cannot be written");
        return false;
    }
    const qint64 size = QFileInfo(part).size();
    if (size != item.file.filesize)
        addFinding(
            item, "file.stream.damaged",
            QStringLiteral("has %1 of the %2 bytes recorded").arg(size).arg(item.file.filesize));
    else if (m_options.verify && md5OfFile(part) != item.file.md5file)
        addFinding(item, "file.content.mismatch", QStringLiteral("the content differs"),
                   item.file.md5file, md5OfFile(part));
    return true;
}

} // namespace lorix::cli
