// SPDX-License-Identifier: BSD-3-Clause
#include <lorix/argfile/argfilereader.h>

#include <lorix/argfile/argfileparser.h>

namespace lorix {

namespace {

enum class Effect {
    None,
    ToolOnly,
    Debug,
    Verbose,
    Quiet,
    Pretend,
    Version,
    Help,
    Firstpage,
    Readme,
    AppendTo,
    OutputContainer,
    OptionalRoot,
    Root,
    Outfile,
    Infile,
    FileFlag,
    FileUser,
    FileAttribute,
    StepUser,
    StepAttribute,
    DocumentAttribute
};

struct Option
{
    const char* longName;
    const char* shortName;
    int parameters;
    Effect effect;
};

constexpr Option options[] = {
    {"--debug", nullptr, 0, Effect::Debug},
    {"--stdin", nullptr, 0, Effect::None},
    {"--verbose", "-v", 0, Effect::Verbose},
    {"--quiet", "-q", 0, Effect::Quiet},
    {"--pretend", "-p", 0, Effect::Pretend},
    {"--sync-cwd", nullptr, 0, Effect::ToolOnly},
    {"--version", "-V", 0, Effect::Version},
    {"--help", "-h", 0, Effect::Help},
    {nullptr, "-c", 1, Effect::ToolOnly},
    {"--firstpage", "-1", 1, Effect::Firstpage},
    {"--readme", "-r", 1, Effect::Readme},
    {"--file-flag", "-f", 1, Effect::FileFlag},
    {"--append-to-lorixfile", "-A", 1, Effect::AppendTo},
    {nullptr, "-O", 1, Effect::OutputContainer},
    {nullptr, "-J", 1, Effect::OptionalRoot},
    {nullptr, "-I", 1, Effect::Root},
    {"--outfile", "-o", 1, Effect::Outfile},
    {"--infile", "-i", 1, Effect::Infile},
    {"--file-user", "-u", 2, Effect::FileUser},
    {"--file-attr", "-a", 2, Effect::FileAttribute},
    {"--step-user", "-U", 2, Effect::StepUser},
    {"--step", "-s", 2, Effect::StepAttribute},
    {"--doc", "-d", 2, Effect::DocumentAttribute},
};

template <typename Value, typename Target>
struct NamedSetter
{
    const char* name;
    void (Target::*set)(Value);
};

constexpr NamedSetter<bool, WSFile> fileFlags[] = {
    {"optional", &WSFile::setOptional},
    {"compress", &WSFile::setCompress},
    {"thumbnailonly", &WSFile::setThumbnailOnly},
    {"previewws", &WSFile::setPreviewWS},
    {"embed", &WSFile::setEmbed},
    {"preview", &WSFile::setPreview},
    {"automd5", &WSFile::setAutoMD5},
    {"thumbnail", &WSFile::setThumbnail},
};

constexpr NamedSetter<const QString&, WSFile> fileAttributes[] = {
    {"comment", &WSFile::setComment},
    {"md5file", &WSFile::setMd5File},
    {"filetype", &WSFile::setFiletype},
    {"description", &WSFile::setDescription},
};

constexpr NamedSetter<const QString&, ArgFile> stepAttributes[] = {
    {"comment", &ArgFile::setComment},  {"description", &ArgFile::setDescription},
    {"title", &ArgFile::setTitle},      {"tool", &ArgFile::setTool},
    {"toolversion", &ArgFile::setTool}, {"toolpath", &ArgFile::setToolpath},
    {"host", &ArgFile::setHost},        {"command", &ArgFile::setCommand},
    {"user", &ArgFile::setUser},
};

constexpr NamedSetter<const QString&, ArgFile> documentAttributes[] = {
    {"producer", &ArgFile::setPdfProducer}, {"creator", &ArgFile::setPdfCreator},
    {"author", &ArgFile::setPdfAuthor},     {"keywords", &ArgFile::setPdfKeywords},
    {"title", &ArgFile::setPdfTitle},       {"subject", &ArgFile::setPdfSubject},
};

const Option* findOption(const QString& name)
{
    static const QHash<QString, const Option*> byName = [] {
        QHash<QString, const Option*> result;
        for (const Option& option : options) {
            if (option.longName)
                result.insert(QString::fromLatin1(option.longName), &option);
            if (option.shortName)
                result.insert(QString::fromLatin1(option.shortName), &option);
        }
        return result;
    }();
    return byName.value(name, nullptr);
}

// Calls the setter with the given name; false when there is none.
template <typename Setters, typename Target, typename Value>
bool applyNamed(const Setters& setters, const QString& name, Target* target, const Value& value)
{
    for (const auto& setter : setters) {
        if (name == QLatin1String(setter.name)) {
            (target->*setter.set)(value);
            return true;
        }
    }
    return false;
}

bool holds(const QStringList& arguments, qsizetype index, int count)
{
    return index >= 0 && index + count <= arguments.size();
}

template <typename Setters, typename Target>
void saveAttribute(ArgfileReader* reader, const Setters& setters, const QString& option,
                   const QStringList& arguments, int index, Target* target)
{
    if (!target || !holds(arguments, index, 2))
        return;
    const QString& name = arguments[index];
    if (!applyNamed(setters, name, target, arguments[index + 1])) {
        Q_EMIT reader->log(
            QStringLiteral("first parameter (%1) of option %2 is invalid").arg(name, option), 2);
    }
}

void addFile(ArgFile* argfile, const QString& path, bool input)
{
    WSFile file;
    file.setInputFile(input);
    file.setFilenameAndPath(path);
    argfile->addFile(file);
}

void applySwitch(Effect effect, ArgFile* argfile)
{
    switch (effect) {
    case Effect::Debug:
        return argfile->setDebugMode(true);
    case Effect::Verbose:
        return argfile->setVerbosity(Verbose);
    case Effect::Quiet:
        return argfile->setVerbosity(Quiet);
    case Effect::Pretend:
        return argfile->setPretend(true);
    case Effect::Version:
        return argfile->setShowVersion(true);
    case Effect::Help:
        return argfile->setShowHelp(true);
    default:
        return;
    }
}

void applyContainer(Effect effect, const QString& value, ArgFile* argfile)
{
    if (effect == Effect::AppendTo || effect == Effect::OutputContainer)
        argfile->addOutputLorixfile(value);
    if (effect == Effect::OutputContainer)
        return;
    argfile->setRootfile(value);
    argfile->setRootIsOptional(effect != Effect::Root);
}

void applyOption(ArgfileReader* reader, Effect effect, const QStringList& arguments, int index,
                 ArgFile* argfile)
{
    const QString& option = arguments[index];
    const int first = index + 1;
    const QString value = arguments.value(first);
    switch (effect) {
    case Effect::Firstpage:
        return argfile->setFirstpage(value);
    case Effect::Readme:
        return argfile->setReadme(value);
    case Effect::AppendTo:
    case Effect::OutputContainer:
    case Effect::OptionalRoot:
    case Effect::Root:
        return applyContainer(effect, value, argfile);
    case Effect::Outfile:
    case Effect::Infile:
        return addFile(argfile, value, effect == Effect::Infile);
    case Effect::FileFlag:
        return reader->saveFileFlag(option, arguments, first, argfile->lastFile());
    case Effect::FileAttribute:
        return reader->saveFileAttr(option, arguments, first, argfile->lastFile());
    case Effect::FileUser:
        if (WSFile* file = argfile->lastFile())
            file->addUserAttribute(value, arguments[first + 1]);
        return;
    case Effect::StepUser:
        return argfile->addUserAttribute(value, arguments[first + 1]);
    case Effect::StepAttribute:
        return reader->saveStepAttr(option, arguments, first, argfile);
    case Effect::DocumentAttribute:
        return reader->saveDocAttr(option, arguments, first, argfile);
    default:
        return applySwitch(effect, argfile);
    }
}

} // namespace

ArgfileReader::ArgfileReader(QObject* logTarget) : LogSource(logTarget) {}

ArgFile ArgfileReader::readArgfile(const QString& text, const QHash<QString, QString>* variables)
{
    return parseCommandline(checkOptionSignatures(ArgfileParser::parseArgfile(text, variables)));
}

QStringList ArgfileReader::checkOptionSignatures(const QStringList& arguments)
{
    qsizetype i = 0;
    while (i < arguments.size()) {
        const Option* option = findOption(arguments[i]);
        if (!option) {
            Q_EMIT log(QStringLiteral("unknown option found: %1").arg(arguments[i]), 2);
            break;
        }
        if (i + option->parameters >= arguments.size()) {
            Q_EMIT log(QStringLiteral("not enough parameters for option: %1").arg(arguments[i]), 2);
            break;
        }
        i += option->parameters + 1;
    }
    return arguments.mid(0, i);
}

ArgFile ArgfileReader::parseCommandline(const QStringList& arguments)
{
    ArgFile result;
    int i = 0;
    while (i < arguments.size()) {
        const Option* option = findOption(arguments[i]);
        if (!option || option->effect == Effect::ToolOnly) {
            Q_EMIT log(QStringLiteral("invalid option (%1) found").arg(arguments[i]), 0);
            ++i;
            continue;
        }
        if (holds(arguments, i + 1, option->parameters))
            applyOption(this, option->effect, arguments, i, &result);
        i += 1 + option->parameters;
    }
    return result;
}

void ArgfileReader::saveFileFlag(const QString& option, const QStringList& arguments, int index,
                                 WSFile* file)
{
    if (!file || !holds(arguments, index, 1))
        return;
    const QString& parameter = arguments[index];
    const bool off = parameter.startsWith(QLatin1String("no-"));
    if (!applyNamed(fileFlags, off ? parameter.mid(3) : parameter, file, !off)) {
        Q_EMIT log(
            QStringLiteral("\"%1\" is no valid parameter for option %2").arg(parameter, option), 2);
    }
}

void ArgfileReader::saveFileAttr(const QString& option, const QStringList& arguments, int index,
                                 WSFile* file)
{
    saveAttribute(this, fileAttributes, option, arguments, index, file);
}

void ArgfileReader::saveStepAttr(const QString& option, const QStringList& arguments, int index,
                                 ArgFile* argfile)
{
    saveAttribute(this, stepAttributes, option, arguments, index, argfile);
}

void ArgfileReader::saveDocAttr(const QString& option, const QStringList& arguments, int index,
                                ArgFile* argfile)
{
    saveAttribute(this, documentAttributes, option, arguments, index, argfile);
}

} // namespace lorix
