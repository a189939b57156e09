// SPDX-License-Identifier: BSD-3-Clause
#include "argfilefields.h"

#include <lorix/argfile/argfileparser.h>
#include <lorix/argfile/argfilereader.h>
#include <lorix/argfile/argumentlist.h>
#include <support/logrecorder.h>

#include <QRandomGenerator>
#include <QRegularExpression>
#include <QTest>

#include <iterator>

using namespace lorix;

namespace {

using Messages = QList<QPair<QString, int>>;

QStringList words(const char* text)
{
    return QString::fromUtf8(text).split(u' ', Qt::SkipEmptyParts);
}

Messages message(const char* text, int type)
{
    return {qMakePair(QString::fromUtf8(text), type)};
}

int randomRuns(int runs)
{
    const int factor = qEnvironmentVariableIntValue("LORIX_RANDOM_RUNS");
    return factor > 0 ? runs * factor : runs;
}

/// Whether a string comes back from quoteString() and the parser.
bool readsBack(const QString& string)
{
    for (const QChar blank : QStringLiteral(" \t\r\n")) {
        if (string.contains(blank))
            return true;
    }
    return !string.isEmpty() && !string.contains(u'\'') && !string.contains(u'#');
}

class Strings
{
public:
    explicit Strings(quint32 seed) : m_random(seed) {}

    int number(int bound) { return m_random.bounded(bound); }
    bool coin() { return number(2) == 1; }

    QString any()
    {
        static const char16_t alphabet[] = {u'a',   u'b',   u'1',   u'$',   u'$',  u'{',  u'}',
                                            u'\\',  u'\\',  u'"',   u'`',   u' ',  u'\'', u'#',
                                            u'\t',  u'\n',  u'\r',  u'-',   u'\0', u'/',  0x00e4,
                                            0x00a0, 0xd83d, 0xde00, 0x2028, u'%',  u'<',  u'='};
        QString result;
        for (int length = number(9); length > 0; --length)
            result += QChar(alphabet[number(static_cast<int>(std::size(alphabet)))]);
        return result;
    }

    QString readable()
    {
        QString result = any();
        while (!readsBack(result))
            result = any();
        return result;
    }

    QString readableOrEmpty() { return coin() ? readable() : QString(); }

    /// A path without empty components, which reads back as itself.
    QString path()
    {
        QString result;
        do {
            result = QStringLiteral("d") + readable().replace(u'/', u'_');
            if (coin())
                result = readable().replace(u'/', u'_') + QStringLiteral("x/") + result;
            if (coin())
                result.prepend(u'/');
        } while (!readsBack(result));
        return result;
    }

private:
    QRandomGenerator m_random;
};

WSFile randomFile(Strings& strings)
{
    WSFile file;
    file.setFilenameAndPath(strings.path());
    file.setInputFile(strings.coin());
    file.setFiletype(strings.readableOrEmpty());
    file.setDescription(strings.readableOrEmpty());
    file.setComment(strings.readableOrEmpty());
    file.setMd5File(strings.readableOrEmpty());
    file.setAutoMD5(strings.coin());
    file.setEmbed(strings.coin());
    file.setOptional(strings.coin());
    file.setCompress(strings.coin());
    file.setPreviewWS(strings.coin());
    file.setPreview(strings.coin());
    file.setThumbnail(strings.coin());
    file.setThumbnailOnly(strings.coin());
    for (int count = strings.number(3); count > 0; --count)
        file.addUserAttribute(strings.readable(), strings.readable());
    return file;
}

ArgFile randomArgFile(Strings& strings)
{
    ArgFile argfile;
    argfile.setVerbosity(static_cast<Verbosity>(strings.number(3)));
    argfile.setPretend(strings.coin());
    argfile.setDebugMode(strings.coin());
    argfile.setShowHelp(strings.coin());
    argfile.setShowVersion(strings.coin());
    argfile.setRootfile(strings.readableOrEmpty());
    argfile.setRootIsOptional(!argfile.rootfile().isEmpty() && strings.coin());
    for (const auto set :
         {&ArgFile::setFirstpage, &ArgFile::setReadme, &ArgFile::setTitle, &ArgFile::setDescription,
          &ArgFile::setComment, &ArgFile::setTool, &ArgFile::setToolpath, &ArgFile::setHost,
          &ArgFile::setUser, &ArgFile::setCommand, &ArgFile::setPdfTitle, &ArgFile::setPdfProducer,
          &ArgFile::setPdfCreator, &ArgFile::setPdfAuthor, &ArgFile::setPdfKeywords,
          &ArgFile::setPdfSubject})
        (argfile.*set)(strings.readableOrEmpty());
    for (int count = strings.number(3); count > 0; --count)
        argfile.addOutputLorixfile(strings.readable());
    for (int count = strings.number(3); count > 0; --count)
        argfile.addUserAttribute(strings.readable(), strings.readable());
    for (int count = strings.number(4); count > 0; --count)
        argfile.addFile(randomFile(strings));
    return argfile;
}

} // namespace

class TestArgfileReader : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void signaturesAreChecked_data();
    void signaturesAreChecked();
    void everyOptionTakesItsParameters();
    void optionsHaveTheirEffects_data();
    void optionsHaveTheirEffects();
    void complaintsAreLogged_data();
    void complaintsAreLogged();
    void fileOptionsMeanTheLastFile();
    void fileOptionsBeforeAnyFileAreIgnored();
    void cutOffOptionsAreIgnored();
    void flagsAreSaved_data();
    void flagsAreSaved();
    void attributesAreSaved_data();
    void attributesAreSaved();
    void parametersAreTakenAtTheIndex();
    void messagesKeepPlaceholdersInTheirParts();
    void argumentFileIsRead();
    void unsplittableTextGivesDefault();
    void stringsComeBackExactlyAsDocumented();
    void randomInvocationsComeBack();
    void variablesComeBackAsTheirValues();
    void readerNeedsNoReceiver();
};

void TestArgfileReader::signaturesAreChecked_data()
{
    QTest::addColumn<QString>("arguments");
    QTest::addColumn<QString>("accepted");
    QTest::addColumn<QString>("complaint");

    const auto row = [](const char* arguments, const char* accepted, const char* complaint) {
        QTest::newRow(arguments) << arguments << accepted << complaint;
    };
    row("", "", "");
    row("--debug --stdin --verbose -v --quiet -q --pretend -p --sync-cwd --version -V --help -h",
        "--debug --stdin --verbose -v --quiet -q --pretend -p --sync-cwd --version -V --help -h",
        "");
    row("-c -O -O -c", "-c -O -O -c", "");
    row("-s title", "", "not enough parameters for option: -s");
    row("-q -s title", "-q", "not enough parameters for option: -s");
    row("-q -s", "-q", "not enough parameters for option: -s");
    row("-O", "", "not enough parameters for option: -O");
    row("-q --bogus -v", "-q", "unknown option found: --bogus");
    row("x", "", "unknown option found: x");
    row("-Q", "", "unknown option found: -Q");
    row("-O a b -q", "-O a", "unknown option found: b");
    row("-s bogus value -q", "-s bogus value -q", "");
    row("-U -s title", "-U -s title", "");
}

void TestArgfileReader::signaturesAreChecked()
{
    QFETCH(QString, arguments);
    QFETCH(QString, accepted);
    QFETCH(QString, complaint);
    LogRecorder recorder;
    ArgfileReader reader(&recorder);
    QCOMPARE(reader.checkOptionSignatures(words(qPrintable(arguments))),
             words(qPrintable(accepted)));
    QCOMPARE(recorder.messages,
             complaint.isEmpty() ? Messages() : Messages({qMakePair(complaint, 2)}));
}

void TestArgfileReader::everyOptionTakesItsParameters()
{
    const QStringList withCount[] = {
        words("--debug --stdin --verbose -v --quiet -q --pretend -p --sync-cwd --version -V --help "
              "-h"),
        words("-c --firstpage -1 --readme -r --file-flag -f --append-to-lorixfile -A -O -J -I "
              "--outfile -o --infile -i"),
        words("--file-user -u --file-attr -a --step-user -U --step -s --doc -d")};
    for (int count = 0; count < 3; ++count) {
        for (const QString& option : withCount[count]) {
            QStringList arguments({option});
            for (int given = 0; given <= count; ++given) {
                LogRecorder recorder;
                ArgfileReader reader(&recorder);
                const bool enough = given == count;
                QCOMPARE(reader.checkOptionSignatures(arguments),
                         enough ? arguments : QStringList());
                QCOMPARE(recorder.messages.isEmpty(), enough);
                arguments.append(QStringLiteral("x"));
            }
            LogRecorder recorder;
            ArgfileReader reader(&recorder);
            reader.checkOptionSignatures(arguments);
            QCOMPARE(recorder.texts(), QStringList({QStringLiteral("unknown option found: x")}));
        }
    }
}

void TestArgfileReader::optionsHaveTheirEffects_data()
{
    QTest::addColumn<QString>("arguments");
    QTest::addColumn<QString>("changed");

    const auto row = [](const char* arguments, const char* changed) {
        QTest::newRow(arguments) << arguments << changed;
    };
    row("--debug", "debugMode=1");
    row("--stdin", "");
    row("--verbose", "verbosity=2");
    row("-v", "verbosity=2");
    row("--quiet", "verbosity=0");
    row("-q", "verbosity=0");
    row("-q -v", "verbosity=2");
    row("-v -q", "verbosity=0");
    row("--pretend", "pretend=1");
    row("-p", "pretend=1");
    row("--version", "showVersion=1");
    row("-V", "showVersion=1");
    row("--help", "showHelp=1");
    row("-h", "showHelp=1");
    row("--firstpage x", "firstpage=x");
    row("-1 x", "firstpage=x");
    row("--readme x", "readme=x");
    row("-r x", "readme=x");
    row("--append-to-lorixfile x", "rootIsOptional=1 rootfile=x output=x");
    row("-A x", "rootIsOptional=1 rootfile=x output=x");
    row("-O x -O y", "output=x output=y");
    row("-J x", "rootIsOptional=1 rootfile=x");
    row("-I x", "rootfile=x");
    row("-J x -I y", "rootfile=y");
    row("-I x -J y", "rootIsOptional=1 rootfile=y");
    row("--step-user k v", "user_attribute_k=v");
    row("-U k v -U k w", "user_attribute_k=w user_attribute_k=w");
    row("--step title x", "title=x");
    row("-s description x", "description=x");
    row("-s comment x", "comment=x");
    row("-s tool x", "tool=x");
    row("-s toolversion x", "tool=x");
    row("-s toolpath x", "toolpath=x");
    row("-s host x", "host=x");
    row("-s user x", "user=x");
    row("-s command -q", "command=-q");
    row("-s title x -s title y", "title=y");
    row("--doc title x", "pdfTitle=x");
    row("-d producer x", "pdfProducer=x");
    row("-d creator x", "pdfCreator=x");
    row("-d author x", "pdfAuthor=x");
    row("-d keywords x", "pdfKeywords=x");
    row("-d subject x", "pdfSubject=x");
}

void TestArgfileReader::optionsHaveTheirEffects()
{
    QFETCH(QString, arguments);
    QFETCH(QString, changed);
    LogRecorder recorder;
    ArgfileReader reader(&recorder);
    QStringList fields = fieldsOf(reader.parseCommandline(words(qPrintable(arguments))));
    const QStringList defaults = fieldsOf(ArgFile());
    for (const QString& field : defaults)
        fields.removeOne(field);
    QCOMPARE(fields.replaceInStrings(QStringLiteral("user attribute "),
                                     QStringLiteral("user_attribute_")),
             words(qPrintable(changed)));
    QCOMPARE(recorder.messages, Messages());
}

void TestArgfileReader::complaintsAreLogged_data()
{
    QTest::addColumn<QString>("arguments");
    QTest::addColumn<Messages>("messages");

    const auto row = [](const char* arguments, const Messages& messages) {
        QTest::newRow(arguments) << arguments << messages;
    };
    row("-q --sync-cwd -p", message("invalid option (--sync-cwd) found", 0));
    row("-q -c file -p",
        message("invalid option (-c) found", 0) + message("invalid option (file) found", 0));
    // The parameter of -c is looked at as an option in its turn.
    row("-q -c -p", message("invalid option (-c) found", 0));
    row("-q bogus -p", message("invalid option (bogus) found", 0));
    row("-q -i a -f bogus -p", message("\"bogus\" is no valid parameter for option -f", 2));
    row("-q -i a --file-flag no-bogus -p",
        message("\"no-bogus\" is no valid parameter for option --file-flag", 2));
    row("-q -i a -f no-no-embed -p",
        message("\"no-no-embed\" is no valid parameter for option -f", 2));
    row("-q -i a -f Embed -p", message("\"Embed\" is no valid parameter for option -f", 2));
    row("-q -i a -a bogus x -p", message("first parameter (bogus) of option -a is invalid", 2));
    row("-q -i a --file-attr Comment x -p",
        message("first parameter (Comment) of option --file-attr is invalid", 2));
    row("-q -s bogus x -p", message("first parameter (bogus) of option -s is invalid", 2));
    row("-q --step filetype x -p",
        message("first parameter (filetype) of option --step is invalid", 2));
    row("-q -d host x -p", message("first parameter (host) of option -d is invalid", 2));
    row("-q --doc Title x -p", message("first parameter (Title) of option --doc is invalid", 2));
}

void TestArgfileReader::complaintsAreLogged()
{
    QFETCH(QString, arguments);
    QFETCH(Messages, messages);
    LogRecorder recorder;
    ArgfileReader reader(&recorder);
    ArgFile argfile = reader.parseCommandline(words(qPrintable(arguments)));
    QCOMPARE(recorder.messages, messages);

    // What stands before and after is read all the same.
    ArgFile expected;
    expected.setVerbosity(Quiet);
    expected.setPretend(true);
    argfile.clearFilelist();
    QCOMPARE(fieldsOf(argfile), fieldsOf(expected));
}

void TestArgfileReader::fileOptionsMeanTheLastFile()
{
    LogRecorder recorder;
    ArgfileReader reader(&recorder);
    const ArgFile argfile = reader.parseCommandline(
        words("-i d/a -f no-embed -a comment one -u k v --outfile b --file-flag compress "
              "--file-attr filetype two --file-user l w -f no-compress -u l x --infile /c -o e"));
    QCOMPARE(recorder.messages, Messages());

    WSFile a;
    a.setFilenameAndPath(QStringLiteral("d/a"));
    a.setEmbed(false);
    a.setComment(QStringLiteral("one"));
    a.addUserAttribute(QStringLiteral("k"), QStringLiteral("v"));
    WSFile b;
    b.setFilenameAndPath(QStringLiteral("b"));
    b.setInputFile(false);
    b.setFiletype(QStringLiteral("two"));
    b.addUserAttribute(QStringLiteral("l"), QStringLiteral("w"));
    b.addUserAttribute(QStringLiteral("l"), QStringLiteral("x"));
    WSFile c;
    c.setFilenameAndPath(QStringLiteral("/c"));
    WSFile e;
    e.setFilenameAndPath(QStringLiteral("e"));
    e.setInputFile(false);
    ArgFile expected;
    for (const WSFile& file : {a, b, c, e})
        expected.addFile(file);
    QCOMPARE(fieldsOf(argfile), fieldsOf(expected));
    QVERIFY(*argfile.getConstFile(0) == a);
}

void TestArgfileReader::fileOptionsBeforeAnyFileAreIgnored()
{
    LogRecorder recorder;
    ArgfileReader reader(&recorder);
    const ArgFile argfile = reader.parseCommandline(
        words("-f no-embed -f bogus -a comment x -a bogus x -u -q -p -i a"));
    QCOMPARE(recorder.messages, Messages());
    ArgFile expected;
    WSFile a;
    a.setFilenameAndPath(QStringLiteral("a"));
    expected.addFile(a);
    QCOMPARE(fieldsOf(argfile), fieldsOf(expected));
}

void TestArgfileReader::cutOffOptionsAreIgnored()
{
    for (const char* option : {"-O", "-i", "-s", "-U", "-d", "-1", "-A", "-u", "-a", "-f"}) {
        LogRecorder recorder;
        ArgfileReader reader(&recorder);
        QCOMPARE(fieldsOf(reader.parseCommandline(words(option))), fieldsOf(ArgFile()));
        QCOMPARE(recorder.messages, Messages());
    }
    ArgfileReader reader;
    QCOMPARE(fieldsOf(reader.parseCommandline(words("-q -s title"))),
             fieldsOf(reader.parseCommandline(words("-q"))));
}

void TestArgfileReader::flagsAreSaved_data()
{
    QTest::addColumn<QString>("flag");
    QTest::addColumn<QString>("field");

    for (const char* flag : {"optional", "compress", "embed", "preview", "thumbnail"})
        QTest::newRow(flag) << flag << flag;
    QTest::newRow("thumbnailonly") << "thumbnailonly"
                                   << "thumbnailOnly";
    QTest::newRow("previewws") << "previewws"
                               << "previewWS";
    QTest::newRow("automd5") << "automd5"
                             << "autoMD5";
}

void TestArgfileReader::flagsAreSaved()
{
    QFETCH(QString, flag);
    QFETCH(QString, field);
    LogRecorder recorder;
    ArgfileReader reader(&recorder);
    WSFile file;
    const QString option = QStringLiteral("-f");
    const QStringList others =
        QStringList(fieldsOf(file))
            .filter(QRegularExpression(QStringLiteral("^(?!%1=)").arg(field)));
    reader.saveFileFlag(option, {flag}, 0, &file);
    QVERIFY(fieldsOf(file).contains(field + QStringLiteral("=1")));
    reader.saveFileFlag(option, {QStringLiteral("no-") + flag}, 0, file);
    QVERIFY(fieldsOf(file).contains(field + QStringLiteral("=0")));
    QCOMPARE(fieldsOf(file).filter(QRegularExpression(QStringLiteral("^(?!%1=)").arg(field))),
             others);
    QCOMPARE(recorder.messages, Messages());
}

void TestArgfileReader::attributesAreSaved_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("field");

    QTest::newRow("comment") << "comment"
                             << "comment=x";
    QTest::newRow("md5file") << "md5file"
                             << "md5File=x";
    QTest::newRow("filetype") << "filetype"
                              << "filetype=x";
    QTest::newRow("description") << "description"
                                 << "description=x";
}

void TestArgfileReader::attributesAreSaved()
{
    QFETCH(QString, name);
    QFETCH(QString, field);
    LogRecorder recorder;
    ArgfileReader reader(&recorder);
    WSFile file;
    reader.saveFileAttr(QStringLiteral("-a"), {name, QStringLiteral("x")}, 0, &file);
    QStringList fields = fieldsOf(file);
    QCOMPARE(fields.removeAll(field), 1);
    QCOMPARE(fields.size(), fieldsOf(WSFile()).size() - 1);
    for (const QString& other : qAsConst(fields))
        QVERIFY(fieldsOf(WSFile()).contains(other));
    QCOMPARE(recorder.messages, Messages());
}

void TestArgfileReader::parametersAreTakenAtTheIndex()
{
    LogRecorder recorder;
    ArgfileReader reader(&recorder);
    const QString option = QStringLiteral("-x");
    const QStringList arguments = words("title one comment two");
    ArgFile argfile;
    reader.saveStepAttr(option, arguments, 2, &argfile);
    QCOMPARE(argfile.comment(), QStringLiteral("two"));
    QCOMPARE(argfile.title(), QString());
    reader.saveDocAttr(option, arguments, 0, argfile);
    QCOMPARE(argfile.pdfTitle(), QStringLiteral("one"));
    reader.saveStepAttr(option, arguments, 1, argfile);
    QCOMPARE(recorder.messages, message("first parameter (one) of option -x is invalid", 2));
    recorder.messages.clear();

    const QStringList before = fieldsOf(argfile);
    for (const int outside : {-1, 3, 4, 100}) {
        reader.saveStepAttr(option, arguments, outside, &argfile);
        reader.saveDocAttr(option, arguments, outside, &argfile);
    }
    WSFile file;
    reader.saveFileAttr(option, arguments, 3, &file);
    reader.saveFileFlag(option, arguments, 4, &file);
    reader.saveFileFlag(option, arguments, 0, nullptr);
    QCOMPARE(fieldsOf(argfile), before);
    QVERIFY(file == WSFile());
    QCOMPARE(recorder.messages, Messages());
}

void TestArgfileReader::messagesKeepPlaceholdersInTheirParts()
{
    LogRecorder recorder;
    ArgfileReader reader(&recorder);
    reader.parseCommandline(words("-i a -f %2%1 -a %2 x %1"));
    QCOMPARE(recorder.texts(),
             QStringList({QStringLiteral("\"%2%1\" is no valid parameter for option -f"),
                          QStringLiteral("first parameter (%2) of option -a is invalid"),
                          QStringLiteral("invalid option (%1) found")}));
}

void TestArgfileReader::argumentFileIsRead()
{
    LogRecorder recorder;
    ArgfileReader reader(&recorder);
    const QHash<QString, QString> variables{{QStringLiteral("out"), QStringLiteral("a b.pdf")}};
    const ArgFile argfile = reader.readArgfile(
        QStringLiteral("# add a step\n-A $out -s title 'two words'\n-i ${out} -s title"),
        &variables);
    ArgFile expected(QStringLiteral("a b.pdf"), QStringLiteral("a b.pdf"));
    expected.setRootIsOptional(true);
    expected.setTitle(QStringLiteral("two words"));
    WSFile file;
    file.setFilenameAndPath(QStringLiteral("a b.pdf"));
    expected.addFile(file);
    QCOMPARE(fieldsOf(argfile), fieldsOf(expected));
    QCOMPARE(recorder.messages, message("not enough parameters for option: -s", 2));

    QCOMPARE(reader.readArgfile(QStringLiteral("-O $out"), nullptr).outputLorixfile(0),
             QStringLiteral("$out"));
}

void TestArgfileReader::unsplittableTextGivesDefault()
{
    LogRecorder recorder;
    ArgfileReader reader(&recorder);
    QCOMPARE(fieldsOf(reader.readArgfile(QStringLiteral("-q -s title it's"), nullptr)),
             fieldsOf(ArgFile()));
    QCOMPARE(recorder.messages, Messages());
}

void TestArgfileReader::stringsComeBackExactlyAsDocumented()
{
    Strings strings(63001);
    int failing = 0;
    const int runs = randomRuns(20000);
    for (int run = 0; run < runs; ++run) {
        const QString string = strings.any();
        const QStringList kept = ArgfileParser::parseArgfile(quoteString(string, true), nullptr);
        QCOMPARE(kept == QStringList({string}), readsBack(string));
        failing += readsBack(string) ? 0 : 1;
        if (!readsBack(string))
            continue;
        const QString doubled = QString(string).replace(u'$', QStringLiteral("$$"));
        const QHash<QString, QString> none;
        QCOMPARE(ArgfileParser::parseArgfile(quoteString(string, false), nullptr),
                 QStringList({doubled}));
        QCOMPARE(ArgfileParser::parseArgfile(quoteString(string, false), &none),
                 QStringList({doubled}));
    }
    QVERIFY(failing > runs / 20 && failing < runs / 2);
}

void TestArgfileReader::randomInvocationsComeBack()
{
    Strings strings(63002);
    const int runs = randomRuns(10000);
    for (int run = 0; run < runs; ++run) {
        const ArgFile argfile = randomArgFile(strings);
        LogRecorder recorder;
        ArgfileReader reader(&recorder);
        const ArgFile back = reader.readArgfile(argfile.toCommandline(true), nullptr);
        QCOMPARE(recorder.messages, Messages());
        QCOMPARE(fieldsOf(back), fieldsOf(argfile));
        QCOMPARE(back.toCommandline(true), argfile.toCommandline(true));
    }
}

void TestArgfileReader::variablesComeBackAsTheirValues()
{
    ArgFile argfile;
    argfile.setTitle(QStringLiteral("$a and $$a"));
    argfile.setComment(QStringLiteral("${a}"));
    const QHash<QString, QString> variables{{QStringLiteral("a"), QStringLiteral("it's $1 \\")}};
    ArgfileReader reader;
    const ArgFile kept = reader.readArgfile(argfile.toCommandline(true), &variables);
    QCOMPARE(kept.title(), QStringLiteral("it's $$1 \\ and $$a"));
    QCOMPARE(kept.comment(), QStringLiteral("it's $$1 \\"));
    const ArgFile escaped = reader.readArgfile(argfile.toCommandline(false), &variables);
    QCOMPARE(escaped.title(), QStringLiteral("$$a and $$$$a"));
    QCOMPARE(escaped.comment(), QStringLiteral("$${a}"));
}

void TestArgfileReader::readerNeedsNoReceiver()
{
    ArgfileReader reader(nullptr);
    QCOMPARE(reader.checkOptionSignatures(words("-q bogus")), words("-q"));
    QCOMPARE(reader.parent(), nullptr);
}

QTEST_GUILESS_MAIN(TestArgfileReader)
#include "tst_argfilereader.moc"
