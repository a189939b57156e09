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
    bool folder = false; ///< A named folder, without leave to go into folders.
};

/// The files that a command line names, folders opened up.
class Inputs
{
public:
    QStringList paths;
    bool recursive = false;

    /// Calls `take` for every input, in the order named; the files below a
    /// folder come in ascending order of their names, links to folders are not
    /// followed. Ends when `take` returns false.
    void forEach(const std::function<bool(const Input&)>& take) const;
};

} // namespace lorix::cli
