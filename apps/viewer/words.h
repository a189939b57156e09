// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QString>

namespace lorix::viewer {

/// What a file was to its step, for people: "Input", "Output", "File".
QString purposeName(const QString& filePurpose);

/// The same as it stands in front of a name in the picture: "in", "out", "".
QString purposeArrow(const QString& filePurpose);

/// A tool tip that shows the text as it stands, also where that looks like
/// HTML, and no more of it than fits on a screen.
QString plainTip(const QString& text);

/// "20.0 KiB (20 480 bytes)"; a dash when unknown.
QString exactSize(qint64 bytes);

} // namespace lorix::viewer
