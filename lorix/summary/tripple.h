// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <utility>

namespace lorix {

/// Three values of any types. Callers rely on the name's spelling.
template <typename A, typename B, typename C>
struct Tripple
{
    Tripple() = default;
    Tripple(A a, B b, C c) : first(std::move(a)), second(std::move(b)), third(std::move(c)) {}

    A first{};
    B second{};
    C third{};
};

} // namespace lorix
