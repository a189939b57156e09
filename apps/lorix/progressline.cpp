// SPDX-License-Identifier: BSD-3-Clause
#include <apps/lorix/progressline.h>

#include <apps/lorix/text.h>

#include <algorithm>

namespace lorix::cli {

namespace {

constexpr qint64 pauseMs = 100;
// Before that a rate says nothing.
constexpr qint64 settledMs = 500;

QString duration(qint64 seconds)
{
    return QStringLiteral("%1:%2").arg(seconds / 60).arg(seconds % 60, 2, 10, QLatin1Char('0'));
}

} // namespace

ProgressLine::ProgressLine(Console& console, const QString& label, qint64 totalBytes)
    : m_console(console), m_label(printable(label)), m_totalBytes(totalBytes)
{
    m_clock.start();
}

ProgressLine::~ProgressLine()
{
    m_console.progress(QString());
}

void ProgressLine::update(qint64 doneBytes)
{
    if (!m_console.showsProgress())
        return;
    const qint64 elapsed = m_clock.elapsed();
    if (elapsed - m_shownAt < pauseMs)
        return;
    m_shownAt = elapsed;
    m_console.progress(lineFor(m_label, doneBytes, m_totalBytes, elapsed));
}

QString ProgressLine::lineFor(const QString& label, qint64 doneBytes, qint64 totalBytes,
                              qint64 elapsed)
{
    QString line = label;
    if (totalBytes > 0)
        line +=
            QStringLiteral("  %1 %").arg(std::clamp<qint64>(doneBytes * 100 / totalBytes, 0, 100));
    if (elapsed < settledMs || doneBytes <= 0)
        return line;
    line += QStringLiteral("  %1/s").arg(humanSize(doneBytes * 1000 / elapsed));
    if (totalBytes >= doneBytes) {
        const double left = static_cast<double>(totalBytes - doneBytes) *
                            static_cast<double>(elapsed) / static_cast<double>(doneBytes);
        line += QStringLiteral("  %1 left").arg(duration(static_cast<qint64>(left / 1000 + 0.5)));
    }
    return line;
}

} // namespace lorix::cli
