// SPDX-License-Identifier: BSD-3-Clause
#include <lorix/tree/lorixfilemanager.h>

#include <lorix/container/lorixparser.h>
#include <lorix/tree/templorixfile.h>

namespace lorix {

LorixFileManager::LorixFileManager(QObject* logTarget) : LogSource(logTarget) {}

LorixFileManager::~LorixFileManager() = default;

LorixFileManager::LorixFileManager(const LorixFileManager& other)
    : LogSource(nullptr), m_files(other.m_files), m_bounds(other.m_bounds)
{}

LorixFileManager& LorixFileManager::operator=(const LorixFileManager& other)
{
    m_files = other.m_files;
    m_bounds = other.m_bounds;
    return *this;
}

QSharedPointer<LorixParser> LorixFileManager::parser(const QString& path) const
{
    const QSharedPointer<TempLorixfile> file = m_files.value(path);
    return file ? file->parser() : QSharedPointer<LorixParser>();
}

QSharedPointer<LorixParser> LorixFileManager::addLorixFile(const QString& path,
                                                           bool removeOnDestruction)
{
    if (QSharedPointer<LorixParser> known = parser(path))
        return known;
    const auto added = QSharedPointer<LorixParser>::create(Tolerant);
    added->setBounds(m_bounds);
    added->publishToLogSignal(this);
    if (!added->open(path))
        return QSharedPointer<LorixParser>();
    m_files.insert(path, QSharedPointer<TempLorixfile>::create(added, path, removeOnDestruction));
    return added;
}

void LorixFileManager::addLorixFile(const QSharedPointer<LorixParser>& parser, const QString& path)
{
    m_files.insert(path, QSharedPointer<TempLorixfile>::create(parser, path, false));
}

void LorixFileManager::clear()
{
    m_files.clear();
}

} // namespace lorix
