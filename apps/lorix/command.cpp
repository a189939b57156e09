// SPDX-License-Identifier: BSD-3-Clause
#include <apps/lorix/command.h>

#include <apps/lorix/commands/addcommand.h>
#include <apps/lorix/commands/argscommand.h>
#include <apps/lorix/commands/catcommand.h>
#include <apps/lorix/commands/completioncommand.h>
#include <apps/lorix/commands/delcommand.h>
#include <apps/lorix/commands/diffcommand.h>
#include <apps/lorix/commands/extractcommand.h>
#include <apps/lorix/commands/filescommand.h>
#include <apps/lorix/commands/findcommand.h>
#include <apps/lorix/commands/helpcommand.h>
#include <apps/lorix/commands/infocommand.h>
#include <apps/lorix/commands/schemacommand.h>
#include <apps/lorix/commands/sectionscommand.h>
#include <apps/lorix/commands/summarycommand.h>
#include <apps/lorix/commands/treecommand.h>
#include <apps/lorix/commands/validatecommand.h>

#include <QFile>

namespace lorix::cli {

Command::~Command() = default;

std::vector<std::unique_ptr<Command>> allCommands()
{
    std::vector<std::unique_ptr<Command>> commands;
    commands.push_back(std::make_unique<InfoCommand>());
    commands.push_back(std::make_unique<SectionsCommand>());
    commands.push_back(std::make_unique<FilesCommand>());
    commands.push_back(std::make_unique<CatCommand>());
    commands.push_back(std::make_unique<SummaryCommand>());
    commands.push_back(std::make_unique<ValidateCommand>());
    commands.push_back(std::make_unique<ExtractCommand>());
    commands.push_back(std::make_unique<FindCommand>());
    commands.push_back(std::make_unique<TreeCommand>());
    commands.push_back(std::make_unique<DiffCommand>());
    commands.push_back(std::make_unique<AddCommand>());
    commands.push_back(std::make_unique<DelCommand>());
    commands.push_back(std::make_unique<ArgsCommand>());
    commands.push_back(std::make_unique<SchemaCommand>());
    commands.push_back(std::make_unique<CompletionCommand>());
    commands.push_back(std::make_unique<HelpCommand>());
    return commands;
}

CLI::Option* addText(CLI::App& app, const std::string& names, QString& target,
                     const std::string& description)
{
    return app.add_option_function<std::string>(
        names, [&target](const std::string& text) { target = QFile::decodeName(text.c_str()); },
        description);
}

CLI::Option* addTexts(CLI::App& app, const std::string& names, QStringList& target,
                      const std::string& description)
{
    return app.add_option_function<std::vector<std::string>>(
        names,
        [&target](const std::vector<std::string>& texts) {
            for (const std::string& text : texts)
                target.append(QFile::decodeName(text.c_str()));
        },
        description);
}

} // namespace lorix::cli
