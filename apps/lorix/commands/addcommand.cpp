// SPDX-License-Identifier: BSD-3-Clause
#include <apps/lorix/commands/addcommand.h>

#include <apps/lorix/toolrun.h>

#include <lorix/argfile/argfilereader.h>
#include <lorix/runner/lorixaddrunner.h>

namespace lorix::cli {

QString AddCommand::summary() const
{
    return QStringLiteral("Add a step with its files to a document, through the add tool");
}

QString AddCommand::examples() const
{
    return QStringLiteral(
        "  lorix add -- -A report.pdf -s title \"Mesh refined\" -i coarse.inp -o fine.inp\n"
        "  lorix add -- -c step.args\n"
        "  lorix add -- --help      (what the add tool takes)");
}

void AddCommand::declare(CLI::App& app)
{
    addTexts(app, "OPTION", m_words, "Options of the add tool, behind '--'")->required();
    addTexts(app, "--tool-path", m_toolPaths,
             "Folder to search for the tool before the program's own; may be given several times")
        ->type_name("FOLDER")
        ->allow_extra_args(false);
}

QString AddCommand::argumentText(const QStringList& words)
{
    QStringList quoted;
    quoted.reserve(words.size());
    for (const QString& word : words)
        quoted.append(u'\'' + QString(word).replace(u'\'', QLatin1String("'\\''")) + u'\'');
    return quoted.join(u' ');
}

int AddCommand::run(Console& console, const GlobalOptions& options)
{
    ArgfileReader reader;
    const ArgFile step = reader.parseCommandline(reader.checkOptionSignatures(m_words));
    ToolRun tool(name(), step.outputLorixfile(0), m_toolPaths, console, options);
    return tool.run<LorixaddRunner>(argumentText(m_words));
}

} // namespace lorix::cli
