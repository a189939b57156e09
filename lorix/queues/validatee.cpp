// SPDX-License-Identifier: BSD-3-Clause
#include <lorix/queues/validatee.h>

#include <lorix/queues/storedrange.h>

#include <limits>

namespace lorix {

Validatee Validatee::fromSection(const SectionTag& section)
{
    Validatee item;
    item.type = 0;
    item.id = section.id;
    item.start = static_cast<int>(
        qMin<qint64>(qint64(section.position) - section.left, std::numeric_limits<int>::max()));
    item.size = section.size;
    item.tagPosition = section.position;
    item.validationTag = section.validationTag;
    item.md5 = section.md5section;
    item.name = section.title.isEmpty() ? QStringLiteral("<no title>") : section.title;
    return item;
}

Validatee Validatee::fromFile(const FileTag& file)
{
    Validatee item;
    item.type = 1;
    item.id = file.id;
    item.start = storedStart(file);
    item.size = storedSize(file);
    item.tagPosition = -1;
    item.md5 = file.md5file;
    item.cmd5 = storedDigest(file);
    item.name = file.filename;
    return item;
}

Validatee Validatee::fromSavedFile(const SavedFile& file)
{
    Validatee item;
    item.type = 2;
    item.size = file.size;
    item.tagPosition = -1;
    item.md5 = file.md5;
    item.name = file.filename;
    return item;
}

} // namespace lorix
