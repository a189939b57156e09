// SPDX-License-Identifier: BSD-3-Clause
#pragma once

namespace lorix::cli {

/// Ctrl-C as a question: whoever works long asks now and then whether the
/// person wants it to end, cleans up and returns Interrupted.
class Interrupt
{
public:
    /// Takes over SIGINT, SIGTERM and SIGHUP. A second one ends the process at
    /// once; temporary files are removed before that, and before a crash ends it.
    static void install();
    /// Whether one has come.
    static bool requested();
    /// Sets or clears the request, for tests and for programs that embed us.
    static void set(bool requested);
};

} // namespace lorix::cli
