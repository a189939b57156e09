// SPDX-License-Identifier: BSD-3-Clause
#include <apps/lorix/commands/findcommand.h>

#include <apps/lorix/container.h>
#include <apps/lorix/queryexplanation.h>

#include <lorix/summary/summarycreator.h>

#include <QJsonDocument>

namespace lorix::cli {

namespace {

QString variableText(const QString& name)
{
    return name.startsWith(QLatin1String("@unnamed-"))
               ? QStringLiteral("(%1)").arg(QStringView(name).mid(9))
               : printable(name);
}

QString titleOf(const Summary& step)
{
    return printable(step.fromXml ? decodedEntities(step.title) : decodedField(step.title));
}

QString nameOf(const FileSummary& file)
{
    return printable(decodedField(file.fromTags ? file.filename : decodedEntities(file.filename)));
}

// Where a step, or a step's file, is found: `step` is its index in the list,
// in which the files outside of all steps come last.
QString stepText(const QList<Summary>& summaries, int steps, int step)
{
    const Summary& summary = summaries.at(step);
    if (step >= steps)
        return QStringLiteral("the files outside of all steps");
    return QStringLiteral("step %1  %2").arg(QString::number(summary.tagId), titleOf(summary));
}

QString bindingText(const QList<Summary>& summaries, int steps, const QueryBinding& binding)
{
    const QString where = stepText(summaries, steps, binding.summary);
    if (binding.file < 0)
        return where;
    const FileSummary& file = summaries.at(binding.summary).files.at(binding.file);
    const QString id =
        file.tagId < 0 ? QStringLiteral("(not embedded)") : QStringLiteral("#%1").arg(file.tagId);
    return QStringLiteral("file %1  %2  in %3").arg(id, nameOf(file), where);
}

QJsonObject bindingJson(const QList<Summary>& summaries, int steps, const QueryBinding& binding)
{
    const Summary& summary = summaries.at(binding.summary);
    QJsonObject json = {{QStringLiteral("variable"), binding.variable},
                        {QStringLiteral("kind"),
                         binding.file < 0 ? QStringLiteral("step") : QStringLiteral("file")},
                        {QStringLiteral("step"), binding.summary < steps ? summary.tagId : -1},
                        {QStringLiteral("title"), summary.title}};
    if (binding.file >= 0) {
        const FileSummary& file = summary.files.at(binding.file);
        json.insert(QStringLiteral("tagId"), file.tagId);
        json.insert(QStringLiteral("filename"), file.filename);
    }
    return json;
}

} // namespace

std::unique_ptr<LorixFindQuery> QueryPool::take(const QString& query)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    if (m_idle.empty())
        return std::make_unique<LorixFindQuery>(query);
    std::unique_ptr<LorixFindQuery> idle = std::move(m_idle.back());
    m_idle.pop_back();
    return idle;
}

void QueryPool::giveBack(std::unique_ptr<LorixFindQuery> query)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_idle.push_back(std::move(query));
}

QString FindCommand::summary() const
{
    return QStringLiteral("Find documents by their history: steps and files that fit a query");
}

QString FindCommand::examples() const
{
    return QStringLiteral(
               "  lorix find report *.pdf                     any text contains \"report\"\n"
               "  lorix find -r -l 'a:tool == mesher' docs/   which documents a tool was used on\n"
               "  lorix find 'a:isfile && a:filesize > 1mb && b:tagid == a:parentid' x.pdf\n"
               "\n"
               "A query tests steps and files: VARIABLE:ATTRIBUTE OPERATOR VALUE. Each name "
               "stands\n"
               "for one step or file, different names for different ones; a name may be left out.\n"
               "Tests side by side must all hold. A bare word is looked for in every text.\n"
               "\n") +
           queryLanguage();
}

void FindCommand::declare(CLI::App& app)
{
    app.add_option_function<std::string>(
           "QUERY", [this](const std::string& text) { m_query = QString::fromStdString(text); },
           "What to look for")
        ->required();
    FileCommand::declare(app);
    app.add_flag("-l,--files-with-matches", m_namesOnly, "Names of the documents that match only");
    app.add_flag("-c,--count", m_count, "Only how many documents match");
    app.add_flag("--explain", m_explain,
                 "Show how the query is read: tokens, tree and normal form; needs no FILE");
}

int FindCommand::run(Console& console, const GlobalOptions& options)
{
    m_matches = 0;
    std::unique_ptr<LorixFindQuery> query = m_pool.take(m_query);
    m_errors = query->getErrors();
    const bool valid = query->isValid();
    if (valid && m_explain)
        m_explanation = queryExplanationJson(m_query, *query);
    m_pool.giveBack(std::move(query));
    if (!valid && !options.json) {
        console.error(QStringLiteral("this is no query:\n") +
                      queryComplaints(m_query, m_errors, Paint(console.messagesColored())));
        return Unusable;
    }
    if (!hasInputs()) {
        if (!m_explain) {
            console.error(QStringLiteral("FILE is required; 'lorix find --help' says more"));
            return Unusable;
        }
        explain(console, options);
        return valid ? Done : Unusable;
    }
    if (m_explain && !options.json)
        explain(console, options);
    const int exitCode = FileCommand::run(console, options);
    if (m_count && !options.json)
        console.write(QString::number(m_matches) + u'\n');
    return exitCode == Done && m_matches == 0 ? No : exitCode;
}

void FindCommand::explain(Console& console, const GlobalOptions& options) const
{
    if (!options.json) {
        console.write(queryExplanation(m_query, LorixFindQuery(m_query), Paint(console.colored())));
        return;
    }
    Answer answer = Answer::start(name(), QString());
    answer.json.insert(QStringLiteral("query"), m_query);
    for (const QueryError& error : m_errors)
        answer.fail(Unusable, QStringLiteral("query.invalid"), m_query, error.errorMessage());
    if (m_errors.isEmpty())
        answer.json.insert(QStringLiteral("explain"), m_explanation);
    console.writeBytes(QJsonDocument(answer.json).toJson(QJsonDocument::Compact) + '\n');
}

bool FindCommand::isSameQuestion(const QJsonObject& answer) const
{
    return FileCommand::isSameQuestion(answer) && answer.value(QLatin1String("query")) == m_query;
}

Answer FindCommand::examine(const Input& input, const View& view, bool& skipped) const
{
    Answer answer = Answer::start(name(), input.path);
    if (view.json)
        answer.json.insert(QStringLiteral("query"), m_query);
    if (!m_errors.isEmpty()) {
        for (const QueryError& error : m_errors)
            answer.fail(Unusable, QStringLiteral("query.invalid"), m_query, error.errorMessage());
        return answer;
    }
    LorixParser parser;
    if (!openContainer(parser, input, answer, skipped))
        return answer;
    const QList<Summary> summaries = SummaryCreator().createSummaries(parser);
    QList<QueryBinding> bindings;
    std::unique_ptr<LorixFindQuery> query = m_pool.take(m_query);
    const bool matches = query->findBindings(summaries, &bindings);
    m_pool.giveBack(std::move(query));
    if (view.json) {
        answer.json.insert(QStringLiteral("matches"), matches);
        if (m_explain)
            answer.json.insert(QStringLiteral("explain"), m_explanation);
    }
    if (matches) {
        ++m_matches;
        addMatch(answer, input, view, summaries, parser.getNumSections(), bindings);
    }
    return answer;
}

void FindCommand::addMatch(Answer& answer, const Input& input, const View& view,
                           const QList<Summary>& summaries, int steps,
                           const QList<QueryBinding>& bindings) const
{
    if (view.json) {
        QJsonArray records;
        for (const QueryBinding& binding : bindings)
            records.append(bindingJson(summaries, steps, binding));
        answer.json.insert(QStringLiteral("bindings"), records);
        return;
    }
    if (m_count)
        return;
    if (m_namesOnly) {
        answer.text = printable(input.path) + u'\n';
        return;
    }
    answer.text = view.paint.bold(printable(input.path)) + u'\n';
    qsizetype width = 0;
    for (const QueryBinding& binding : bindings)
        width = std::max(width, variableText(binding.variable).size());
    for (const QueryBinding& binding : bindings) {
        answer.text += QStringLiteral("  %1  %2\n")
                           .arg(variableText(binding.variable).leftJustified(width),
                                bindingText(summaries, steps, binding));
    }
}

} // namespace lorix::cli
