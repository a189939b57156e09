// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <lorix/container/filetag.h>
#include <lorix/summary/filesummary.h>

#include <QList>

#include <memory>

namespace lorix {

/// Embedded files of one name, MD5 and size, of which the one nearest to a file
/// of a summary is taken, each at most once.
///
/// Looking at all of them for every file would cost files times files, and a
/// container can hold very many copies of one file. The six fields in which
/// they may differ give 64 ways to agree in some and disagree in others. For
/// each such way the candidates can be sorted by the fields that must agree;
/// then the ways are tried from the smallest distance on.
class NearestTag
{
public:
    NearestTag();
    NearestTag(NearestTag&& other) noexcept;
    NearestTag& operator=(NearestTag&& other) noexcept;
    NearestTag(const NearestTag&) = delete;
    NearestTag& operator=(const NearestTag&) = delete;
    ~NearestTag();

    /// Adds a candidate; among equally near ones the one added first is taken.
    /// The tag must stay where it is. Not after the first take().
    void add(const FileTag* tag, int entry);

    /// The `entry` of the nearest candidate that was not taken yet, or -1.
    int take(const FileSummary& file);

private:
    struct Candidate
    {
        const FileTag* tag;
        int entry;
        bool taken;
    };
    class Index;

    int takeByLooking(const FileSummary& file) const;

    QList<Candidate> m_candidates;
    std::unique_ptr<Index> m_index; // where there are many
    int m_remaining = 0;
};

} // namespace lorix
