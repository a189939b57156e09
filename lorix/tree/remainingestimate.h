// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <lorix/tree/densetrees.h>

#include <vector>

namespace lorix {

/// The estimates of all children of a path at once: PathExpander's
/// heuristicCosts() after each possible association of one node, without
/// asking for each afresh. Not part of the library's interface.
///
/// The numbers are those of PathExpander to the last bit. Where the matrix's
/// costs are such that every sum of them is exact, they are added in any order;
/// otherwise in PathExpander's, for all children side by side.
class RemainingEstimate
{
public:
    explicit RemainingEstimate(const DenseTrees& trees);

    /// Computes for the node open1[depth], with `open2` being what is left of
    /// the trees' open2, in list order.
    void compute(size_t depth, const std::vector<int>& open2);

    /// The estimate once the node is associated with open2[position].
    float withPartner(size_t position) const { return m_children[position]; }

    /// The estimate once the node is associated with none.
    float withoutPartner() const { return m_withoutPartner; }

private:
    struct Candidate
    {
        float cost;
        int partner;
    };
    // A node's least cost over the open nodes of tree 2, which of them has it,
    // and the least without that one.
    struct Least
    {
        float cost;
        int position;
        float next;
    };

    bool sumsAreExact() const;
    float unmatchedCosts(size_t longer, size_t shorter) const;
    void rankCandidates();
    void fillColumnMinima();
    const float* columnMinima(size_t depth) const;
    void findLeast(size_t depth, const std::vector<int>& open2);
    void childrenOverOpen1(size_t open1Left, size_t open2Left);
    void childrenOverOpen2(size_t depth, const std::vector<int>& open2, size_t open1Left);

    const DenseTrees& m_trees;
    bool m_exact;
    std::vector<size_t> m_firstCandidate; // by place in open1; one more at the end
    std::vector<Candidate> m_candidates;  // costs below the unmatched node's, ascending
    std::vector<float> m_columnMinima;    // by place in open1, then by node of tree 2
    std::vector<int> m_positions;         // by node of tree 2: its place in open2, or -1
    std::vector<Least> m_least;           // of the nodes of open1 behind the current one
    std::vector<float> m_children;        // by place in open2
    float m_withoutPartner = 0.0F;
};

} // namespace lorix
