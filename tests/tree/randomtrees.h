// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <lorix/tree/workflowstepcosts.h>
#include <lorix/tree/workflowtree.h>
#include <tree/plainsearch.h>

#include <QRandomGenerator>

/// A step of three texts.
lorix::Workflowstep makeStep(const QString& title, const QString& tool = QString(),
                             const QString& description = QString());

/// A chain of steps with these titles.
lorix::WorkflowTree makeChain(const QStringList& titles);

/// How a random tree is made.
struct RandomShape
{
    int nodes = 5;
    int alphabet = 3;     ///< Different titles, tools and descriptions.
    bool chain = false;   ///< Each node below the one before.
    bool strange = false; ///< Ids with gaps and in any order, parents that are missing,
                          ///< several roots, negative ids, circles.
};

lorix::WorkflowTree makeRandomTree(QRandomGenerator& random, const RandomShape& shape);

/// A copy of the tree with this many steps renamed, left out, or added.
lorix::WorkflowTree editTree(QRandomGenerator& random, const lorix::WorkflowTree& tree, int edits);

/// The tree as the plain search takes it.
plain::Tree toPlain(const lorix::WorkflowTree& tree);

/// A pricing by table: any number for any two titles "0", "1", ...
class TableCosts : public lorix::WorkflowstepCosts
{
public:
    TableCosts(QRandomGenerator& random, int alphabet, int kind);
    float costs(const lorix::Workflowstep& a, const lorix::Workflowstep& b) const override;

    static constexpr int kinds = 6;

private:
    int m_alphabet;
    QList<float> m_table;
};

plain::Costs toPlain(const lorix::WorkflowTree& tree1, const lorix::WorkflowTree& tree2,
                     const lorix::WorkflowstepCosts& costs);

/// `runs`, times the environment variable LORIX_RANDOM_RUNS where it is set.
int randomRuns(int runs);
