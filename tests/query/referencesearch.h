// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <query/referencenormalform.h>

#include <QHash>
#include <QStringList>

namespace reference {

using Table = QHash<QString, lorix::ReturnValue>;

Table stepTable(const lorix::Workflowstep& step);
Table fileTable(const lorix::FileSummary& file, int parent);

/// The search by plain backtracking: for each variable in the order of `names`
/// the index of its candidate, or nothing where there is no binding. `steps`
/// counts the bindings tried; the search gives up at `most` and sets it to -1.
QList<int> search(const QList<lorix::Summary>& summaries, const lorix::ConjunctiveNormalForm& form,
                  const QStringList& names, bool* found, qint64 most = -1, qint64* steps = nullptr);

/// The names in the leaves of a tree, in order of their first appearance,
/// without those that the form does not mention.
QStringList variableOrder(const Node& tree, const lorix::ConjunctiveNormalForm& form);

} // namespace reference
