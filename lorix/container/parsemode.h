// SPDX-License-Identifier: BSD-3-Clause
#pragma once

namespace lorix {

/// How strictly section markers are looked for. Embedded-file markers always
/// stand at the start of their line.
enum ParseMode {
    /// A section marker stands at the start of its line, and a link to a
    /// predecessor leads exactly to it.
    Strict = 0,
    /// A section marker may also stand further inside a line, and where a link
    /// to a predecessor is broken, the nine lines around its target are searched.
    Tolerant = 1
};

} // namespace lorix
