// SPDX-License-Identifier: BSD-3-Clause
#include "argfilefields.h"

#include <lorix/argfile/argfile.h>
#include <lorix/argfile/argumentlist.h>

#include <QTest>

#include <functional>

using namespace lorix;

namespace {

const char* const defaultFlags =
    "-f no-optional -f no-compress -f embed -f automd5 -f no-previewws -f no-preview "
    "-f no-thumbnail -f no-thumbnailonly";

QString withDefaultFlags(const char* start)
{
    return QString::fromUtf8(start) + u' ' + QString::fromUtf8(defaultFlags);
}

using Setter = void (ArgFile::*)(const QString&);
using Getter = QString (ArgFile::*)() const;
using FileSetter = void (WSFile::*)(const QString&);
using FileGetter = QString (WSFile::*)() const;

struct TextField
{
    const char* name;
    Setter set;
    Getter get;
};

const TextField textFields[] = {
    {"firstpage", &ArgFile::setFirstpage, &ArgFile::firstpage},
    {"readme", &ArgFile::setReadme, &ArgFile::readme},
    {"rootfile", &ArgFile::setRootfile, &ArgFile::rootfile},
    {"title", &ArgFile::setTitle, &ArgFile::title},
    {"description", &ArgFile::setDescription, &ArgFile::description},
    {"comment", &ArgFile::setComment, &ArgFile::comment},
    {"tool", &ArgFile::setTool, &ArgFile::tool},
    {"toolpath", &ArgFile::setToolpath, &ArgFile::toolpath},
    {"host", &ArgFile::setHost, &ArgFile::host},
    {"user", &ArgFile::setUser, &ArgFile::user},
    {"command", &ArgFile::setCommand, &ArgFile::command},
    {"pdfTitle", &ArgFile::setPdfTitle, &ArgFile::pdfTitle},
    {"pdfProducer", &ArgFile::setPdfProducer, &ArgFile::pdfProducer},
    {"pdfCreator", &ArgFile::setPdfCreator, &ArgFile::pdfCreator},
    {"pdfAuthor", &ArgFile::setPdfAuthor, &ArgFile::pdfAuthor},
    {"pdfKeywords", &ArgFile::setPdfKeywords, &ArgFile::pdfKeywords},
    {"pdfSubject", &ArgFile::setPdfSubject, &ArgFile::pdfSubject},
};

struct FileTextField
{
    const char* name;
    FileSetter set;
    FileGetter get;
};

const FileTextField fileTextFields[] = {
    {"filetype", &WSFile::setFiletype, &WSFile::filetype},
    {"filename", &WSFile::setFilename, &WSFile::filename},
    {"md5File", &WSFile::setMd5File, &WSFile::md5File},
    {"description", &WSFile::setDescription, &WSFile::description},
    {"comment", &WSFile::setComment, &WSFile::comment},
};

struct FileFlag
{
    const char* name;
    void (WSFile::*set)(bool);
    bool (WSFile::*get)() const;
};

const FileFlag fileFlags[] = {
    {"optional", &WSFile::setOptional, &WSFile::optional},
    {"compress", &WSFile::setCompress, &WSFile::compress},
    {"embed", &WSFile::setEmbed, &WSFile::embed},
    {"automd5", &WSFile::setAutoMD5, &WSFile::autoMD5},
    {"previewws", &WSFile::setPreviewWS, &WSFile::previewWS},
    {"preview", &WSFile::setPreview, &WSFile::preview},
    {"thumbnail", &WSFile::setThumbnail, &WSFile::thumbnail},
    {"thumbnailonly", &WSFile::setThumbnailOnly, &WSFile::thumbnailOnly},
};

/// An invocation and a file with a value of its own in every field.
ArgFile filledArgFile()
{
    ArgFile argfile;
    for (const TextField& field : textFields)
        (argfile.*field.set)(QString::fromLatin1(field.name) + u'!');
    argfile.setVerbosity(Quiet);
    argfile.setRootIsOptional(true);
    argfile.setPretend(true);
    argfile.setDebugMode(true);
    argfile.setShowHelp(true);
    argfile.setShowVersion(true);
    argfile.addOutputLorixfile(QStringLiteral("one"));
    argfile.addOutputLorixfile(QStringLiteral("two"));
    argfile.addUserAttribute(QStringLiteral("k"), QStringLiteral("v"));
    argfile.addFile(WSFile());
    return argfile;
}

WSFile filledFile()
{
    WSFile file;
    for (const FileTextField& field : fileTextFields)
        (file.*field.set)(QString::fromLatin1(field.name) + u'!');
    for (const FileFlag& flag : fileFlags)
        (file.*flag.set)(!(file.*flag.get)());
    file.setFilepath(QStringLiteral("dir"));
    file.setFilePurpose(Output);
    file.addUserAttribute(QStringLiteral("k"), QStringLiteral("v"));
    return file;
}

} // namespace

class TestArgFile : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void enumerationsHaveTheirNumbers();
    void attributesAreAppendedUnlessEmpty();
    void flagsAreAppendedInBothStates();
    void stringsAreQuoted_data();
    void stringsAreQuoted();
    void listsAreQuotedByElement();

    void fileHasItsDefaults();
    void fileKeepsWhatIsSet();
    void filepathEndsWithSlash();
    void pathIsTakenApart_data();
    void pathIsTakenApart();
    void fileUserAttributesKeepOrder();
    void filesAreEqualInEveryField();
    void fileIsWritten_data();
    void fileIsWritten();
    void flagsOfFileAreAlwaysWritten();

    void argfileHasItsDefaults();
    void argfileKeepsWhatIsSet();
    void argfileIsMadeFromOutputAndRoot();
    void filesAreListed();
    void pointersStayValidWhileFilesAreAdded();
    void outputContainersAreListed();
    void userAttributesKeepOrder();
    void copiesAreIndependent();
    void rootIsCleared();
    void variablesAreClearedExceptTheRoot();
    void undoNamesEveryOutput();
    void defaultArgfileIsWrittenAsNothing();
    void optionsAreWrittenInOrder();
    void emptyAttributesAreLeftOut();
    void filesFollowTheOptions();
    void valuesAreQuoted();
};

void TestArgFile::enumerationsHaveTheirNumbers()
{
    QCOMPARE(static_cast<int>(Quiet), 0);
    QCOMPARE(static_cast<int>(Verbosity::Normal), 1);
    QCOMPARE(static_cast<int>(Verbose), 2);
    QCOMPARE(static_cast<int>(Input), 0);
    QCOMPARE(static_cast<int>(FilePurpose::Output), 1);
}

void TestArgFile::attributesAreAppendedUnlessEmpty()
{
    QStringList list({QStringLiteral("x")});
    ::appendAttributeToList(QString(), QStringLiteral("-s"), QStringLiteral("title"), list);
    QCOMPARE(list, QStringList({QStringLiteral("x")}));
    lorix::appendAttributeToList(QStringLiteral("a b"), QStringLiteral("-s"),
                                 QStringLiteral("title"), list);
    QCOMPARE(list, QStringList({QStringLiteral("x"), QStringLiteral("-s"), QStringLiteral("title"),
                                QStringLiteral("a b")}));
}

void TestArgFile::flagsAreAppendedInBothStates()
{
    QStringList list;
    appendFlagToList(true, QStringLiteral("-f"), QStringLiteral("embed"), list);
    appendFlagToList(false, QStringLiteral("-f"), QStringLiteral("preview"), list);
    QCOMPARE(list, QStringList({QStringLiteral("-f"), QStringLiteral("embed"), QStringLiteral("-f"),
                                QStringLiteral("no-preview")}));
}

void TestArgFile::stringsAreQuoted_data()
{
    QTest::addColumn<QString>("string");
    QTest::addColumn<QString>("kept");
    QTest::addColumn<QString>("replaced");

    const auto row = [](const char* string, const char* kept, const char* replaced) {
        QTest::newRow(string) << string << kept << replaced;
    };
    row("", "", "");
    row("abc", "abc", "abc");
    row("a b", "\"a b\"", "\"a b\"");
    row(" ", "\" \"", "\" \"");
    row("a\tb", "\"a\tb\"", "\"a\tb\"");
    row("a\rb", "\"a\rb\"", "\"a\rb\"");
    row("a\nb", "\"a\nb\"", "\"a\nb\"");
    row("a\vb", "a\vb", "a\vb");
    row("\\", "\\\\", "\\\\");
    row("\"", "\\\"", "\\\"");
    row("`", "\\`", "\\`");
    row("\\\"", "\\\\\\\"", "\\\\\\\"");
    row("'", "'", "'");
    row("#", "#", "#");
    row("it's #1", "\"it's #1\"", "\"it's #1\"");
    row("$", "$", "\\$");
    row("$name", "$name", "\\$name");
    row("$$", "\\$", "\\$\\$");
    row("$$name", "\\$name", "\\$\\$name");
    row("$$$", "\\$$", "\\$\\$\\$");
    row("$$$$", "\\$\\$", "\\$\\$\\$\\$");
    row("\\$$", "\\\\\\$", "\\\\\\$\\$");
    row("\\$a b", "\"\\\\$a b\"", "\"\\\\\\$a b\"");
}

void TestArgFile::stringsAreQuoted()
{
    QFETCH(QString, string);
    QTEST(quoteString(string, true), "kept");
    QTEST(quoteString(string, false), "replaced");
}

void TestArgFile::listsAreQuotedByElement()
{
    QCOMPARE(quoteStringList({}, true), QStringList());
    const QStringList list({QStringLiteral("a b"), QString(), QStringLiteral("$$")});
    QCOMPARE(quoteStringList(list, true),
             QStringList({QStringLiteral("\"a b\""), QStringLiteral(""), QStringLiteral("\\$")}));
    QCOMPARE(
        quoteStringList(list, false),
        QStringList({QStringLiteral("\"a b\""), QStringLiteral(""), QStringLiteral("\\$\\$")}));
}

void TestArgFile::fileHasItsDefaults()
{
    const WSFile file;
    QCOMPARE(fieldsOf(file),
             QStringList({"filetype=", "filename=", "filepath=", "md5File=", "autoMD5=1", "embed=1",
                          "optional=0", "compress=0", "previewWS=0", "preview=0", "thumbnail=0",
                          "thumbnailOnly=0", "filePurpose=0", "description=", "comment="}));
    QVERIFY(file.inputFile());
}

void TestArgFile::fileKeepsWhatIsSet()
{
    const WSFile file = filledFile();
    for (const FileTextField& field : fileTextFields)
        QCOMPARE((file.*field.get)(), QString::fromLatin1(field.name) + u'!');
    const WSFile fresh;
    for (const FileFlag& flag : fileFlags)
        QCOMPARE((file.*flag.get)(), !(fresh.*flag.get)());
    QCOMPARE(file.filePurpose(), Output);
    QVERIFY(!file.inputFile());

    WSFile other = file;
    other.setInputFile(true);
    QCOMPARE(other.filePurpose(), Input);
    other.setInputFile(false);
    QCOMPARE(other.filePurpose(), Output);
}

void TestArgFile::filepathEndsWithSlash()
{
    WSFile file;
    file.setFilepath(QStringLiteral("dir"));
    QCOMPARE(file.filepath(), QStringLiteral("dir/"));
    file.setFilepath(QStringLiteral("dir/"));
    QCOMPARE(file.filepath(), QStringLiteral("dir/"));
    file.setFilepath(QStringLiteral("/"));
    QCOMPARE(file.filepath(), QStringLiteral("/"));
    file.setFilepath(QString());
    QCOMPARE(file.filepath(), QStringLiteral("/"));
}

void TestArgFile::pathIsTakenApart_data()
{
    QTest::addColumn<QString>("full");
    QTest::addColumn<QString>("filepath");
    QTest::addColumn<QString>("filename");

    QTest::newRow("bare name") << "a.txt"
                               << "./"
                               << "a.txt";
    QTest::newRow("folder") << "dir/a.txt"
                            << "dir/"
                            << "a.txt";
    QTest::newRow("folders") << "../x y/a.b.c"
                             << "../x y/"
                             << "a.b.c";
    QTest::newRow("root") << "/a"
                          << "/"
                          << "a";
    QTest::newRow("absolute") << "/usr/a"
                              << "/usr/"
                              << "a";
    QTest::newRow("folder alone") << "dir/"
                                  << "dir/"
                                  << "";
    QTest::newRow("dot") << "./a"
                         << "./"
                         << "a";
}

void TestArgFile::pathIsTakenApart()
{
    QFETCH(QString, full);
    WSFile file;
    file.setFilenameAndPath(full);
    QTEST(file.filepath(), "filepath");
    QTEST(file.filename(), "filename");
}

template <typename Target>
void checkUserAttributes(Target target)
{
    const QString a = QStringLiteral("a");
    const QString b = QStringLiteral("b");
    QCOMPARE(target.userAttributeKeys(), QStringList());
    QCOMPARE(target.userAttribute(a), QString());
    target.addUserAttribute(b, QStringLiteral("1"));
    target.addUserAttribute(a, QStringLiteral("2"));
    target.addUserAttribute(b, QStringLiteral("3"));
    QCOMPARE(target.userAttributeKeys(), QStringList({b, a, b}));
    QCOMPARE(target.userAttribute(b), QStringLiteral("3"));
    QCOMPARE(target.userAttribute(a), QStringLiteral("2"));
    QCOMPARE(target.userAttribute(QStringLiteral("B")), QString());
    target.clearUserAttributes();
    QCOMPARE(target.userAttributeKeys(), QStringList());
    QCOMPARE(target.userAttribute(b), QString());
}

void TestArgFile::fileUserAttributesKeepOrder()
{
    checkUserAttributes(WSFile());
}

void TestArgFile::filesAreEqualInEveryField()
{
    const WSFile file;
    QVERIFY(file == WSFile());
    QVERIFY(!(file != WSFile()));
    QVERIFY(filledFile() == filledFile());
    QVERIFY(filledFile() != file);

    const auto differs = [&file](const std::function<void(WSFile&)>& change) {
        WSFile other;
        change(other);
        return file != other && !(file == other);
    };
    for (const FileTextField& field : fileTextFields)
        QVERIFY2(differs([&](WSFile& f) { (f.*field.set)(QStringLiteral("x")); }), field.name);
    for (const FileFlag& flag : fileFlags)
        QVERIFY2(differs([&](WSFile& f) { (f.*flag.set)(!(f.*flag.get)()); }), flag.name);
    QVERIFY(differs([](WSFile& f) { f.setFilepath(QStringLiteral("x")); }));
    QVERIFY(differs([](WSFile& f) { f.setFilePurpose(Output); }));
    QVERIFY(differs([](WSFile& f) { f.addUserAttribute(QString(), QString()); }));

    WSFile one;
    one.addUserAttribute(QStringLiteral("a"), QStringLiteral("1"));
    one.addUserAttribute(QStringLiteral("b"), QStringLiteral("2"));
    WSFile two;
    two.addUserAttribute(QStringLiteral("b"), QStringLiteral("2"));
    two.addUserAttribute(QStringLiteral("a"), QStringLiteral("1"));
    QVERIFY(one != two);
    WSFile three = one;
    QVERIFY(one == three);
    three.addUserAttribute(QStringLiteral("b"), QStringLiteral("2"));
    QVERIFY(one != three);
}

void TestArgFile::fileIsWritten_data()
{
    QTest::addColumn<QString>("filepath");
    QTest::addColumn<QString>("filename");
    QTest::addColumn<QString>("written");

    QTest::newRow("no path") << QString() << "a.txt" << withDefaultFlags("-i ./a.txt");
    QTest::newRow("path") << "dir"
                          << "a.txt" << withDefaultFlags("-i dir/a.txt");
    QTest::newRow("root") << "/"
                          << "a.txt" << withDefaultFlags("-i /a.txt");
    QTest::newRow("absolute name") << "dir"
                                   << "/a.txt" << withDefaultFlags("-i /a.txt");
    QTest::newRow("blank") << "my dir"
                           << "a.txt" << withDefaultFlags("-i \"my dir/a.txt\"");
    QTest::newRow("not cleaned") << "a/../b"
                                 << "c" << withDefaultFlags("-i a/../b/c");
}

void TestArgFile::fileIsWritten()
{
    QFETCH(QString, filepath);
    QFETCH(QString, filename);
    WSFile file;
    if (!filepath.isEmpty())
        file.setFilepath(filepath);
    file.setFilename(filename);
    QTEST(file.toCommandline(true), "written");
    QTEST(file.toCommandline(false), "written");
}

void TestArgFile::flagsOfFileAreAlwaysWritten()
{
    WSFile file = filledFile();
    file.addUserAttribute(QStringLiteral("empty"), QString());
    file.addUserAttribute(QStringLiteral("k 2"), QStringLiteral("$x"));
    file.addUserAttribute(QStringLiteral("k"), QStringLiteral("w"));
    const QString written = QStringLiteral(
        "-o dir/filename! -a filetype filetype! -a description description! -a comment comment! "
        "-a md5file md5File! -f optional -f compress -f no-embed -f no-automd5 -f previewws "
        "-f preview -f thumbnail -f thumbnailonly -u k w -u \"k 2\" %1 -u k w");
    QCOMPARE(file.toCommandline(true), written.arg(QStringLiteral("$x")));
    QCOMPARE(file.toCommandline(false), written.arg(QStringLiteral("\\$x")));
}

void TestArgFile::argfileHasItsDefaults()
{
    const ArgFile argfile;
    for (const TextField& field : textFields)
        QCOMPARE((argfile.*field.get)(), QString());
    QCOMPARE(argfile.verbosity(), Normal);
    QVERIFY(!argfile.rootIsOptional());
    QVERIFY(!argfile.pretend());
    QVERIFY(!argfile.debugMode());
    QVERIFY(!argfile.showHelp());
    QVERIFY(!argfile.showVersion());
    QCOMPARE(argfile.numFiles(), 0);
    QCOMPARE(argfile.numOutputLorixfiles(), 0);
    QCOMPARE(argfile.userAttributeKeys(), QStringList());
}

void TestArgFile::argfileKeepsWhatIsSet()
{
    const ArgFile argfile = filledArgFile();
    for (const TextField& field : textFields)
        QCOMPARE((argfile.*field.get)(), QString::fromLatin1(field.name) + u'!');
    QCOMPARE(argfile.verbosity(), Quiet);
    QVERIFY(argfile.rootIsOptional());
    QVERIFY(argfile.pretend());
    QVERIFY(argfile.debugMode());
    QVERIFY(argfile.showHelp());
    QVERIFY(argfile.showVersion());
}

void TestArgFile::argfileIsMadeFromOutputAndRoot()
{
    const ArgFile argfile(QStringLiteral("out"), QStringLiteral("root"));
    QCOMPARE(argfile.numOutputLorixfiles(), 1);
    QCOMPARE(argfile.outputLorixfile(0), QStringLiteral("out"));
    QCOMPARE(argfile.rootfile(), QStringLiteral("root"));
    QVERIFY(!argfile.rootIsOptional());
    QCOMPARE(argfile.toCommandline(true), QStringLiteral("-O out -I root"));
}

void TestArgFile::filesAreListed()
{
    ArgFile argfile;
    QCOMPARE(argfile.getFile(0), nullptr);
    QCOMPARE(argfile.getConstFile(0), nullptr);
    QCOMPARE(argfile.lastFile(), nullptr);
    argfile.removeFile(0);

    WSFile file;
    for (const char* name : {"a", "b", "c"}) {
        file.setFilename(QString::fromLatin1(name));
        WSFile* stored = argfile.addFile(file);
        QVERIFY(stored != &file);
        QCOMPARE(stored, argfile.lastFile());
        QVERIFY(*stored == file);
    }
    QCOMPARE(argfile.numFiles(), 3);
    QCOMPARE(argfile.getFile(-1), nullptr);
    QCOMPARE(argfile.getFile(3), nullptr);
    QCOMPARE(argfile.getConstFile(-1), nullptr);
    QCOMPARE(argfile.getConstFile(3), nullptr);
    argfile.getFile(1)->setFilename(QStringLiteral("B"));
    QCOMPARE(argfile.getConstFile(1)->filename(), QStringLiteral("B"));
    argfile.removeFile(-1);
    argfile.removeFile(3);
    QCOMPARE(argfile.numFiles(), 3);
    argfile.removeFile(0);
    QCOMPARE(argfile.numFiles(), 2);
    QCOMPARE(argfile.getFile(0)->filename(), QStringLiteral("B"));
    argfile.removeFile(1);
    QCOMPARE(argfile.lastFile()->filename(), QStringLiteral("B"));
    argfile.clearFilelist();
    QCOMPARE(argfile.numFiles(), 0);
    QCOMPARE(argfile.lastFile(), nullptr);
}

void TestArgFile::pointersStayValidWhileFilesAreAdded()
{
    ArgFile argfile;
    QList<WSFile*> stored;
    for (int i = 0; i < 1000; ++i) {
        WSFile file;
        file.setFilename(QString::number(i));
        stored.append(argfile.addFile(file));
    }
    for (int i = 0; i < 1000; ++i) {
        QCOMPARE(argfile.getFile(i), stored[i]);
        QCOMPARE(stored[i]->filename(), QString::number(i));
    }
}

void TestArgFile::outputContainersAreListed()
{
    ArgFile argfile;
    QCOMPARE(argfile.outputLorixfile(0), QString());
    argfile.addOutputLorixfile(QStringLiteral("one"));
    argfile.addOutputLorixfile(QString());
    argfile.addOutputLorixfile(QStringLiteral("one"));
    QCOMPARE(argfile.numOutputLorixfiles(), 3);
    QCOMPARE(argfile.outputLorixfile(0), QStringLiteral("one"));
    QCOMPARE(argfile.outputLorixfile(1), QString());
    QCOMPARE(argfile.outputLorixfile(2), QStringLiteral("one"));
    QCOMPARE(argfile.outputLorixfile(3), QString());
    QCOMPARE(argfile.outputLorixfile(-1), QString());
    argfile.clearOutputLorixfiles();
    QCOMPARE(argfile.numOutputLorixfiles(), 0);
}

void TestArgFile::userAttributesKeepOrder()
{
    checkUserAttributes(ArgFile());
}

void TestArgFile::copiesAreIndependent()
{
    const ArgFile argfile = filledArgFile();
    ArgFile copy = argfile;
    QCOMPARE(fieldsOf(copy), fieldsOf(argfile));
    copy.getFile(0)->setFilename(QStringLiteral("changed"));
    copy.addUserAttribute(QStringLiteral("more"), QString());
    copy.addOutputLorixfile(QStringLiteral("three"));
    QCOMPARE(fieldsOf(argfile), fieldsOf(filledArgFile()));
    copy = argfile;
    QCOMPARE(fieldsOf(copy), fieldsOf(argfile));
}

void TestArgFile::rootIsCleared()
{
    ArgFile argfile = filledArgFile();
    argfile.clearRootLorixfiles();
    QCOMPARE(argfile.rootfile(), QString());
    QVERIFY(argfile.rootIsOptional());
    argfile.setRootfile(QStringLiteral("rootfile!"));
    QCOMPARE(fieldsOf(argfile), fieldsOf(filledArgFile()));
}

void TestArgFile::variablesAreClearedExceptTheRoot()
{
    ArgFile argfile = filledArgFile();
    const WSFile* file = argfile.getConstFile(0);
    argfile.clearVariables();
    ArgFile expected;
    expected.setRootfile(QStringLiteral("rootfile!"));
    expected.addOutputLorixfile(QStringLiteral("one"));
    expected.addOutputLorixfile(QStringLiteral("two"));
    expected.addUserAttribute(QStringLiteral("k"), QStringLiteral("v"));
    expected.addFile(WSFile());
    QCOMPARE(fieldsOf(argfile), fieldsOf(expected));
    QCOMPARE(argfile.getConstFile(0), file);
}

void TestArgFile::undoNamesEveryOutput()
{
    ArgFile argfile;
    QCOMPARE(argfile.getUndoWorkflowStep(), QString());
    argfile.addOutputLorixfile(QStringLiteral("a.pdf"));
    QCOMPARE(argfile.getUndoWorkflowStep(),
             QStringLiteral("<DelWorkflowStep>a.pdf</DelWorkflowStep>"));
    argfile.addOutputLorixfile(QStringLiteral("%1 & <b>"));
    QCOMPARE(argfile.getUndoWorkflowStep(),
             QStringLiteral("<DelWorkflowStep>a.pdf</DelWorkflowStep>"
                            "<DelWorkflowStep>%1 & <b></DelWorkflowStep>"));
}

void TestArgFile::defaultArgfileIsWrittenAsNothing()
{
    ArgFile argfile;
    QCOMPARE(argfile.toCommandline(true), QString());
    QCOMPARE(argfile.toCommandline(false), QString());
    argfile.setVerbosity(Quiet);
    QCOMPARE(argfile.toCommandline(true), QStringLiteral("--quiet"));
    argfile.setVerbosity(Verbose);
    QCOMPARE(argfile.toCommandline(false), QStringLiteral("--verbose"));
}

void TestArgFile::optionsAreWrittenInOrder()
{
    ArgFile argfile = filledArgFile();
    argfile.clearFilelist();
    QCOMPARE(argfile.toCommandline(true),
             QStringLiteral(
                 "--quiet --pretend --debug --help --version --firstpage firstpage! --readme "
                 "readme! -O one -O two -J rootfile! -s title title! -s description description! "
                 "-s comment comment! -s tool tool! -s toolpath toolpath! -s host host! -s user "
                 "user! -s command command! -d title pdfTitle! -d producer pdfProducer! -d creator "
                 "pdfCreator! -d author pdfAuthor! -d keywords pdfKeywords! -d subject pdfSubject! "
                 "-U k v"));
}

void TestArgFile::emptyAttributesAreLeftOut()
{
    ArgFile argfile;
    argfile.setRootIsOptional(true);
    argfile.addUserAttribute(QStringLiteral("empty"), QString());
    QCOMPARE(argfile.toCommandline(true), QString());
    argfile.addUserAttribute(QStringLiteral("b"), QStringLiteral("1"));
    argfile.addUserAttribute(QStringLiteral("a"), QStringLiteral("2"));
    argfile.addUserAttribute(QStringLiteral("b"), QStringLiteral("3"));
    QCOMPARE(argfile.toCommandline(true), QStringLiteral("-U b 3 -U a 2 -U b 3"));
}

void TestArgFile::filesFollowTheOptions()
{
    ArgFile argfile;
    WSFile file;
    file.setFilenameAndPath(QStringLiteral("d/a"));
    argfile.addFile(file);
    file.setInputFile(false);
    argfile.addFile(file);
    // Even where no option stands before the first file.
    const QString files = u' ' + withDefaultFlags("-i d/a") + u' ' + withDefaultFlags("-o d/a");
    QCOMPARE(argfile.toCommandline(true), files);
    argfile.setPretend(true);
    QCOMPARE(argfile.toCommandline(true), QStringLiteral("--pretend") + files);
}

void TestArgFile::valuesAreQuoted()
{
    ArgFile argfile;
    argfile.setTitle(QStringLiteral("a b"));
    argfile.setComment(QStringLiteral("\"`\\"));
    argfile.setHost(QStringLiteral("$$a$b"));
    argfile.addOutputLorixfile(QString());
    const QString start = QStringLiteral("-O  -s title \"a b\" -s comment \\\"\\`\\\\ -s host ");
    QCOMPARE(argfile.toCommandline(true), start + QStringLiteral("\\$a$b"));
    QCOMPARE(argfile.toCommandline(false), start + QStringLiteral("\\$\\$a\\$b"));
}

QTEST_GUILESS_MAIN(TestArgFile)
#include "tst_argfile.moc"
