// SPDX-License-Identifier: BSD-3-Clause
#include <apps/viewer/history.h>

#include <apps/lorix/text.h>

#include <lorix/container/lorixparser.h>

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QFileInfo>

namespace lorix::viewer {

namespace {

const int tellEveryMs = 150;

struct Text
{
    Q_DECLARE_TR_FUNCTIONS(History)
};

QString whyNotOpened(const QString& path, qint64 largest)
{
    const QFileInfo info(path);
    if (!info.exists())
        return Text::tr("There is no such file. It may have been moved, renamed or deleted.");
    if (info.isDir())
        return Text::tr("This is a folder. Open one of the documents in it.");
    if (!info.isFile())
        return Text::tr("This is no ordinary file.");
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return Text::tr(
                   "It cannot be read (%1). Ask its owner for the right to read it, or copy it "
                   "to a folder of your own.")
            .arg(file.errorString());
    if (info.size() > largest)
        return Text::tr("It is larger than 2 GiB; documents with a history never are.");
    return Text::tr("It carries no history. It may be an ordinary document, or a program that does "
                    "not know about histories has saved it anew and dropped what stood at its end. "
                    "Ask the sender for the original file.");
}

// What stands in a marker has its escapes; what stands in XML has entities too.
QString shown(const QString& text, bool asInMarker)
{
    using namespace lorix::cli;
    return printable(decodedField(asInMarker ? text : decodedEntities(text)));
}

// A name or title on one line, as long as anyone would read.
QString shortLine(const QString& text)
{
    const qsizetype longest = 300;
    const QString line = text.left(longest).simplified();
    return text.size() > longest ? line + QStringLiteral(" …") : line;
}

} // namespace

QSharedPointer<History> History::read(const QString& path, QObject* logTarget,
                                      const std::function<bool()>& cancelled, QString& problem,
                                      const std::function<void(int)>& progress)
{
    problem.clear();
    const QDateTime modified = QFileInfo(path).lastModified();
    const auto parser = QSharedPointer<LorixParser>::create(Tolerant, logTarget);
    if (!parser->open(path)) {
        problem = whyNotOpened(path, parser->bounds().fileBytes);
        return {};
    }
    if (cancelled())
        return {};
    const auto history = QSharedPointer<History>::create();
    history->m_path = path;
    history->m_modified = modified;
    history->m_tree.publishToLogSlot(logTarget);
    QElapsedTimer sinceTold;
    sinceTold.start();
    history->m_tree.setCancel([&] {
        if (progress && sinceTold.elapsed() > tellEveryMs) {
            progress(static_cast<int>(history->m_tree.nodeIds().size()));
            sinceTold.restart();
        }
        return cancelled();
    });
    history->m_tree.treeFromLorixFile(parser, path);
    if (cancelled())
        return {};
    history->m_tree.setCancel({});

    HistoryContainer outermost;
    outermost.parser = parser;
    outermost.path = path;
    outermost.name = lorix::cli::printable(history->name());
    outermost.bytes = QFileInfo(path).size();
    history->m_containers.append(outermost);
    history->collectSteps();
    return history;
}

void History::collectSteps()
{
    QHash<QString, int> containerByPath{{m_path, 0}};
    const QList<int> nodes = m_tree.nodeIds();
    m_steps.resize(nodes.size());
    for (const int node : nodes) {
        HistoryStep& step = m_steps[node];
        step.step = m_tree.workflowStep(node);
        const QString onDisk = m_tree.fileOnDisk(node);
        const auto known = containerByPath.constFind(onDisk);
        step.container = known != containerByPath.constEnd() ? *known : addContainer(node, step);
        containerByPath.insert(onDisk, step.container);

        HistoryContainer& container = m_containers[step.container];
        step.sectionless =
            container.nodes.isEmpty() && !container.parser->getSectionlessFiles().isEmpty();
        container.nodes.append(node);
        step.title = step.sectionless ? Text::tr("Files that belong to no step")
                                      : shortLine(stepText(node, step.step.title));
        if (step.title.isEmpty())
            step.title = Text::tr("Step without a title");
    }
}

// The first step of a nested container hangs below the step that embeds it. The
// tree does not say through which file; the containers of a step come in the
// order of its files.
int History::addContainer(int node, const HistoryStep& step)
{
    Q_UNUSED(step);
    HistoryContainer container;
    container.parser = m_tree.lorixParser(node);
    container.path = m_tree.fileOnDisk(node);
    container.bytes = QFileInfo(container.path).size();
    const QString embedded = m_tree.lorixfile(node);
    const int around = m_tree.parent(node);
    container.embedding.node = around;
    container.parent = m_steps.at(around).container;
    container.depth = m_containers.at(container.parent).depth + 1;
    const QList<FileSummary>& files = m_steps.at(around).step.files;
    for (int i = 0; i < files.size(); ++i) {
        const Place place{around, i};
        if (files.at(i).embedded && files.at(i).filename == embedded && !m_nested.contains(place)) {
            container.embedding = place;
            m_nested.insert(place, static_cast<int>(m_containers.size()));
            break;
        }
    }
    container.name = container.embedding.isFile() ? fileName(container.embedding)
                                                  : shortLine(lorix::cli::printable(embedded));
    m_containers.append(container);
    return static_cast<int>(m_containers.size()) - 1;
}

bool History::isAsOnDisk() const
{
    const QFileInfo info(m_path);
    return info.exists() && info.lastModified() == m_modified &&
           info.size() == m_containers.first().bytes;
}

QString History::name() const
{
    return QFileInfo(m_path).fileName();
}

const FileSummary& History::file(const Place& place) const
{
    return m_steps.at(place.node).step.files.at(place.file);
}

QString History::fileName(const Place& place) const
{
    const QString name = shortLine(fileText(place, file(place).filename, 1000));
    return name.isEmpty() ? Text::tr("File without a name") : name;
}

bool History::isOwnSummary(const Place& place) const
{
    const HistoryStep& step = m_steps.at(place.node);
    const FileSummary& summary = file(place);
    return !step.sectionless && summary.fromTags && place.file + 1 == step.step.files.size() &&
           summary.filename == QLatin1String("ws_summary.xml");
}

int History::embeddedFiles() const
{
    int count = 0;
    for (const HistoryContainer& container : m_containers)
        count += container.parser->getNumFiles();
    return count;
}

bool History::contains(const Place& place) const
{
    if (place.node < 0 || place.node >= m_steps.size())
        return false;
    return place.file >= -1 && place.file < m_steps.at(place.node).step.files.size();
}

QString History::stepText(int node, const QString& text) const
{
    const HistoryStep& step = m_steps.at(node);
    const auto& parser = m_containers.at(step.container).parser;
    const auto section = parser ? parser->getSection(step.step.tagId) : nullptr;
    const bool inMarker = section && (text == section->title || text == section->creator);
    return shown(text, inMarker);
}

QString History::fileText(const Place& place, const QString& text, qsizetype longest) const
{
    const FileSummary& summary = file(place);
    const QString part = longest < 0 ? text : text.left(longest);
    if (summary.fromTags)
        return shown(part, true);
    const auto& parser = m_containers.at(m_steps.at(place.node).container).parser;
    const auto tag = parser ? parser->getFile(summary.tagId) : nullptr;
    const bool inMarker = tag && (text == tag->filename || text == tag->desc ||
                                  text == tag->comment || text == tag->filetype);
    return shown(part, inMarker);
}

} // namespace lorix::viewer
