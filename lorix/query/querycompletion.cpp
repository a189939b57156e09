// SPDX-License-Identifier: BSD-3-Clause
#include <lorix/query/candidatereader.h>
#include <lorix/query/operatortable.h>
#include <lorix/query/querycompletion.h>
#include <lorix/query/querytypes.h>

#include <QStringList>

namespace lorix {

namespace {

struct Described
{
    const char* name;
    const char* description;
};

const Described attributes[] = {
    {"any", "all texts of the step or file together"},
    {"iswfs", "it is a workflow step"},
    {"isfile", "it is a file"},
    {"title", "title of the step"},
    {"tool", "program that the step ran"},
    {"toolpath", "where that program was"},
    {"command", "command line of the step"},
    {"timestamp", "when the step was made"},
    {"user", "who made it"},
    {"host", "on which machine"},
    {"creator", "what wrote the step into the document"},
    {"description", "what it is about"},
    {"comment", "a remark"},
    {"lorixrootfile", "document that the step was added to"},
    {"filename", "name of the file"},
    {"filepath", "folder that the file was in"},
    {"filetype", "type of the file"},
    {"lastmodified", "when the file was last changed"},
    {"filepurpose", "InFile, OutFile or Undefined"},
    {"isinfile", "the step read the file"},
    {"isoutfile", "the step wrote the file"},
    {"embedded", "the file is in the document"},
    {"compressed", "it is stored compressed"},
    {"filesize", "size of the file in bytes"},
    {"cfilesize", "size as stored in bytes"},
    {"md5", "MD5 digest of the file"},
    {"cmd5", "MD5 digest as stored"},
    {"tagid", "number of the step or file"},
    {"parentid", "number of the file's step"},
    {"hash", "wfs:STEP or file:STEP:FILE"},
    {"userattrs", "names of the user attributes"},
    {"user{NAME}", "the user attribute NAME"},
};

const Described operators[] = {
    {"!", "not"},
    {"%contains", "the text on the left holds the one on the right, in any case"},
    {"%matches", "the whole text fits a lower-case pattern with * ? and [...]"},
    {"%isapprox", "the numbers differ by less than a hundredth"},
    {"<", "less than, for numbers and dates"},
    {"<=", "at most"},
    {">", "greater than"},
    {">=", "at least"},
    {"==", "the texts are equal, in any case"},
    {"!=", "they are not"},
    {"||", "one of the two holds; binds tighter than &&"},
    {"&&", "both hold; may be left out"},
    {"(", "opens a bracket"},
    {")", "closes it"},
};

QString typeFor(const QString& types)
{
    if (checkIfTypeFits(QStringLiteral("boolean"), types) == 1)
        return QStringLiteral("yes or no");
    if (checkIfTypeFits(QStringLiteral("number"), types) == 1)
        return QStringLiteral("number");
    if (checkIfTypeFits(QStringLiteral("date"), types) == 1)
        return QStringLiteral("date");
    return QStringLiteral("text");
}

} // namespace

QList<QueryAttribute> queryAttributes()
{
    const QHash<QString, QString> types = getAttributeTypes();
    QList<QueryAttribute> list;
    for (const Described& entry : attributes) {
        QueryAttribute attribute;
        attribute.name = QString::fromLatin1(entry.name);
        attribute.description = QString::fromLatin1(entry.description);
        attribute.type = typeFor(types.value(attribute.name));
        const AttributeReader reader(attribute.name);
        const bool everywhere = reader.isAny || attribute.name.endsWith(u'}');
        attribute.ofSteps = everywhere || reader.stepField >= 0;
        attribute.ofFiles = everywhere || reader.fileField >= 0;
        list.append(attribute);
    }
    return list;
}

QList<QueryOperator> queryOperators()
{
    QList<QueryOperator> list;
    for (const Described& entry : operators) {
        const QString name = QString::fromLatin1(entry.name);
        list.append({name, getNumArguments(name), getPrecedence(name),
                     QString::fromLatin1(entry.description)});
    }
    return list;
}

QStringList queryCompletions(const QString& unfinished)
{
    const auto endsWord = [](QChar c) {
        return c.isSpace() || QStringView(u"()!&|=<>'\"").contains(c);
    };
    qsizetype begin = unfinished.size();
    while (begin > 0 && !endsWord(unfinished[begin - 1]))
        --begin;
    const QString word = unfinished.mid(begin);
    QStringList completions;
    const qsizetype colon = word.indexOf(u':');
    if (colon >= 0) {
        for (const QueryAttribute& attribute : queryAttributes()) {
            const QString name =
                attribute.name.endsWith(u'}') ? QStringLiteral("user{") : attribute.name;
            if (name.startsWith(word.mid(colon + 1)))
                completions.append(word.left(colon + 1) + name);
        }
    } else if (word.startsWith(u'%')) {
        for (const QueryOperator& op : queryOperators()) {
            if (op.name.startsWith(word))
                completions.append(op.name);
        }
    }
    completions.sort();
    return completions;
}

} // namespace lorix
