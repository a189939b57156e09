// SPDX-License-Identifier: BSD-3-Clause
#include <lorix/container/bytebuffers.h>

#include <algorithm>

namespace lorix {

void appendToBuffer(QByteArray& dst, const QByteArray& src, int start, int len)
{
    const qsizetype from = std::max<qsizetype>(start, 0);
    const qsizetype to = len < 0 ? src.size() : std::min(qsizetype(start) + len, src.size());
    if (from < to)
        dst.append(src.constData() + from, to - from);
}

void prependToBuffer(QByteArray& dst, const QByteArray& src, int end, int len)
{
    const qsizetype from = len < 0 ? 0 : std::max<qsizetype>(qsizetype(end) - len, 0);
    const qsizetype to = std::min<qsizetype>(end, src.size());
    if (from < to)
        dst.insert(0, src.constData() + from, to - from);
}

int findLastIndexOf(const QByteArray& array, char ch, int from)
{
    if (from - 1 < 0)
        return -1;
    return static_cast<int>(array.lastIndexOf(ch, from - 1));
}

} // namespace lorix
