// SPDX-License-Identifier: BSD-3-Clause
#include <query/referencesearch.h>

#include <algorithm>

using namespace lorix;

namespace reference {

namespace {

void addUserAttributes(Table& table, QStringList& any, const QHash<QString, QString>& values,
                       const QStringList& keys)
{
    table[QStringLiteral("userattrs")] = ReturnValue::fromString(keys.join(QLatin1String(", ")));
    any += keys.join(QLatin1String(", "));
    for (const QString& key : keys) {
        const QString name = QStringLiteral("user:") + key.toLower();
        if (table.contains(name))
            continue;
        table[name] = ReturnValue::fromString(values[key]);
        any += values[key];
    }
}

QString number(int n)
{
    return QString::number(double(float(n)), 'g', 6);
}

class Search
{
public:
    Search(const QList<Table>& candidates, const ConjunctiveNormalForm& form,
           const QStringList& names, qint64 most)
        : m_candidates(candidates), m_form(form), m_names(names), m_most(most),
          m_used(candidates.size(), false), m_assignment(names.size(), -1)
    {
        for (int d = 0; d < form.numDisjunctions(); ++d)
            m_results.append(QList<int>(form.disjunctionAt(d).numLiterals(), 0));
    }

    bool davisPutnam(int variable)
    {
        if (variable == m_names.size())
            return true;
        const bool named = !m_names[variable].startsWith(u'@');
        for (int c = 0; c < m_candidates.size(); ++c) {
            if (named && m_used[c])
                continue;
            if (m_most >= 0 && steps >= m_most)
                return false;
            ++steps;
            m_used[c] = m_used[c] || named;
            m_assignment[variable] = c;
            const QList<QList<int>> before = m_results;
            if (evaluateVariables(variable) && davisPutnam(variable + 1))
                return true;
            m_results = before;
            m_assignment[variable] = -1;
            if (named)
                m_used[c] = false;
        }
        return false;
    }

    const QList<int>& assignment() const { return m_assignment; }

    qint64 steps = 0;

private:
    bool evaluateVariables(int variable)
    {
        for (int d = 0; d < m_form.numDisjunctions(); ++d) {
            const CNFDisjunction& clause = m_form.disjunctionAt(d);
            for (int l = 0; l < clause.numLiterals(); ++l) {
                if (!clause.literalAt(l).variableNames().contains(m_names[variable]))
                    continue;
                m_results[d][l] = evaluate(clause.literalAt(l));
                if (std::all_of(m_results[d].cbegin(), m_results[d].cend(),
                                [](int result) { return result == 2; }))
                    return false;
            }
        }
        return true;
    }

    int evaluate(const CNFLiteral& literal) const
    {
        int result = 2;
        if (literal.isBoolVariable()) {
            const ReturnValue v = value(literal.boolVariable());
            result = v.type == UnassignedVariable ? 0 : v == ReturnValue::fromBool(true) ? 1 : 2;
        } else if (literal.isPredicate()) {
            using Operator = ReturnValue (*)(const ReturnValue&, const ReturnValue&);
            static const QHash<QString, Operator> operators = {
                {QStringLiteral("=="), evaluateEq},
                {QStringLiteral("!="), evaluateNEq},
                {QStringLiteral("%matches"), evaluateMatches},
                {QStringLiteral("%contains"), evaluateContains},
                {QStringLiteral("%isapprox"), evaluateIsApprox},
                {QStringLiteral(">"), evaluateGreater},
                {QStringLiteral(">="), evaluateGreaterEq},
                {QStringLiteral("<"), evaluateLess},
                {QStringLiteral("<="), evaluateLessEq}};
            const ReturnValue v =
                operators[literal.op()](value(literal.left()), value(literal.right()));
            result = v.type == UnassignedVariable ? 0 : v == ReturnValue::fromBool(true) ? 1 : 2;
        }
        if (literal.isNegated() && result != 0)
            result = 3 - result;
        return result;
    }

    ReturnValue value(const CNFOperand& operand) const
    {
        if (operand.isString())
            return ReturnValue::fromString(operand.string());
        if (operand.isInvalid())
            return ReturnValue(InvalidOperand, QString());
        const int candidate = m_assignment[m_names.indexOf(operand.variableName())];
        if (candidate < 0)
            return ReturnValue(UnassignedVariable, QString());
        return m_candidates[candidate].value(operand.variableAttribute().toLower(),
                                             ReturnValue(NoSuchAttribute, QString()));
    }

    const QList<Table>& m_candidates;
    const ConjunctiveNormalForm& m_form;
    const QStringList& m_names;
    qint64 m_most;
    QList<bool> m_used;
    QList<int> m_assignment;
    QList<QList<int>> m_results;
};

void collectNames(const Node& node, const QHash<QString, bool>& wanted, QStringList& names)
{
    const QString name = node->value.variableName();
    if (node->value.isVariable() && wanted.contains(name) && !names.contains(name))
        names += name;
    for (const Node& child : node->children)
        collectNames(child, wanted, names);
}

} // namespace

Table stepTable(const Workflowstep& step)
{
    Table table;
    QStringList any;
    const auto text = [&](const char* name, const QString& value) {
        table[QString::fromLatin1(name)] = ReturnValue::fromString(value);
        any += value;
    };
    text("lorixrootfile", step.lorixRootFile);
    text("timestamp", step.timestamp);
    text("title", step.title);
    text("description", step.description);
    text("comment", step.comment);
    text("command", step.command);
    text("tool", step.tool);
    text("toolpath", step.toolPath);
    text("host", step.host);
    text("user", step.user);
    text("creator", step.creator);
    table[QStringLiteral("iswfs")] = ReturnValue::fromBool(true);
    table[QStringLiteral("isfile")] = ReturnValue::fromBool(false);
    table[QStringLiteral("tagid")] = ReturnValue::fromString(number(step.tagId));
    table[QStringLiteral("hash")] =
        ReturnValue::fromString(QStringLiteral("wfs:") + QString::number(step.tagId));
    addUserAttributes(table, any, step.userAttributes, step.userAttributeKeys);
    table[QStringLiteral("any")] = ReturnValue::fromString(any.join(u'\n'));
    return table;
}

Table fileTable(const FileSummary& file, int parent)
{
    Table table;
    QStringList any;
    const auto text = [&](const char* name, const QString& value) {
        table[QString::fromLatin1(name)] = ReturnValue::fromString(value);
        any += value;
    };
    const auto flag = [&](const char* name, bool value) {
        table[QString::fromLatin1(name)] = ReturnValue::fromBool(value);
    };
    text("filename", file.filename);
    text("filepath", file.filepath);
    text("filetype", file.filetype);
    text("description", file.description);
    text("comment", file.comment);
    text("lastmodified", file.lastModified);
    text("filepurpose", file.filePurpose);
    text("filesize", number(file.uncompressedSize));
    text("cfilesize", number(file.compressedSize));
    text("md5", file.uncompressedMD5);
    text("cmd5", file.compressedMD5);
    flag("embedded", file.embedded);
    flag("compressed", file.compressedMethod == QLatin1String("flate"));
    flag("isinfile", file.filePurpose == QLatin1String("InFile"));
    flag("isoutfile", file.filePurpose == QLatin1String("OutFile"));
    flag("iswfs", false);
    flag("isfile", true);
    table[QStringLiteral("tagid")] = ReturnValue::fromString(number(file.tagId));
    table[QStringLiteral("parentid")] = ReturnValue::fromString(number(parent));
    table[QStringLiteral("hash")] = ReturnValue::fromString(
        QStringLiteral("file:") + QString::number(parent) + u':' + QString::number(file.tagId));
    addUserAttributes(table, any, file.userAttributes, file.userAttributeKeys);
    table[QStringLiteral("any")] = ReturnValue::fromString(any.join(u'\n'));
    return table;
}

QList<int> search(const QList<Summary>& summaries, const ConjunctiveNormalForm& form,
                  const QStringList& names, bool* found, qint64 most, qint64* steps)
{
    QList<Table> candidates;
    for (const Summary& summary : summaries) {
        candidates += stepTable(summary);
        for (const FileSummary& file : summary.files)
            candidates += fileTable(file, summary.tagId);
    }
    Search search(candidates, form, names, most);
    *found = search.davisPutnam(0);
    if (steps)
        *steps = most >= 0 && search.steps >= most ? -1 : search.steps;
    return search.assignment();
}

QStringList variableOrder(const Node& tree, const ConjunctiveNormalForm& form)
{
    QHash<QString, bool> wanted;
    for (int d = 0; d < form.numDisjunctions(); ++d) {
        for (int l = 0; l < form.disjunctionAt(d).numLiterals(); ++l) {
            for (const QString& name : form.disjunctionAt(d).literalAt(l).variableNames())
                wanted[name] = true;
        }
    }
    QStringList names;
    collectNames(tree, wanted, names);
    return names;
}

} // namespace reference
