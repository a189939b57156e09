// SPDX-License-Identifier: BSD-3-Clause
#include <lorix/summary/summaryreader.h>
#include <summary/plainsummary.h>
#include <support/debugrecorder.h>

#include <QDebug>
#include <QTest>

using namespace lorix;

namespace {

using Texts = QHash<QString, QString>;

QString element(const char* tag, const QString& content)
{
    return QStringLiteral("<%1>%2</%1>").arg(QLatin1String(tag), content);
}

QString whole(const QString& step)
{
    return element("loxchange", element("Workflowstep", step));
}

// Every field that differs from its default, as "field=value".
template <typename Record>
QStringList attributesSet(const Record& record)
{
    QStringList set;
    for (const QString& key : record.userAttributeKeys) {
        QString entry =
            QStringLiteral("attribute %1=%2").arg(key, record.userAttributes.value(key));
        if (record.userAttributeUnits.contains(key))
            entry += QLatin1Char(' ') + record.userAttributeUnits.value(key);
        set.append(entry);
    }
    return set;
}

QStringList fieldsSet(const FileSummary& file)
{
    QStringList set;
    const auto text = [&set](const char* name, const QString& value) {
        if (!value.isEmpty())
            set.append(QLatin1String(name) + QLatin1Char('=') + value);
    };
    const auto flag = [&set](const char* name, bool value) {
        if (value)
            set.append(QLatin1String(name));
    };
    text("filename", file.filename);
    text("filepath", file.filepath);
    text("filetype", file.filetype);
    text("description", file.description);
    text("comment", file.comment);
    text("lastModified", file.lastModified);
    text("uncompressedMD5", file.uncompressedMD5);
    text("compressedMethod", file.compressedMethod);
    text("compressedMD5", file.compressedMD5);
    flag("generateMD5", file.generateMD5);
    flag("embedded", file.embedded);
    flag("preview", file.preview);
    flag("previewWS", file.previewWS);
    flag("thumbnail", file.thumbnail);
    flag("thumbnailOnly", file.thumbnailOnly);
    if (file.uncompressedSize != -1)
        set.append(QStringLiteral("uncompressedSize=%1").arg(file.uncompressedSize));
    if (file.compressedSize != -1)
        set.append(QStringLiteral("compressedSize=%1").arg(file.compressedSize));
    return set + attributesSet(file);
}

QStringList fieldsSet(const Workflowstep& step)
{
    QStringList set;
    const auto text = [&set](const char* name, const QString& value) {
        if (!value.isEmpty())
            set.append(QLatin1String(name) + QLatin1Char('=') + value);
    };
    text("lorixRootFile", step.lorixRootFile);
    text("timestamp", step.timestamp);
    text("title", step.title);
    text("description", step.description);
    text("comment", step.comment);
    text("command", step.command);
    text("tool", step.tool);
    text("toolPath", step.toolPath);
    text("host", step.host);
    text("user", step.user);
    text("creator", step.creator);
    text("pdfTitle", step.pdfTitle);
    text("pdfAuthor", step.pdfAuthor);
    text("pdfSubject", step.pdfSubject);
    text("pdfKeywords", step.pdfKeywords);
    text("pdfProducer", step.pdfProducer);
    text("pdfCreator", step.pdfCreator);
    set += attributesSet(step);
    for (const FileSummary& file : step.files)
        set.append(file.filePurpose +
                   QStringLiteral("(%1)").arg(fieldsSet(file).join(QStringLiteral(", "))));
    return set;
}

// Everything in a summary, hashes in a fixed order.
QStringList everything(const Summary& summary)
{
    QStringList all = fieldsSet(summary);
    all.append({summary.md5, QString::number(summary.tagId), QString::number(summary.fromXml)});
    for (const FileSummary& file : summary.files) {
        all.append({QString::number(file.tagId), QString::number(file.fromTags)});
        all.append({QString::number(file.userAttributes.size()),
                    QString::number(file.userAttributeUnits.size())});
    }
    all.append({QString::number(summary.userAttributes.size()),
                QString::number(summary.userAttributeUnits.size())});
    return all;
}

// Reads the text both ways, compares records and debug lines, and returns the
// fields that were found.
QStringList plainWayFinds(const QString& text, DebugRecorder& debug)
{
    QStringList unknown;
    const Summary expected = plain::readSummary(text, unknown);
    QStringList lines;
    for (int i = 0; i < unknown.size(); i += 3) {
        QString escaped;
        QDebug(&escaped).nospace() << unknown.at(i + 1) << " : " << unknown.at(i + 2);
        lines.append(QStringLiteral("unknown tag (%1): %2").arg(unknown.at(i), escaped));
    }
    debug.take();
    const Summary found = SummaryReader().readSummary(text);
    if (everything(found) != everything(expected) || debug.take() != lines)
        QTest::qFail(qPrintable(text), __FILE__, __LINE__);
    return fieldsSet(found);
}

QString attribute(const QString& key, const QString& value)
{
    return element("Attribute", element("Key", key) + element("Value", value));
}

QString attribute(const QString& key, const QString& value, const QString& unit)
{
    return element("Attribute",
                   element("Key", key) + element("Value", value) + element("Unit", unit));
}

} // namespace

class TestSummaryReader : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void wholeSummaryIsRead();
    void everyStepFieldHasItsElement_data();
    void everyStepFieldHasItsElement();
    void everyFileFieldHasItsElement_data();
    void everyFileFieldHasItsElement();
    void rootIsTheFirstLoxchange_data();
    void rootIsTheFirstLoxchange();
    void piecesKeepTheirOwnDefaults();
    void filesComeInDocumentOrderWithTheirPurpose();
    void filesTakeNothingFromTheFileBefore();
    void stepReplacesTheStepBefore();
    void malformedTextLeavesWhatCameBefore_data();
    void malformedTextLeavesWhatCameBefore();
    void attributesHaveValuesKeysAndUnits();
    void repeatedKeyOverwritesValueAndIsListedAgain();
    void attributeWithoutUnitHasANullUnit_data();
    void attributeWithoutUnitHasANullUnit();
    void entitiesStayAsTheyAre();
    void unknownElementsAreReportedOneLineEach();
    void nestedFileIsOneUnknownElementOfTheOuter();
    void readerKeepsNothingBetweenCalls();
    void randomTextsReadAsThePlainWay_data();
    void randomTextsReadAsThePlainWay();
    void damagedSummariesReadAsThePlainWay_data();
    void damagedSummariesReadAsThePlainWay();
    void largeSummariesAreReadInOneGo_data();
    void largeSummariesAreReadInOneGo();
};

void TestSummaryReader::wholeSummaryIsRead()
{
    const QString xml =
        QStringLiteral("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
                       "<!-- written by hand -->\n"
                       "<loxchange>\n"
                       "  <Workflowstep>\n"
                       "    <Title>Mesh</Title>\n"
                       "    <!-- <Title>no</Title> -->\n"
                       "    <InFile>\n"
                       "      <Filename>a.dat</Filename><Embedded>1</Embedded>\n"
                       "      <UncompressedSize>12</UncompressedSize>\n"
                       "    </InFile>\n"
                       "    <UserAttributes>\n") +
        attribute(QStringLiteral("speed"), QStringLiteral("12"), QStringLiteral("m/s")) +
        QStringLiteral("    </UserAttributes>\n"
                       "  </Workflowstep>\n"
                       "  <MD5Signature>00ff</MD5Signature>\n"
                       "</loxchange>\n");
    const Summary summary = SummaryReader().readSummary(xml);
    QCOMPARE(fieldsSet(summary),
             QStringList({"title=Mesh", "attribute speed=12 m/s",
                          "InFile(filename=a.dat, embedded, uncompressedSize=12)"}));
    QCOMPARE(summary.md5, QStringLiteral("00ff"));
    QCOMPARE(summary.tagId, -1);
    QVERIFY(summary.fromXml);
    QCOMPARE(summary.files.at(0).tagId, -1);
    QVERIFY(!summary.files.at(0).fromTags);
}

void TestSummaryReader::everyStepFieldHasItsElement_data()
{
    QTest::addColumn<QString>("field");
    const char* const fields[][2] = {{"LorixRootFile", "lorixRootFile"},
                                     {"Timestamp", "timestamp"},
                                     {"Title", "title"},
                                     {"Description", "description"},
                                     {"Comment", "comment"},
                                     {"Command", "command"},
                                     {"Tool", "tool"},
                                     {"ToolPath", "toolPath"},
                                     {"Host", "host"},
                                     {"User", "user"},
                                     {"Creator", "creator"},
                                     {"PDFTitle", "pdfTitle"},
                                     {"PDFAuthor", "pdfAuthor"},
                                     {"PDFSubject", "pdfSubject"},
                                     {"PDFKeywords", "pdfKeywords"},
                                     {"PDFProducer", "pdfProducer"},
                                     {"PDFCreator", "pdfCreator"}};
    for (const auto& field : fields)
        QTest::newRow(field[0]) << QString(QLatin1String(field[1]));
}

void TestSummaryReader::everyStepFieldHasItsElement()
{
    QFETCH(QString, field);
    const char* const tag = QTest::currentDataTag();
    const SummaryReader reader;
    QCOMPARE(fieldsSet(reader.parseWorkflowstep(element(tag, QStringLiteral(" x <y> ")))),
             QStringList{field + QStringLiteral("= x <y> ")});
    const QString twice = element(tag, QStringLiteral("1")) + element(tag, QStringLiteral("2"));
    QCOMPARE(fieldsSet(reader.parseWorkflowstep(twice)), QStringList{field + QStringLiteral("=2")});
    const QString emptied =
        element(tag, QStringLiteral("1")) + QStringLiteral("<%1/>").arg(QLatin1String(tag));
    QCOMPARE(fieldsSet(reader.parseWorkflowstep(emptied)), QStringList());
    QCOMPARE(fieldsSet(reader.parseWorkflowstep(element(tag, QString()))), QStringList());
}

void TestSummaryReader::everyFileFieldHasItsElement_data()
{
    QTest::addColumn<QString>("content");
    QTest::addColumn<QStringList>("set");

    const char* const texts[][2] = {{"Filename", "filename"},
                                    {"Filepath", "filepath"},
                                    {"Filetype", "filetype"},
                                    {"Description", "description"},
                                    {"Comment", "comment"},
                                    {"LastModified", "lastModified"},
                                    {"UncompressedMD5", "uncompressedMD5"},
                                    {"CompressedMethod", "compressedMethod"},
                                    {"CompressedMD5", "compressedMD5"}};
    for (const auto& text : texts)
        QTest::newRow(text[0]) << element(text[0], QStringLiteral("x"))
                               << QStringList{QLatin1String(text[1]) + QStringLiteral("=x")};
    const char* const flags[][2] = {
        {"GenerateMD5", "generateMD5"}, {"Embedded", "embedded"},
        {"Preview", "preview"},         {"PreviewWS", "previewWS"},
        {"Thumbnail", "thumbnail"},     {"ThumbnailOnly", "thumbnailOnly"}};
    for (const auto& flag : flags) {
        const QStringList set{QLatin1String(flag[1])};
        const char* const values[] = {"1", "-1", "42"};
        for (const char* value : values)
            QTest::addRow("%s %s", flag[0], value) << element(flag[0], QLatin1String(value)) << set;
        const char* const falseValues[] = {"0", "true", ""};
        for (const char* value : falseValues)
            QTest::addRow("%s %s after 1", flag[0], value)
                << element(flag[0], QStringLiteral("1")) + element(flag[0], QLatin1String(value))
                << QStringList();
    }
    const char* const sizes[][2] = {{"UncompressedSize", "uncompressedSize"},
                                    {"CompressedSize", "compressedSize"}};
    for (const auto& size : sizes) {
        QTest::addRow("%s", size[0]) << element(size[0], QStringLiteral("12"))
                                     << QStringList{QLatin1String(size[1]) + QStringLiteral("=12")};
        const char* const numberless[] = {"12a", "", "-1", "2147483648"};
        for (const char* value : numberless)
            QTest::addRow("%s %s after 12", size[0], value)
                << element(size[0], QStringLiteral("12")) + element(size[0], QLatin1String(value))
                << QStringList();
    }
    QTest::newRow("UserAttributes")
        << element("UserAttributes", attribute(QStringLiteral("k"), QStringLiteral("v")))
        << QStringList{"attribute k=v"};
}

void TestSummaryReader::everyFileFieldHasItsElement()
{
    QFETCH(QString, content);
    QTEST(fieldsSet(SummaryReader().parseFile(content)), "set");
}

void TestSummaryReader::rootIsTheFirstLoxchange_data()
{
    QTest::addColumn<QString>("xml");
    QTest::addColumn<bool>("fromXml");
    QTest::addColumn<QString>("md5");

    const QString signature = QStringLiteral("<MD5Signature>1</MD5Signature>");
    QTest::newRow("empty text") << "" << false << "";
    QTest::newRow("no root") << signature << false << "";
    QTest::newRow("other root") << element("Loxchange", signature) << false << "";
    QTest::newRow("root with attribute")
        << "<loxchange version=\"1\">" + signature + "</loxchange>" << false << "";
    QTest::newRow("root not closed") << "<loxchange>" + signature << false << "";
    QTest::newRow("root deeper") << element("a", element("loxchange", signature)) << false << "";
    QTest::newRow("root without children") << "<loxchange></loxchange>" << true << "";
    QTest::newRow("root self-closing") << "<loxchange/>" << true << "";
    QTest::newRow("root alone") << element("loxchange", signature) << true << "1";
    QTest::newRow("others before")
        << element("a", signature) + "<b/>x" + element("loxchange", signature) << true << "1";
    QTest::newRow("two roots") << "<loxchange/>" + element("loxchange", signature) << true << "";
    QTest::newRow("declaration and comment before")
        << "<?xml version=\"1.0\"?><!-- <loxchange/> -->" + element("loxchange", signature) << true
        << "1";
    QTest::newRow("closing tag before") << "</a>" + element("loxchange", signature) << false << "";
    QTest::newRow("byte order mark before")
        << QChar(0xfeff) + element("loxchange", signature) << true << "1";
}

void TestSummaryReader::rootIsTheFirstLoxchange()
{
    QFETCH(QString, xml);
    QFETCH(bool, fromXml);
    const Summary summary = SummaryReader().readSummary(xml);
    QCOMPARE(summary.fromXml, fromXml);
    QTEST(summary.md5, "md5");
    QCOMPARE(summary.tagId, 0);
    QCOMPARE(fieldsSet(summary), QStringList());
}

void TestSummaryReader::piecesKeepTheirOwnDefaults()
{
    const SummaryReader reader;
    QCOMPARE(reader.parseSummary(QString()).tagId, 0);
    QVERIFY(reader.parseSummary(QString()).fromXml);
    QCOMPARE(reader.parseSummary(QStringLiteral("<Workflowstep/>")).tagId, -1);
    QCOMPARE(reader.parseWorkflowstep(QString()).tagId, -1);
    const FileSummary file = reader.parseFile(QString());
    QCOMPARE(file.tagId, -1);
    QVERIFY(!file.fromTags);
    QCOMPARE(file.filePurpose, QStringLiteral("Undefined"));
    QCOMPARE(fieldsSet(file), QStringList());
    const auto attributes = reader.parseUserAttributes(QString());
    QVERIFY(attributes.first.isEmpty() && attributes.second.isEmpty());
    QVERIFY(attributes.third.isEmpty());
}

void TestSummaryReader::filesComeInDocumentOrderWithTheirPurpose()
{
    const Workflowstep step = SummaryReader().parseWorkflowstep(
        QStringLiteral("<OutFile><Filename>a</Filename></OutFile><Title>t</Title>"
                       "<InFile><Filename>b</Filename></InFile><InFile/>"
                       "<OutFile><Filename>a</Filename></OutFile>"));
    QCOMPARE(fieldsSet(step), QStringList({"title=t", "OutFile(filename=a)", "InFile(filename=b)",
                                           "InFile()", "OutFile(filename=a)"}));
}

void TestSummaryReader::filesTakeNothingFromTheFileBefore()
{
    Workflowstep step = SummaryReader().parseWorkflowstep(
        "<InFile><Filename>a</Filename><Filetype>text</Filetype><Comment>c</Comment>"
        "<Filepath>/x</Filepath></InFile>"
        "<InFile><Filename>b</Filename><Filetype>text</Filetype><Comment></Comment></InFile>"
        "<OutFile><Filename>b</Filename><Filetype>texts</Filetype><Filepath>/x</Filepath></"
        "OutFile>");
    QCOMPARE(step.files.size(), 3);
    const auto texts = [&step](QString FileSummary::*member) {
        return QStringList{step.files[0].*member, step.files[1].*member, step.files[2].*member};
    };
    QCOMPARE(texts(&FileSummary::filename), QStringList({"a", "b", "b"}));
    QCOMPARE(texts(&FileSummary::filetype), QStringList({"text", "text", "texts"}));
    QCOMPARE(texts(&FileSummary::comment), QStringList({"c", "", ""}));
    QCOMPARE(texts(&FileSummary::filepath), QStringList({"/x", "", "/x"}));
    step.files[0].filetype += "!";
    QCOMPARE(texts(&FileSummary::filetype), QStringList({"text!", "text", "texts"}));
}

void TestSummaryReader::stepReplacesTheStepBefore()
{
    const Summary summary = SummaryReader().parseSummary(
        QStringLiteral("<MD5Signature>1</MD5Signature>"
                       "<Workflowstep><Title>a</Title><Host>h</Host><InFile/></Workflowstep>"
                       "<Workflowstep><Title>b</Title></Workflowstep>"));
    QCOMPARE(fieldsSet(summary), QStringList{"title=b"});
    QCOMPARE(summary.md5, QStringLiteral("1"));
}

void TestSummaryReader::malformedTextLeavesWhatCameBefore_data()
{
    QTest::addColumn<QString>("xml");
    QTest::addColumn<QStringList>("set");

    const QString before = QStringLiteral("<Title>t</Title><Host>h</Host>");
    const QString after = QStringLiteral("<User>u</User>");
    const QStringList survivors{"title=t", "host=h"};
    const QStringList all{"title=t", "host=h", "user=u"};
    QTest::newRow("well-formed") << whole(before + after) << all;
    QTest::newRow("unterminated comment") << whole(before + "<!-- " + after) << survivors;
    QTest::newRow("unterminated instruction") << whole(before + "<? " + after) << survivors;
    QTest::newRow("< at the end") << whole(before + after + "<") << all;
    QTest::newRow("< alone swallows the next tag") << whole(before + "<" + after) << survivors;
    QTest::newRow("> alone is text") << whole(before + ">" + after) << all;
    QTest::newRow("closing tag first") << whole("</Title>" + before + after) << QStringList();
    QTest::newRow("closing tag between") << whole(before + "</Tool>" + after) << survivors;
    QTest::newRow("attribute in a tag")
        << whole(before + "<Tool id=\"1\">x</Tool>" + after) << survivors;
    QTest::newRow("attribute in an empty tag") << whole(before + "<Tool id=\"1\"/>" + after) << all;
    QTest::newRow("blank in a tag") << whole(before + "<Tool >x</Tool>" + after) << survivors;
    QTest::newRow("not closed") << whole(before + "<Tool>" + after) << survivors;
    QTest::newRow("closed in other case") << whole(before + "<Tool>x</tool>" + after) << survivors;
    QTest::newRow("nested same names three deep")
        << whole(before + "<Tool>1<Tool>2<Tool>3</Tool></Tool></Tool>" + after)
        << QStringList{"title=t", "tool=1<Tool>2<Tool>3</Tool></Tool>", "host=h", "user=u"};
    QTest::newRow("nested same names, one open")
        << whole(before + "<Tool>1<Tool>2<Tool>3</Tool></Tool>" + after) << survivors;
    QTest::newRow("duplicate fields") << whole(before + "<Title>again</Title>" + after)
                                      << QStringList{"title=again", "host=h", "user=u"};
    QTest::newRow("unknown element") << whole(before + "<Other>x</Other>" + after) << all;
    QTest::newRow("empty element name") << whole(before + "<></>" + after) << all;
    QTest::newRow("file not closed")
        << whole(before + "<InFile><Filename>f</Filename>" + after) << survivors;
    QTest::newRow("field of a file not closed")
        << whole(before +
                 "<InFile><Filename>f</Filename><Comment>c<Filetype>t</Filetype></InFile>" + after)
        << all + QStringList{"InFile(filename=f)"};
    QTest::newRow("empty key") << whole("<UserAttributes>" + attribute("", "v") +
                                        "</UserAttributes>")
                               << QStringList{"attribute =v"};
    QTest::newRow("no key") << whole("<UserAttributes><Attribute><Value>v</Value></Attribute>"
                                     "<Attribute/></UserAttributes>")
                            << QStringList{"attribute =", "attribute ="};
    QTest::newRow("attribute not closed")
        << whole("<UserAttributes>" + attribute("k", "v") +
                 "<Attribute><Key>l</Key></UserAttributes>" + after)
        << QStringList{"user=u", "attribute k=v"};
    QTest::newRow("user attributes twice")
        << whole("<UserAttributes>" + attribute("k", "v", "u") +
                 "</UserAttributes><UserAttributes>" + attribute("l", "w") + "</UserAttributes>")
        << QStringList{"attribute l=w"};
    QTest::newRow("step not closed")
        << element("loxchange", "<Workflowstep>" + before) << QStringList();
}

void TestSummaryReader::malformedTextLeavesWhatCameBefore()
{
    QFETCH(QString, xml);
    const DebugRecorder quiet;
    QTEST(fieldsSet(SummaryReader().readSummary(xml)), "set");
}

void TestSummaryReader::attributesHaveValuesKeysAndUnits()
{
    const auto attributes = SummaryReader().parseUserAttributes(
        attribute(QStringLiteral("z"), QStringLiteral("1"), QStringLiteral("mm")) +
        attribute(QStringLiteral("a"), QStringLiteral("2")) +
        attribute(QStringLiteral("m"), QString(), QString()));
    QCOMPARE(attributes.first, Texts({{"z", "1"}, {"a", "2"}, {"m", ""}}));
    QCOMPARE(attributes.second, QStringList({"z", "a", "m"}));
    QCOMPARE(attributes.third, Texts({{"z", "mm"}, {"m", ""}}));
}

void TestSummaryReader::repeatedKeyOverwritesValueAndIsListedAgain()
{
    const auto attributes = SummaryReader().parseUserAttributes(
        attribute(QStringLiteral("k"), QStringLiteral("1"), QStringLiteral("mm")) +
        attribute(QStringLiteral("k"), QStringLiteral("2")) +
        attribute(QStringLiteral("l"), QStringLiteral("3"), QStringLiteral("s")) +
        attribute(QStringLiteral("l"), QStringLiteral("4"), QStringLiteral("h")));
    QCOMPARE(attributes.first, Texts({{"k", "2"}, {"l", "4"}}));
    QCOMPARE(attributes.second, QStringList({"k", "k", "l", "l"}));
    QCOMPARE(attributes.third, Texts({{"k", "mm"}, {"l", "h"}}));
}

void TestSummaryReader::attributeWithoutUnitHasANullUnit_data()
{
    QTest::addColumn<QString>("content");
    QTest::addColumn<QStringList>("keyValueUnit");

    QTest::newRow("nothing") << "" << QStringList{"", ""};
    QTest::newRow("key and value") << "<Key>k</Key><Value>v</Value>" << QStringList{"k", "v"};
    QTest::newRow("unit") << "<Unit>u</Unit><Value>v</Value><Key>k</Key>"
                          << QStringList{"k", "v", "u"};
    QTest::newRow("empty unit") << "<Key>k</Key><Unit/>" << QStringList{"k", "", ""};
    QTest::newRow("duplicates") << "<Key>1</Key><Unit>1</Unit><Value>1</Value>"
                                   "<Key>2</Key><Unit>2</Unit><Value>2</Value>"
                                << QStringList{"2", "2", "2"};
    QTest::newRow("unit not closed") << "<Key>k</Key><Unit>u" << QStringList{"k", ""};
}

void TestSummaryReader::attributeWithoutUnitHasANullUnit()
{
    QFETCH(QString, content);
    const auto attribute = SummaryReader().parseAttribute(content);
    QStringList keyValueUnit{attribute.first, attribute.second};
    if (attribute.third)
        keyValueUnit.append(*attribute.third);
    QTEST(keyValueUnit, "keyValueUnit");
}

void TestSummaryReader::entitiesStayAsTheyAre()
{
    const Summary summary = SummaryReader().readSummary(
        whole(QStringLiteral("<Title>a &lt; b &amp;&amp; &#99; \\] \\n</Title>")));
    QCOMPARE(summary.title, QStringLiteral("a &lt; b &amp;&amp; &#99; \\] \\n"));
}

void TestSummaryReader::unknownElementsAreReportedOneLineEach()
{
    DebugRecorder debug;
    SummaryReader().readSummary(
        QStringLiteral("<Unknown0>x</Unknown0><loxchange><Unknown1>x</Unknown1><Workflowstep>"
                       "<Unknown2>x\ny</Unknown2><title/>"
                       "<InFile><Unknown3><a>x</a></Unknown3></InFile>"
                       "<UserAttributes><Unknown4>x</Unknown4>"
                       "<Attribute><Unknown5 /></Attribute></UserAttributes>"
                       "</Workflowstep></loxchange>"));
    QCOMPARE(
        debug.take(),
        QStringList({QStringLiteral("unknown tag (parseWorkflowstep): \"Unknown2\" : \"x\\ny\""),
                     QStringLiteral("unknown tag (parseWorkflowstep): \"title\" : \"\""),
                     QStringLiteral("unknown tag (ParseFile): \"Unknown3\" : \"<a>x</a>\""),
                     QStringLiteral("unknown tag (parseUserAttributes): \"Unknown4\" : \"x\""),
                     QStringLiteral("unknown tag (parseAttribute): \"Unknown5 \" : \"\"")}));
}

void TestSummaryReader::nestedFileIsOneUnknownElementOfTheOuter()
{
    DebugRecorder debug;
    const Workflowstep step = SummaryReader().parseWorkflowstep(
        QStringLiteral("<InFile><Filename>a</Filename>"
                       "<InFile><Filename>b</Filename></InFile></InFile>"));
    QCOMPARE(fieldsSet(step), QStringList{"InFile(filename=a)"});
    QCOMPARE(debug.take(), QStringList{"unknown tag (ParseFile): \"InFile\" : "
                                       "\"<Filename>b</Filename>\""});
}

void TestSummaryReader::readerKeepsNothingBetweenCalls()
{
    SummaryReader reader;
    const QString full = whole(QStringLiteral("<Title>t</Title><InFile/>"));
    QCOMPARE(everything(reader.readSummary(full)), everything(SummaryReader().readSummary(full)));
    QCOMPARE(everything(reader.readSummary(QString())), everything(Summary()));
    QCOMPARE(everything(reader.readSummary(full)), everything(SummaryReader().readSummary(full)));
}

void TestSummaryReader::randomTextsReadAsThePlainWay_data()
{
    QTest::addColumn<QStringList>("alphabet");
    QTest::addColumn<int>("pieces");

    const QStringList damage{"<", ">", "/", "</", "/>", "<!--", "-->", "<?", "?>", "<a>", "</a>"};
    QTest::newRow("steps") << QStringList{"<Title>",
                                          "</Title>",
                                          "<User>u</User>",
                                          "<Tool/>",
                                          "<InFile>",
                                          "</InFile>",
                                          "<OutFile>",
                                          "</OutFile>",
                                          "<Filename>f</Filename>",
                                          "<Embedded>1</Embedded>",
                                          "<Embedded>x</Embedded>",
                                          "<UserAttributes>",
                                          "</UserAttributes>",
                                          "x"} +
                                  damage
                           << 24;
    QTest::newRow("attributes") << QStringList{"<UserAttributes>",
                                               "</UserAttributes>",
                                               "<Attribute>",
                                               "</Attribute>",
                                               "<Key>k</Key>",
                                               "<Key>",
                                               "</Key>",
                                               "<Value>1</Value>",
                                               "<Value>2</Value>",
                                               "<Unit>u</Unit>",
                                               "<Unit/>",
                                               "<InFile>",
                                               "</InFile>",
                                               "x",
                                               "<"}
                                << 24;
    QTest::newRow("sizes") << QStringList{"<InFile>",
                                          "</InFile>",
                                          "<UncompressedSize>",
                                          "</UncompressedSize>",
                                          "<CompressedSize>12</CompressedSize>",
                                          "1",
                                          "2",
                                          "-",
                                          " ",
                                          "a",
                                          "<Preview>",
                                          "</Preview>",
                                          "99999999",
                                          QString(QChar(0))}
                           << 16;
}

void TestSummaryReader::randomTextsReadAsThePlainWay()
{
    QFETCH(QStringList, alphabet);
    QFETCH(int, pieces);
    QRandomGenerator random(20130621);
    DebugRecorder debug;
    int filled = 0;
    for (int run = plain::runs(20000); run > 0; --run) {
        const QString text = whole(plain::randomText(random, alphabet, pieces));
        filled += !plainWayFinds(text, debug).isEmpty();
        if (QTest::currentTestFailed())
            return;
    }
    QVERIFY(filled > 200);
}

void TestSummaryReader::damagedSummariesReadAsThePlainWay_data()
{
    QTest::addColumn<int>("edits");
    QTest::newRow("sound") << 0;
    QTest::newRow("one edit") << 1;
    QTest::newRow("four edits") << 4;
    QTest::newRow("twenty edits") << 20;
}

void TestSummaryReader::damagedSummariesReadAsThePlainWay()
{
    QFETCH(int, edits);
    QRandomGenerator random(19630101);
    DebugRecorder debug;
    int filled = 0;
    for (int run = plain::runs(10000); run > 0; --run) {
        QString text = QStringLiteral("<?xml version=\"1.0\"?>");
        text += plain::randomElement(random, QString()) + plain::randomElement(random, QString());
        filled += !plainWayFinds(plain::damaged(random, text, edits), debug).isEmpty();
        if (QTest::currentTestFailed())
            return;
    }
    QVERIFY(filled > 200);
}

void TestSummaryReader::largeSummariesAreReadInOneGo_data()
{
    QTest::addColumn<QString>("content");
    QTest::addColumn<int>("files");
    QTest::addColumn<int>("lines");

    QTest::newRow("files") << QStringLiteral("<InFile><Filename>a</Filename>"
                                             "<Embedded>1</Embedded></InFile>")
                                  .repeated(100000)
                           << 100000 << 0;
    QString different;
    for (int i = 0; i < 200000; ++i)
        different += QStringLiteral("<e%1/><f%1></f%1>").arg(i);
    QTest::newRow("different elements") << different + "<InFile/>" << 1 << 400000;
}

void TestSummaryReader::largeSummariesAreReadInOneGo()
{
    QFETCH(QString, content);
    DebugRecorder debug;
    const Summary summary = SummaryReader().readSummary(whole(content));
    QTEST(int(summary.files.size()), "files");
    QTEST(int(debug.take().size()), "lines");
}

QTEST_GUILESS_MAIN(TestSummaryReader)
#include "tst_summaryreader.moc"
