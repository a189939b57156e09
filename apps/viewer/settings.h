// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

namespace lorix::viewer {

/// What the program remembers from one run to the next.
class Settings
{
public:
    /// The documents opened last, the latest first.
    static QStringList recentFiles();
    static void addRecentFile(const QString& path);
    static void removeRecentFile(const QString& path);

    /// The folder that a dialog showed last; the home folder at first. `purpose`
    /// is "open" or "extract".
    static QString lastFolder(const QString& purpose);
    static void setLastFolder(const QString& purpose, const QString& folder);

    /// Geometry and columns, under a name.
    static QByteArray state(const QString& name);
    static void setState(const QString& name, const QByteArray& state);
};

} // namespace lorix::viewer
