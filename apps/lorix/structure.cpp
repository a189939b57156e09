// SPDX-License-Identifier: BSD-3-Clause
#include <apps/lorix/structure.h>

#include <apps/lorix/markerremains.h>
#include <apps/lorix/text.h>

#include <lorix/queues/storedrange.h>

#include <QSet>

namespace lorix::cli {

namespace {

QString sectionName(const SectionTag& section)
{
    return QStringLiteral("section %1").arg(section.id);
}

QString fileName(const FileTag& file)
{
    return QStringLiteral("file %1, %2").arg(file.id).arg(quoted(decodedField(file.filename)));
}

Finding atSection(const SectionTag& section, const char* code, const char* severity,
                  const QString& text)
{
    Finding finding;
    finding.code = QLatin1String(code);
    finding.severity = QLatin1String(severity);
    finding.id = section.id;
    finding.offset = qint64(section.position) - 1;
    finding.message = sectionName(section) + QStringLiteral(": ") + text;
    return finding;
}

Finding atFile(const FileTag& file, const char* code, const char* severity, const QString& text)
{
    Finding finding;
    finding.code = QLatin1String(code);
    finding.severity = QLatin1String(severity);
    finding.id = file.id;
    finding.offset = qint64(file.position) - 1;
    finding.message = fileName(file) + QStringLiteral(": ") + text;
    return finding;
}

bool leavesFile(qint64 start, qint64 size, qint64 fileBytes)
{
    return start < 0 || size < 0 || start + size > fileBytes;
}

QString rangeText(qint64 start, qint64 size, qint64 fileBytes)
{
    return QStringLiteral("%1 bytes from byte %2 on are outside the file of %3 bytes")
        .arg(size)
        .arg(start)
        .arg(fileBytes);
}

void checkLink(const SectionTag& section, const SectionTag& previous, QList<Finding>& findings)
{
    if (section.previousmd5 == previous.md5section)
        return;
    const bool missing = section.previousmd5.isEmpty();
    Finding finding = atSection(
        section, missing ? "chain.previousmd5.missing" : "chain.previousmd5.mismatch",
        missing ? "warning" : "error",
        missing ? QStringLiteral("records no digest of the section before it")
                : QStringLiteral("the section before it is not the one that it was added to"));
    finding.expected = section.previousmd5;
    finding.found = previous.md5section;
    findings.append(finding);
}

// The oldest section that could be reached must name no predecessor.
void checkChainEnd(const QList<SectionTag>& sections, QList<Finding>& findings)
{
    const SectionTag& oldest = sections.constLast();
    if (oldest.previousmarker < 0)
        return;
    const qint64 target = qint64(oldest.position) - 1 - oldest.previousmarker;
    bool loops = false;
    for (const SectionTag& section : sections)
        loops = loops || section.position - 1 == target;
    findings.append(
        atSection(oldest, loops ? "chain.loop" : "chain.broken", "error",
                  loops ? QStringLiteral("names a section that comes after it as its predecessor")
                        : QStringLiteral("there is no section at byte %1, where the one before it "
                                         "should be")
                              .arg(target)));
}

void checkFiles(const LorixParser& parser, qint64 fileBytes, QList<Finding>& findings)
{
    QSet<int> sectionless;
    if (parser.getNumSections() > 0)
        for (const FileTag& file : parser.getSectionlessFiles())
            sectionless.insert(file.id);
    for (const FileTag& file : parser.getFiles()) {
        if (isOutside(file, fileBytes)) {
            const qint64 start = qint64(file.position) + file.taglen + file.offset;
            findings.append(atFile(file, "file.outside", "error",
                                   rangeText(start, storedSize(file), fileBytes)));
        }
        if (file.compression != QLatin1String("none") && file.compression != QLatin1String("flate"))
            findings.append(atFile(file, "file.method.unknown", "warning",
                                   QStringLiteral("is stored by a method that is not known: %1")
                                       .arg(quoted(file.compression))));
        if (sectionless.contains(file.id))
            findings.append(atFile(file, "file.sectionless", "warning",
                                   QStringLiteral("belongs to no section")));
    }
}

} // namespace

bool isOutside(const SectionTag& section, qint64 fileBytes)
{
    return leavesFile(qint64(section.position) - section.left, section.size, fileBytes);
}

bool isOutside(const FileTag& file, qint64 fileBytes)
{
    return leavesFile(qint64(file.position) + file.taglen + file.offset, storedSize(file),
                      fileBytes);
}

QList<Finding> structureFindings(const LorixParser& parser, qint64 fileBytes)
{
    QList<Finding> findings;
    const QList<SectionTag> sections = parser.getSections();
    for (qsizetype i = 0; i < sections.size(); ++i) {
        const SectionTag& section = sections.at(i);
        if (isOutside(section, fileBytes))
            findings.append(atSection(
                section, "section.outside", "error",
                rangeText(qint64(section.position) - section.left, section.size, fileBytes)));
        if (i + 1 < sections.size())
            checkLink(section, sections.at(i + 1), findings);
    }
    if (!sections.isEmpty())
        checkChainEnd(sections, findings);
    const MarkerRemains remains = findMarkerRemains(parser, fileBytes);
    for (const qint64 offset : remains.damagedMarkers) {
        Finding finding;
        finding.code = QStringLiteral("section.marker.damaged");
        finding.severity = QStringLiteral("error");
        finding.offset = offset;
        finding.message =
            QStringLiteral("at byte %1: a section's marker that cannot be read").arg(offset);
        findings.append(finding);
    }
    if (remains.trailingAt >= 0) {
        Finding finding = atSection(
            sections.constFirst(), "section.trailing", "warning",
            QStringLiteral("is the newest one, but %1 bytes come behind it, from byte %2 on")
                .arg(fileBytes - remains.trailingAt)
                .arg(remains.trailingAt));
        finding.offset = remains.trailingAt;
        findings.append(finding);
    }
    checkFiles(parser, fileBytes, findings);
    return findings;
}

} // namespace lorix::cli
