// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <lorix/summary/makesummaries.h>
#include <lorix/summary/nearesttag.h>

#include <QHash>
#include <QList>
#include <QString>

#include <vector>

namespace lorix {

/// The embedded files of all sections, from which each file of an XML summary
/// takes the one that holds its bytes. Taking one, and listing those of one
/// section, looks at nothing else.
class TagMatcher
{
public:
    /// Refers to the hash, which must not change meanwhile.
    explicit TagMatcher(const TagHash& hash);
    TagMatcher(const TagMatcher&) = delete;
    TagMatcher& operator=(const TagMatcher&) = delete;
    ~TagMatcher() = default;

    /// The number of the nearest embedded file stored under `key`, if one is
    /// near enough; it is taken with that. -1 otherwise.
    int take(const QString& key, const FileSummary& file);

    /// The files of a section that were not taken, by ascending number.
    QList<FileTag> remaining(int section) const;

    /// What was not taken, in the form it came in.
    TagHash hash() const;

private:
    struct Entry
    {
        const QString* key;
        const QPair<FileTag, int>* value; // the file and its section
        bool taken;
    };

    QList<Entry> m_entries;
    std::vector<NearestTag> m_contents;
    QHash<QPair<QString, QPair<QPair<QString, QString>, int>>, std::size_t> m_contentNumbers;
    QHash<int, QList<int>> m_bySection;
};

} // namespace lorix
