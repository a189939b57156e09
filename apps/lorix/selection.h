// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <apps/lorix/donelist.h>
#include <apps/lorix/inputs.h>

#include <CLI/CLI.hpp>

#include <QDateTime>

namespace lorix::cli {

/// Leaves out inputs that an earlier run has seen to: by their time (--since),
/// or because its output has them (--skip-done).
class Selection
{
public:
    void declare(CLI::App& app);

    /// Reads the time and the earlier output; `fits` says whether an object in
    /// that answers what is asked now. Where standard output goes on with the
    /// same file and its last line is cut, the rest of that line is taken away.
    /// Returns what is wrong with the options, or an empty text.
    QString prepare(const DoneList::Fits& fits);

    /// Whether this input is to be left out; counts those that are.
    bool leavesOut(const Input& input);

    qint64 leftOut() const { return m_leftOut; }

private:
    QString readTime();
    QString readDone(const DoneList::Fits& fits);

    QString m_sinceText;
    QString m_donePath;
    QDateTime m_since;
    DoneList m_done;
    qint64 m_leftOut = 0;
};

} // namespace lorix::cli
