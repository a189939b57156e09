// SPDX-License-Identifier: BSD-3-Clause
// One comparison, or many trees, in a process of its own. Prints the seconds
// that it took and the peak resident memory in KiB, and for searches the cost.
//
//     bench_tree search|plain|quick|none chain|history STEPS EDITS
//     bench_tree trees FILE COUNT

#include <lorix/tree/costmatrix.h>
#include <lorix/tree/dijkstra.h>
#include <lorix/tree/lorixdiff.h>
#include <lorix/tree/path.h>
#include <lorix/tree/pathexpander.h>
#include <lorix/tree/workflowstepcosts.h>
#include <tree/plainsearch.h>
#include <tree/randomtrees.h>

#include <QDir>
#include <QElapsedTimer>

#include <cstdio>

using namespace lorix;

namespace {

void silence(QtMsgType, const QMessageLogContext&, const QString&) {}

// What getrusage() tells is of no use here: it never falls below the memory of
// the process that started this one.
long peakKiB()
{
    QFile status(QStringLiteral("/proc/self/status"));
    if (!status.open(QIODevice::ReadOnly))
        return 0;
    const QByteArray lines = status.readAll();
    return lines.mid(lines.indexOf("VmHWM:") + 6).simplified().split(' ').first().toLong();
}

long residentKiB()
{
    QFile status(QStringLiteral("/proc/self/statm"));
    if (!status.open(QIODevice::ReadOnly))
        return 0;
    return status.readAll().split(' ').at(1).toLong() * 4;
}

int openDescriptors()
{
    return int(QDir(QStringLiteral("/proc/self/fd"))
                   .entryList(QDir::AllEntries | QDir::System | QDir::NoDotAndDotDot)
                   .size());
}

// A chain of different steps, and the same with every so many titles changed.
WorkflowTree chain(int steps, int edits, bool edited)
{
    QStringList titles;
    for (int i = 0; i < steps; ++i) {
        const bool changed = edited && edits > 0 && (i + 1) * edits / steps > i * edits / steps;
        titles.append(QStringLiteral("step %1%2").arg(i).arg(changed ? " renamed" : ""));
    }
    return makeChain(titles);
}

// The edits of a long history: steps renamed, left out and added.
WorkflowTree editedHistory(const WorkflowTree& tree, int edits)
{
    QRandomGenerator random{1};
    return editTree(random, tree, edits);
}

int compare(const QString& how, const QString& shape, int steps, int edits)
{
    const WorkflowTree tree1 = chain(steps, edits, false);
    const WorkflowTree tree2 =
        shape == QLatin1String("history") ? editedHistory(tree1, edits) : chain(steps, edits, true);
    const WorkflowstepCosts pricing;
    float costs = 0.0F;
    QElapsedTimer timer;
    timer.start();
    if (how == QLatin1String("plain")) {
        const plain::Problem problem(toPlain(tree1), toPlain(tree2),
                                     toPlain(tree1, tree2, pricing));
        costs = plain::findPaths(plain::Path(problem), 1).found.first().costs;
    } else if (how == QLatin1String("search")) {
        const CostMatrix matrix(tree1, tree2, &pricing);
        PathExpander expander(&tree1, &tree2, &matrix);
        const auto start = QSharedPointer<Path>::create(&expander);
        costs = Dijkstra<Path>::findPaths(start, 1).first()->costs();
    } else if (how == QLatin1String("quick")) {
        costs = LorixDiff(tree1, tree2, nullptr).findQuickMatch().costs;
    }
    std::printf("%.6f %ld %g\n", double(timer.nsecsElapsed()) / 1e9, peakKiB(), double(costs));
    return 0;
}

// Prints descriptors and resident KiB after a tenth of the trees and after all.
int buildTrees(const QString& path, int count)
{
    for (int i = 1; i <= count; ++i) {
        WorkflowTree tree;
        if (!tree.treeFromLorixFile(path) || tree.nodeIds().size() < 2)
            return 1;
        if (i == count / 10 || i == count)
            std::printf("%d %ld\n", openDescriptors(), residentKiB());
    }
    return 0;
}

} // namespace

int main(int argc, char** argv)
{
    qInstallMessageHandler(silence);
    QStringList arguments;
    for (int i = 1; i < argc; ++i)
        arguments.append(QString::fromLocal8Bit(argv[i]));
    if (arguments.size() == 3 && arguments.at(0) == QLatin1String("trees"))
        return buildTrees(arguments.at(1), arguments.at(2).toInt());
    if (arguments.size() == 4)
        return compare(arguments.at(0), arguments.at(1), arguments.at(2).toInt(),
                       arguments.at(3).toInt());
    std::fprintf(stderr, "usage: bench_tree search|plain|quick|none chain|history STEPS EDITS\n"
                         "       bench_tree trees FILE COUNT\n");
    return 2;
}
