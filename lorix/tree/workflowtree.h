// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <lorix/bounds.h>
#include <lorix/export.h>
#include <lorix/runner/logsource.h>
#include <lorix/summary/workflowstep.h>
#include <lorix/tree/lorixfilemanager.h>
#include <lorix/tree/treeids.h>
#include <lorix/tree/workflowtreenode.h>

#include <QHash>
#include <QLinkedList>
#include <QList>
#include <QSharedPointer>
#include <QString>

namespace lorix {

class LorixParser;
class TemporaryFolder;

/// The steps of a container and of all containers nested in it, as one tree.
///
///     WorkflowTree tree;
///     tree.treeFromLorixFile(path);
///     for (const int id : tree.serializedTree())
///         show(tree.workflowStep(id).title);
///
/// The steps of one container form a chain, each the child of the one before
/// it; a container that a step embeds has its chain below that step. Nodes are
/// numbered 0, 1, 2, ... as they are made, a nested container's before the next
/// step of the container around it.
///
/// Nested containers are extracted into a temporary folder of the tree's own,
/// which goes with the tree and all its copies. A copy shares the open
/// containers and has everything else for itself.
class LORIX_EXPORT WorkflowTree : public LogSource
{
    Q_OBJECT

public:
    /// An empty tree. `logTarget` receives the messages (see LogSource).
    explicit WorkflowTree(QObject* logTarget = nullptr);
    ~WorkflowTree() override;
    WorkflowTree(const WorkflowTree& other);
    WorkflowTree& operator=(const WorkflowTree& other);

    /// Adds a node with the next free number below `parentId` and returns the
    /// number. The parent need not be in the tree.
    int addTreeNode(int parentId, const Workflowstep& step, const QString& lorixfile,
                    const QString& fileOnDisk);

    /// Adds a node under its own number, in place of any other of that number.
    /// The counter of addTreeNode() above does not take notice of it.
    void addTreeNode(const WorkflowTreeNode& node);

    /// The numbers of a node's children in the order in which they were added;
    /// those of the top nodes for NODE_ABOVE_ROOT.
    QList<int> children(int nodeId) const;

    /// The number of a node's parent, NODE_ABOVE_ROOT for a top node,
    /// INVALID_NODE for an unknown number.
    int parent(int nodeId) const;

    /// The first top node, INVALID_NODE when there is none.
    int root() const;

    /// All nodes in the order in which they were added, except that a parent
    /// always stands before its children.
    QList<int> nodeIds() const;

    /// The same as a linked list.
    QLinkedList<int> nodeIdsLinked() const;

    /// The step of a node; an empty one for an unknown number.
    Workflowstep workflowStep(int nodeId) const;

    /// The name of a node's container; empty for an unknown number.
    QString lorixfile(int nodeId) const;

    /// Where a node's container lies on disk; empty for an unknown number.
    QString fileOnDisk(int nodeId) const;

    /// The open container of a node; null when there is none.
    QSharedPointer<LorixParser> lorixParser(int nodeId) const;

    /// A node and all below it: the node first, then its children one after the
    /// other, each followed by all below it. Empty for an unknown number.
    QList<int> serializeFromRoot(const int& nodeId) const;

    /// The same from root().
    QList<int> serializedTree() const;

    /// Makes the tree as empty as a new one.
    void clear();

private:
    int m_nextNodeId = 0;
    QHash<int, WorkflowTreeNode> m_nodes; // by node id
    QHash<int, QList<int>> m_children;    // by parent id
    QList<int> m_order;                   // node ids in the order of their first appearance
    LorixFileManager m_fileManager;
};

} // namespace lorix
