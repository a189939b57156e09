// SPDX-License-Identifier: BSD-3-Clause
#include <lorix/query/distinctness.h>

namespace lorix {

Distinctness::Distinctness(size_t variables, int candidates)
    : m_lastCandidate(variables, -1), m_owner(static_cast<size_t>(candidates), -1)
{}

bool Distinctness::isPossible(const std::vector<int>& variables,
                              const std::vector<const CandidateSet*>& domains,
                              const CandidateSet& taken)
{
    m_candidate.assign(variables.size(), -1);
    for (size_t i = 0; i < variables.size(); ++i) {
        const int last = m_lastCandidate[static_cast<size_t>(variables[i])];
        if (last >= 0 && domains[i]->contains(last) && !taken.contains(last) &&
            m_owner[static_cast<size_t>(last)] < 0) {
            m_owner[static_cast<size_t>(last)] = static_cast<int>(i);
            m_candidate[i] = last;
        }
    }
    bool possible = true;
    for (size_t i = 0; possible && i < variables.size(); ++i)
        possible = m_candidate[i] >= 0 || augment(i, domains, taken);
    for (size_t i = 0; i < variables.size(); ++i) {
        m_lastCandidate[static_cast<size_t>(variables[i])] = m_candidate[i];
        if (m_candidate[i] >= 0)
            m_owner[static_cast<size_t>(m_candidate[i])] = -1;
    }
    return possible;
}

// Breadth first, so that no path is a matter of the stack.
bool Distinctness::augment(size_t start, const std::vector<const CandidateSet*>& domains,
                           const CandidateSet& taken)
{
    CandidateSet seen = taken;
    std::vector<size_t> queue{start};
    std::vector<int> cameFrom(m_owner.size(), -1); // Per candidate: the variable before it.
    for (size_t head = 0; head < queue.size(); ++head) {
        const size_t variable = queue[head];
        CandidateSet fresh = *domains[variable];
        fresh.subtract(seen);
        seen.unite(fresh);
        for (int c = fresh.next(-1); c >= 0; c = fresh.next(c)) {
            cameFrom[static_cast<size_t>(c)] = static_cast<int>(variable);
            const int owner = m_owner[static_cast<size_t>(c)];
            if (owner >= 0) {
                queue.push_back(static_cast<size_t>(owner));
                continue;
            }
            for (int free = c; free >= 0;) {
                const int taker = cameFrom[static_cast<size_t>(free)];
                const int given = m_candidate[static_cast<size_t>(taker)];
                m_owner[static_cast<size_t>(free)] = taker;
                m_candidate[static_cast<size_t>(taker)] = free;
                free = given;
            }
            return true;
        }
    }
    return false;
}

} // namespace lorix
