// SPDX-License-Identifier: BSD-3-Clause
#include <apps/lorix/historydiff.h>

#include <apps/lorix/history.h>
#include <apps/lorix/interrupt.h>
#include <apps/lorix/table.h>

#include <lorix/tree/lorixdiff.h>
#include <lorix/tree/workflowstepcosts.h>

#include <algorithm>

namespace lorix::cli {

namespace {

// Some 12 bytes each.
constexpr qint64 mostQueued = 20000000;

// Titles beyond that make no table any more.
constexpr qsizetype longestCell = 60;

bool isPair(const ComparedStep& step)
{
    return step.left != NULL_NODE && step.right != NULL_NODE;
}

bool isUnchanged(const ComparedStep& step)
{
    return isPair(step) && step.differences.isEmpty() && !step.moved;
}

bool isChanged(const ComparedStep& step)
{
    return isPair(step) && !step.differences.isEmpty();
}

bool isMoved(const ComparedStep& step)
{
    return isPair(step) && step.moved;
}

bool isLeftOnly(const ComparedStep& step)
{
    return step.right == NULL_NODE;
}

bool isRightOnly(const ComparedStep& step)
{
    return step.left == NULL_NODE;
}

QString shortened(const QString& text)
{
    return text.size() <= longestCell ? text : text.left(longestCell - 1) + QStringLiteral("…");
}

QString number(float costs)
{
    return QString::number(double(costs), 'g', 6);
}

// How deep each node's container is nested.
QHash<int, int> nestings(const WorkflowTree& tree)
{
    QHash<int, int> result;
    for (const int node : tree.nodeIds())
        result.insert(node, result.value(tree.parent(node)) + (startsNested(tree, node) ? 1 : 0));
    return result;
}

QString cell(const WorkflowTree& tree, const QHash<int, int>& nesting, int node)
{
    if (node == NULL_NODE)
        return QString();
    return QString(2 * nesting.value(node), QLatin1Char(' ')) + shortened(titleOf(tree, node));
}

QString marker(const ComparedStep& step)
{
    if (isLeftOnly(step))
        return QStringLiteral("<");
    if (isRightOnly(step))
        return QStringLiteral(">");
    if (isUnchanged(step))
        return QStringLiteral("=");
    return (isChanged(step) ? QStringLiteral("~") : QString()) +
           (step.moved ? QStringLiteral("^") : QString());
}

QString parentTitle(const WorkflowTree& tree, int node)
{
    const int parent = tree.parent(node);
    return parent < 0 ? QStringLiteral("(nothing)") : shortened(titleOf(tree, parent));
}

} // namespace

int Comparison::count(bool (*which)(const ComparedStep&)) const
{
    return int(std::count_if(steps.cbegin(), steps.cend(), which));
}

bool Comparison::isSame() const
{
    return std::all_of(steps.cbegin(), steps.cend(), isUnchanged);
}

bool HistoryDiff::compare(const WorkflowTree& left, const WorkflowTree& right)
{
    m_left = &left;
    m_right = &right;
    WorkflowstepCosts costs;
    LorixDiff diff(left, right, &costs);
    if (!diff.isWithinBounds()) {
        m_method = TooLarge;
        return false;
    }
    SearchOutcome outcome;
    if (expansions > 0) {
        SearchLimits limits;
        limits.expansions = expansions;
        limits.queued = mostQueued;
        limits.cancel = lorix::cli::Interrupt::requested;
        for (const LorixDiffResult& result : diff.findBestMatches(count, limits, &outcome))
            m_comparisons.append(makeComparison(result, diff.costsOf(result)));
        m_expanded = outcome.expansions;
    }
    m_method = Exact;
    if (!m_comparisons.isEmpty())
        m_lowerBound = m_comparisons.first().costs;
    if (lorix::cli::Interrupt::requested()) {
        m_method = Interrupted;
        return false;
    }
    if (m_comparisons.isEmpty()) {
        const QuickMatch match = diff.findQuickMatch();
        m_comparisons.append(makeComparison(match.result, match.costs));
        m_lowerBound = match.lowerBound;
        m_method = Quick;
    }
    return true;
}

// A step of the right side alone stands where it stands among its own.
Comparison HistoryDiff::makeComparison(const LorixDiffResult& result, float costs) const
{
    Comparison comparison;
    comparison.costs = costs;
    const QList<int> right = m_right->nodeIds();
    qsizetype next = 0; // of right
    const auto addRightUpTo = [&](int node) {
        const qsizetype end = node == NULL_NODE ? right.size() : right.indexOf(node, next);
        for (; next < end; ++next) {
            if (result.associated(right.at(next), 2))
                comparison.steps.append({NULL_NODE, right.at(next), false, {}});
        }
    };
    for (const int node : m_left->nodeIds()) {
        ComparedStep step;
        step.left = node;
        // Despite its name, associated() tells the nodes without partner.
        if (!result.associated(node, 1)) {
            step.right = result.association(node, 1);
            step.moved = result.parentChanged(node, 1);
            step.differences = differencesOf(m_left->workflowStep(node),
                                             m_right->workflowStep(step.right), ignored);
            addRightUpTo(step.right);
        }
        comparison.steps.append(step);
    }
    addRightUpTo(NULL_NODE);
    return comparison;
}

bool HistoryDiff::isSame() const
{
    return !m_comparisons.isEmpty() && m_comparisons.first().isSame();
}

QString HistoryDiff::certainty() const
{
    if (m_comparisons.isEmpty())
        return QString();
    const float costs = m_comparisons.first().costs;
    if (m_method == Exact)
        return QStringLiteral("exact search: no match costs less");
    if (costs <= m_lowerBound)
        return QStringLiteral("quick match: no match costs less");
    return QStringLiteral("quick match: the cheapest match costs between %1 and %2")
        .arg(number(m_lowerBound), number(costs));
}

void HistoryDiff::toJson(QJsonObject& object) const
{
    object.insert(QStringLiteral("same"), isSame());
    object.insert(QStringLiteral("method"),
                  m_method == Exact ? QStringLiteral("exact") : QStringLiteral("quick"));
    object.insert(QStringLiteral("lowerBound"), double(m_lowerBound));
    object.insert(QStringLiteral("expansions"), m_expanded);
    object.insert(QStringLiteral("leftNodes"), nodesToJson(*m_left));
    object.insert(QStringLiteral("rightNodes"), nodesToJson(*m_right));
    QJsonArray matches;
    for (const Comparison& comparison : m_comparisons) {
        QJsonArray steps;
        for (const ComparedStep& step : comparison.steps) {
            QJsonObject item;
            if (step.left != NULL_NODE)
                item.insert(QStringLiteral("left"), step.left);
            if (step.right != NULL_NODE)
                item.insert(QStringLiteral("right"), step.right);
            if (isPair(step))
                item.insert(QStringLiteral("moved"), step.moved);
            QJsonArray differences;
            for (const Difference& difference : step.differences)
                differences.append(QJsonObject{{QStringLiteral("field"), difference.field},
                                               {QStringLiteral("left"), difference.left},
                                               {QStringLiteral("right"), difference.right}});
            if (isPair(step))
                item.insert(QStringLiteral("differences"), differences);
            steps.append(item);
        }
        matches.append(QJsonObject{{QStringLiteral("costs"), double(comparison.costs)},
                                   {QStringLiteral("steps"), steps}});
    }
    object.insert(QStringLiteral("matches"), matches);
}

QString HistoryDiff::linesOf(const Comparison& comparison, const QString& leftName,
                             const QString& rightName, const Paint& paint) const
{
    const QHash<int, int> nesting1 = nestings(*m_left);
    const QHash<int, int> nesting2 = nestings(*m_right);
    Table table;
    table.addColumn(leftName);
    table.addColumn(QStringLiteral("  "));
    table.addColumn(rightName);
    QStringList markers;
    const auto addRow = [&](const QString& left, const QString& mark, const QString& right) {
        table.addRow({left, mark, right});
        markers.append(mark);
    };
    for (const ComparedStep& step : comparison.steps) {
        addRow(cell(*m_left, nesting1, step.left), marker(step),
               cell(*m_right, nesting2, step.right));
        for (const Difference& difference : step.differences)
            addRow(QStringLiteral("    %1: ").arg(difference.field) +
                       shortened(decodedEntities(difference.left)),
                   QString(),
                   QStringLiteral("    %1: ").arg(difference.field) +
                       shortened(decodedEntities(difference.right)));
        if (isMoved(step))
            addRow(QStringLiteral("    below: ") + parentTitle(*m_left, step.left), QString(),
                   QStringLiteral("    below: ") + parentTitle(*m_right, step.right));
    }
    QStringList lines = table.text(Paint(false)).split(QLatin1Char('\n'));
    lines.first() = paint.bold(lines.first());
    for (qsizetype i = 0; i < markers.size(); ++i) {
        QString& line = lines[i + 1];
        if (markers.at(i) == QLatin1String("<"))
            line = paint.bad(line);
        else if (markers.at(i) == QLatin1String(">"))
            line = paint.good(line);
        else if (markers.at(i) != QLatin1String("="))
            line = paint.warning(line);
    }
    return lines.join(QLatin1Char('\n'));
}

QString HistoryDiff::toText(const QString& leftName, const QString& rightName,
                            const Paint& paint) const
{
    QString text;
    for (qsizetype i = 0; i < m_comparisons.size(); ++i) {
        const Comparison& comparison = m_comparisons.at(i);
        if (m_comparisons.size() > 1)
            text += QStringLiteral("%1match %2 of %3\n")
                        .arg(i > 0 ? QStringLiteral("\n") : QString())
                        .arg(i + 1)
                        .arg(m_comparisons.size());
        if (!comparison.steps.isEmpty())
            text += linesOf(comparison, leftName, rightName, paint);
        text += QStringLiteral("%1 the same, %2 changed (~), %3 moved (^), %4 only left (<), "
                               "%5 only right (>)\n")
                    .arg(comparison.count(isUnchanged))
                    .arg(comparison.count(isChanged))
                    .arg(comparison.count(isMoved))
                    .arg(comparison.count(isLeftOnly))
                    .arg(comparison.count(isRightOnly));
        text += QStringLiteral("cost %1").arg(number(comparison.costs));
        text += i == 0 ? QStringLiteral(" (%1)\n").arg(certainty()) : QStringLiteral("\n");
    }
    return text;
}

} // namespace lorix::cli
