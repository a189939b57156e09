// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <lorix/export.h>

namespace lorix {

/// Where a literal stands in a normal form: clause and place in the clause,
/// both counted from 0.
class CNFLiteralIndex
{
public:
    CNFLiteralIndex() = default;
    CNFLiteralIndex(int disjunctionIndex, int literalIndex)
        : m_disjunctionIndex(disjunctionIndex), m_literalIndex(literalIndex)
    {}

    int disjunctionIndex() const { return m_disjunctionIndex; }
    int literalIndex() const { return m_literalIndex; }

    bool operator==(const CNFLiteralIndex& other) const
    {
        return m_disjunctionIndex == other.m_disjunctionIndex &&
               m_literalIndex == other.m_literalIndex;
    }

private:
    int m_disjunctionIndex = 0;
    int m_literalIndex = 0;
};

} // namespace lorix
