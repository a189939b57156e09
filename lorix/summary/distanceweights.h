// SPDX-License-Identifier: BSD-3-Clause
#pragma once

namespace lorix {

/// What each disagreement between an embedded file's marker and a file of an
/// XML summary counts for distance().
namespace weight {

constexpr int filename = 20;
constexpr int md5file = 20;
constexpr int filesize = 20;
constexpr int filetype = 1;
constexpr int desc = 1;
constexpr int comment = 1;
constexpr int md5cfile = 2;
constexpr int cfilesize = 2;
constexpr int compression = 2;

} // namespace weight

/// A distance below this one is a match: all the light weights together stay
/// below, every heavy one lies above.
constexpr int matchThreshold = 15;

} // namespace lorix
