// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <lorix/container/filetag.h>
#include <lorix/container/sectiontag.h>
#include <lorix/export.h>
#include <lorix/summary/workflowstep.h>

#include <QList>
#include <QString>

namespace lorix {

/// The description of one section: its step, and where that came from.
struct Summary : Workflowstep
{
    QString md5;          ///< "MD5Signature" of the XML summary.
    bool fromXml = false; ///< Filled from an XML summary.
};

/// What the markers alone tell of a section: title and creator of the step,
/// and one file per tag, in the order given. `md5` stays empty.
LORIX_EXPORT Summary makeSummaryFromTags(const SectionTag& section, const QList<FileTag>& files);

/// Writes the summary, its step and its files to the debug stream.
LORIX_EXPORT void printSummary(const Summary& summary);

} // namespace lorix
