// SPDX-License-Identifier: BSD-3-Clause
#include <lorix/tree/workflowtree.h>

#include <lorix/container/lorixparser.h>
#include <lorix/tree/temporaryfolder.h>

#include <QSet>

#include <algorithm>

namespace lorix {

WorkflowTree::WorkflowTree(QObject* logTarget) : LogSource(logTarget)
{
    m_fileManager.publishToLogSignal(this);
}

WorkflowTree::~WorkflowTree() = default;

WorkflowTree::WorkflowTree(const WorkflowTree& other)
    : LogSource(nullptr), m_nextNodeId(other.m_nextNodeId), m_nodes(other.m_nodes),
      m_children(other.m_children), m_order(other.m_order), m_folder(other.m_folder),
      m_fileManager(other.m_fileManager), m_bounds(other.m_bounds), m_cancel(other.m_cancel),
      m_extractedBytes(other.m_extractedBytes), m_skipped(other.m_skipped)
{
    m_fileManager.publishToLogSignal(this);
}

WorkflowTree& WorkflowTree::operator=(const WorkflowTree& other)
{
    m_nextNodeId = other.m_nextNodeId;
    m_nodes = other.m_nodes;
    m_children = other.m_children;
    m_order = other.m_order;
    m_fileManager = other.m_fileManager;
    m_folder = other.m_folder;
    m_bounds = other.m_bounds;
    m_cancel = other.m_cancel;
    m_extractedBytes = other.m_extractedBytes;
    m_skipped = other.m_skipped;
    return *this;
}

int WorkflowTree::addTreeNode(int parentId, const Workflowstep& step, const QString& lorixfile,
                              const QString& fileOnDisk)
{
    const int id = m_nextNodeId;
    addTreeNode(WorkflowTreeNode(id, parentId, step, lorixfile, fileOnDisk));
    ++m_nextNodeId;
    return id;
}

void WorkflowTree::addTreeNode(const WorkflowTreeNode& node)
{
    if (!m_nodes.contains(node.nodeId()))
        m_order.append(node.nodeId());
    m_nodes.insert(node.nodeId(), node);
    m_children[node.parentId()].append(node.nodeId());
}

QList<int> WorkflowTree::children(int nodeId) const
{
    return m_children.value(nodeId);
}

int WorkflowTree::parent(int nodeId) const
{
    const auto node = m_nodes.constFind(nodeId);
    return node == m_nodes.cend() ? INVALID_NODE : node->parentId();
}

int WorkflowTree::root() const
{
    for (const int id : m_order) {
        if (parent(id) == NODE_ABOVE_ROOT)
            return id;
    }
    return INVALID_NODE;
}

QList<int> WorkflowTree::nodeIds() const
{
    QList<int> result;
    result.reserve(m_order.size());
    QSet<int> listed;
    listed.reserve(m_order.size());
    QList<int> upwards;
    for (const int id : m_order) {
        // Callers may add a child before its parent, and even circles.
        for (int at = id; m_nodes.contains(at) && !listed.contains(at); at = parent(at)) {
            listed.insert(at);
            upwards.append(at);
        }
        while (!upwards.isEmpty())
            result.append(upwards.takeLast());
    }
    return result;
}

QLinkedList<int> WorkflowTree::nodeIdsLinked() const
{
    const QList<int> ids = nodeIds();
    return QLinkedList<int>(ids.cbegin(), ids.cend());
}

Workflowstep WorkflowTree::workflowStep(int nodeId) const
{
    return m_nodes.value(nodeId).workflowstep();
}

QString WorkflowTree::lorixfile(int nodeId) const
{
    return m_nodes.value(nodeId).lorixfile();
}

QString WorkflowTree::fileOnDisk(int nodeId) const
{
    return m_nodes.value(nodeId).fileOnDisk();
}

QSharedPointer<LorixParser> WorkflowTree::lorixParser(int nodeId) const
{
    const auto node = m_nodes.constFind(nodeId);
    return node == m_nodes.cend() ? QSharedPointer<LorixParser>()
                                  : m_fileManager.parser(node->fileOnDisk());
}

QList<int> WorkflowTree::serializeFromRoot(const int& nodeId) const
{
    QList<int> result;
    QSet<int> listed;
    QList<int> waiting{nodeId};
    while (!waiting.isEmpty()) {
        const int id = waiting.takeLast();
        if (!m_nodes.contains(id) || listed.contains(id))
            continue;
        listed.insert(id);
        result.append(id);
        const QList<int> below = children(id);
        std::copy(below.crbegin(), below.crend(), std::back_inserter(waiting));
    }
    return result;
}

QList<int> WorkflowTree::serializedTree() const
{
    return serializeFromRoot(root());
}

void WorkflowTree::clear()
{
    m_nextNodeId = 0;
    m_nodes.clear();
    m_children.clear();
    m_order.clear();
    m_fileManager.clear();
    m_folder.reset();
    m_extractedBytes = 0;
    m_skipped.clear();
}

} // namespace lorix
