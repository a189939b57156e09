// SPDX-License-Identifier: BSD-3-Clause
#pragma once

namespace lorix {

/// What each disagreement between an embedded file's marker and a file of an
/// XML summary counts for distance().
namespace weight {

constexpr int filename = 20;   ///< Different names.
constexpr int md5file = 20;    ///< Different digests of the content.
constexpr int filesize = 20;   ///< Different sizes of the content.
constexpr int filetype = 1;    ///< Different types.
constexpr int desc = 1;        ///< Different descriptions.
constexpr int comment = 1;     ///< Different comments.
constexpr int md5cfile = 2;    ///< Different digests of the stored bytes.
constexpr int cfilesize = 2;   ///< Different stored sizes.
constexpr int compression = 2; ///< Different ways of compression.

} // namespace weight

/// A distance below this one is a match: all the light weights together stay
/// below, every heavy one lies above.
constexpr int matchThreshold = 15;

} // namespace lorix
