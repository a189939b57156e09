// SPDX-License-Identifier: BSD-3-Clause
#include <apps/viewer/extractplan.h>

#include <apps/lorix/targetnames.h>

#include <lorix/container/lorixparser.h>

#include <QDir>
#include <QFileInfo>
#include <QSet>

#include <memory>
#include <utility>
#include <vector>

namespace lorix::viewer {

namespace {

// Names for the files of all containers. Those inside a nested one stand in a
// folder beside it that is named after it.
class Names
{
public:
    explicit Names(const History& history)
    {
        for (const HistoryContainer& container : history.containers()) {
            m_names.push_back(std::make_unique<cli::TargetNames>(container.parser->getFiles()));
            QString prefix;
            if (container.parent >= 0) {
                const int id =
                    container.embedding.isFile() ? history.file(container.embedding).tagId : -1;
                const QString holder =
                    m_names.at(static_cast<size_t>(container.parent))->nameOf(id);
                prefix = m_prefixes.at(container.parent) +
                         (holder.isEmpty() ? QStringLiteral("nested") : holder) +
                         QStringLiteral(".files/");
            }
            m_prefixes.append(prefix);
        }
    }

    ExtractJob job(int container, const FileTag& file) const
    {
        ExtractJob job;
        job.container = container;
        job.id = file.id;
        job.name =
            m_prefixes.at(container) + m_names.at(static_cast<size_t>(container))->nameOf(file.id);
        job.bytes = file.filesize;
        return job;
    }

private:
    std::vector<std::unique_ptr<cli::TargetNames>> m_names; // by container
    QStringList m_prefixes;
};

bool isTaken(const QString& folder, const QString& name)
{
    const QFileInfo info(QDir(folder).filePath(name));
    return info.exists() || info.isSymLink();
}

QString freeName(const QString& folder, const QString& name, const QSet<QString>& used)
{
    const qsizetype slash = name.lastIndexOf(QLatin1Char('/'));
    qsizetype dot = name.lastIndexOf(QLatin1Char('.'));
    if (dot <= slash + 1)
        dot = name.size();
    for (int number = 2;; ++number) {
        const QString candidate =
            name.left(dot) + QStringLiteral(" (%1)").arg(number) + name.mid(dot);
        if (!used.contains(candidate) && !isTaken(folder, candidate))
            return candidate;
    }
}

} // namespace

QList<ExtractJob> planFor(const History& history, const QList<Place>& places)
{
    const Names names(history);
    QList<ExtractJob> jobs;
    QSet<QPair<int, int>> seen;
    const auto add = [&](const Place& place) {
        const int container = history.step(place.node).container;
        const int id = history.file(place).tagId;
        const auto tag = history.containers().at(container).parser->getFile(id);
        if (!tag || seen.contains({container, id}))
            return;
        seen.insert({container, id});
        jobs.append(names.job(container, *tag));
    };
    for (const Place& place : places) {
        if (place.isFile()) {
            add(place);
            continue;
        }
        const int files = static_cast<int>(history.step(place.node).step.files.size());
        for (int file = 0; file < files; ++file)
            add({place.node, file});
    }
    return jobs;
}

QList<ExtractJob> planForAll(const History& history, bool nested)
{
    const Names names(history);
    QList<ExtractJob> jobs;
    const int containers = nested ? static_cast<int>(history.containers().size()) : 1;
    for (int container = 0; container < containers; ++container)
        for (const FileTag& file : history.containers().at(container).parser->getFiles())
            jobs.append(names.job(container, file));
    return jobs;
}

int countClashes(const QList<ExtractJob>& jobs, const QString& folder)
{
    int count = 0;
    for (const ExtractJob& job : jobs)
        count += isTaken(folder, job.name);
    return count;
}

void settleClashes(QList<ExtractJob>& jobs, const QString& folder, Clash choice)
{
    QSet<QString> used;
    for (const ExtractJob& job : std::as_const(jobs))
        used.insert(job.name);
    for (ExtractJob& job : jobs) {
        if (!isTaken(folder, job.name))
            continue;
        if (choice == Clash::Skip)
            job.outcome = ExtractJob::Skipped;
        else if (choice == Clash::Replace)
            job.replace = true;
        else
            job.name = freeName(folder, job.name, used);
        used.insert(job.name);
    }
}

} // namespace lorix::viewer
