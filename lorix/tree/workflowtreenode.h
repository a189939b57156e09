// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <lorix/summary/workflowstep.h>
#include <lorix/tree/treeids.h>

#include <QString>

#include <utility>

namespace lorix {

/// One step in a WorkflowTree, with its place in the tree and the container
/// that it was read from. A plain value.
class WorkflowTreeNode
{
public:
    WorkflowTreeNode() = default;
    WorkflowTreeNode(int nodeId, int parentId, Workflowstep workflowstep, QString lorixfile,
                     QString fileOnDisk)
        : m_nodeId(nodeId), m_parentId(parentId), m_workflowstep(std::move(workflowstep)),
          m_lorixfile(std::move(lorixfile)), m_fileOnDisk(std::move(fileOnDisk))
    {}

    /// The node's number within its tree; INVALID_NODE by default.
    int nodeId() const { return m_nodeId; }

    /// The parent's number, NODE_ABOVE_ROOT for a top node.
    int parentId() const { return m_parentId; }

    /// The step as the container's summary tells it.
    const Workflowstep& workflowstep() const { return m_workflowstep; }

    /// The container's name: the path that was opened, or, for a nested
    /// container, the name under which it is embedded.
    const QString& lorixfile() const { return m_lorixfile; }

    /// Where that container lies on disk; a temporary file for a nested one.
    const QString& fileOnDisk() const { return m_fileOnDisk; }

private:
    int m_nodeId = INVALID_NODE;
    int m_parentId = INVALID_NODE;
    Workflowstep m_workflowstep;
    QString m_lorixfile;
    QString m_fileOnDisk;
};

} // namespace lorix
