// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <apps/lorix/answer.h>

#include <lorix/container/lorixparser.h>

#include <QList>

namespace lorix::cli {

/// What the numbers of a container show to be wrong, without reading content:
///
///     section.outside, file.outside     a range that does not lie in the file
///     chain.previousmd5.mismatch        a predecessor other than the recorded one
///     chain.previousmd5.missing         no digest of the predecessor (warning)
///     chain.loop, chain.broken          a link to a section already read, or to none
///     section.marker.damaged            remains of a marker that cannot be read
///     section.trailing                  bytes behind the newest section (warning)
///     file.sectionless                  a file that no section covers (warning)
///     file.method.unknown               neither "none" nor "flate" (warning)
///
/// Sections come newest first, then what concerns the file's end, then files by
/// ascending id.
QList<Finding> structureFindings(const LorixParser& parser, qint64 fileBytes);

/// The range of a section's bytes does not lie inside a file of `fileBytes`.
bool isOutside(const SectionTag& section, qint64 fileBytes);
/// The range of a file's stored bytes does not.
bool isOutside(const FileTag& file, qint64 fileBytes);

} // namespace lorix::cli
