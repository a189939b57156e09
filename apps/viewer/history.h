// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <lorix/tree/workflowtree.h>

#include <QDateTime>
#include <QHash>
#include <QList>
#include <QSharedPointer>
#include <QString>

#include <functional>

namespace lorix::viewer {

/// A step, or a file of it: what a person has selected.
struct Place
{
    int node = -1; ///< Number of the step's node; -1: nothing.
    int file = -1; ///< Index in the step's files; -1: the step itself.

    bool isNull() const { return node < 0; }
    bool isFile() const { return node >= 0 && file >= 0; }
    bool operator==(const Place& other) const { return node == other.node && file == other.file; }
    bool operator!=(const Place& other) const { return !(*this == other); }
};

inline size_t qHash(const Place& place, size_t seed = 0)
{
    return qHashMulti(seed, place.node, place.file);
}

/// One container: the document itself, or one nested in it.
struct HistoryContainer
{
    QSharedPointer<LorixParser> parser;
    QString path;     ///< Where it lies on disk.
    QString name;     ///< For people: the file name, without folders.
    Place embedding;  ///< The file that holds it; null for the document itself.
    int parent = -1;  ///< The container around it.
    int depth = 0;    ///< 0 for the document itself.
    qint64 bytes = 0; ///< Size of the file.
    QList<int> nodes; ///< Its steps, newest first, after the files without a step.
};

/// One step with its place among the containers.
struct HistoryStep
{
    int container = 0;
    Workflowstep step;
    bool sectionless = false; ///< No step, but the files that belong to none.
    QString title;            ///< For people, on one line, never empty.
};

/// A document's history, read once: its steps across all nested containers.
/// Steps are numbered as the nodes of the tree are, from 0 on.
class History
{
public:
    /// Reads the document at `path`. Null with `problem` in words where that
    /// cannot be done, and null without words where `cancelled` answered true.
    /// `progress`, where given, is told now and then how many steps there are so
    /// far. May be called on any thread; `logTarget` receives the messages.
    static QSharedPointer<History> read(const QString& path, QObject* logTarget,
                                        const std::function<bool()>& cancelled, QString& problem,
                                        const std::function<void(int)>& progress = {});

    const QString& path() const { return m_path; }
    /// Whether the document still lies on disk as it was when it was read, as
    /// far as size and time tell.
    bool isAsOnDisk() const;
    /// The file's name without its folder.
    QString name() const;
    const WorkflowTree& tree() const { return m_tree; }
    const QList<HistoryContainer>& containers() const { return m_containers; }
    const QList<HistoryStep>& steps() const { return m_steps; }
    const HistoryStep& step(int node) const { return m_steps.at(node); }

    /// The file at a place that is one.
    const FileSummary& file(const Place& place) const;
    /// The file's name for people: escapes undone, nothing unprintable.
    QString fileName(const Place& place) const;
    /// The nested container that a file holds; -1 where it holds none.
    int nestedIn(const Place& place) const { return m_nested.value(place, -1); }
    /// The XML summary that describes its own step.
    bool isOwnSummary(const Place& place) const;
    /// Files that are embedded, over all containers.
    int embeddedFiles() const;
    /// Whether the place exists.
    bool contains(const Place& place) const;

    /// A text of the step, or of one of its files, for people; of a very long
    /// one the first `longest` characters.
    QString stepText(int node, const QString& text) const;
    QString fileText(const Place& place, const QString& text, qsizetype longest = -1) const;

private:
    void collectSteps();
    int addContainer(int node, const HistoryStep& step);

    QString m_path;
    QDateTime m_modified;
    WorkflowTree m_tree;
    QList<HistoryContainer> m_containers;
    QList<HistoryStep> m_steps;
    QHash<Place, int> m_nested;
};

} // namespace lorix::viewer
