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

#include <functional>

namespace lorix {

class LorixParser;
class TemporaryFolder;

/// A nested container that has no nodes in a tree, or not all of them.
struct SkippedContainer
{
    enum Reason {
        Unreadable = 0,     ///< It cannot be extracted, or is no container.
        ContainsItself = 1, ///< It has the same content as one around it.
        TooDeep = 2,        ///< It lies beyond the bound `treeDepth`.
        TooManyBytes = 3,   ///< Extracting it went beyond `treeExtractedBytes`.
        TooManyNodes = 4,   ///< The tree had `treeNodes` nodes already.
    };

    int nodeId = INVALID_NODE; ///< The step that embeds it; INVALID_NODE for the outermost.
    int fileId = -1;           ///< Its number in the container around it (FileTag::id).
    QString filename;          ///< Its name there.
    Reason reason = Unreadable;
};

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

    /// Reads the container at `path` and all containers nested in it, in place
    /// of what the tree held. False, with an empty tree, when it cannot be
    /// opened.
    bool treeFromLorixFile(const QString& path);

    /// The same with a parser that has opened `path` already.
    void treeFromLorixFile(const QSharedPointer<LorixParser>& parser, const QString& path);

    /// Adds the steps of an open container, and of all nested in it, below
    /// `parentId`: from the newest section on, after the files outside of all
    /// sections if there are such. A nested container is an embedded file whose
    /// name ends in ".lorix"; one that cannot be read adds nothing.
    ///
    /// `lorixfile` and `fileOnDisk` are what the nodes answer under these names.
    /// The parser is not registered under `fileOnDisk`.
    void fillTree(const QSharedPointer<LorixParser>& parser, int parentId, const QString& lorixfile,
                  const QString& fileOnDisk);

    /// Extracts an embedded file into the tree's temporary folder and returns
    /// the path; empty when no file could be made there. A path says nothing
    /// about the content: the file may be empty or cut short.
    QString extractFile(const QSharedPointer<LorixParser>& parser, int tagIndex);

    /// Bounds for what is read from now on: `treeDepth`, `treeNodes` and
    /// `treeExtractedBytes`, and those of the parser. What lies beyond is left
    /// out, and a warning says so once.
    void setBounds(const Bounds& bounds);
    /// The bounds in force.
    const Bounds& bounds() const { return m_bounds; }

    /// Lets `cancel` be asked now and then while containers are read; once it
    /// answers true, the tree stays as far as it is.
    void setCancel(const std::function<bool()>& cancel) { m_cancel = cancel; }

    /// The nested containers that are not, or not wholly, in the tree, in the
    /// order in which they were met.
    const QList<SkippedContainer>& skippedContainers() const { return m_skipped; }

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
    struct Level; // a container whose steps are being added

    bool stopped(const Level& level);
    void addStep(Level& level);
    void nest(QList<Level>& levels, const FileSummary& file);
    bool containsItself(QList<Level>& levels, Level& nested) const;
    QString makeTemporaryFile();
    bool extractWithinBounds(const QSharedPointer<LorixParser>& parser, int tagIndex,
                             const QString& path);
    void skip(int nodeId, const FileSummary& file, SkippedContainer::Reason reason);

    int m_nextNodeId = 0;
    QHash<int, WorkflowTreeNode> m_nodes;     // by node id
    QHash<int, QList<int>> m_children;        // by parent id
    QList<int> m_order;                       // node ids in the order of their first appearance
    QSharedPointer<TemporaryFolder> m_folder; // goes after the files of m_fileManager
    LorixFileManager m_fileManager;
    Bounds m_bounds;
    std::function<bool()> m_cancel;
    qint64 m_extractedBytes = 0;
    QList<SkippedContainer> m_skipped;
};

} // namespace lorix
