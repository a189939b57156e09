// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QString>

namespace lorix::cli {

/// The folder that a person has named for extracted files. Nothing is written
/// outside of it, no link in it is followed, nothing is replaced unless asked
/// for, and under its final name a file is always whole: it is written beside,
/// as a hidden ".lorix-....part", and renamed when complete.
class TargetFolder
{
public:
    /// The folder need not exist. `overwrite` lets files be replaced.
    TargetFolder(const QString& folder, bool overwrite);

    /// Where a name of TargetNames leads.
    QString pathOf(const QString& name) const;

    /// Why the name cannot be written to, in words and before anything is
    /// written: taken, a folder, a link on the way. Empty where it can.
    QString obstacle(const QString& name) const;

    /// Makes the folders and a new empty file beside `name`, and gives the
    /// latter's path; an empty one, with `problem` set, where that fails.
    QString begin(const QString& name, QString& problem) const;

    /// Gives the file its name; what is in words why not, or nothing.
    QString commit(const QString& partPath, const QString& name) const;

    /// Removes the file again.
    static void discard(const QString& partPath);

private:
    QString makeFolders(const QString& name) const;

    QString m_folder;
    bool m_overwrite;
};

} // namespace lorix::cli
