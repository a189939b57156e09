// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <lorix/container/filetag.h>
#include <lorix/container/lorixparser.h>
#include <lorix/container/sectiontag.h>
#include <lorix/export.h>
#include <lorix/summary/summary.h>

#include <QList>
#include <QMultiHash>
#include <QPair>
#include <QString>

/// What SummaryCreator is made of.

namespace lorix {

/// Embedded files with the number of their section, by makeFileHash() of both.
/// Among equal keys the one inserted last comes first.
using TagHash = QMultiHash<QString, QPair<FileTag, int>>;

} // namespace lorix

/// An entry for every file of every section, in the order in which the parser
/// lists them.
LORIX_EXPORT lorix::TagHash makeTagHash(lorix::LorixParser& parser);

/// The summaries of all sections, oldest first, then, if there are files
/// outside of all sections, one for these. See lorix::SummaryCreator.
LORIX_EXPORT QList<lorix::Summary> makeSummaries(lorix::LorixParser& parser,
                                                 const lorix::TagHash& tagHash);

/// A copy of what was read from the XML summary of `section`, with the
/// section's number; with the number of the embedded file that holds its bytes
/// in each file that is said to be embedded and has one; and with a record, at
/// the end, for each of the section's embedded files that were not matched, by
/// ascending number. Matched entries are erased from `hash`. Takes time
/// proportional to the hash.
LORIX_EXPORT lorix::Summary augmentSummary(const lorix::Summary& summary,
                                           const lorix::SectionTag& section, lorix::TagHash& hash);

/// A summary with the title "<unmatched files>" that lists the files.
LORIX_EXPORT lorix::Summary makeUnmatchedTagSummary(const QList<lorix::FileTag>& tags);

namespace lorix {

using ::augmentSummary;
using ::makeSummaries;
using ::makeTagHash;
using ::makeUnmatchedTagSummary;

} // namespace lorix
