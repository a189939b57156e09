// SPDX-License-Identifier: BSD-3-Clause
#include <lorix/query/candidatereader.h>
#include <lorix/query/querycandidate.h>

#include <QSet>
#include <QStringList>

#include <algorithm>
#include <iterator>

using namespace lorix;

namespace {

const QLatin1String userPrefix("user:");

ReturnValue number(int n)
{
    return ReturnValue::fromNumber(static_cast<float>(n));
}

// Names that have a value, in document order; those that no document lists
// follow in order of the alphabet.
template <typename Record>
QStringList userNames(const Record& record)
{
    QStringList names;
    if (record.userAttributes.isEmpty())
        return names;
    QSet<QString> known;
    const auto add = [&](const QString& name) {
        if (record.userAttributes.contains(name) && !known.contains(name)) {
            known.insert(name);
            names.append(name);
        }
    };
    for (const QString& name : record.userAttributeKeys)
        add(name);
    if (names.size() < record.userAttributes.size()) {
        QStringList rest = record.userAttributes.keys();
        rest.sort();
        for (const QString& name : std::as_const(rest))
            add(name);
    }
    return names;
}

template <typename Record>
ReturnValue userAttributeNames(const Record& record)
{
    return ReturnValue::fromString(userNames(record).join(QLatin1String(", ")));
}

template <typename Record>
ReturnValue userAttribute(const Record& record, const QString& foldedName)
{
    for (const QString& name : userNames(record)) {
        if (name.toLower() == foldedName)
            return ReturnValue::fromString(record.userAttributes.value(name));
    }
    return ReturnValue(NoSuchAttribute, QString());
}

template <QString Workflowstep::*Member>
ReturnValue stepText(const Workflowstep& step)
{
    return ReturnValue::fromString(step.*Member);
}

struct StepField
{
    QLatin1String name;
    ReturnValue (*read)(const Workflowstep&);
    bool inAny = false;
};

const StepField stepFields[] = {
    {QLatin1String("hash"),
     [](const Workflowstep& step) {
         return ReturnValue::fromString(QStringLiteral("wfs:%1").arg(step.tagId));
     }},
    {QLatin1String("tagid"), [](const Workflowstep& step) { return number(step.tagId); }},
    {QLatin1String("lorixrootfile"), stepText<&Workflowstep::lorixRootFile>, true},
    {QLatin1String("timestamp"), stepText<&Workflowstep::timestamp>, true},
    {QLatin1String("title"), stepText<&Workflowstep::title>, true},
    {QLatin1String("description"), stepText<&Workflowstep::description>, true},
    {QLatin1String("comment"), stepText<&Workflowstep::comment>, true},
    {QLatin1String("command"), stepText<&Workflowstep::command>, true},
    {QLatin1String("tool"), stepText<&Workflowstep::tool>, true},
    {QLatin1String("toolpath"), stepText<&Workflowstep::toolPath>, true},
    {QLatin1String("host"), stepText<&Workflowstep::host>, true},
    {QLatin1String("user"), stepText<&Workflowstep::user>, true},
    {QLatin1String("creator"), stepText<&Workflowstep::creator>, true},
    {QLatin1String("iswfs"), [](const Workflowstep&) { return ReturnValue::fromBool(true); }},
    {QLatin1String("isfile"), [](const Workflowstep&) { return ReturnValue::fromBool(false); }},
    {QLatin1String("userattrs"), userAttributeNames<Workflowstep>, true},
};

template <QString FileSummary::*Member>
ReturnValue fileText(const FileSummary& file, int /*parent*/)
{
    return ReturnValue::fromString(file.*Member);
}

template <int FileSummary::*Member>
ReturnValue fileNumber(const FileSummary& file, int /*parent*/)
{
    return number(file.*Member);
}

struct FileField
{
    QLatin1String name;
    ReturnValue (*read)(const FileSummary&, int parent);
    bool inAny = false;
};

const FileField fileFields[] = {
    {QLatin1String("hash"),
     [](const FileSummary& file, int parent) {
         return ReturnValue::fromString(QStringLiteral("file:%1:%2").arg(parent).arg(file.tagId));
     }},
    {QLatin1String("tagid"), fileNumber<&FileSummary::tagId>},
    {QLatin1String("filename"), fileText<&FileSummary::filename>, true},
    {QLatin1String("filepath"), fileText<&FileSummary::filepath>, true},
    {QLatin1String("filetype"), fileText<&FileSummary::filetype>, true},
    {QLatin1String("description"), fileText<&FileSummary::description>, true},
    {QLatin1String("comment"), fileText<&FileSummary::comment>, true},
    {QLatin1String("lastmodified"), fileText<&FileSummary::lastModified>, true},
    {QLatin1String("embedded"),
     [](const FileSummary& file, int) { return ReturnValue::fromBool(file.embedded); }},
    {QLatin1String("compressed"),
     [](const FileSummary& file, int) {
         return ReturnValue::fromBool(file.compressedMethod == QLatin1String("flate"));
     }},
    {QLatin1String("filepurpose"), fileText<&FileSummary::filePurpose>, true},
    {QLatin1String("isinfile"),
     [](const FileSummary& file, int) {
         return ReturnValue::fromBool(file.filePurpose == QLatin1String("InFile"));
     }},
    {QLatin1String("isoutfile"),
     [](const FileSummary& file, int) {
         return ReturnValue::fromBool(file.filePurpose == QLatin1String("OutFile"));
     }},
    {QLatin1String("filesize"), fileNumber<&FileSummary::uncompressedSize>, true},
    {QLatin1String("cfilesize"), fileNumber<&FileSummary::compressedSize>, true},
    {QLatin1String("md5"), fileText<&FileSummary::uncompressedMD5>, true},
    {QLatin1String("cmd5"), fileText<&FileSummary::compressedMD5>, true},
    {QLatin1String("iswfs"), [](const FileSummary&, int) { return ReturnValue::fromBool(false); }},
    {QLatin1String("isfile"), [](const FileSummary&, int) { return ReturnValue::fromBool(true); }},
    {QLatin1String("parentid"), [](const FileSummary&, int parent) { return number(parent); }},
    {QLatin1String("userattrs"),
     [](const FileSummary& file, int) { return userAttributeNames(file); }, true},
};

template <typename Fields>
int fieldNamed(const Fields& fields, const QString& name)
{
    const auto found = std::find_if(std::begin(fields), std::end(fields),
                                    [&](const auto& field) { return name == field.name; });
    return found == std::end(fields) ? -1 : static_cast<int>(found - std::begin(fields));
}

// Calls `take` with the folded name and the value of each user attribute.
template <typename Record, typename Take>
void forUserEntries(const Record& record, Take take)
{
    QSet<QString> taken;
    for (const QString& name : userNames(record)) {
        const QString folded = name.toLower();
        if (taken.contains(folded))
            continue;
        taken.insert(folded);
        take(folded, record.userAttributes.value(name));
    }
}

template <typename Record>
ReturnValue joinAny(QStringList texts, const Record& record)
{
    forUserEntries(record, [&](const QString&, const QString& value) { texts.append(value); });
    return ReturnValue::fromString(texts.join(u'\n'));
}

ReturnValue anyOf(const Candidate& candidate)
{
    QStringList texts;
    if (!candidate.file) {
        for (const StepField& field : stepFields) {
            if (field.inAny)
                texts.append(field.read(*candidate.step).text);
        }
        return joinAny(texts, *candidate.step);
    }
    for (const FileField& field : fileFields) {
        if (field.inAny)
            texts.append(field.read(*candidate.file, candidate.step->tagId).text);
    }
    return joinAny(texts, *candidate.file);
}

template <typename Record>
void insertUserEntries(const Record& record, QHash<QString, ReturnValue>& table)
{
    forUserEntries(record, [&](const QString& name, const QString& value) {
        table.insert(userPrefix + name, ReturnValue::fromString(value));
    });
}

} // namespace

namespace lorix {

AttributeReader::AttributeReader(const QString& attribute) : key(attribute.toLower())
{
    isUser = key.startsWith(userPrefix);
    isAny = key == QLatin1String("any");
    stepField = fieldNamed(stepFields, key);
    fileField = fieldNamed(fileFields, key);
}

ReturnValue Candidate::value(const AttributeReader& attribute) const
{
    if (attribute.isAny)
        return anyOf(*this);
    if (attribute.isUser) {
        const QString name = attribute.key.mid(userPrefix.size());
        return file ? userAttribute(*file, name) : userAttribute(*step, name);
    }
    if (file && attribute.fileField >= 0)
        return fileFields[attribute.fileField].read(*file, step->tagId);
    if (!file && attribute.stepField >= 0)
        return stepFields[attribute.stepField].read(*step);
    return ReturnValue(NoSuchAttribute, QString());
}

QHash<QString, ReturnValue> Candidate::table() const
{
    QHash<QString, ReturnValue> result;
    if (file) {
        for (const FileField& field : fileFields)
            result.insert(field.name, field.read(*file, step->tagId));
        insertUserEntries(*file, result);
    } else {
        for (const StepField& field : stepFields)
            result.insert(field.name, field.read(*step));
        insertUserEntries(*step, result);
    }
    result.insert(QStringLiteral("any"), anyOf(*this));
    return result;
}

std::vector<Candidate> makeCandidates(const QList<Summary>& summaries)
{
    std::vector<Candidate> candidates;
    for (const Summary& summary : summaries) {
        candidates.push_back({&summary, nullptr});
        for (const FileSummary& file : summary.files)
            candidates.push_back({&summary, &file});
    }
    return candidates;
}

} // namespace lorix

QHash<QString, ReturnValue> convertStepToHash(const Workflowstep& step)
{
    return Candidate{&step, nullptr}.table();
}

QHash<QString, ReturnValue> convertFileToHash(const FileSummary& file, int tagId)
{
    Workflowstep parent;
    parent.tagId = tagId;
    return Candidate{&parent, &file}.table();
}

QString getVariableValue(const QHash<QString, ReturnValue>& candidate)
{
    const auto text = [&](const char* name) {
        return candidate.value(QString::fromLatin1(name)).text;
    };
    if (candidate.value(QStringLiteral("iswfs")).toBool())
        return QStringLiteral("workflowstep: ") + text("title");
    if (!candidate.value(QStringLiteral("isfile")).toBool())
        return QStringLiteral("invalid");
    QString description = QStringLiteral("file: ") + text("filename");
    if (!candidate.contains(QStringLiteral("parentid")))
        description += QStringLiteral(", not a file of workflowstep ...");
    return description;
}
