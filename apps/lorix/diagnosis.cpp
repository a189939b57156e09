// SPDX-License-Identifier: BSD-3-Clause
#include <apps/lorix/diagnosis.h>

#include <apps/lorix/structure.h>
#include <apps/lorix/text.h>

#include <lorix/container/inflater.h>
#include <lorix/container/md5generator.h>
#include <lorix/queues/storedrange.h>
#include <lorix/queues/validatee.h>

#include <algorithm>
#include <functional>

namespace lorix::cli {

namespace {

constexpr qint64 pieceBytes = 1024 * 1024;

// Hands out [from, to) piece by piece; false when not all of it can be read.
bool readRange(const LorixParser& parser, qint64 from, qint64 to,
               const std::function<void(const QByteArray&)>& take)
{
    for (qint64 at = from; at < to; at += pieceBytes) {
        const int length = static_cast<int>(std::min(pieceBytes, to - at));
        const QByteArray bytes = parser.getBytes(static_cast<int>(at), length);
        if (bytes.size() != length)
            return false;
        take(bytes);
    }
    return true;
}

class Findings
{
public:
    Findings(const QString& subject, int id, qint64 offset)
        : m_subject(subject), m_id(id), m_offset(offset)
    {}

    void add(const char* code, const QString& words, const QString& expected = QString(),
             const QString& found = QString())
    {
        Finding finding;
        finding.code = QLatin1String(code);
        finding.severity = QStringLiteral("error");
        finding.id = m_id;
        finding.offset = m_offset;
        finding.expected = expected;
        finding.found = found;
        finding.message = m_subject + QStringLiteral(": ") + words;
        diagnosis.findings.append(finding);
        m_words.append(words);
        diagnosis.words = m_words.join(QStringLiteral("; "));
    }

    Diagnosis diagnosis;

private:
    QString m_subject;
    QStringList m_words;
    int m_id;
    qint64 m_offset;
};

const QString truncatedWords = QStringLiteral("the document was cut short while it was read");

} // namespace

Diagnosis diagnose(const LorixParser& parser, const SectionTag& section, qint64 fileBytes)
{
    Findings findings(QStringLiteral("section %1").arg(section.id), section.id,
                      qint64(section.position) - 1);
    const qint64 start = qint64(section.position) - section.left;
    const qint64 end = start + section.size;
    if (isOutside(section, fileBytes)) {
        findings.add("section.outside", QStringLiteral("reaches outside the file"));
        return findings.diagnosis;
    }
    if (section.md5section.isEmpty())
        findings.add("section.digest.missing", QStringLiteral("no digest is recorded"));
    MD5Generator digest;
    const auto feed = [&digest](const QByteArray& bytes) { digest.update(bytes); };
    // The marker counts with its own digest as zeros.
    const bool holdsMarker = section.left >= 0 && section.left <= section.size;
    bool whole = readRange(parser, start, holdsMarker ? section.position : end, feed);
    if (holdsMarker) {
        digest.update(section.validationTag);
        whole =
            whole && readRange(parser, section.position + section.validationTag.size(), end, feed);
    }
    if (!whole)
        findings.add("input.truncated", truncatedWords);
    else if (!section.md5section.isEmpty())
        findings.add("section.digest.mismatch", QStringLiteral("the content differs"),
                     section.md5section, digest.getHexDigest());
    return findings.diagnosis;
}

Diagnosis diagnose(const LorixParser& parser, const FileTag& file, qint64 fileBytes)
{
    const Validatee item = Validatee::fromFile(file);
    Findings findings(
        QStringLiteral("file %1, %2").arg(file.id).arg(quoted(decodedField(file.filename))),
        file.id, item.start);
    if (isOutside(file, fileBytes)) {
        findings.add("file.outside", QStringLiteral("reaches outside the file"));
        return findings.diagnosis;
    }
    const bool flate = file.compression == QLatin1String("flate");
    if (item.md5.isEmpty() || (flate && item.cmd5.isEmpty()))
        findings.add("file.digest.missing", QStringLiteral("no digest is recorded"));
    MD5Generator stored;
    MD5Generator content;
    Inflater inflater;
    const bool whole =
        readRange(parser, item.start, qint64(item.start) + item.size, [&](const QByteArray& bytes) {
            stored.update(bytes);
            if (flate)
                inflater.inflatePieces(bytes, [&content](const char* piece, qsizetype count) {
                    content.update(QByteArray::fromRawData(piece, count));
                });
        });
    if (!whole) {
        findings.add("input.truncated", truncatedWords);
        return findings.diagnosis;
    }
    MD5Generator& plain = flate ? content : stored;
    if (flate && !item.cmd5.isEmpty() && stored.getHexDigest() != item.cmd5)
        findings.add("file.stored.mismatch", QStringLiteral("the stored bytes differ"), item.cmd5,
                     stored.getHexDigest());
    if (flate && !inflater.isValid())
        findings.add("file.stream.damaged", QStringLiteral("the stream is damaged"));
    else if (flate && !inflater.hasFinished())
        findings.add("file.stream.cut", QStringLiteral("the stream is cut short"));
    else if (!item.md5.isEmpty() && plain.getHexDigest() != item.md5)
        findings.add("file.content.mismatch", QStringLiteral("the content differs"), item.md5,
                     plain.getHexDigest());
    return findings.diagnosis;
}

} // namespace lorix::cli
