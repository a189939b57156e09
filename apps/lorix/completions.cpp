// SPDX-License-Identifier: BSD-3-Clause
#include <apps/lorix/completions.h>

#include <lorix/query/querycompletion.h>

namespace lorix::cli {

QStringList completedShells()
{
    return {QStringLiteral("bash"), QStringLiteral("zsh"), QStringLiteral("fish")};
}

QString completionScript(const QString& shell, const OptionTable& table)
{
    if (shell == QLatin1String("bash"))
        return bashCompletion(table);
    if (shell == QLatin1String("zsh"))
        return zshCompletion(table);
    if (shell == QLatin1String("fish"))
        return fishCompletion(table);
    return {};
}

QStringList continuedQueries(const QString& unfinished)
{
    QStringList queries;
    for (const QString& word : queryCompletions(unfinished)) {
        // The word replaces the longest end of the query that it begins with.
        qsizetype common = qMin(word.size(), unfinished.size());
        while (!unfinished.endsWith(QStringView(word).left(common)))
            --common;
        queries.append(unfinished.left(unfinished.size() - common) + word);
    }
    return queries;
}

Offer offerFor(const OptionEntry& option)
{
    if (!option.choices.isEmpty() || option.value == QLatin1String("TOPIC"))
        return Offer::Words;
    if (option.value == QLatin1String("QUERY"))
        return Offer::Query;
    if (option.value == QLatin1String("FOLDER"))
        return Offer::Folder;
    static const QStringList unknown = {QStringLiteral("ID"), QStringLiteral("NUMBER"),
                                        QStringLiteral("TEXT"), QStringLiteral("NAME=VALUE"),
                                        QStringLiteral("WHAT")};
    return unknown.contains(option.value) ? Offer::Nothing : Offer::File;
}

QStringList offeredWords(const OptionEntry& option, const OptionTable& table)
{
    if (option.value != QLatin1String("TOPIC"))
        return option.choices;
    QStringList topics;
    for (const CommandEntry& command : table.commands)
        topics.append(command.name);
    return topics << QStringLiteral("exit-status");
}

} // namespace lorix::cli
