// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <apps/lorix/filecommand.h>

namespace lorix {
class WorkflowTree;
}

namespace lorix::cli {

/// `lorix tree FILE`: the steps across nested containers.
class TreeCommand : public FileCommand
{
public:
    QString name() const override { return QStringLiteral("tree"); }
    QString summary() const override;
    QString examples() const override;
    void declare(CLI::App& app) override;
    int run(Console& console, const GlobalOptions& options) override;

protected:
    Answer examine(const Input& input, const View& view, bool& skipped) const override;

private:
    std::string m_format = "text";
};

/// The tree as indented lines, newest step first; nested containers stand below
/// the step that embeds them, with their name on a line of its own.
QString treeAsText(const WorkflowTree& tree, const QString& path, const Paint& paint);

/// The tree as a directed graph for Graphviz.
QString treeAsDot(const WorkflowTree& tree, const QString& path);

} // namespace lorix::cli
