// SPDX-License-Identifier: BSD-3-Clause
#include <lorix/summary/distanceweights.h>
#include <lorix/summary/nearesttag.h>
#include <lorix/summary/tagdistance.h>

#include <QHash>
#include <QString>

#include <algorithm>
#include <array>
#include <limits>
#include <numeric>
#include <utility>

namespace lorix {

namespace {

// Up to so many candidates are compared one by one.
constexpr int fewCandidates = 16;

constexpr std::size_t fieldCount = 6;
constexpr int wayCount = 1 << fieldCount;
constexpr std::array<int, fieldCount> weights = {weight::filetype,  weight::desc,
                                                 weight::comment,   weight::md5cfile,
                                                 weight::cfilesize, weight::compression};

using Texts = std::array<QString, fieldCount>;
using Values = std::array<int, fieldCount>;

Texts fields(const FileTag& tag)
{
    return {tag.filetype,   tag.desc, tag.comment, tag.md5cfile, QString::number(tag.cfilesize),
            tag.compression};
}

Texts fields(const FileSummary& file)
{
    return {file.filetype,
            file.description,
            file.comment,
            file.compressedMD5,
            QString::number(file.compressedSize),
            file.compressedMethod};
}

// A way is the set of fields that agree, one bit each.
bool agrees(int way, std::size_t field)
{
    return (way >> field & 1) != 0;
}

int distanceOf(int way)
{
    int sum = 0;
    for (std::size_t field = 0; field < fieldCount; ++field)
        sum += agrees(way, field) ? 0 : weights[field];
    return sum;
}

std::array<int, wayCount> waysByDistance()
{
    std::array<int, wayCount> ways{};
    std::iota(ways.begin(), ways.end(), 0);
    std::stable_sort(ways.begin(), ways.end(),
                     [](int a, int b) { return distanceOf(a) < distanceOf(b); });
    return ways;
}

int compare(int way, const Values& a, const Values& b)
{
    for (std::size_t field = 0; field < fieldCount; ++field) {
        if (agrees(way, field) && a[field] != b[field])
            return a[field] < b[field] ? -1 : 1;
    }
    return 0;
}

} // namespace

class NearestTag::Index
{
public:
    explicit Index(const QList<Candidate>& candidates);

    int nearest(const QList<Candidate>& candidates, const FileSummary& file);

private:
    // The candidates sorted by the fields of one way, then by their order, and
    // for each place the next one that may still hold a candidate not taken.
    struct Sorting
    {
        QList<int> order;
        QList<int> next;
    };

    int find(int way, const Values& values, const QList<Candidate>& candidates);
    void sort(int way);

    std::array<QHash<QString, int>, fieldCount> m_numbers;
    QList<Values> m_values;
    Sorting m_sortings[wayCount];
};

// Every text of a field gets a number, so that sorting compares no texts.
NearestTag::Index::Index(const QList<Candidate>& candidates)
{
    m_values.reserve(candidates.size());
    for (const Candidate& candidate : candidates) {
        const Texts texts = fields(*candidate.tag);
        Values values{};
        for (std::size_t field = 0; field < fieldCount; ++field) {
            QHash<QString, int>& numbers = m_numbers[field];
            const int fresh = static_cast<int>(numbers.size());
            const auto known = numbers.constFind(texts[field]);
            values[field] = known == numbers.cend() ? *numbers.insert(texts[field], fresh) : *known;
        }
        m_values.append(values);
    }
}

int NearestTag::Index::nearest(const QList<Candidate>& candidates, const FileSummary& file)
{
    static const std::array<int, wayCount> ways = waysByDistance();
    const Texts texts = fields(file);
    Values values{};
    for (std::size_t field = 0; field < fieldCount; ++field)
        values[field] = m_numbers[field].value(texts[field], -1);

    int found = -1;
    int foundDistance = std::numeric_limits<int>::max();
    for (const int way : ways) {
        if (distanceOf(way) > foundDistance)
            break;
        const int candidate = find(way, values, candidates);
        if (candidate >= 0 && (found < 0 || candidate < found)) {
            found = candidate;
            foundDistance = distanceOf(way);
        }
    }
    return found;
}

// The first candidate not taken that agrees in the fields of the way, or -1.
int NearestTag::Index::find(int way, const Values& values, const QList<Candidate>& candidates)
{
    Sorting& sorting = m_sortings[way];
    if (sorting.order.isEmpty())
        sort(way);
    const auto lower = std::lower_bound(
        sorting.order.begin(), sorting.order.end(), values,
        [&](int candidate, const Values& v) { return compare(way, m_values[candidate], v) < 0; });
    const int count = static_cast<int>(sorting.order.size());
    const int start = static_cast<int>(lower - sorting.order.begin());
    int place = start;
    while (place < count && candidates[sorting.order[place]].taken)
        place = sorting.next[place];
    // Whoever comes this way again skips all of it at once.
    for (int passed = start; passed < place;)
        passed = std::exchange(sorting.next[passed], place);
    if (place >= count || compare(way, m_values[sorting.order[place]], values) != 0)
        return -1;
    return sorting.order[place];
}

void NearestTag::Index::sort(int way)
{
    Sorting& sorting = m_sortings[way];
    sorting.order.resize(m_values.size());
    std::iota(sorting.order.begin(), sorting.order.end(), 0);
    std::stable_sort(sorting.order.begin(), sorting.order.end(),
                     [&](int a, int b) { return compare(way, m_values[a], m_values[b]) < 0; });
    sorting.next.resize(sorting.order.size());
    std::iota(sorting.next.begin(), sorting.next.end(), 1);
}

NearestTag::NearestTag() = default;
NearestTag::NearestTag(NearestTag&& other) noexcept = default;
NearestTag& NearestTag::operator=(NearestTag&& other) noexcept = default;
NearestTag::~NearestTag() = default;

void NearestTag::add(const FileTag* tag, int entry)
{
    m_candidates.append({tag, entry, false});
    ++m_remaining;
}

int NearestTag::take(const FileSummary& file)
{
    if (m_remaining == 0)
        return -1;
    const bool few = m_candidates.size() <= fewCandidates;
    if (!few && !m_index)
        m_index = std::make_unique<Index>(m_candidates);
    const int found = few ? takeByLooking(file) : m_index->nearest(m_candidates, file);
    Candidate& candidate = m_candidates[found];
    candidate.taken = true;
    --m_remaining;
    return candidate.entry;
}

int NearestTag::takeByLooking(const FileSummary& file) const
{
    int best = std::numeric_limits<int>::max();
    int found = -1;
    for (qsizetype i = 0; i < m_candidates.size(); ++i) {
        const Candidate& candidate = m_candidates.at(i);
        const int apart = candidate.taken ? best : distance(*candidate.tag, file);
        if (apart < best) {
            best = apart;
            found = static_cast<int>(i);
        }
    }
    return found;
}

} // namespace lorix
