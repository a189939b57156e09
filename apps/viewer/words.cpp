// SPDX-License-Identifier: BSD-3-Clause
#include <apps/viewer/words.h>

#include <apps/lorix/text.h>

#include <QCoreApplication>
#include <QLocale>

namespace lorix::viewer {

namespace {

struct Text
{
    Q_DECLARE_TR_FUNCTIONS(Words)
};

} // namespace

QString purposeName(const QString& filePurpose)
{
    if (filePurpose == QLatin1String("InFile"))
        return Text::tr("Input");
    if (filePurpose == QLatin1String("OutFile"))
        return Text::tr("Output");
    return Text::tr("File");
}

QString purposeArrow(const QString& filePurpose)
{
    if (filePurpose == QLatin1String("InFile"))
        return Text::tr("in");
    if (filePurpose == QLatin1String("OutFile"))
        return Text::tr("out");
    return Text::tr("file");
}

QString plainTip(const QString& text)
{
    const qsizetype longest = 600;
    if (text.isEmpty())
        return {};
    const QString shown = text.size() > longest ? text.left(longest) + QStringLiteral(" …") : text;
    return QStringLiteral("<p style='white-space:pre-wrap'>%1</p>").arg(shown.toHtmlEscaped());
}

QString exactSize(qint64 bytes)
{
    if (bytes < 0)
        return QStringLiteral("–");
    if (bytes < 1024)
        return Text::tr("%1 bytes").arg(bytes);
    return Text::tr("%1 (%2 bytes)").arg(cli::humanSize(bytes), QLocale().toString(bytes));
}

} // namespace lorix::viewer
