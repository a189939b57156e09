// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <apps/viewer/history.h>

#include <lorix/tree/lorixdiffresult.h>

#include <QList>
#include <QString>

namespace lorix::viewer {

/// One field of two steps that are taken for the same.
struct FieldPair
{
    QString field; ///< For people.
    QString left;
    QString right;
    bool differs() const { return left != right; }
};

/// A step of the left document beside its partner in the right one.
struct ComparisonRow
{
    int left = -1;       ///< Node, -1 where only the right document has the step.
    int right = -1;      ///< Likewise.
    bool moved = false;  ///< It follows another step than its partner does.
    QStringList changed; ///< The fields that differ, for people.

    bool isSame() const { return left >= 0 && right >= 0 && !moved && changed.isEmpty(); }
};

/// All rows for one association of the steps of two histories, in the order of
/// the left one; what only the right one has stands where it belongs there.
QList<ComparisonRow> compareHistories(const History& left, const History& right,
                                      const LorixDiffResult& match);

/// The fields of two steps, those that are empty in both left out; a node of -1
/// has empty fields.
QList<FieldPair> compareSteps(const History& left, int leftNode, const History& right,
                              int rightNode);

/// What a row says, in words: "same", "only on the left", "moved; differs in ...".
QString describeRow(const ComparisonRow& row);

} // namespace lorix::viewer
