// SPDX-License-Identifier: BSD-3-Clause
#include <lorix/summary/distanceweights.h>
#include <lorix/summary/tagmatcher.h>

#include <algorithm>
#include <tuple>

namespace lorix {

namespace {

// The light weights alone stay below the threshold, a heavy one never does: so
// whatever shares name, MD5 and size is near enough and nothing else is.
static_assert(weight::filetype + weight::desc + weight::comment + weight::md5cfile +
                      weight::cfilesize + weight::compression <
                  matchThreshold &&
              weight::filename >= matchThreshold && weight::md5file >= matchThreshold &&
              weight::filesize >= matchThreshold);

auto content(const QString& key, const QString& filename, const QString& md5, int size)
{
    return qMakePair(key, qMakePair(qMakePair(filename, md5), size));
}

} // namespace

TagMatcher::TagMatcher(const TagHash& hash)
{
    // The candidates point to the entries, which therefore must not move.
    m_entries.reserve(static_cast<std::size_t>(hash.size()));
    for (auto it = hash.cbegin(); it != hash.cend(); ++it) {
        const int number = static_cast<int>(m_entries.size());
        m_entries.push_back({it.key(), it->first, it->second, false});
        const FileTag& tag = m_entries.back().tag;
        m_bySection[it->second].push_back(number);
        const auto what = content(it.key(), tag.filename, tag.md5file, tag.filesize);
        auto known = m_contentNumbers.constFind(what);
        if (known == m_contentNumbers.cend()) {
            known = m_contentNumbers.insert(what, static_cast<int>(m_contents.size()));
            m_contents.emplace_back();
        }
        m_contents[*known].add(&tag, number);
    }
}

int TagMatcher::take(const QString& key, const FileSummary& file)
{
    const auto known = m_contentNumbers.constFind(
        content(key, file.filename, file.uncompressedMD5, file.uncompressedSize));
    const int number = known == m_contentNumbers.cend() ? -1 : m_contents[*known].take(file);
    if (number < 0)
        return -1;
    m_entries[number].taken = true;
    return m_entries[number].tag.id;
}

QList<FileTag> TagMatcher::remaining(int section) const
{
    std::vector<const Entry*> entries;
    for (const int number : m_bySection.value(section)) {
        if (!m_entries[number].taken)
            entries.push_back(&m_entries[number]);
    }
    // The hash has no order of its own but among equal keys.
    std::stable_sort(entries.begin(), entries.end(), [](const Entry* a, const Entry* b) {
        return std::tie(a->tag.id, a->tag.position, a->key) <
               std::tie(b->tag.id, b->tag.position, b->key);
    });
    QList<FileTag> tags;
    tags.reserve(static_cast<qsizetype>(entries.size()));
    for (const Entry* entry : entries)
        tags.append(entry->tag);
    return tags;
}

TagHash TagMatcher::hash() const
{
    // Backwards, since what is inserted last comes first.
    TagHash result;
    for (auto entry = m_entries.crbegin(); entry != m_entries.crend(); ++entry) {
        if (!entry->taken)
            result.insert(entry->key, qMakePair(entry->tag, entry->section));
    }
    return result;
}

} // namespace lorix
