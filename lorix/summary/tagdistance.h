// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <lorix/container/filetag.h>
#include <lorix/container/sectiontag.h>
#include <lorix/export.h>
#include <lorix/summary/filesummary.h>
#include <lorix/summary/workflowstep.h>

/// How far a marker and what an XML summary says are apart.

/// A weighted count of disagreements: 20 each for the name, the content's MD5
/// and the content's size; 1 each for type, description and comment; 2 each for
/// the stored bytes' MD5, their size and the compression. 0 where all agree.
LORIX_EXPORT int distance(const lorix::FileTag& tag, const lorix::FileSummary& file);

/// Whether name, content MD5 and stored MD5 agree.
LORIX_EXPORT bool filesEqual(const lorix::FileSummary& file, const lorix::FileTag& tag);

/// True for every step and section: nothing in a marker could tell them apart,
/// and callers rely on it.
LORIX_EXPORT bool workflowstepsEqual(const lorix::Workflowstep& step,
                                     const lorix::SectionTag& section);

namespace lorix {

using ::distance;
using ::filesEqual;
using ::workflowstepsEqual;

} // namespace lorix
