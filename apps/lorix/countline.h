// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <apps/lorix/console.h>

#include <QElapsedTimer>

namespace lorix::cli {

/// "12345 files, 3 of them not right" on the terminal, for work on many files.
/// Rewritten at most ten times a second, removed when the object is destroyed,
/// and never there without a person to see it.
class CountLine
{
public:
    /// Stays silent unless `wanted`.
    CountLine(Console& console, bool wanted);
    ~CountLine();
    CountLine(const CountLine&) = delete;
    CountLine& operator=(const CountLine&) = delete;

    /// Counts one file: passed over, or with its exit code.
    void count(bool skipped, int exitCode);

    /// The line for so many files, so many of them with an exit code other than 0.
    static QString lineFor(qint64 files, qint64 bad);

private:
    Console& m_console;
    bool m_wanted;
    QElapsedTimer m_clock;
    qint64 m_shownAt = 0;
    qint64 m_files = 0;
    qint64 m_bad = 0;
};

} // namespace lorix::cli
