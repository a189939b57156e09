// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <apps/lorix/console.h>

#include <QElapsedTimer>
#include <QString>

namespace lorix::cli {

/// "report.pdf  42 %  812.0 MiB/s  0:07 left" on the terminal, for work that is
/// measured in bytes. Rewritten at most ten times a second, removed when the
/// object is destroyed, and never there without a person to see it.
class ProgressLine
{
public:
    /// `label` is shown as it is, made printable. `totalBytes` of 0 and less
    /// shows no percentage.
    ProgressLine(Console& console, const QString& label, qint64 totalBytes);
    ~ProgressLine();
    ProgressLine(const ProgressLine&) = delete;
    ProgressLine& operator=(const ProgressLine&) = delete;

    /// Says how far the work is.
    void update(qint64 doneBytes);

    /// The line for some moment; the time is in milliseconds since the start.
    static QString lineFor(const QString& label, qint64 doneBytes, qint64 totalBytes,
                           qint64 elapsed);

private:
    Console& m_console;
    QString m_label;
    qint64 m_totalBytes;
    QElapsedTimer m_clock;
    qint64 m_shownAt = 0;
};

} // namespace lorix::cli
