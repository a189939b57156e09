// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QString>

/// The example of the project, made by its own tools: a PDF on a cooling fin
/// with three steps, of which one brings in a document with two of its own.
/// Made once for each program; all are paths.
namespace examples {

/// The document as it was made; empty, with a word on why, where it cannot be.
QString coolingFin();

/// A copy in which one letter of the oldest step's title and one byte of
/// result.csv were changed.
QString damaged();

/// A copy from which the newest step was taken off.
QString shorter();

/// A file that went into the document.
QString original(const QString& name);

} // namespace examples
