// SPDX-License-Identifier: BSD-3-Clause
#include <lorix/queues/extractee.h>

#include <lorix/queues/storedrange.h>

namespace lorix {

Extractee Extractee::fromFile(const FileTag& file, const QString& target)
{
    return {file.id, storedStart(file), storedSize(file), file.md5file, storedDigest(file), target};
}

} // namespace lorix
