// SPDX-License-Identifier: BSD-3-Clause
#include <lorix/tree/workflowtree.h>

#include <lorix/container/lorixparser.h>
#include <lorix/queues/extractionqueue.h>
#include <lorix/summary/summarycreator.h>
#include <lorix/tree/temporaryfolder.h>

#include <QCryptographicHash>
#include <QFile>
#include <QFileInfo>

#include <algorithm>

namespace lorix {

struct WorkflowTree::Level
{
    Level(const QSharedPointer<LorixParser>& itsParser, int itsParent, const QString& name,
          const QString& path)
        : parser(itsParser), lastNode(itsParent), lorixfile(name), fileOnDisk(path),
          size(QFileInfo(path).size())
    {}

    // The digest of the whole container, taken when it is first asked for.
    const QByteArray& digest()
    {
        if (md5.isEmpty()) {
            QFile file(fileOnDisk);
            QCryptographicHash hash(QCryptographicHash::Md5);
            if (file.open(QIODevice::ReadOnly))
                hash.addData(&file);
            md5 = hash.result();
        }
        return md5;
    }

    QSharedPointer<LorixParser> parser;
    QList<Summary> steps;     // still to come, the next one last
    QList<FileSummary> files; // of the step at work
    qsizetype nextFile = 0;
    int lastNode; // of the step at work; the parent of all for a start
    QString lorixfile;
    QString fileOnDisk;
    qint64 size;
    QByteArray md5;
};

bool WorkflowTree::treeFromLorixFile(const QString& path)
{
    const auto parser = QSharedPointer<LorixParser>::create(Tolerant);
    parser->setBounds(m_bounds);
    parser->publishToLogSignal(this);
    const bool opened = parser->open(path);
    treeFromLorixFile(parser, path);
    return opened;
}

void WorkflowTree::treeFromLorixFile(const QSharedPointer<LorixParser>& parser, const QString& path)
{
    clear();
    m_fileManager.addLorixFile(parser, path);
    fillTree(parser, NODE_ABOVE_ROOT, path, path);
}

void WorkflowTree::setBounds(const Bounds& bounds)
{
    m_bounds = bounds;
    m_fileManager.setBounds(bounds);
}

// A loop over the open levels instead of a recursion, whose depth would be the
// input's choice.
void WorkflowTree::fillTree(const QSharedPointer<LorixParser>& parser, int parentId,
                            const QString& lorixfile, const QString& fileOnDisk)
{
    if (!parser)
        return;
    QList<Level> levels{Level(parser, parentId, lorixfile, fileOnDisk)};
    levels.last().steps = SummaryCreator().createSummaries(*parser);
    while (!levels.isEmpty()) {
        Level& level = levels.last();
        if (level.nextFile < level.files.size()) {
            const FileSummary file = level.files.at(level.nextFile++);
            if (file.embedded && file.filename.endsWith(QLatin1String(".lorix")))
                nest(levels, file);
        } else if (level.steps.isEmpty()) {
            levels.removeLast();
        } else if (stopped(level)) {
            break;
        } else {
            addStep(level);
        }
    }
}

bool WorkflowTree::stopped(const Level& level)
{
    if (m_cancel && m_cancel())
        return true;
    if (m_nodes.size() < m_bounds.treeNodes)
        return false;
    FileSummary container;
    container.filename = level.lorixfile;
    skip(INVALID_NODE, container, SkippedContainer::TooManyNodes);
    return true;
}

void WorkflowTree::addStep(Level& level)
{
    const Workflowstep step = level.steps.takeLast();
    level.lastNode = addTreeNode(level.lastNode, step, level.lorixfile, level.fileOnDisk);
    level.files = step.files;
    level.nextFile = 0;
}

void WorkflowTree::nest(QList<Level>& levels, const FileSummary& file)
{
    const int nodeId = levels.last().lastNode;
    const QSharedPointer<LorixParser> outer = levels.last().parser;
    if (levels.size() > m_bounds.treeDepth) {
        skip(nodeId, file, SkippedContainer::TooDeep);
        return;
    }
    const QString path = makeTemporaryFile();
    if (path.isEmpty()) {
        skip(nodeId, file, SkippedContainer::Unreadable);
        return;
    }
    if (!extractWithinBounds(outer, file.tagId, path)) {
        m_folder->removeFile(path);
        skip(nodeId, file, SkippedContainer::TooManyBytes);
        return;
    }
    Level nested(outer, nodeId, file.filename, path);
    if (containsItself(levels, nested)) {
        m_folder->removeFile(path);
        skip(nodeId, file, SkippedContainer::ContainsItself);
        return;
    }
    nested.parser = m_fileManager.addLorixFile(path, true);
    if (!nested.parser) {
        m_folder->removeFile(path);
        skip(nodeId, file, SkippedContainer::Unreadable);
        return;
    }
    nested.steps = SummaryCreator().createSummaries(*nested.parser);
    levels.append(nested);
}

bool WorkflowTree::containsItself(QList<Level>& levels, Level& nested) const
{
    return std::any_of(levels.begin(), levels.end(), [&nested](Level& outer) {
        return nested.size > 0 && outer.size == nested.size && outer.digest() == nested.digest();
    });
}

QString WorkflowTree::makeTemporaryFile()
{
    if (!m_folder)
        m_folder.reset(new TemporaryFolder);
    return m_folder->makeFile();
}

QString WorkflowTree::extractFile(const QSharedPointer<LorixParser>& parser, int tagIndex)
{
    const QString path = parser ? makeTemporaryFile() : QString();
    if (!path.isEmpty())
        extractWithinBounds(parser, tagIndex, path);
    return path;
}

// False when the bound on extracted bytes ended it, or the caller did.
bool WorkflowTree::extractWithinBounds(const QSharedPointer<LorixParser>& parser, int tagIndex,
                                       const QString& path)
{
    ExtractionQueue queue(parser.data());
    queue.publishToLogSignal(this);
    queue.addExtractees({{tagIndex, path}});
    bool within = m_extractedBytes < m_bounds.treeExtractedBytes;
    qint64 size = 0;
    for (bool more = within; more;) {
        more = queue.process();
        size = QFileInfo(path).size();
        within = m_extractedBytes + size <= m_bounds.treeExtractedBytes;
        if (more && (!within || (m_cancel && m_cancel()))) {
            queue.cancelExtraction();
            more = false;
        }
    }
    m_extractedBytes += size;
    return within;
}

void WorkflowTree::skip(int nodeId, const FileSummary& file, SkippedContainer::Reason reason)
{
    const bool first = std::none_of(
        m_skipped.cbegin(), m_skipped.cend(),
        [reason](const SkippedContainer& skipped) { return skipped.reason == reason; });
    m_skipped.append({nodeId, file.tagId, file.filename, reason});
    if (!first)
        return;
    switch (reason) {
    case SkippedContainer::Unreadable:
        break;
    case SkippedContainer::ContainsItself:
        Q_EMIT log(tr("%1 contains itself; it is read once\n").arg(file.filename), 1);
        break;
    case SkippedContainer::TooDeep:
        Q_EMIT log(tr("%1 is nested more than %2 levels deep; it is left out, as is all that "
                      "lies as deep\n")
                       .arg(file.filename, QString::number(m_bounds.treeDepth)),
                   1);
        break;
    case SkippedContainer::TooManyBytes:
        Q_EMIT log(tr("Nested containers have more than %1 bytes; %2 and what else goes beyond is "
                      "left out\n")
                       .arg(QString::number(m_bounds.treeExtractedBytes), file.filename),
                   1);
        break;
    case SkippedContainer::TooManyNodes:
        Q_EMIT log(tr("The history has more than %1 steps; it is cut within %2\n")
                       .arg(QString::number(m_bounds.treeNodes), file.filename),
                   1);
        break;
    }
}

} // namespace lorix
