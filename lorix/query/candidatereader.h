// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <lorix/query/returnvalue.h>
#include <lorix/summary/summary.h>

#include <QHash>
#include <QList>
#include <QString>

#include <vector>

namespace lorix {

/// One attribute, found once by its name and then read from many candidates.
struct AttributeReader
{
    explicit AttributeReader(const QString& attribute);

    QString key;         ///< In lower case.
    int stepField = -1;  ///< In the table of steps, -1 where they have none.
    int fileField = -1;  ///< In the table of files.
    bool isUser = false; ///< One of "user:".
    bool isAny = false;  ///< "any".
};

/// One step, or one file and its step. The records must outlive it.
struct Candidate
{
    const Workflowstep* step;
    const FileSummary* file; ///< Null for the step itself.

    /// The attribute's value, NoSuchAttribute where there is none.
    ReturnValue value(const AttributeReader& attribute) const;

    QHash<QString, ReturnValue> table() const;
};

/// The candidates of a history: each step followed by its files.
std::vector<Candidate> makeCandidates(const QList<Summary>& summaries);

} // namespace lorix
