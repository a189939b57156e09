// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QByteArray>
#include <QString>

/// Documents that the viewer's tests open, as a person would have them: a
/// report on a cooling fin, made in four steps, of which one brings in a
/// document with two steps of its own.
namespace samples {

/// The whole document, in memory.
QByteArray report();

/// The same, with one character of the file "temperatures.csv" changed.
QByteArray damagedReport();

/// A later edition: another tool in the newest step but one, one step less, and
/// one more.
QByteArray otherReport();

/// The report with its two steps in the middle in another order.
QByteArray reorderedReport();

/// A document with this many steps of `filesPerStep` tiny files each.
QByteArray large(int steps, int filesPerStep);

/// Writes bytes to a file and gives its path.
QString write(const QString& path, const QByteArray& bytes);

} // namespace samples
