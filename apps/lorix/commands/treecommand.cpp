// SPDX-License-Identifier: BSD-3-Clause
#include <apps/lorix/commands/treecommand.h>

#include <apps/lorix/history.h>

namespace lorix::cli {

namespace {

constexpr qsizetype longestLabel = 200;

// A node that is still to be written.
struct Waiting
{
    int node;
    QString indent;
    bool lastNested; // of the containers that its parent embeds
};

QString dotText(const QString& text)
{
    QString result = printable(text.left(longestLabel));
    result.replace(QLatin1Char('\\'), QLatin1String("\\\\"));
    result.replace(QLatin1Char('"'), QLatin1String("\\\""));
    return result;
}

} // namespace

QString treeAsText(const WorkflowTree& tree, const QString& path, const Paint& paint)
{
    const QString tee = QStringLiteral("├─ ");
    const QString corner = QStringLiteral("└─ ");
    const QString bar = QStringLiteral("│  ");
    const QString blank = QStringLiteral("   ");
    QString text = paint.bold(printable(path)) + QLatin1Char('\n');
    QList<Waiting> waiting; // the next one last
    for (const int node : tree.children(NODE_ABOVE_ROOT))
        waiting.prepend({node, QString(), true});
    while (!waiting.isEmpty()) {
        Waiting at = waiting.takeLast();
        if (startsNested(tree, at.node)) {
            text += at.indent + (at.lastNested ? corner : tee) +
                    paint.bold(printable(tree.lorixfile(at.node))) + QLatin1Char('\n');
            at.indent += at.lastNested ? blank : bar;
        }
        QList<int> nested;
        int next = INVALID_NODE; // the step before, in the same container
        for (const int child : tree.children(at.node)) {
            if (startsNested(tree, child))
                nested.append(child);
            else
                next = child;
        }
        const QString circumstances = circumstancesOf(tree, at.node);
        text += at.indent + (next >= 0 ? tee : corner) + printable(titleOf(tree, at.node));
        if (!circumstances.isEmpty())
            text += QStringLiteral("  ") + paint.dim(printable(circumstances));
        text += QLatin1Char('\n');
        if (next >= 0)
            waiting.append({next, at.indent, true});
        const QString below = at.indent + (next >= 0 ? bar : blank);
        for (qsizetype i = nested.size(); i-- > 0;)
            waiting.append({nested.at(i), below, i + 1 == nested.size()});
    }
    return text;
}

QString treeAsDot(const WorkflowTree& tree, const QString& path)
{
    QString text = QStringLiteral("digraph \"%1\" {\n  node [shape=box];\n").arg(dotText(path));
    for (const int node : tree.nodeIds()) {
        QString label = dotText(titleOf(tree, node));
        const QString circumstances = circumstancesOf(tree, node);
        if (!circumstances.isEmpty())
            label += QStringLiteral("\\n") + dotText(circumstances);
        text += QStringLiteral("  n%1 [label=\"").arg(node) + label + QStringLiteral("\"];\n");
    }
    for (const int node : tree.nodeIds()) {
        if (tree.parent(node) < 0)
            continue;
        text += QStringLiteral("  n%1 -> n%2").arg(tree.parent(node)).arg(node);
        if (startsNested(tree, node))
            text += QStringLiteral(" [style=dashed, label=\"") + dotText(tree.lorixfile(node)) +
                    QStringLiteral("\"]");
        text += QStringLiteral(";\n");
    }
    return text + QStringLiteral("}\n");
}

QString TreeCommand::summary() const
{
    return QStringLiteral("Show the steps across nested containers as a tree");
}

QString TreeCommand::examples() const
{
    return QStringLiteral("  lorix tree report.pdf\n"
                          "  lorix tree --format dot report.pdf | dot -Tsvg > report.svg\n"
                          "  lorix tree --json report.pdf | jq '.nodes[] | .title'");
}

void TreeCommand::declare(CLI::App& app)
{
    FileCommand::declare(app);
    app.add_option("--format", m_format, "How to write the tree: text, json (as --json), dot")
        ->type_name("FORMAT")
        ->check(CLI::IsMember({"text", "json", "dot"}))
        ->capture_default_str();
}

int TreeCommand::run(Console& console, const GlobalOptions& options)
{
    GlobalOptions adjusted = options;
    adjusted.json |= m_format == "json";
    return FileCommand::run(console, adjusted);
}

Answer TreeCommand::examine(const Input& input, const View& view, bool& skipped) const
{
    Answer answer = Answer::start(name(), input.path);
    WorkflowTree tree;
    if (!readHistory(tree, input, answer, skipped))
        return answer;
    if (view.json)
        answer.json.insert(QStringLiteral("nodes"), nodesToJson(tree));
    else if (m_format == "dot")
        answer.text = treeAsDot(tree, input.path);
    else
        answer.text = treeAsText(tree, input.path, view.paint);
    return answer;
}

} // namespace lorix::cli
