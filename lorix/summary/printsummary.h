// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <lorix/export.h>
#include <lorix/summary/filesummary.h>
#include <lorix/summary/workflowstep.h>

/// The parts of lorix::printSummary(): dumps for developers, on the debug
/// stream, one labelled value a line. Text stands between double quotes, with
/// quotes, backslashes and control characters in it escaped as Qt does it, so
/// that every value keeps to its line.

/// Writes the file: labels indented by two blanks, without a colon; then the
/// user attributes' values, without units.
LORIX_EXPORT void printFileSummary(const lorix::FileSummary& file);

/// Writes the step: labels without indent, with a colon; its files as
/// printFileSummary() writes them; then the step's own user attributes.
LORIX_EXPORT void printWorkflowstep(const lorix::Workflowstep& step);

namespace lorix {

using ::printFileSummary;
using ::printWorkflowstep;

} // namespace lorix
