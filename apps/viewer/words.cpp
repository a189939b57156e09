// SPDX-License-Identifier: BSD-3-Clause
#include <apps/viewer/words.h>

#include <apps/lorix/text.h>

#include <QCoreApplication>
#include <QLocale>

namespace lorix::viewer {

namespace {

QString tr(const char* text)
{
    return QCoreApplication::translate("Words", text);
}

} // namespace

QString purposeName(const QString& filePurpose)
{
    if (filePurpose == QLatin1String("InFile"))
        return tr("Input");
    if (filePurpose == QLatin1String("OutFile"))
        return tr("Output");
    return tr("File");
}

QString purposeArrow(const QString& filePurpose)
{
    if (filePurpose == QLatin1String("InFile"))
        return tr("in");
    if (filePurpose == QLatin1String("OutFile"))
        return tr("out");
    return tr("file");
}

QString exactSize(qint64 bytes)
{
    if (bytes < 0)
        return QStringLiteral("–");
    if (bytes < 1024)
        return tr("%1 bytes").arg(bytes);
    return tr("%1 (%2 bytes)").arg(cli::humanSize(bytes), QLocale().toString(bytes));
}

} // namespace lorix::viewer
