// SPDX-License-Identifier: BSD-3-Clause
#include <lorix/queues/storedrange.h>

#include <algorithm>
#include <limits>

namespace lorix {

namespace {

bool isFlate(const FileTag& file)
{
    return file.compression == QLatin1String("flate");
}

} // namespace

int storedStart(const FileTag& file)
{
    const qint64 start = qint64(file.position) + file.taglen + file.offset;
    return static_cast<int>(std::clamp<qint64>(start, std::numeric_limits<int>::min(),
                                               std::numeric_limits<int>::max()));
}

int storedSize(const FileTag& file)
{
    return isFlate(file) ? file.cfilesize : file.filesize;
}

QString storedDigest(const FileTag& file)
{
    return isFlate(file) ? file.md5cfile : QString();
}

} // namespace lorix
