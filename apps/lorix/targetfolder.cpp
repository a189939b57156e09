// SPDX-License-Identifier: BSD-3-Clause
#include <apps/lorix/targetfolder.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRandomGenerator>
#include <QStringList>

#include <cerrno>
#include <cstdio>
#include <cstring>

#include <unistd.h>

namespace lorix::cli {

namespace {

QString systemError()
{
    return QString::fromLocal8Bit(std::strerror(errno));
}

bool existsOrIsLink(const QFileInfo& info)
{
    return info.exists() || info.isSymLink();
}

} // namespace

TargetFolder::TargetFolder(const QString& folder, bool overwrite)
    : m_folder(folder.isEmpty() ? QStringLiteral(".") : folder), m_overwrite(overwrite)
{}

QString TargetFolder::pathOf(const QString& name) const
{
    return QDir(m_folder).filePath(name);
}

QString TargetFolder::obstacle(const QString& name) const
{
    const QFileInfo folder(m_folder);
    if (folder.exists() && !folder.isDir())
        return QStringLiteral("the target folder is a file");
    const QStringList components = name.split(QLatin1Char('/'));
    for (qsizetype i = 1; i < components.size(); ++i) {
        const QString below = components.mid(0, i).join(QLatin1Char('/'));
        const QFileInfo info(pathOf(below));
        if (info.isSymLink())
            return QStringLiteral("the folder on the way is a link");
        if (info.exists() && !info.isDir())
            return QStringLiteral("there is a file where a folder is needed");
    }
    const QFileInfo target(pathOf(name));
    if (target.isDir() && !target.isSymLink())
        return QStringLiteral("there is a folder of that name");
    if (existsOrIsLink(target) && !m_overwrite)
        return QStringLiteral("exists already; --overwrite replaces it");
    return {};
}

// Why not, or nothing.
QString TargetFolder::makeFolders(const QString& name) const
{
    if (!QFileInfo(m_folder).isDir() && !QDir().mkpath(m_folder))
        return QStringLiteral("the target folder cannot be made: %1").arg(systemError());
    const QStringList components = name.split(QLatin1Char('/'));
    for (qsizetype i = 1; i < components.size(); ++i) {
        const QString path = pathOf(components.mid(0, i).join(QLatin1Char('/')));
        // Another job may have made it in the meantime.
        if (!QDir().mkdir(path) && !QFileInfo(path).isDir())
            return QStringLiteral("the folder %1 cannot be made: %2").arg(path, systemError());
    }
    return {};
}

QString TargetFolder::begin(const QString& name, QString& problem) const
{
    problem = obstacle(name);
    if (problem.isEmpty())
        problem = makeFolders(name);
    if (!problem.isEmpty())
        return {};
    const QString folder = QFileInfo(pathOf(name)).path();
    for (int attempt = 0; attempt < 100; ++attempt) {
        const QString path = QDir(folder).filePath(
            QStringLiteral(".lorix-%1.part")
                .arg(QRandomGenerator::system()->generate64(), 16, 16, QLatin1Char('0')));
        QFile file(path);
        if (file.open(QIODevice::WriteOnly | QIODevice::NewOnly))
            return path;
        problem = QStringLiteral("cannot be written: %1").arg(file.errorString());
        if (!QFileInfo::exists(path))
            break;
    }
    return {};
}

QString TargetFolder::commit(const QString& partPath, const QString& name) const
{
    const QString path = pathOf(name);
    if (m_overwrite) {
        // Replaces a link itself, never what it points at.
        if (std::rename(QFile::encodeName(partPath).constData(),
                        QFile::encodeName(path).constData()) == 0)
            return {};
        const QString why = systemError();
        discard(partPath);
        return QStringLiteral("cannot be given its name: %1").arg(why);
    }
    // A second name for the file cannot replace anything, not even a link.
    const QByteArray from = QFile::encodeName(partPath);
    const QByteArray to = QFile::encodeName(path);
    bool done = ::link(from.constData(), to.constData()) == 0;
    if (done)
        ::unlink(from.constData());
    else if (errno != EEXIST && !existsOrIsLink(QFileInfo(path)))
        done = std::rename(from.constData(), to.constData()) == 0; // no second names here
    if (done)
        return {};
    const QString why = systemError();
    discard(partPath);
    return QStringLiteral("cannot be given its name: %1").arg(why);
}

void TargetFolder::discard(const QString& partPath)
{
    QFile::remove(partPath);
}

} // namespace lorix::cli
