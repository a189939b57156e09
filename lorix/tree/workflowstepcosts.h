// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <lorix/export.h>
#include <lorix/summary/workflowstep.h>

namespace lorix {

/// What it costs to say that a step of one history is a step of another.
///
/// Subclass it for another pricing. Costs may be fractional. The search takes
/// its two penalties from the CostMatrix and not from here.
class LORIX_EXPORT WorkflowstepCosts
{
public:
    virtual ~WorkflowstepCosts();

    /// 50 for different titles, plus 30 for different tools, plus 20 for
    /// different descriptions; texts are compared exactly.
    virtual float costs(const Workflowstep& a, const Workflowstep& b) const;

    /// 18, though the search charges CostMatrix::costsWrongParent().
    virtual float wrongParentCosts() const;

    /// 15.
    virtual float unmatchedNodeCosts() const;
};

} // namespace lorix
