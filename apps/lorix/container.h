// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <apps/lorix/answer.h>
#include <apps/lorix/inputs.h>

#include <lorix/container/lorixparser.h>

namespace lorix::cli {

/// Opens `input` with `parser`. Where that fails, `answer` says why in words
/// (not there, a folder, no right to read, too large, not a container) and
/// holds Unusable; a file that was only come across in a folder and is no
/// container is passed over: `skipped` is set instead.
bool openContainer(LorixParser& parser, const Input& input, Answer& answer, bool& skipped);

/// Opens the file at `path` for another thread. False when that fails, or when
/// it does not hold the same sections and files as `first` has found in it.
bool openAgain(LorixParser& parser, const QString& path, const LorixParser& first);

} // namespace lorix::cli
