// SPDX-License-Identifier: BSD-3-Clause
#include <apps/viewer/comparison.h>

#include <apps/viewer/words.h>

#include <QCoreApplication>
#include <QMap>
#include <QSet>

namespace lorix::viewer {

namespace {

struct Text
{
    Q_DECLARE_TR_FUNCTIONS(Comparison)
};

struct Field
{
    const char* name;
    QString Workflowstep::*member;
};

const Field fields[] = {
    {QT_TRANSLATE_NOOP("Comparison", "Title"), &Workflowstep::title},
    {QT_TRANSLATE_NOOP("Comparison", "Description"), &Workflowstep::description},
    {QT_TRANSLATE_NOOP("Comparison", "When"), &Workflowstep::timestamp},
    {QT_TRANSLATE_NOOP("Comparison", "By whom"), &Workflowstep::user},
    {QT_TRANSLATE_NOOP("Comparison", "On which computer"), &Workflowstep::host},
    {QT_TRANSLATE_NOOP("Comparison", "With which tool"), &Workflowstep::tool},
    {QT_TRANSLATE_NOOP("Comparison", "Tool's place"), &Workflowstep::toolPath},
    {QT_TRANSLATE_NOOP("Comparison", "Command"), &Workflowstep::command},
    {QT_TRANSLATE_NOOP("Comparison", "Comment"), &Workflowstep::comment},
    {QT_TRANSLATE_NOOP("Comparison", "Recorded by"), &Workflowstep::creator},
    {QT_TRANSLATE_NOOP("Comparison", "Original document"), &Workflowstep::lorixRootFile},
    {QT_TRANSLATE_NOOP("Comparison", "PDF title"), &Workflowstep::pdfTitle},
    {QT_TRANSLATE_NOOP("Comparison", "PDF author"), &Workflowstep::pdfAuthor},
    {QT_TRANSLATE_NOOP("Comparison", "PDF subject"), &Workflowstep::pdfSubject},
    {QT_TRANSLATE_NOOP("Comparison", "PDF keywords"), &Workflowstep::pdfKeywords},
    {QT_TRANSLATE_NOOP("Comparison", "PDF producer"), &Workflowstep::pdfProducer},
    {QT_TRANSLATE_NOOP("Comparison", "PDF creator"), &Workflowstep::pdfCreator},
};

// What a step's files, or its attributes, are: key to value, in order of keys.
using Values = QMap<QString, QString>;

Values fileValues(const History& history, int node)
{
    Values values;
    const qsizetype count = node < 0 ? 0 : history.step(node).step.files.size();
    for (int i = 0; i < count; ++i) {
        const Place place{node, i};
        // It repeats the step, with a digest of its own for each writing.
        if (history.isOwnSummary(place))
            continue;
        const FileSummary& file = history.file(place);
        QString key =
            Text::tr("%1 “%2”").arg(purposeName(file.filePurpose), history.fileName(place));
        while (values.contains(key))
            key += QLatin1Char('\'');
        values.insert(key, exactSize(file.uncompressedSize) + QStringLiteral(", ") +
                               file.uncompressedMD5);
    }
    return values;
}

Values attributeValues(const History& history, int node)
{
    Values values;
    if (node < 0)
        return values;
    const Workflowstep& step = history.step(node).step;
    for (const QString& key : step.userAttributeKeys)
        values.insert(Text::tr("Attribute “%1”").arg(history.stepText(node, key)),
                      (history.stepText(node, step.userAttributes.value(key)) + QLatin1Char(' ') +
                       history.stepText(node, step.userAttributeUnits.value(key)))
                          .trimmed());
    return values;
}

void addValues(QList<FieldPair>& pairs, const Values& left, const Values& right)
{
    Values all = left;
    all.insert(right);
    for (auto it = all.cbegin(); it != all.cend(); ++it)
        pairs.append({it.key(), left.value(it.key()), right.value(it.key())});
}

ComparisonRow rowOf(const History& left, int leftNode, const History& right, int rightNode,
                    bool moved)
{
    ComparisonRow row;
    row.left = leftNode;
    row.right = rightNode;
    if (leftNode < 0 || rightNode < 0)
        return row;
    row.moved = moved;
    for (const FieldPair& pair : compareSteps(left, leftNode, right, rightNode))
        if (pair.differs())
            row.changed.append(pair.field);
    return row;
}

} // namespace

QList<FieldPair> compareSteps(const History& left, int leftNode, const History& right,
                              int rightNode)
{
    const Workflowstep none;
    const Workflowstep& a = leftNode < 0 ? none : left.step(leftNode).step;
    const Workflowstep& b = rightNode < 0 ? none : right.step(rightNode).step;
    QList<FieldPair> pairs;
    for (const Field& field : fields) {
        FieldPair pair;
        pair.field = Text::tr(field.name);
        if (leftNode >= 0)
            pair.left = left.stepText(leftNode, a.*field.member);
        if (rightNode >= 0)
            pair.right = right.stepText(rightNode, b.*field.member);
        if (!pair.left.isEmpty() || !pair.right.isEmpty())
            pairs.append(pair);
    }
    addValues(pairs, fileValues(left, leftNode), fileValues(right, rightNode));
    addValues(pairs, attributeValues(left, leftNode), attributeValues(right, rightNode));
    return pairs;
}

QList<ComparisonRow> compareHistories(const History& left, const History& right,
                                      const LorixDiffResult& match)
{
    // What only the right one has comes behind the row of the step before it.
    QMap<int, QList<int>> onlyRight; // by the right node before them, -1 for the start
    int before = -1;
    for (int node = 0; node < right.steps().size(); ++node) {
        if (match.association(node, 2) >= 0)
            before = node;
        else
            onlyRight[before].append(node);
    }
    QList<ComparisonRow> rows;
    const auto addOnlyRight = [&](int after) {
        for (const int node : onlyRight.take(after))
            rows.append(rowOf(left, -1, right, node, false));
    };
    addOnlyRight(-1);
    for (int node = 0; node < left.steps().size(); ++node) {
        const int partner = match.association(node, 1);
        if (partner < 0) {
            rows.append(rowOf(left, node, right, -1, false));
            continue;
        }
        rows.append(rowOf(left, node, right, partner, match.parentChanged(node, 1)));
        addOnlyRight(partner);
    }
    return rows;
}

QString describeRow(const ComparisonRow& row)
{
    if (row.right < 0)
        return Text::tr("only on the left");
    if (row.left < 0)
        return Text::tr("only on the right");
    QStringList words;
    if (row.moved)
        words.append(Text::tr("moved to another place in the history"));
    if (!row.changed.isEmpty())
        words.append(Text::tr("differs in: %1").arg(row.changed.join(QStringLiteral(", "))));
    return words.isEmpty() ? Text::tr("same") : words.join(QStringLiteral("; "));
}

} // namespace lorix::viewer
