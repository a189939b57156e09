// SPDX-License-Identifier: BSD-3-Clause
#include <apps/viewer/settings.h>

#include <QDir>
#include <QFileInfo>
#include <QSettings>

namespace lorix::viewer {

namespace {

const int recentCount = 10;
const QString recentKey = QStringLiteral("recentFiles");

QString folderKey(const QString& purpose)
{
    return QStringLiteral("lastFolder/") + purpose;
}

QString stateKey(const QString& name)
{
    return QStringLiteral("state/") + name;
}

} // namespace

QStringList Settings::recentFiles()
{
    return QSettings().value(recentKey).toStringList();
}

void Settings::addRecentFile(const QString& path)
{
    QStringList files = recentFiles();
    const QString absolute = QFileInfo(path).absoluteFilePath();
    files.removeAll(absolute);
    files.prepend(absolute);
    QSettings().setValue(recentKey, files.mid(0, recentCount));
}

void Settings::removeRecentFile(const QString& path)
{
    QStringList files = recentFiles();
    files.removeAll(QFileInfo(path).absoluteFilePath());
    QSettings().setValue(recentKey, files);
}

QString Settings::lastFolder(const QString& purpose)
{
    const QString folder = QSettings().value(folderKey(purpose)).toString();
    return QFileInfo(folder).isDir() ? folder : QDir::homePath();
}

void Settings::setLastFolder(const QString& purpose, const QString& folder)
{
    QSettings().setValue(folderKey(purpose), folder);
}

QByteArray Settings::state(const QString& name)
{
    return QSettings().value(stateKey(name)).toByteArray();
}

void Settings::setState(const QString& name, const QByteArray& state)
{
    QSettings().setValue(stateKey(name), state);
}

} // namespace lorix::viewer
