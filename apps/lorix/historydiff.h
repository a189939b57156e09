// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <apps/lorix/stepdifferences.h>
#include <apps/lorix/text.h>

#include <lorix/tree/lorixdiffresult.h>
#include <lorix/tree/workflowtree.h>

#include <QJsonObject>
#include <QList>
#include <QStringList>

namespace lorix::cli {

/// One line of a comparison: a step of each side, or of one side alone.
struct ComparedStep
{
    int left = NULL_NODE;
    int right = NULL_NODE;
    bool moved = false; ///< Both are there, below different parents.
    QList<Difference> differences;
};

/// One association of two histories.
struct Comparison
{
    float costs = 0.0F;
    QList<ComparedStep> steps; ///< In the left history's order.

    int count(bool (*which)(const ComparedStep&)) const;
    bool isSame() const;
};

/// Compares two histories within bounds: by the exact search as long as that
/// ends soon, else by the quick match.
class HistoryDiff
{
public:
    int count = 1;              ///< Associations wanted; more than one from the exact search.
    qint64 expansions = 200000; ///< What the exact search may do; 0 leaves it out.
    QStringList ignored;        ///< Fields that need not agree.

    enum Method { Exact, Quick, TooLarge, Interrupted };

    /// False when the histories are too large, or the person ended the program.
    bool compare(const WorkflowTree& left, const WorkflowTree& right);

    Method method() const { return m_method; }
    const QList<Comparison>& comparisons() const { return m_comparisons; }

    /// Whether the best association shows no difference at all.
    bool isSame() const;

    /// How much is known about the costs, in words.
    QString certainty() const;

    /// The answer's keys.
    void toJson(QJsonObject& object) const;

    /// The comparison side by side.
    QString toText(const QString& leftName, const QString& rightName, const Paint& paint) const;

private:
    Comparison makeComparison(const LorixDiffResult& result, float costs) const;
    QString linesOf(const Comparison& comparison, const QString& leftName, const QString& rightName,
                    const Paint& paint) const;

    const WorkflowTree* m_left = nullptr;
    const WorkflowTree* m_right = nullptr;
    QList<Comparison> m_comparisons;
    Method m_method = Exact;
    qint64 m_expanded = 0;
    float m_lowerBound = 0.0F;
};

} // namespace lorix::cli
