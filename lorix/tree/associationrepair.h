// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <lorix/tree/densetrees.h>

#include <vector>

namespace lorix {

/// Improves a complete association by exchanging partners, as long as that
/// makes it cheaper. Not part of the library's interface.
class AssociationRepair
{
public:
    /// `trials` is how many exchanges may be priced, in all.
    AssociationRepair(const DenseTrees& trees, qint64 trials);

    /// What a complete association costs, to the last bit as Path counts it.
    /// `partners` holds the partner or DenseTrees::none by node of tree 1.
    float costOf(const std::vector<int>& partners);

    /// Exchanges until nothing helps any longer, or the trials are used up;
    /// returns the cost that is left.
    float improve(std::vector<int>& partners);

private:
    bool improveNode(int u, std::vector<int>& partners, float& costs);
    bool attempt(std::vector<int>& partners, int u, int v, int other, int othersPartner,
                 float& costs);
    std::vector<int> nodesWorthTrying(const std::vector<int>& partners) const;

    const DenseTrees& m_trees;
    qint64 m_trialsLeft;
    DenseState m_state;
};

} // namespace lorix
