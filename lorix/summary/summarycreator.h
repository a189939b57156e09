// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <lorix/container/lorixparser.h>
#include <lorix/export.h>
#include <lorix/summary/summary.h>

#include <QList>
#include <QObject>

namespace lorix {

/// Tells the history of an open container, step by step.
///
///     LorixParser parser;
///     if (parser.open(path))
///         for (const Summary& step : SummaryCreator().createSummaries(parser))
///             qInfo() << step.title << step.files.size();
///
/// A section whose last file is named "ws_summary.xml" is described by that
/// file. Each file that it names as embedded is tied to the section's embedded
/// file with the same name, MD5 and size, through `tagId`; among several, to
/// the one whose other fields agree best, and each embedded file to one at
/// most. Embedded files that it does not name follow at the end with
/// `fromTags`, the summary file itself among them. A section without such a
/// file, or one whose content cannot be read, is described by its markers
/// alone; `fromXml` is false then. (It is false as well where the text holds no
/// summary; its step is then a default one.)
///
/// Takes time proportional to the number of files and the length of the
/// summaries. The bounds `summaryBytes` and `summaryFiles` of the parser apply:
/// summaries beyond the first count as unreadable, files beyond the second are
/// left out, those of the oldest sections first.
class LORIX_EXPORT SummaryCreator : public QObject
{
    Q_OBJECT

public:
    explicit SummaryCreator(QObject* parent = nullptr);

    /// One summary per section, oldest first, each with the section's number
    /// in `tagId`; then, if there are embedded files outside of all sections,
    /// one with the title "<unmatched files>", `tagId` 0, that lists these.
    QList<Summary> createSummaries(LorixParser& parser) const;
};

} // namespace lorix
