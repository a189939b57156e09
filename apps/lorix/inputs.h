// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QList>
#include <QString>
#include <QStringList>

#include <functional>

namespace lorix::cli {

/// One file to work on.
struct Input
{
    QString path;
    bool named = true;   ///< Named by the person, not come across in a folder.
    bool folder = false; ///< A folder that is not gone into: named without leave, or unreadable.
};

/// The files that a command line names, folders opened up.
class Inputs
{
public:
    QStringList paths;
    QString list;               ///< A file with more of them, "-" for standard input; may be empty.
    bool zeroDelimited = false; ///< The names in the list end in a zero byte, not a line feed.
    bool recursive = false;

    bool isEmpty() const { return paths.isEmpty() && list.isEmpty(); }
    /// Whether there is one input and no more.
    bool isSingle() const;

    /// Calls `take` for every input, in the order named; the files below a
    /// folder come in ascending order of their names, links to folders are not
    /// followed. A list that cannot be opened is handed out in its own place.
    /// Needs the same memory for any number of them. Ends when `take` returns
    /// false.
    void forEach(const std::function<bool(const Input&)>& take) const;

private:
    using Take = std::function<bool(const Input&)>;
    bool forPath(const QString& path, const Take& take) const;
    bool forList(const Take& take) const;
};

} // namespace lorix::cli
