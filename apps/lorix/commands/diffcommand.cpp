// SPDX-License-Identifier: BSD-3-Clause
#include <apps/lorix/commands/diffcommand.h>

#include <apps/lorix/history.h>
#include <apps/lorix/interrupt.h>

#include <QJsonDocument>

#include <limits>

namespace lorix::cli {

QString DiffCommand::summary() const
{
    return QStringLiteral("Compare the histories of two documents, step by step");
}

QString DiffCommand::examples() const
{
    return QStringLiteral(
        "  lorix diff old.pdf new.pdf\n"
        "  lorix diff --ignore timestamp,host old.pdf new.pdf\n"
        "  lorix diff --json old.pdf new.pdf | jq '.matches[0].steps[] | select(.left == null)'");
}

void DiffCommand::declare(CLI::App& app)
{
    addText(app, "A", m_left, "The document whose history stands on the left")->required();
    addText(app, "B", m_right, "The document whose history stands on the right")->required();
    app.add_option("-n,--count", m_diff.count,
                   "How many matches to show, cheapest first, where the exact search ends in time")
        ->check(CLI::Range(1, 1000))
        ->capture_default_str();
    app.add_option("--effort", m_diff.expansions,
                   "How many partial matches the exact search may look at before the quick match "
                   "answers instead; 0 for the quick match at once")
        ->check(CLI::Range(qint64(0), std::numeric_limits<qint64>::max()))
        ->capture_default_str();
    std::vector<std::string> names;
    for (const QString& field : comparedFields())
        names.push_back(field.toStdString());
    app.add_option_function<std::vector<std::string>>(
           "--ignore",
           [this](const std::vector<std::string>& fields) {
               for (const std::string& field : fields)
                   m_diff.ignored.append(QString::fromStdString(field));
           },
           "Fields that need not agree, separated by commas")
        ->type_name("FIELDS")
        ->delimiter(',')
        ->allow_extra_args(false)
        ->check(CLI::IsMember(names));
}

Answer DiffCommand::examine(const QString& left, const QString& right, const Paint& paint) const
{
    Answer answer = Answer::start(name(), left);
    answer.json.insert(QStringLiteral("other"), right);
    WorkflowTree leftTree;
    WorkflowTree rightTree;
    bool skipped = false;
    const bool leftRead = readHistory(leftTree, {left}, answer, skipped);
    if (skipped || !readHistory(rightTree, {right}, answer, skipped) || !leftRead)
        return answer;
    HistoryDiff diff = m_diff;
    if (!diff.compare(leftTree, rightTree)) {
        if (diff.method() == HistoryDiff::TooLarge)
            answer.fail(Failed, QStringLiteral("limit.pairs"), left,
                        QStringLiteral("the two histories have too many steps to compare (%1 and "
                                       "%2)")
                            .arg(leftTree.nodeIds().size())
                            .arg(rightTree.nodeIds().size()));
        return answer;
    }
    diff.toJson(answer.json);
    answer.text = diff.toText(left, right, paint);
    if (!diff.isSame())
        answer.exitCode = worse(answer.exitCode, No);
    return answer;
}

int DiffCommand::run(Console& console, const GlobalOptions& options)
{
    const Answer answer = examine(m_left, m_right, Paint(console.colored()));
    if (Interrupt::requested())
        return Interrupted;
    if (options.json)
        console.writeBytes(QJsonDocument(answer.json).toJson(QJsonDocument::Compact) + '\n');
    else
        console.write(answer.text);
    if (!options.json) {
        for (const QString& error : answer.errors)
            console.error(error);
    }
    return console.flush() ? answer.exitCode : worse(answer.exitCode, Failed);
}

} // namespace lorix::cli
