// SPDX-License-Identifier: BSD-3-Clause
#include <tree/plainsearch.h>

#include <algorithm>
#include <climits>
#include <utility>

namespace plain {

namespace {

constexpr int aboveRoot = -1;
constexpr int invalid = -2;
constexpr int null = -3;

int toPriority(float costs)
{
    if (costs != costs || double(costs) >= 2147483648.0)
        return INT_MAX;
    if (double(costs) < -2147483648.0)
        return INT_MIN;
    return int(costs);
}

int walkUp(const Tree& tree, int from, const QHash<int, int>& table)
{
    int at = tree.parent(from);
    int steps = 0;
    while (table.contains(at) && table.value(at) == null && steps++ < table.size())
        at = tree.parent(at);
    return at;
}

} // namespace

Problem::Problem(Tree first, Tree second, const Costs& costs)
    : tree1(std::move(first)), tree2(std::move(second))
{
    for (const int i : std::as_const(tree1.ids)) {
        for (const int j : std::as_const(tree2.ids))
            matrix.insert(qMakePair(i, j), costs(i, j));
    }
}

float Problem::cost(int i, int j) const
{
    return matrix.value(qMakePair(i, j), 15.0F);
}

Path::Path(const Problem& shared) : problem(&shared)
{
    assoc1to2.insert(aboveRoot, aboveRoot);
    assoc2to1.insert(aboveRoot, aboveRoot);
    for (const int id : shared.tree1.ids)
        open1.append(id);
    for (const int id : shared.tree2.ids)
        open2.append(id);
}

void Path::associate(int u, int v)
{
    assoc1to2.insert(u, v);
    assoc2to1.insert(v, u);
    open1.removeAll(u);
    open2.removeAll(v);

    costs += costForAssociation(u, v);

    parentCostsLater.insert(u, calcParentCostsLater(u, v));

    if (open1.isEmpty()) {
        costs += float(open2.size()) * 15.0F;
        costs += calcMissingParentCosts();
        while (!open2.isEmpty())
            assoc2to1.insert(open2.takeFirst(), null);
    }
}

float Path::costForAssociation(int u, int v) const
{
    const float c = problem->cost(u, v);
    if (u == null || v == null)
        return c;
    const int p1 = problem->tree1.parent(u);
    const int p2 = problem->tree2.parent(v);
    const int partner1 = assoc1to2.contains(p1) ? assoc1to2.value(p1) : null;
    const int partner2 = assoc2to1.contains(p2) ? assoc2to1.value(p2) : null;
    if (partner1 == null || partner2 == null)
        return c;
    if (p1 == invalid || p2 == invalid)
        return c + 10.0F;
    if (partner1 == p2)
        return c;
    return c + 10.0F;
}

bool Path::calcParentCostsLater(int u, int v) const
{
    const int p1 = problem->tree1.parent(u);
    if (assoc1to2.contains(p1) && assoc1to2.value(p1) == null)
        return true;
    const int p2 = problem->tree2.parent(v);
    return assoc2to1.contains(p2) && assoc2to1.value(p2) == null;
}

float Path::calcMissingParentCosts() const
{
    QList<int> keys;
    for (auto it = assoc1to2.cbegin(); it != assoc1to2.cend(); ++it) {
        if (it.key() != aboveRoot)
            keys.append(it.key());
    }
    std::sort(keys.begin(), keys.end());
    if (assoc1to2.contains(aboveRoot))
        keys.prepend(aboveRoot);
    float sum = 0.0F;
    for (int i = 0; i < int(keys.size()); ++i) {
        if (parentCostsLater.contains(i) && parentCostsLater.value(i) && changed(keys[i]))
            sum += 10.0F;
    }
    return sum;
}

bool Path::changed(int u) const
{
    if (u == invalid || !assoc1to2.contains(u) || assoc1to2.value(u) == invalid)
        return false;
    const int x = walkUp(problem->tree1, u, assoc1to2);
    const int y = walkUp(problem->tree2, assoc1to2.value(u), assoc2to1);
    return assoc1to2.value(x, invalid) != y;
}

bool Path::parentChanged(int node, int tree) const
{
    if (tree == 1)
        return assoc1to2.contains(node) && changed(node);
    if (tree == 2)
        return assoc2to1.contains(node) && changed(assoc2to1.value(node));
    return false;
}

float Path::heuristic() const
{
    const bool shorterIsOpen2 = open2.size() <= open1.size();
    const QLinkedList<int>& s = shorterIsOpen2 ? open2 : open1;
    const QLinkedList<int>& l = shorterIsOpen2 ? open1 : open2;
    float estimate = float(l.size() - s.size()) * 15.0F;
    for (const int a : s) {
        float least = 15.0F;
        for (const int b : l) {
            const float c = shorterIsOpen2 ? problem->cost(b, a) : problem->cost(a, b);
            if (c < least)
                least = c;
        }
        estimate += least;
    }
    return estimate;
}

Outcome findPaths(const Path& start, int count, qint64 maxExpansions)
{
    using Shared = std::shared_ptr<Path>;
    using Entry = std::pair<Shared, int>;
    const auto later = [](const Entry& a, const Entry& b) { return a.second > b.second; };
    std::vector<Entry> heap;
    const auto push = [&](const Shared& path, int priority) {
        heap.emplace_back(path, priority);
        std::push_heap(heap.begin(), heap.end(), later);
    };
    Outcome outcome;
    push(std::make_shared<Path>(start), 0);
    while (!heap.empty()) {
        outcome.queued = std::max(outcome.queued, qint64(heap.size()));
        std::pop_heap(heap.begin(), heap.end(), later);
        const Shared path = heap.back().first;
        heap.pop_back();
        ++outcome.taken;
        if (path->open1.isEmpty()) {
            outcome.found.append(*path);
            if (outcome.found.size() >= count)
                return outcome;
            continue;
        }
        if (maxExpansions > 0 && outcome.expansions >= maxExpansions) {
            outcome.stopped = true;
            return outcome;
        }
        const int u = path->open1.first();
        QLinkedList<int> partners = path->open2;
        partners.append(null);
        for (const int v : std::as_const(partners)) {
            const auto child = std::make_shared<Path>(*path);
            child->associate(u, v);
            push(child, toPriority(child->costs + child->heuristic()));
        }
        ++outcome.expansions;
    }
    return outcome;
}

} // namespace plain
