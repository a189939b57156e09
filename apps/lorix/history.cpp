// SPDX-License-Identifier: BSD-3-Clause
#include <apps/lorix/history.h>

#include <apps/lorix/container.h>
#include <apps/lorix/interrupt.h>
#include <apps/lorix/text.h>

#ifdef Q_OS_UNIX
#include <sys/resource.h>
#endif

namespace lorix::cli {

namespace {

// More of them say nothing new, and a hostile container can hold a million.
constexpr qsizetype mostFindings = 100;

// A tree keeps every container open; the soft limit is often a thousand files.
void allowManyOpenFiles()
{
#ifdef Q_OS_UNIX
    rlimit limit{};
    if (::getrlimit(RLIMIT_NOFILE, &limit) == 0 && limit.rlim_cur < limit.rlim_max) {
        limit.rlim_cur = limit.rlim_max;
        ::setrlimit(RLIMIT_NOFILE, &limit);
    }
#endif
}

struct Explanation
{
    const char* code;
    const char* text;
};

Explanation explain(SkippedContainer::Reason reason)
{
    switch (reason) {
    case SkippedContainer::Unreadable:
        return {"nested.unreadable", "its history cannot be read"};
    case SkippedContainer::ContainsItself:
        return {"nested.loop", "it contains itself and is read once"};
    case SkippedContainer::TooDeep:
        return {"limit.depth", "it is nested too deep and left out"};
    case SkippedContainer::TooManyBytes:
        return {"limit.bytes", "nested containers have too many bytes; it is left out"};
    case SkippedContainer::TooManyNodes:
        break;
    }
    return {"limit.nodes", "the history has too many steps and is cut"};
}

void noteSkipped(const WorkflowTree& tree, const QString& path, Answer& answer)
{
    const QList<SkippedContainer>& all = tree.skippedContainers();
    for (const SkippedContainer& skipped : all.mid(0, mostFindings)) {
        const Explanation reason = explain(skipped.reason);
        const QString way = skipped.nodeId < 0 ? path : wayTo(tree, skipped.nodeId);
        Finding finding;
        finding.code = QLatin1String(reason.code);
        finding.severity = QStringLiteral("warning");
        finding.path = way;
        finding.id = skipped.fileId;
        finding.message = QLatin1String(reason.text);
        answer.addFinding(finding);
        answer.errors.append(printable(way) + QStringLiteral(": ") + quoted(skipped.filename) +
                             QStringLiteral(": ") + QLatin1String(reason.text));
    }
    if (all.size() > mostFindings)
        answer.errors.append(QStringLiteral("%1: and %2 more nested containers are not read")
                                 .arg(printable(path))
                                 .arg(all.size() - mostFindings));
}

} // namespace

bool readHistory(WorkflowTree& tree, const Input& input, Answer& answer, bool& skipped)
{
    const auto parser = QSharedPointer<LorixParser>::create(Tolerant);
    if (!openContainer(*parser, input, answer, skipped))
        return false;
    allowManyOpenFiles();
    tree.setCancel(Interrupt::requested);
    tree.treeFromLorixFile(parser, input.path);
    skipped = Interrupt::requested();
    noteSkipped(tree, input.path, answer);
    return !skipped;
}

QString titleOf(const WorkflowTree& tree, int node)
{
    const Workflowstep step = tree.workflowStep(node);
    if (step.title.isEmpty())
        return QStringLiteral("(no title)");
    // A step without a summary has its title from the marker.
    const QSharedPointer<LorixParser> parser = tree.lorixParser(node);
    const QSharedPointer<SectionTag> section =
        parser ? parser->getSection(step.tagId) : QSharedPointer<SectionTag>();
    if (section && section->title == step.title && step.title.contains(QLatin1Char('\\')))
        return decodedField(step.title);
    return decodedEntities(step.title);
}

QString circumstancesOf(const WorkflowTree& tree, int node)
{
    const Workflowstep step = tree.workflowStep(node);
    QStringList known;
    for (const QString& text : {step.tool, step.user, step.timestamp}) {
        if (!text.isEmpty())
            known.append(decodedEntities(text));
    }
    return known.join(QStringLiteral(", "));
}

bool startsNested(const WorkflowTree& tree, int node)
{
    const int parent = tree.parent(node);
    return parent >= 0 && tree.fileOnDisk(parent) != tree.fileOnDisk(node);
}

QString wayTo(const WorkflowTree& tree, int node)
{
    QStringList names;
    for (int at = node; at >= 0; at = tree.parent(at)) {
        if (startsNested(tree, at) || tree.parent(at) < 0)
            names.prepend(tree.lorixfile(at));
    }
    return names.join(QStringLiteral(" > "));
}

QJsonObject nodeToJson(const WorkflowTree& tree, int node)
{
    const Workflowstep step = tree.workflowStep(node);
    return {{QStringLiteral("nodeId"), node},
            {QStringLiteral("parentId"), tree.parent(node)},
            {QStringLiteral("lorixfile"), tree.lorixfile(node)},
            {QStringLiteral("tagId"), step.tagId},
            {QStringLiteral("title"), step.title},
            {QStringLiteral("description"), step.description},
            {QStringLiteral("comment"), step.comment},
            {QStringLiteral("tool"), step.tool},
            {QStringLiteral("user"), step.user},
            {QStringLiteral("host"), step.host},
            {QStringLiteral("timestamp"), step.timestamp},
            {QStringLiteral("files"), step.files.size()}};
}

QJsonArray nodesToJson(const WorkflowTree& tree)
{
    QJsonArray nodes;
    for (const int node : tree.nodeIds())
        nodes.append(nodeToJson(tree, node));
    return nodes;
}

} // namespace lorix::cli
