// SPDX-License-Identifier: BSD-3-Clause
#include <apps/lorix/queryexplanation.h>
#include <apps/lorix/table.h>

#include <lorix/query/querycompletion.h>
#include <lorix/query/querylexer.h>
#include <lorix/query/queryparser.h>
#include <lorix/query/querysyntax.h>

#include <QJsonArray>

#include <algorithm>
#include <vector>

namespace lorix::cli {

namespace {

// A long line is cut to this many characters around the place.
constexpr qsizetype shownCharacters = 72;

// The query's line at the place, and carets under the place.
QString marked(const QString& query, const QueryError& error, const Paint& paint)
{
    const qsizetype position = std::clamp<qsizetype>(error.position(), 0, query.size());
    qsizetype begin = position == 0 ? 0 : query.lastIndexOf(u'\n', position - 1) + 1;
    qsizetype end = query.indexOf(u'\n', position);
    if (end < 0)
        end = query.size();
    if (end - begin > shownCharacters) {
        begin = std::max(begin, position - shownCharacters / 2);
        end = std::min(end, begin + shownCharacters);
    }
    const QString before = printable(query.mid(begin, position - begin));
    // The text of an operator's complaint spans its operands and begins before.
    const bool atPlace = QStringView(query).mid(position).startsWith(error.originalText());
    const qsizetype length = std::min<qsizetype>(atPlace ? error.length() : 1, end - position);
    const QString place = printable(query.mid(position, length));
    const QString after = printable(query.mid(position + length, end - position - length));
    const QString carets = u'^' + QString(std::max<qsizetype>(place.size() - 1, 0), u'~');
    return QStringLiteral("  %1\n  %2%3")
        .arg(before + place + after, QString(before.size(), u' '), paint.bad(carets));
}

QString operandText(const CNFOperand& operand)
{
    if (operand.isString())
        return quoted(operand.string());
    return operand.isVariable()
               ? printable(operand.variableName() + u':' + operand.variableAttribute())
               : QStringLiteral("(a truth value)");
}

QString literalText(const CNFLiteral& literal)
{
    QString text = operandText(literal.boolVariable());
    if (literal.isPredicate())
        text =
            operandText(literal.left()) + u' ' + literal.op() + u' ' + operandText(literal.right());
    return literal.isNegated() ? QStringLiteral("not ") + text : text;
}

QString clauseText(const CNFDisjunction& clause)
{
    QStringList literals;
    for (int i = 0; i < clause.numLiterals(); ++i)
        literals.append(literalText(clause.literalAt(i)));
    return literals.join(QStringLiteral("  or  "));
}

QString tokenKind(const ExpressionValue& token)
{
    if (token.isVariable())
        return QStringLiteral("variable");
    return token.isString() ? QStringLiteral("text") : QStringLiteral("operator");
}

QString tokenMeaning(const ExpressionValue& token)
{
    if (token.isVariable()) {
        const QString name = token.variableName();
        return (name.isEmpty() ? QStringLiteral("of anything") : QStringLiteral("of ") + name) +
               QStringLiteral(", attribute ") + token.variableAttribute();
    }
    if (token.isString())
        return token.string();
    return token.originalText().isEmpty() ? QStringLiteral("&&, put in between")
                                          : token.operatorName();
}

QList<ExpressionValue> tokensOf(const QString& query)
{
    QList<QueryError> errors;
    return checkSyntax(lexQuery(query, errors), errors);
}

QString treeText(const QSharedPointer<ExpressionTreeNode>& root)
{
    struct Line
    {
        QSharedPointer<ExpressionTreeNode> node;
        int depth;
    };
    // Deeper levels stand no further right.
    constexpr int deepest = 40;
    QString text;
    std::vector<Line> waiting{{root, 1}};
    while (!waiting.empty()) {
        const Line line = waiting.back();
        waiting.pop_back();
        const ExpressionValue& value = line.node->value;
        QString label = value.operatorName();
        if (value.isVariable())
            label = value.variableName() + u':' + value.variableAttribute();
        else if (value.isString())
            label = u'\'' + value.string() + u'\'';
        text += QString(2 * std::min(line.depth, deepest), u' ') + printable(label) + u'\n';
        const auto& children = line.node->children;
        for (auto child = children.crbegin(); child != children.crend(); ++child)
            waiting.push_back({*child, line.depth + 1});
    }
    return text;
}

QString indented(const QString& lines)
{
    QString text;
    for (const QString& line : lines.split(u'\n', Qt::SkipEmptyParts))
        text += QStringLiteral("  ") + line + u'\n';
    return text;
}

} // namespace

QString queryComplaints(const QString& query, const QList<QueryError>& errors, const Paint& paint)
{
    QStringList blocks;
    for (const QueryError& error : errors) {
        QStringList lines;
        for (const QString& line : error.errorMessage().split(u'\n'))
            lines.append(printable(line));
        blocks.append(lines.join(u'\n') + u'\n' + marked(query, error, paint));
    }
    return blocks.join(u'\n');
}

QString queryExplanation(const QString& query, const LorixFindQuery& compiled, const Paint& paint)
{
    Table tokens;
    tokens.addColumn(QStringLiteral("AT"), Table::Right);
    tokens.addColumn(QStringLiteral("TEXT"));
    tokens.addColumn(QStringLiteral("KIND"));
    tokens.addColumn(QStringLiteral("MEANING"));
    for (const ExpressionValue& token : tokensOf(query))
        tokens.addRow({QString::number(token.position()), token.originalText(), tokenKind(token),
                       tokenMeaning(token)});
    QList<QueryError> errors;
    QString text = paint.bold(QStringLiteral("Tokens")) + u'\n' + indented(tokens.text(paint)) +
                   paint.bold(QStringLiteral("Tree")) + u'\n' +
                   treeText(parseQuery(query, errors)) +
                   paint.bold(QStringLiteral("Normal form: each of these must hold")) + u'\n';
    const ConjunctiveNormalForm& form = compiled.normalForm();
    for (int i = 0; i < form.numDisjunctions(); ++i)
        text += QStringLiteral("  ") + clauseText(form.disjunctionAt(i)) + u'\n';
    text += paint.bold(QStringLiteral("Bound in this order")) + u'\n';
    for (const QString& name : form.variableNames())
        text += QStringLiteral("  ") + printable(name) + u'\n';
    return text;
}

QJsonObject queryExplanationJson(const QString& query, const LorixFindQuery& compiled)
{
    QJsonArray tokens;
    for (const ExpressionValue& token : tokensOf(query)) {
        tokens.append(QJsonObject{{QStringLiteral("position"), token.position()},
                                  {QStringLiteral("text"), token.originalText()},
                                  {QStringLiteral("kind"), tokenKind(token)}});
    }
    QJsonArray clauses;
    const ConjunctiveNormalForm& form = compiled.normalForm();
    for (int i = 0; i < form.numDisjunctions(); ++i) {
        QJsonArray literals;
        const CNFDisjunction& clause = form.disjunctionAt(i);
        for (int k = 0; k < clause.numLiterals(); ++k)
            literals.append(literalText(clause.literalAt(k)));
        clauses.append(literals);
    }
    return {{QStringLiteral("tokens"), tokens},
            {QStringLiteral("clauses"), clauses},
            {QStringLiteral("variables"), QJsonArray::fromStringList(form.variableNames())}};
}

QString queryLanguage()
{
    const Paint plain(false);
    Table attributes;
    attributes.addColumn(QStringLiteral("ATTRIBUTE"));
    attributes.addColumn(QStringLiteral("TYPE"));
    attributes.addColumn(QStringLiteral("OF"));
    attributes.addColumn(QStringLiteral("MEANING"));
    for (const QueryAttribute& attribute : queryAttributes()) {
        const QString of = !attribute.ofFiles   ? QStringLiteral("step")
                           : !attribute.ofSteps ? QStringLiteral("file")
                                                : QStringLiteral("both");
        attributes.addRow({attribute.name, attribute.type, of, attribute.description});
    }
    Table operators;
    operators.addColumn(QStringLiteral("OPERATOR"));
    operators.addColumn(QStringLiteral("MEANING"));
    for (const QueryOperator& op : queryOperators())
        operators.addRow({op.name, op.description});
    return indented(attributes.text(plain)) + u'\n' + indented(operators.text(plain));
}

} // namespace lorix::cli
