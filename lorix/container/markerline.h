// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <lorix/export.h>

#include <QByteArray>
#include <QString>
#include <QStringList>

namespace lorix {

// The patterns of the three kinds of value in a marker's `[name:value]` fields
// and of the two marker lines, as QRegExp (syntax RegExp, case-sensitive) takes
// them. They define what a marker is; matchSectionMarker() and
// matchFileMarker() give the same answers without the cost of the engine.

/// The pattern of a text in a field.
extern LORIX_EXPORT const QString strRegex;
/// The pattern of a number in a field.
extern LORIX_EXPORT const QString intRegex;
/// The pattern of a digest in a field.
extern LORIX_EXPORT const QString md5Regex;
/// The pattern of a section marker.
extern LORIX_EXPORT const QString sectionRegexStr;
/// The pattern of an embedded-file marker.
extern LORIX_EXPORT const QString fileRegexStr;

/// Begins the header line, which makes a file a container.
inline constexpr char headerPrefix[] = "%<--! $LORIX_PDF [version:1.0]";
/// Begins every section marker line.
inline constexpr char sectionPrefix[] = "%<--! $LORIX_SECTION";
/// Begins every embedded-file marker line.
inline constexpr char filePrefix[] = "%<--! $LORIX_EMBEDDEDFILE_BEGIN";

/// What a marker pattern found at the start of a line.
struct MarkerMatch
{
    int length = -1;    ///< Matched characters (UTF-16 units), "%" to "-->"; -1: no match.
    QStringList fields; ///< The values in marker order, escapes kept.
};

/// Matches a section marker at character 0 of `line`: 9 fields.
LORIX_EXPORT MarkerMatch matchSectionMarker(const QString& line);

/// Matches an embedded-file marker at character 0 of `line`: 11 fields.
LORIX_EXPORT MarkerMatch matchFileMarker(const QString& line);

/// The number in a marker's numeric field: -1 for an empty text, 0 for what is
/// no decimal number within 32 bits.
LORIX_EXPORT int makeInt(const QString& text);

/// The line that a section's digest is taken over in place of the marker line:
/// `line` (raw bytes, line end included) with the digest `md5section` replaced
/// by 32 zeros wherever its field stands, and without the first byte.
LORIX_EXPORT QByteArray zeroedMarkerLine(QByteArray line, const QString& md5section);

} // namespace lorix
