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
    m_entries.reserve(hash.size());
    for (auto it = hash.cbegin(); it != hash.cend(); ++it) {
        const int number = static_cast<int>(m_entries.size());
        m_entries.append({&it.key(), &*it, false});
        m_bySection[it->second].append(number);
        const FileTag& tag = it->first;
        const auto what = content(it.key(), tag.filename, tag.md5file, tag.filesize);
        auto known = m_contentNumbers.constFind(what);
        if (known == m_contentNumbers.cend()) {
            known = m_contentNumbers.insert(what, m_contents.size());
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
    return m_entries.at(number).value->first.id;
}

QList<FileTag> TagMatcher::remaining(int section) const
{
    std::vector<const Entry*> entries;
    const auto numbers = m_bySection.constFind(section);
    if (numbers != m_bySection.cend()) {
        for (const int number : *numbers) {
            if (!m_entries.at(number).taken)
                entries.push_back(&m_entries.at(number));
        }
    }
    // The hash has no order of its own but among equal keys.
    std::stable_sort(entries.begin(), entries.end(), [](const Entry* a, const Entry* b) {
        const FileTag& first = a->value->first;
        const FileTag& second = b->value->first;
        return std::tie(first.id, first.position, *a->key) <
               std::tie(second.id, second.position, *b->key);
    });
    QList<FileTag> tags;
    tags.reserve(static_cast<qsizetype>(entries.size()));
    for (const Entry* entry : entries)
        tags.append(entry->value->first);
    return tags;
}

TagHash TagMatcher::hash() const
{
    // Backwards, since what is inserted last comes first.
    TagHash result;
    for (auto entry = m_entries.crbegin(); entry != m_entries.crend(); ++entry) {
        if (!entry->taken)
            result.insert(*entry->key, *entry->value);
    }
    return result;
}

} // namespace lorix
