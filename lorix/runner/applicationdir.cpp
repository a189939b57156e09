// SPDX-License-Identifier: BSD-3-Clause
#include <lorix/runner/applicationdir.h>

#include <QCoreApplication>
#include <QDir>

QString getBinaryDir()
{
    return QDir(QCoreApplication::applicationDirPath()).canonicalPath();
}

QString getApplicationDir()
{
    const QString binaryDir = getBinaryDir();
    if (!binaryDir.endsWith(QStringLiteral("/Contents/MacOS")))
        return binaryDir;
    QDir dir(binaryDir);
    for (int level = 0; level < 3; ++level)
        dir.cdUp();
    return dir.absolutePath();
}
