// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QtAlgorithms>
#include <QtGlobal>

#include <vector>

namespace lorix {

/// A set of candidates, by their indexes.
class CandidateSet
{
public:
    CandidateSet() = default;
    explicit CandidateSet(int size, bool full = false)
        : m_size(size), m_words((static_cast<size_t>(size) + 63) / 64, full ? ~Q_UINT64_C(0) : 0)
    {
        trim();
    }

    bool contains(int i) const { return (m_words[word(i)] >> (i % 64) & 1) != 0; }
    void insert(int i) { m_words[word(i)] |= Q_UINT64_C(1) << (i % 64); }
    void remove(int i) { m_words[word(i)] &= ~(Q_UINT64_C(1) << (i % 64)); }

    int count() const
    {
        uint total = 0;
        for (const quint64 bits : m_words)
            total += qPopulationCount(bits);
        return static_cast<int>(total);
    }

    bool isEmpty() const { return next(-1) < 0; }

    /// The smallest member above `i`, or -1.
    int next(int i) const
    {
        ++i;
        if (i >= m_size)
            return -1;
        size_t at = word(i);
        quint64 bits = m_words[at] & (~Q_UINT64_C(0) << (i % 64));
        while (bits == 0) {
            if (++at == m_words.size())
                return -1;
            bits = m_words[at];
        }
        return static_cast<int>(at * 64 + qCountTrailingZeroBits(bits));
    }

    void unite(const CandidateSet& other)
    {
        for (size_t i = 0; i < m_words.size(); ++i)
            m_words[i] |= other.m_words[i];
    }

    void intersect(const CandidateSet& other)
    {
        for (size_t i = 0; i < m_words.size(); ++i)
            m_words[i] &= other.m_words[i];
    }

    void subtract(const CandidateSet& other)
    {
        for (size_t i = 0; i < m_words.size(); ++i)
            m_words[i] &= ~other.m_words[i];
    }

    void invert()
    {
        for (quint64& bits : m_words)
            bits = ~bits;
        trim();
    }

    bool operator==(const CandidateSet& other) const { return m_words == other.m_words; }
    size_t bytes() const { return m_words.size() * sizeof(quint64); }

private:
    static size_t word(int i) { return static_cast<size_t>(i) / 64; }

    void trim()
    {
        if (m_size % 64 != 0)
            m_words.back() &= (Q_UINT64_C(1) << (m_size % 64)) - 1;
    }

    int m_size = 0;
    std::vector<quint64> m_words;
};

} // namespace lorix
