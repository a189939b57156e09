// SPDX-License-Identifier: BSD-3-Clause
#include <lorix/argfile/argumentlist.h>

#include <algorithm>

namespace {

bool isBlank(QChar c)
{
    return c == u' ' || c == u'\t' || c == u'\r' || c == u'\n';
}

} // namespace

void appendAttributeToList(const QString& value, const QString& option, const QString& name,
                           QStringList& list)
{
    if (!value.isEmpty())
        list << option << name << value;
}

void appendFlagToList(bool flag, const QString& option, const QString& name, QStringList& list)
{
    list << option << (flag ? name : QStringLiteral("no-") + name);
}

QString quoteString(const QString& string, bool keepVariables)
{
    QString result = string;
    result.replace(u'\\', QLatin1String("\\\\"));
    result.replace(u'"', QLatin1String("\\\""));
    result.replace(u'`', QLatin1String("\\`"));
    result.replace(keepVariables ? QLatin1String("$$") : QLatin1String("$"), QLatin1String("\\$"));
    if (std::any_of(string.cbegin(), string.cend(), isBlank))
        result = u'"' + result + u'"';
    return result;
}

QStringList quoteStringList(const QStringList& list, bool keepVariables)
{
    QStringList result;
    result.reserve(list.size());
    for (const QString& string : list)
        result.append(quoteString(string, keepVariables));
    return result;
}
