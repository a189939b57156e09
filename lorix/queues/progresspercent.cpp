// SPDX-License-Identifier: BSD-3-Clause
#include <lorix/queues/progresspercent.h>

#include <limits>

namespace lorix {

int progressPercent(qint64 done, qint64 total)
{
    if (total == 0)
        return 0;
    // Sizes of -1 count as they stand, so that sums can be small or negative.
    const double percent = static_cast<double>(done) * 100.0 / static_cast<double>(total);
    constexpr double least = std::numeric_limits<int>::min();
    constexpr double largest = std::numeric_limits<int>::max();
    return static_cast<int>(qBound(least, percent, largest));
}

} // namespace lorix
