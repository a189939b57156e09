// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <lorix/export.h>

#include <QHash>
#include <QString>

namespace lorix {

/// A folder for extracted files that only the user can enter. It goes, with all
/// that lies in it, when the object goes.
///
/// The paths are also kept where a signal handler can reach them, so that a
/// program can remove them when it is about to be ended:
///
///     void onSignal(int number)
///     {
///         TemporaryFolder::removeAllNow();
///         ...
///     }
class LORIX_EXPORT TemporaryFolder
{
public:
    /// Makes the folder below QDir::tempPath().
    TemporaryFolder();
    ~TemporaryFolder();
    Q_DISABLE_COPY_MOVE(TemporaryFolder)

    /// False when the folder could not be made.
    bool isValid() const { return m_record != nullptr; }

    /// The folder's path.
    QString path() const { return m_path; }

    /// Makes an empty file that only the user can read, and returns its path;
    /// an empty text when that fails.
    QString makeFile();

    /// Removes a file that makeFile() made.
    void removeFile(const QString& path);

    /// Removes the folders and files of all objects that are alive in this
    /// process. May be called from a signal handler; the objects are of no use
    /// afterwards.
    static void removeAllNow();

private:
    struct Registered; // a path that removeAllNow() finds
    static Registered* enter(const QString& path);
    static void leave(Registered* record);

    QString m_path;
    Registered* m_record = nullptr;
    int m_nextFile = 0;
    QHash<QString, Registered*> m_files;
};

} // namespace lorix
