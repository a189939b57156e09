// SPDX-License-Identifier: BSD-3-Clause
#include "argfilefields.h"

using namespace lorix;

namespace {

QString line(const char* name, const QString& value)
{
    return QString::fromLatin1(name) + u'=' + value;
}

QString line(const char* name, int value)
{
    return line(name, QString::number(value));
}

template <typename Target>
QStringList userAttributesOf(const Target& target)
{
    QStringList result;
    const QStringList keys = target.userAttributeKeys();
    for (const QString& key : keys)
        result << QStringLiteral("user attribute ") + key + u'=' + target.userAttribute(key);
    return result;
}

} // namespace

QStringList fieldsOf(const WSFile& file)
{
    return QStringList{
               line("filetype", file.filetype()),       line("filename", file.filename()),
               line("filepath", file.filepath()),       line("md5File", file.md5File()),
               line("autoMD5", file.autoMD5()),         line("embed", file.embed()),
               line("optional", file.optional()),       line("compress", file.compress()),
               line("previewWS", file.previewWS()),     line("preview", file.preview()),
               line("thumbnail", file.thumbnail()),     line("thumbnailOnly", file.thumbnailOnly()),
               line("filePurpose", file.filePurpose()), line("description", file.description()),
               line("comment", file.comment())} +
           userAttributesOf(file);
}

QStringList fieldsOf(const ArgFile& argfile)
{
    QStringList result{line("verbosity", argfile.verbosity()),
                       line("rootIsOptional", argfile.rootIsOptional()),
                       line("pretend", argfile.pretend()),
                       line("debugMode", argfile.debugMode()),
                       line("showHelp", argfile.showHelp()),
                       line("showVersion", argfile.showVersion()),
                       line("firstpage", argfile.firstpage()),
                       line("readme", argfile.readme()),
                       line("rootfile", argfile.rootfile()),
                       line("title", argfile.title()),
                       line("description", argfile.description()),
                       line("comment", argfile.comment()),
                       line("tool", argfile.tool()),
                       line("toolpath", argfile.toolpath()),
                       line("host", argfile.host()),
                       line("user", argfile.user()),
                       line("command", argfile.command()),
                       line("pdfTitle", argfile.pdfTitle()),
                       line("pdfProducer", argfile.pdfProducer()),
                       line("pdfCreator", argfile.pdfCreator()),
                       line("pdfAuthor", argfile.pdfAuthor()),
                       line("pdfKeywords", argfile.pdfKeywords()),
                       line("pdfSubject", argfile.pdfSubject())};
    result += userAttributesOf(argfile);
    for (int i = 0; i < argfile.numOutputLorixfiles(); ++i)
        result << line("output", argfile.outputLorixfile(i));
    for (int i = 0; i < argfile.numFiles(); ++i) {
        result << line("file", i);
        result += fieldsOf(*argfile.getConstFile(i));
    }
    return result;
}
