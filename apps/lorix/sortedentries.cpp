// SPDX-License-Identifier: BSD-3-Clause
#include <apps/lorix/sortedentries.h>

#include <QDirIterator>

#include <algorithm>

namespace lorix::cli {

SortedEntries::SortedEntries(const QString& folder, QDir::Filters kinds, qsizetype portion)
    : m_folder(folder), m_filters(kinds | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot),
      m_portion(portion)
{}

bool SortedEntries::next(QString& name)
{
    if (m_next == m_names.size() && !m_all)
        readPortion();
    if (m_next == m_names.size())
        return false;
    name = m_names.at(m_next++);
    return true;
}

// Keeps the smallest of the names that come after the last one given.
void SortedEntries::readPortion()
{
    if (!m_names.isEmpty()) {
        m_last = m_names.last();
        m_begun = true;
    }
    m_names.clear();
    m_next = 0;
    m_all = true;
    QDirIterator entries(m_folder, m_filters);
    while (entries.hasNext()) {
        entries.next();
        const QString name = entries.fileName();
        if (m_begun && name <= m_last)
            continue;
        if (m_names.size() < m_portion) {
            m_names.append(name);
            std::push_heap(m_names.begin(), m_names.end());
            continue;
        }
        m_all = false;
        if (name < m_names.first()) {
            std::pop_heap(m_names.begin(), m_names.end());
            m_names.last() = name;
            std::push_heap(m_names.begin(), m_names.end());
        }
    }
    std::sort_heap(m_names.begin(), m_names.end());
}

} // namespace lorix::cli
