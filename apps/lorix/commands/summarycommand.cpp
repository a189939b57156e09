// SPDX-License-Identifier: BSD-3-Clause
#include <apps/lorix/commands/summarycommand.h>

#include <apps/lorix/container.h>
#include <apps/lorix/summaryjson.h>
#include <apps/lorix/summarytext.h>

#include <lorix/summary/summarycreator.h>

namespace lorix::cli {

namespace {

QString noSuchStep(int step, int count)
{
    if (count == 0)
        return QStringLiteral("there is no step %1; the document has none").arg(step);
    return QStringLiteral("there is no step %1; 'lorix sections' lists the %2")
        .arg(step)
        .arg(counted(count, QStringLiteral("step"), QStringLiteral("steps")));
}

} // namespace

QString SummaryCommand::summary() const
{
    return QStringLiteral("Tell what happened: who did what with which files, newest step first");
}

QString SummaryCommand::examples() const
{
    return QStringLiteral("  lorix summary report.pdf                  the history at a glance\n"
                          "  lorix summary report.pdf --step 0 --files the newest step in full\n"
                          "  lorix summary --json report.pdf | jq -r '.steps[].title'");
}

void SummaryCommand::declare(CLI::App& app)
{
    FileCommand::declare(app);
    app.add_flag("--files", m_files, "Say everything that is known of each file");
    app.add_option("--step", m_step, "This step only, by its number; 0 is the newest")
        ->check(CLI::NonNegativeNumber);
}

Answer SummaryCommand::examine(const Input& input, const View& view, bool& skipped) const
{
    Answer answer = Answer::start(name(), input.path);
    LorixParser parser;
    if (!openContainer(parser, input, answer, skipped))
        return answer;
    if (m_step >= parser.getNumSections()) {
        answer.fail(Unusable, QStringLiteral("step.unknown"), input.path,
                    noSuchStep(m_step, parser.getNumSections()));
        return answer;
    }
    // Oldest first, then what belongs to no step.
    const QList<Summary> summaries = SummaryCreator().createSummaries(parser);
    const qsizetype steps = parser.getNumSections();
    QJsonArray records;
    SummaryText text(parser, view.paint, m_files);
    if (m_step < 0)
        text.addHeading(input.path);
    for (qsizetype i = steps - 1; i >= 0; --i) {
        const Summary& step = summaries.at(i);
        if (m_step >= 0 && step.tagId != m_step)
            continue;
        if (view.json)
            records.append(toJson(step));
        else
            text.addStep(step);
    }
    const QList<FileSummary> loose =
        summaries.size() > steps && m_step < 0 ? summaries.last().files : QList<FileSummary>();
    if (view.json) {
        answer.json.insert(QStringLiteral("steps"), records);
        answer.json.insert(QStringLiteral("sectionless"), toJson(loose));
    } else {
        text.addLooseFiles(loose);
        answer.text = text.text();
    }
    return answer;
}

} // namespace lorix::cli
