// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <algorithm>
#include <utility>
#include <vector>

namespace lorix {

/// A queue whose pop() answers the element of least priority.
///
/// It is the standard library's binary heap over a vector, and elements of the
/// same priority leave it in the order that std::push_heap and std::pop_heap
/// give them: the same on every run, and the same whatever T is, but not the
/// order in which they came.
template <typename T>
class PriorityQueue
{
public:
    /// Adds `element`.
    void push(const T& element, int priority)
    {
        m_heap.emplace_back(element, priority);
        std::push_heap(m_heap.begin(), m_heap.end(), sinksBelow);
    }

    /// Takes the element of least priority; a default T from an empty queue.
    T pop()
    {
        if (m_heap.empty())
            return T();
        std::pop_heap(m_heap.begin(), m_heap.end(), sinksBelow);
        T element = std::move(m_heap.back().first);
        m_heap.pop_back();
        return element;
    }

    bool isEmpty() const { return m_heap.empty(); }

    /// Number of elements.
    std::size_t size() const { return m_heap.size(); }

private:
    using Entry = std::pair<T, int>;

    static bool sinksBelow(const Entry& a, const Entry& b) { return a.second > b.second; }

    std::vector<Entry> m_heap;
};

} // namespace lorix
