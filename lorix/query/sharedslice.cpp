// SPDX-License-Identifier: BSD-3-Clause
#include <lorix/query/sharedslice.h>

#include <algorithm>

namespace lorix {

QString sharedSlice(const QString& text, qsizetype position, qsizetype length)
{
    const qsizetype begin = std::clamp<qsizetype>(position, 0, text.size());
    const qsizetype size = std::clamp<qsizetype>(length, 0, text.size() - begin);
    // A copy shares the memory and counts; only its window is moved.
    QString::DataPointer window = QString(text).data_ptr();
    constexpr qsizetype copiedBelow = 64;
    if (size <= copiedBelow || !window.d_ptr())
        return text.mid(begin, size);
    window.setBegin(window.begin() + begin);
    window.size = size;
    return QString(std::move(window));
}

} // namespace lorix
