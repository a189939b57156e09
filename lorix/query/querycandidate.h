// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <lorix/export.h>
#include <lorix/query/returnvalue.h>
#include <lorix/summary/filesummary.h>
#include <lorix/summary/workflowstep.h>

#include <QHash>
#include <QString>

// What a query's variables are bound to: every workflow step and every file of
// a history is one candidate, a table from attribute names in lower case to
// values.
//
// User attributes stand under "user:" and their name in lower case; where two
// names are then the same, the first in document order wins. "userattrs" lists
// the names as they are, joined by ", ". "any", which every candidate has,
// holds the candidate's strings, "hash", "tagid" and "parentid" left out,
// joined by line feeds. Numbers have six significant digits, as
// ReturnValue::fromNumber() writes them.

/// The candidate that a step makes: iswfs is true, hash is "wfs:<tagId>".
LORIX_EXPORT QHash<QString, lorix::ReturnValue> convertStepToHash(const lorix::Workflowstep& step);

/// The candidate that a file makes: isfile is true, hash is
/// "file:<step>:<file>", parentid is `tagId`, that of the file's step. isinfile
/// and isoutfile are both false for a purpose other than "InFile" and
/// "OutFile".
LORIX_EXPORT QHash<QString, lorix::ReturnValue> convertFileToHash(const lorix::FileSummary& file,
                                                                  int tagId);

/// Describes a candidate: "workflowstep: <title>", "file: <filename>" (with
/// ", not a file of workflowstep ..." where it has no parentid), or "invalid".
LORIX_EXPORT QString getVariableValue(const QHash<QString, lorix::ReturnValue>& candidate);

namespace lorix {
using ::convertFileToHash;
using ::convertStepToHash;
using ::getVariableValue;
} // namespace lorix
