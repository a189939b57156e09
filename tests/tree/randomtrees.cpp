// SPDX-License-Identifier: BSD-3-Clause
#include <tree/randomtrees.h>

#include <algorithm>
#include <cmath>
#include <limits>

using namespace lorix;

Workflowstep makeStep(const QString& title, const QString& tool, const QString& description)
{
    Workflowstep step;
    step.title = title;
    step.tool = tool;
    step.description = description;
    return step;
}

WorkflowTree makeChain(const QStringList& titles)
{
    WorkflowTree tree;
    int parent = NODE_ABOVE_ROOT;
    for (const QString& title : titles)
        parent = tree.addTreeNode(parent, makeStep(title), QStringLiteral("a.lorix"),
                                  QStringLiteral("/a.lorix"));
    return tree;
}

namespace {

Workflowstep randomStep(QRandomGenerator& random, int alphabet)
{
    const auto letter = [&] { return QString::number(random.bounded(alphabet)); };
    const QString title = letter();
    const QString tool = letter();
    return makeStep(title, tool, letter());
}

WorkflowTree makeStrangeTree(QRandomGenerator& random, const RandomShape& shape)
{
    QList<int> ids;
    for (int i = 0; i < shape.nodes; ++i) {
        int id = random.bounded(shape.nodes * 2);
        if (random.bounded(20) == 0)
            id = random.bounded(6) - 6;
        if (!ids.contains(id))
            ids.append(id);
    }
    WorkflowTree tree;
    for (const int id : std::as_const(ids)) {
        int parent = ids.at(random.bounded(int(ids.size())));
        if (random.bounded(5) == 0)
            parent = NODE_ABOVE_ROOT;
        else if (random.bounded(8) == 0)
            parent = random.bounded(100) - 5;
        tree.addTreeNode(
            WorkflowTreeNode(id, parent, randomStep(random, shape.alphabet), QString(), QString()));
    }
    return tree;
}

} // namespace

WorkflowTree makeRandomTree(QRandomGenerator& random, const RandomShape& shape)
{
    if (shape.strange)
        return makeStrangeTree(random, shape);
    WorkflowTree tree;
    for (int i = 0; i < shape.nodes; ++i) {
        int parent = i - 1;
        if (!shape.chain && i > 0)
            parent = random.bounded(i);
        tree.addTreeNode(parent, randomStep(random, shape.alphabet), QString(), QString());
    }
    return tree;
}

WorkflowTree editTree(QRandomGenerator& random, const WorkflowTree& tree, int edits)
{
    const QList<int> ids = tree.nodeIds();
    QHash<int, int> edited; // kind of edit by id
    for (int i = 0; i < edits && !ids.isEmpty(); ++i)
        edited.insert(ids.at(random.bounded(int(ids.size()))), 1 + random.bounded(3));
    WorkflowTree result;
    QHash<int, int> copies{{NODE_ABOVE_ROOT, NODE_ABOVE_ROOT}};
    for (const int id : ids) {
        const int parent = copies.value(tree.parent(id), NODE_ABOVE_ROOT);
        const int edit = edited.value(id);
        Workflowstep step = tree.workflowStep(id);
        if (edit == 1)
            step.title = QString::number((step.title.toInt() + 1) % 3);
        if (edit == 2)
            copies.insert(id, parent);
        else
            copies.insert(id, result.addTreeNode(parent, step, QString(), QString()));
        if (edit == 3)
            copies.insert(id, result.addTreeNode(copies.value(id), makeStep(QStringLiteral("0")),
                                                 QString(), QString()));
    }
    return result;
}

plain::Tree toPlain(const WorkflowTree& tree)
{
    plain::Tree result;
    result.ids = tree.nodeIds();
    for (const int id : std::as_const(result.ids))
        result.parents.insert(id, tree.parent(id));
    return result;
}

TableCosts::TableCosts(QRandomGenerator& random, int alphabet, int kind) : m_alphabet(alphabet)
{
    for (int i = 0; i < alphabet * alphabet; ++i) {
        switch (kind) {
        case 0: // whole numbers
            m_table.append(float(random.bounded(40)));
            break;
        case 1: // binary fractions
            m_table.append(float(random.bounded(400)) / 8.0F);
            break;
        case 2: // fractions whose sums are rounded
            m_table.append(float(random.generateDouble() * 30.0));
            break;
        case 3: // negative ones too
            m_table.append(float(random.generateDouble() * 30.0 - 5.0));
            break;
        case 4: // all cheap
            m_table.append(float(random.bounded(50)) / 10.0F);
            break;
        default: { // no sensible pricing
            const float strange[] = {std::nanf(""), std::numeric_limits<float>::infinity(),
                                     1.0e30F,       1.0e8F,
                                     -0.0F,         0.3F,
                                     14.999F,       15.0F,
                                     15.001F};
            m_table.append(strange[random.bounded(9)]);
        }
        }
    }
}

float TableCosts::costs(const Workflowstep& a, const Workflowstep& b) const
{
    return m_table.at(a.title.toInt() * m_alphabet + b.title.toInt());
}

plain::Costs toPlain(const WorkflowTree& tree1, const WorkflowTree& tree2,
                     const WorkflowstepCosts& costs)
{
    return [&](int i, int j) { return costs.costs(tree1.workflowStep(i), tree2.workflowStep(j)); };
}

int randomRuns(int runs)
{
    const int factor = qEnvironmentVariableIntValue("LORIX_RANDOM_RUNS");
    return factor > 0 ? runs * factor : runs;
}
