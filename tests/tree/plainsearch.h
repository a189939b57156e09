// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QHash>
#include <QLinkedList>
#include <QList>
#include <QPair>

#include <functional>
#include <memory>
#include <vector>

/// The association search as it is described, step by step, with whole tables
/// copied and every estimate summed afresh. Slow, plain, and written without
/// the library: what the library's search is compared with.
namespace plain {

/// A tree as lists: the nodes in order, and each one's parent.
struct Tree
{
    QList<int> ids;
    QHash<int, int> parents;

    int parent(int id) const { return parents.value(id, -2); }
};

/// The pricing by node ids.
using Costs = std::function<float(int, int)>;

/// What all paths share.
struct Problem
{
    Problem(Tree first, Tree second, const Costs& costs);

    float cost(int i, int j) const;

    Tree tree1;
    Tree tree2;
    QHash<QPair<int, int>, float> matrix;
};

struct Path
{
    explicit Path(const Problem& shared);

    void associate(int u, int v);
    float costForAssociation(int u, int v) const;
    bool calcParentCostsLater(int u, int v) const;
    float calcMissingParentCosts() const;
    bool changed(int u) const;
    bool parentChanged(int node, int tree) const;
    float heuristic() const;

    const Problem* problem;
    QHash<int, int> assoc1to2;
    QHash<int, int> assoc2to1;
    QHash<int, bool> parentCostsLater;
    QLinkedList<int> open1;
    QLinkedList<int> open2;
    float costs = 0.0F;
};

struct Outcome
{
    QList<Path> found;
    qint64 taken = 0;
    qint64 expansions = 0;
    qint64 queued = 0;
    bool stopped = false;
};

/// Up to `count` complete paths, giving up after `maxExpansions` (0: never).
Outcome findPaths(const Path& start, int count, qint64 maxExpansions = 0);

} // namespace plain
