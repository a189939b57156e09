// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <query/referencecompiler.h>

namespace reference {

/// Rewrites a copy of the tree in passes until nothing changes, and reads the
/// clauses off it.
lorix::ConjunctiveNormalForm constructCNF(const Node& tree);

QString describe(const lorix::ConjunctiveNormalForm& form);

} // namespace reference
