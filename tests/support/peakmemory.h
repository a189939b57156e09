// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QByteArray>
#include <QFile>

/// How much resident memory the program needs at its peak above what it had
/// when this was made:
///
///     PeakMemory memory;
///     work();
///     QVERIFY(memory.growth() < 16 * 1024 * 1024);
///
/// Where the system does not tell, or a sanitizer keeps memory of its own, the
/// answer is 0.
class PeakMemory
{
public:
    PeakMemory()
    {
        QFile reset(QStringLiteral("/proc/self/clear_refs"));
        m_works = reset.open(QIODevice::WriteOnly | QIODevice::Unbuffered) && reset.write("5") == 1;
        m_base = field("VmRSS:");
    }

    /// In bytes.
    qint64 growth() const { return isMeasured() ? field("VmHWM:") - m_base : 0; }

    bool isMeasured() const
    {
#if defined(__SANITIZE_ADDRESS__)
        return false;
#else
        return m_works;
#endif
    }

private:
    static qint64 field(const QByteArray& name)
    {
        QFile status(QStringLiteral("/proc/self/status"));
        if (!status.open(QIODevice::ReadOnly))
            return 0;
        for (const QByteArray& line : status.readAll().split('\n'))
            if (line.startsWith(name))
                return line.mid(name.size()).simplified().split(' ').first().toLongLong() * 1024;
        return 0;
    }

    bool m_works = false;
    qint64 m_base = 0;
};
