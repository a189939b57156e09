// SPDX-License-Identifier: BSD-3-Clause
#include <apps/lorix/optiontable.h>

#include <QRegularExpression>

#include <limits>

namespace lorix::cli {

namespace {

QStringList withHyphens(const std::vector<std::string>& names, const QString& hyphens)
{
    QStringList result;
    for (const std::string& name : names)
        result.append(hyphens + QString::fromStdString(name));
    return result;
}

// The parser keeps the choices of an option only in the name of its type:
// "TEXT:{text,json,dot}".
QStringList choicesIn(const QString& type)
{
    const qsizetype begin = type.indexOf(QLatin1String(":{"));
    const qsizetype end = type.lastIndexOf(u'}');
    return begin < 0 || end < begin ? QStringList()
                                    : type.mid(begin + 2, end - begin - 2).split(u',');
}

// Likewise the bounds: "INT:INT in [1 - 1024]".
QString rangeIn(const QString& type)
{
    static const QRegularExpression bounds(QStringLiteral("in \\[(\\S+) - (\\S+)\\]"));
    const QRegularExpressionMatch match = bounds.match(type);
    if (!match.hasMatch())
        return type.endsWith(QLatin1String(":NONNEGATIVE")) ? QStringLiteral("0 or more")
                                                            : QString();
    if (match.captured(2) == QString::number(std::numeric_limits<qint64>::max()))
        return match.captured(1) + QStringLiteral(" or more");
    return match.captured(1) + QStringLiteral(" to ") + match.captured(2);
}

QString valueName(const QString& type)
{
    const QString name = type.section(u':', 0, 0);
    return name == QLatin1String("INT") ? QStringLiteral("NUMBER") : name;
}

OptionEntry entryFor(const CLI::Option& option)
{
    OptionEntry entry;
    const QString type = QString::fromStdString(option.get_type_name());
    entry.shortNames = withHyphens(option.get_snames(), QStringLiteral("-"));
    entry.longNames = withHyphens(option.get_lnames(), QStringLiteral("--"));
    entry.description = QString::fromStdString(option.get_description());
    entry.choices = choicesIn(type);
    entry.range = rangeIn(type);
    entry.defaultValue = QString::fromStdString(option.get_default_str());
    entry.required = option.get_required();
    entry.repeats = option.get_items_expected_max() > 1 ||
                    option.get_multi_option_policy() == CLI::MultiOptionPolicy::TakeAll;
    if (option.get_delimiter() != '\0')
        entry.separator = QLatin1Char(option.get_delimiter());
    if (option.get_positional())
        entry.value = QString::fromStdString(option.get_name(true));
    else if (option.get_items_expected_max() > 0)
        entry.value = valueName(type);
    return entry;
}

CommandEntry entryFor(const CLI::App& app)
{
    CommandEntry entry;
    entry.name = QString::fromStdString(app.get_name());
    entry.summary = QString::fromStdString(app.get_description());
    const QString footer = QString::fromStdString(app.get_footer());
    const QString heading = QStringLiteral("Examples:\n");
    if (footer.startsWith(heading))
        entry.examples = footer.mid(heading.size());
    for (const CLI::Option* option : app.get_options())
        (option->get_positional() ? entry.positionals : entry.options).append(entryFor(*option));
    return entry;
}

} // namespace

OptionTable readOptionTable(const CLI::App& parser)
{
    OptionTable table;
    table.program = entryFor(parser);
    for (const CLI::App* command : parser.get_subcommands({}))
        table.commands.append(entryFor(*command));
    return table;
}

} // namespace lorix::cli
