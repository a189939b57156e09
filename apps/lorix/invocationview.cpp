// SPDX-License-Identifier: BSD-3-Clause
#include <apps/lorix/invocationview.h>

#include <apps/lorix/table.h>

#include <QJsonArray>

namespace lorix::cli {

namespace {

struct TextField
{
    const char* name;
    QString (ArgFile::*get)() const;
};

constexpr TextField textFields[] = {
    {"firstpage", &ArgFile::firstpage},
    {"readme", &ArgFile::readme},
    {"title", &ArgFile::title},
    {"description", &ArgFile::description},
    {"comment", &ArgFile::comment},
    {"tool", &ArgFile::tool},
    {"toolpath", &ArgFile::toolpath},
    {"host", &ArgFile::host},
    {"user", &ArgFile::user},
    {"command", &ArgFile::command},
    {"pdfTitle", &ArgFile::pdfTitle},
    {"pdfProducer", &ArgFile::pdfProducer},
    {"pdfCreator", &ArgFile::pdfCreator},
    {"pdfAuthor", &ArgFile::pdfAuthor},
    {"pdfKeywords", &ArgFile::pdfKeywords},
    {"pdfSubject", &ArgFile::pdfSubject},
};

struct Switch
{
    const char* name;
    bool (ArgFile::*get)() const;
};

constexpr Switch switches[] = {
    {"rootIsOptional", &ArgFile::rootIsOptional}, {"pretend", &ArgFile::pretend},
    {"debugMode", &ArgFile::debugMode},           {"showHelp", &ArgFile::showHelp},
    {"showVersion", &ArgFile::showVersion},
};

struct FileFlag
{
    const char* name;
    bool (WSFile::*get)() const;
};

constexpr FileFlag fileFlags[] = {
    {"embed", &WSFile::embed},         {"compress", &WSFile::compress},
    {"optional", &WSFile::optional},   {"autoMD5", &WSFile::autoMD5},
    {"previewWS", &WSFile::previewWS}, {"preview", &WSFile::preview},
    {"thumbnail", &WSFile::thumbnail}, {"thumbnailOnly", &WSFile::thumbnailOnly},
};

QString verbosityName(Verbosity verbosity)
{
    if (verbosity == Quiet)
        return QStringLiteral("quiet");
    return verbosity == Verbose ? QStringLiteral("verbose") : QStringLiteral("normal");
}

QString purposeName(const WSFile& file)
{
    return file.inputFile() ? QStringLiteral("input") : QStringLiteral("output");
}

// Keys are listed as often as they were given; the value is the last one.
template <typename Target>
QJsonArray userAttributesJson(const Target& target)
{
    QJsonArray result;
    const QStringList keys = target.userAttributeKeys();
    for (const QString& key : keys)
        result.append(QJsonObject{{QStringLiteral("key"), key},
                                  {QStringLiteral("value"), target.userAttribute(key)}});
    return result;
}

QJsonObject fileJson(const WSFile& file)
{
    QJsonObject result{{QStringLiteral("filePurpose"), purposeName(file)},
                       {QStringLiteral("filename"), file.filename()},
                       {QStringLiteral("filepath"), file.filepath()},
                       {QStringLiteral("filetype"), file.filetype()},
                       {QStringLiteral("md5File"), file.md5File()},
                       {QStringLiteral("description"), file.description()},
                       {QStringLiteral("comment"), file.comment()},
                       {QStringLiteral("userAttributes"), userAttributesJson(file)}};
    for (const FileFlag& flag : fileFlags)
        result.insert(QLatin1String(flag.name), (file.*flag.get)());
    return result;
}

QString setFlags(const WSFile& file)
{
    QStringList names;
    for (const FileFlag& flag : fileFlags) {
        if ((file.*flag.get)())
            names.append(QString::fromLatin1(flag.name).toLower());
    }
    return names.join(u' ');
}

void addFields(const ArgFile& invocation, Table& table)
{
    if (invocation.verbosity() != Normal)
        table.addRow({QStringLiteral("verbosity"), verbosityName(invocation.verbosity())});
    for (const Switch& oneSwitch : switches) {
        if ((invocation.*oneSwitch.get)())
            table.addRow({QString::fromLatin1(oneSwitch.name), QStringLiteral("yes")});
    }
    for (int i = 0; i < invocation.numOutputLorixfiles(); ++i)
        table.addRow({QStringLiteral("output"), invocation.outputLorixfile(i)});
    if (!invocation.rootfile().isEmpty())
        table.addRow({QStringLiteral("root"), invocation.rootfile()});
    for (const TextField& field : textFields) {
        const QString value = (invocation.*field.get)();
        if (!value.isEmpty())
            table.addRow({QString::fromLatin1(field.name), value});
    }
    const QStringList keys = invocation.userAttributeKeys();
    for (const QString& key : keys)
        table.addRow({QStringLiteral("user ") + key, invocation.userAttribute(key)});
}

} // namespace

QJsonObject invocationJson(const ArgFile& invocation)
{
    QJsonArray outputs;
    for (int i = 0; i < invocation.numOutputLorixfiles(); ++i)
        outputs.append(invocation.outputLorixfile(i));
    QJsonArray files;
    for (int i = 0; i < invocation.numFiles(); ++i)
        files.append(fileJson(*invocation.getConstFile(i)));
    QJsonObject result{{QStringLiteral("verbosity"), verbosityName(invocation.verbosity())},
                       {QStringLiteral("outputLorixfiles"), outputs},
                       {QStringLiteral("rootfile"), invocation.rootfile()},
                       {QStringLiteral("userAttributes"), userAttributesJson(invocation)},
                       {QStringLiteral("files"), files}};
    for (const Switch& oneSwitch : switches)
        result.insert(QLatin1String(oneSwitch.name), (invocation.*oneSwitch.get)());
    for (const TextField& field : textFields)
        result.insert(QLatin1String(field.name), (invocation.*field.get)());
    return result;
}

QString invocationText(const ArgFile& invocation, const Paint& paint)
{
    Table fields;
    fields.addColumn(QStringLiteral("field"));
    fields.addColumn(QStringLiteral("value"));
    addFields(invocation, fields);

    Table files;
    for (const char* title : {"purpose", "file", "flags", "type", "description", "user attributes"})
        files.addColumn(QString::fromLatin1(title));
    for (int i = 0; i < invocation.numFiles(); ++i) {
        const WSFile& file = *invocation.getConstFile(i);
        QStringList attributes;
        const QStringList keys = file.userAttributeKeys();
        for (const QString& key : keys)
            attributes.append(key + u'=' + file.userAttribute(key));
        files.addRow({purposeName(file), file.filepath() + file.filename(), setFlags(file),
                      file.filetype(), file.description(), attributes.join(u' ')});
    }
    QString result;
    if (!fields.isEmpty())
        result += fields.text(paint);
    if (!fields.isEmpty() && !files.isEmpty())
        result += u'\n';
    if (!files.isEmpty())
        result += files.text(paint);
    return result;
}

} // namespace lorix::cli
