// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <lorix/container/lorixparser.h>

#include <QList>

namespace lorix::cli {

/// What stands behind the newest section's marker although no section accounts
/// for it. A marker with a single wrong byte is none to the reader, and the
/// step that it stood for vanishes without a trace: this is the trace.
struct MarkerRemains
{
    /// 0-based offsets of what is left of section markers, one for each line,
    /// in ascending order; at most 1000.
    QList<qint64> damagedMarkers;
    /// First byte behind the newest section that is no white space; -1 when
    /// there is none, or no section.
    qint64 trailingAt = -1;
};

/// Looks through the bytes behind the newest marker, or through the whole file
/// where there is no section, with the blocks of embedded files left out.
MarkerRemains findMarkerRemains(const LorixParser& parser, qint64 fileBytes);

} // namespace lorix::cli
