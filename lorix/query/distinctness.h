// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <lorix/query/candidateset.h>

#include <vector>

namespace lorix {

/// Tells whether variables can all be bound to different candidates: keeps the
/// last matching and repairs it along augmenting paths.
class Distinctness
{
public:
    Distinctness(size_t variables, int candidates);

    /// Variables with the candidates that each may have; `taken` are out.
    /// False if there is no way.
    bool isPossible(const std::vector<int>& variables,
                    const std::vector<const CandidateSet*>& domains, const CandidateSet& taken);

private:
    bool augment(size_t start, const std::vector<const CandidateSet*>& domains,
                 const CandidateSet& taken);

    std::vector<int> m_lastCandidate; // Per variable of the search, -1 if none.
    std::vector<int> m_owner;         // Per candidate: index into the call's lists, or -1.
    std::vector<int> m_candidate;     // Per variable of the call.
};

} // namespace lorix
