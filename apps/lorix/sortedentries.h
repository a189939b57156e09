// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QDir>
#include <QString>
#include <QStringList>

namespace lorix::cli {

/// The names in a folder in ascending order, hidden ones and special files
/// among them. A folder of a million names does not need memory for a million:
/// they are found in portions, each by reading through the folder once more.
class SortedEntries
{
public:
    /// The entries that `kinds` names (QDir::Files for example), so many of them
    /// in memory at once.
    SortedEntries(const QString& folder, QDir::Filters kinds, qsizetype portion = 65536);

    /// Gives the next name; false at the end.
    bool next(QString& name);

    const QString& folder() const { return m_folder; }

private:
    void readPortion();

    QString m_folder;
    QDir::Filters m_filters;
    qsizetype m_portion;
    QStringList m_names;
    qsizetype m_next = 0;
    QString m_last;       // names up to here have been given
    bool m_begun = false; // m_last is one
    bool m_all = false;   // nothing comes after m_names
};

} // namespace lorix::cli
