// SPDX-License-Identifier: BSD-3-Clause
#include <apps/lorix/countline.h>

#include <apps/lorix/text.h>

namespace lorix::cli {

namespace {
constexpr qint64 pauseMs = 100;
} // namespace

CountLine::CountLine(Console& console, bool wanted) : m_console(console), m_wanted(wanted)
{
    m_clock.start();
}

CountLine::~CountLine()
{
    if (m_wanted)
        m_console.progress(QString());
}

void CountLine::count(bool skipped, int exitCode)
{
    if (!m_wanted || !m_console.showsProgress())
        return;
    ++m_files;
    m_bad += !skipped && exitCode != 0 ? 1 : 0;
    const qint64 elapsed = m_clock.elapsed();
    if (elapsed - m_shownAt < pauseMs)
        return;
    m_shownAt = elapsed;
    m_console.progress(lineFor(m_files, m_bad));
}

QString CountLine::lineFor(qint64 files, qint64 bad)
{
    const QString line = counted(files, QStringLiteral("file"), QStringLiteral("files"));
    return bad == 0 ? line : line + QStringLiteral(", %1 of them not right").arg(bad);
}

} // namespace lorix::cli
