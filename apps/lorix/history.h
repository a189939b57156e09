// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <apps/lorix/answer.h>
#include <apps/lorix/inputs.h>

#include <lorix/tree/workflowtree.h>

namespace lorix::cli {

/// Reads the steps of `input` and of all containers nested in it. Where that
/// fails, `answer` says why; see openContainer() for `skipped`, which is set as
/// well when the person ends the program meanwhile. What is left out of the
/// tree is noted in the answer as findings, with the input's path as their way.
bool readHistory(WorkflowTree& tree, const Input& input, Answer& answer, bool& skipped);

/// A step's title as people wrote it; "(no title)" where there is none.
QString titleOf(const WorkflowTree& tree, int node);

/// Tool, user and time of a step, those that are known, joined by commas.
QString circumstancesOf(const WorkflowTree& tree, int node);

/// The containers that a node lies in, outermost first, joined by " > ".
QString wayTo(const WorkflowTree& tree, int node);

/// Whether a node is the first of a nested container below its parent.
bool startsNested(const WorkflowTree& tree, int node);

/// A node's place and step, keys named as the records' members.
QJsonObject nodeToJson(const WorkflowTree& tree, int node);

/// All nodes in tree order.
QJsonArray nodesToJson(const WorkflowTree& tree);

} // namespace lorix::cli
