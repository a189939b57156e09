// SPDX-License-Identifier: BSD-3-Clause
#include <lorix/tree/workflowstepcosts.h>

namespace lorix {

WorkflowstepCosts::~WorkflowstepCosts() = default;

float WorkflowstepCosts::costs(const Workflowstep& a, const Workflowstep& b) const
{
    float sum = 0.0F;
    if (a.title != b.title)
        sum += 50.0F;
    if (a.tool != b.tool)
        sum += 30.0F;
    if (a.description != b.description)
        sum += 20.0F;
    return sum;
}

float WorkflowstepCosts::wrongParentCosts() const
{
    return 18.0F;
}

float WorkflowstepCosts::unmatchedNodeCosts() const
{
    return 15.0F;
}

} // namespace lorix
