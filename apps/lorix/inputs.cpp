// SPDX-License-Identifier: BSD-3-Clause
#include <apps/lorix/inputs.h>

#include <apps/lorix/pathlist.h>
#include <apps/lorix/sortedentries.h>

#include <QDir>
#include <QFileInfo>

#include <vector>

namespace lorix::cli {

namespace {

// Folders wait in a list of their own: nesting may be deep.
bool walk(const QString& top, const std::function<bool(const Input&)>& take)
{
    std::vector<SortedEntries> open; // the folders on the way from the top
    QString folder = top;
    for (;;) {
        if (!QFileInfo(folder).isReadable() && !take({folder, false, true}))
            return false;
        SortedEntries files(folder, QDir::Files);
        for (QString name; files.next(name);) {
            if (!take({QDir(folder).filePath(name), false, false}))
                return false;
        }
        open.emplace_back(folder, QDir::Dirs | QDir::NoSymLinks);
        QString name;
        while (!open.empty() && !open.back().next(name))
            open.pop_back();
        if (open.empty())
            return true;
        folder = QDir(open.back().folder()).filePath(name);
    }
}

} // namespace

bool Inputs::isSingle() const
{
    return paths.size() == 1 && list.isEmpty() && !(recursive && QFileInfo(paths.first()).isDir());
}

void Inputs::forEach(const Take& take) const
{
    for (const QString& path : paths) {
        if (!forPath(path, take))
            return;
    }
    if (!list.isEmpty())
        forList(take);
}

bool Inputs::forPath(const QString& path, const Take& take) const
{
    const bool folder = QFileInfo(path).isDir();
    return folder && recursive ? walk(path, take) : take({path, true, folder});
}

bool Inputs::forList(const Take& take) const
{
    PathList names(list, zeroDelimited ? '\0' : '\n');
    if (!names.isOpen())
        return take({list, true, QFileInfo(list).isDir()});
    for (QString name; names.next(name);) {
        if (!forPath(name, take))
            return false;
    }
    return true;
}

} // namespace lorix::cli
