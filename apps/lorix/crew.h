// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QtGlobal>

#include <functional>

namespace lorix::cli {

/// Runs `work` on `jobs` threads in all, the calling one among them: there as
/// `here`, on the others as `elsewhere`. When the calling thread is done before
/// the others it calls `wait` ten times a second until they are. Returns when
/// all are done.
void runCrew(int jobs, const std::function<void()>& here, const std::function<void()>& elsewhere,
             const std::function<void()>& wait);

/// The number of jobs that is worth it for so many items and bytes: a few
/// bytes are done before a thread has started.
int usefulJobs(int jobs, qint64 items, qint64 bytes);

} // namespace lorix::cli
