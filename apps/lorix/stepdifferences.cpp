// SPDX-License-Identifier: BSD-3-Clause
#include <apps/lorix/stepdifferences.h>

#include <algorithm>

namespace lorix::cli {

namespace {

struct Field
{
    const char* name;
    QString Workflowstep::*member;
};

const Field fields[] = {
    {"title", &Workflowstep::title},
    {"tool", &Workflowstep::tool},
    {"description", &Workflowstep::description},
    {"comment", &Workflowstep::comment},
    {"command", &Workflowstep::command},
    {"toolPath", &Workflowstep::toolPath},
    {"host", &Workflowstep::host},
    {"user", &Workflowstep::user},
    {"creator", &Workflowstep::creator},
    {"timestamp", &Workflowstep::timestamp},
    {"lorixRootFile", &Workflowstep::lorixRootFile},
    {"pdfTitle", &Workflowstep::pdfTitle},
    {"pdfAuthor", &Workflowstep::pdfAuthor},
    {"pdfSubject", &Workflowstep::pdfSubject},
    {"pdfKeywords", &Workflowstep::pdfKeywords},
    {"pdfProducer", &Workflowstep::pdfProducer},
    {"pdfCreator", &Workflowstep::pdfCreator},
};

const QString attributesField = QStringLiteral("userAttributes");
const QString filesField = QStringLiteral("files");

QString attributeText(const Workflowstep& step, const QString& key)
{
    const QString unit = step.userAttributeUnits.value(key);
    const QString value = step.userAttributes.value(key);
    return unit.isEmpty() ? value : value + QLatin1Char(' ') + unit;
}

void compareAttributes(const Workflowstep& left, const Workflowstep& right,
                       QList<Difference>& differences)
{
    QStringList keys = left.userAttributes.keys() + right.userAttributes.keys();
    keys.sort();
    keys.removeDuplicates();
    for (const QString& key : keys) {
        const Difference difference{attributesField + QLatin1Char('.') + key,
                                    attributeText(left, key), attributeText(right, key)};
        if (difference.left != difference.right ||
            left.userAttributes.contains(key) != right.userAttributes.contains(key))
            differences.append(difference);
    }
}

// Each file as one text, sorted. The step's own summary is left out: it differs
// whenever anything does.
QStringList filesOf(const Workflowstep& step)
{
    QStringList files;
    for (const FileSummary& file : step.files) {
        if (file.fromTags && file.filename == QLatin1String("ws_summary.xml"))
            continue;
        files.append(file.filename +
                     (file.uncompressedMD5.isEmpty()
                          ? QString()
                          : QStringLiteral(" (%1)").arg(file.uncompressedMD5.left(8))));
    }
    files.sort();
    return files;
}

} // namespace

QList<Difference> differencesOf(const Workflowstep& left, const Workflowstep& right,
                                const QStringList& ignored)
{
    QList<Difference> differences;
    for (const Field& field : fields) {
        const QString name = QLatin1String(field.name);
        if (left.*field.member != right.*field.member && !ignored.contains(name))
            differences.append({name, left.*field.member, right.*field.member});
    }
    if (!ignored.contains(attributesField))
        compareAttributes(left, right, differences);
    const QStringList files1 = filesOf(left);
    const QStringList files2 = filesOf(right);
    if (files1 != files2 && !ignored.contains(filesField)) {
        QStringList only1;
        QStringList only2;
        std::set_difference(files1.cbegin(), files1.cend(), files2.cbegin(), files2.cend(),
                            std::back_inserter(only1));
        std::set_difference(files2.cbegin(), files2.cend(), files1.cbegin(), files1.cend(),
                            std::back_inserter(only2));
        differences.append(
            {filesField, only1.join(QStringLiteral(", ")), only2.join(QStringLiteral(", "))});
    }
    return differences;
}

QStringList comparedFields()
{
    QStringList names;
    for (const Field& field : fields)
        names.append(QLatin1String(field.name));
    return names << attributesField << filesField;
}

} // namespace lorix::cli
