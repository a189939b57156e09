// SPDX-License-Identifier: BSD-3-Clause
#include <apps/lorix/inputs.h>

#include <QDir>
#include <QFileInfo>

namespace lorix::cli {

namespace {

QStringList entries(const QString& folder, QDir::Filters filters)
{
    QStringList names = QDir(folder).entryList(
        filters | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot, QDir::Unsorted);
    names.sort();
    return names;
}

// Folders wait in a list of their own: nesting may be deep.
bool walk(const QString& top, const std::function<bool(const Input&)>& take)
{
    QStringList waiting = {top};
    while (!waiting.isEmpty()) {
        const QString folder = waiting.takeLast();
        for (const QString& name : entries(folder, QDir::Files)) {
            if (!take({QDir(folder).filePath(name), false, false}))
                return false;
        }
        QStringList below = entries(folder, QDir::Dirs | QDir::NoSymLinks);
        for (auto name = below.crbegin(); name != below.crend(); ++name)
            waiting.append(QDir(folder).filePath(*name));
    }
    return true;
}

} // namespace

void Inputs::forEach(const std::function<bool(const Input&)>& take) const
{
    for (const QString& path : paths) {
        const bool folder = QFileInfo(path).isDir();
        const bool more = folder && recursive ? walk(path, take) : take({path, true, folder});
        if (!more)
            return;
    }
}

} // namespace lorix::cli
