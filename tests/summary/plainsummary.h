// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <lorix/summary/summary.h>

#include <QList>
#include <QRandomGenerator>
#include <QString>

/// A slow and plain reading of summary texts, one search after the other, that
/// the library is compared with on random texts.
namespace plain {

struct Element
{
    QString tag;
    QString content;
    int contentStart = 0;
    int contentEnd = 0;
};

inline QList<Element> elements(const QString& text)
{
    QList<Element> result;
    int position = 0;
    while (true) {
        const int open = int(text.indexOf(QLatin1String("<"), position));
        if (open == -1)
            return result;
        const int close = int(text.indexOf(QLatin1String(">"), open + 1));
        if (close == -1)
            return result;
        if (text[open + 1] == QLatin1Char('!')) {
            const int end = int(text.indexOf(QLatin1String("-->"), open));
            if (end == -1)
                return result;
            position = end + 3;
            continue;
        }
        if (text[open + 1] == QLatin1Char('?')) {
            const int end = int(text.indexOf(QLatin1String("?>"), open));
            if (end == -1)
                return result;
            position = end + 2;
            continue;
        }
        if (text[open + 1] == QLatin1Char('/'))
            return result;

        Element element;
        element.tag = text.mid(open + 1, close - open - 1);
        element.contentStart = element.contentEnd = position = close + 1;
        if (element.tag.endsWith(QLatin1Char('/'))) {
            element.tag.chop(1);
            result.append(element);
            continue;
        }
        const QString opening = QLatin1String("<") + element.tag + QLatin1String(">");
        const QString closing = QLatin1String("</") + element.tag + QLatin1String(">");
        int depth = 1;
        while (depth > 0) {
            const int nextOpening = int(text.indexOf(opening, position));
            const int nextClosing = int(text.indexOf(closing, position));
            if (nextOpening == -1 && nextClosing == -1)
                return result;
            if (nextClosing == -1 || (nextOpening != -1 && nextOpening < nextClosing)) {
                ++depth;
                position = nextOpening + int(opening.size());
            } else {
                --depth;
                element.contentEnd = nextClosing;
                position = nextClosing + int(closing.size());
            }
        }
        element.content = text.mid(element.contentStart, element.contentEnd - element.contentStart);
        result.append(element);
    }
}

inline int number(const QString& text)
{
    bool ok = false;
    const int value = text.toInt(&ok);
    return ok && !text.contains(QChar(0)) ? value : -1;
}

inline bool flag(const QString& text)
{
    bool ok = false;
    const int value = text.toInt(&ok);
    return ok && value != 0 && !text.contains(QChar(0));
}

template <typename Record>
void readUserAttributes(const QString& text, Record& record, QStringList& unknown)
{
    record.userAttributes.clear();
    record.userAttributeUnits.clear();
    record.userAttributeKeys.clear();
    for (const Element& attribute : elements(text)) {
        if (attribute.tag != QLatin1String("Attribute")) {
            unknown << QLatin1String("parseUserAttributes") << attribute.tag << attribute.content;
            continue;
        }
        QString key;
        QString value;
        QStringList units;
        for (const Element& part : elements(attribute.content)) {
            if (part.tag == QLatin1String("Key"))
                key = part.content;
            else if (part.tag == QLatin1String("Value"))
                value = part.content;
            else if (part.tag == QLatin1String("Unit"))
                units.append(part.content);
            else
                unknown << QLatin1String("parseAttribute") << part.tag << part.content;
        }
        record.userAttributes[key] = value;
        record.userAttributeKeys.append(key);
        if (!units.isEmpty())
            record.userAttributeUnits[key] = units.last();
    }
}

inline lorix::FileSummary readFile(const QString& text, QStringList& unknown)
{
    lorix::FileSummary f;
    f.tagId = -1;
    f.fromTags = false;
    for (const Element& e : elements(text)) {
        const QString& t = e.tag;
        const QString& c = e.content;
        if (t == QLatin1String("Filename"))
            f.filename = c;
        else if (t == QLatin1String("Filepath"))
            f.filepath = c;
        else if (t == QLatin1String("Filetype"))
            f.filetype = c;
        else if (t == QLatin1String("Description"))
            f.description = c;
        else if (t == QLatin1String("Comment"))
            f.comment = c;
        else if (t == QLatin1String("LastModified"))
            f.lastModified = c;
        else if (t == QLatin1String("UncompressedMD5"))
            f.uncompressedMD5 = c;
        else if (t == QLatin1String("CompressedMethod"))
            f.compressedMethod = c;
        else if (t == QLatin1String("CompressedMD5"))
            f.compressedMD5 = c;
        else if (t == QLatin1String("GenerateMD5"))
            f.generateMD5 = flag(c);
        else if (t == QLatin1String("Embedded"))
            f.embedded = flag(c);
        else if (t == QLatin1String("Preview"))
            f.preview = flag(c);
        else if (t == QLatin1String("PreviewWS"))
            f.previewWS = flag(c);
        else if (t == QLatin1String("Thumbnail"))
            f.thumbnail = flag(c);
        else if (t == QLatin1String("ThumbnailOnly"))
            f.thumbnailOnly = flag(c);
        else if (t == QLatin1String("UncompressedSize"))
            f.uncompressedSize = number(c);
        else if (t == QLatin1String("CompressedSize"))
            f.compressedSize = number(c);
        else if (t == QLatin1String("UserAttributes"))
            readUserAttributes(c, f, unknown);
        else
            unknown << QLatin1String("ParseFile") << t << c;
    }
    return f;
}

inline lorix::Workflowstep readStep(const QString& text, QStringList& unknown)
{
    lorix::Workflowstep s;
    s.tagId = -1;
    for (const Element& e : elements(text)) {
        const QString& t = e.tag;
        const QString& c = e.content;
        if (t == QLatin1String("LorixRootFile"))
            s.lorixRootFile = c;
        else if (t == QLatin1String("Timestamp"))
            s.timestamp = c;
        else if (t == QLatin1String("Title"))
            s.title = c;
        else if (t == QLatin1String("Description"))
            s.description = c;
        else if (t == QLatin1String("Comment"))
            s.comment = c;
        else if (t == QLatin1String("Command"))
            s.command = c;
        else if (t == QLatin1String("Tool"))
            s.tool = c;
        else if (t == QLatin1String("ToolPath"))
            s.toolPath = c;
        else if (t == QLatin1String("Host"))
            s.host = c;
        else if (t == QLatin1String("User"))
            s.user = c;
        else if (t == QLatin1String("Creator"))
            s.creator = c;
        else if (t == QLatin1String("PDFTitle"))
            s.pdfTitle = c;
        else if (t == QLatin1String("PDFAuthor"))
            s.pdfAuthor = c;
        else if (t == QLatin1String("PDFSubject"))
            s.pdfSubject = c;
        else if (t == QLatin1String("PDFKeywords"))
            s.pdfKeywords = c;
        else if (t == QLatin1String("PDFProducer"))
            s.pdfProducer = c;
        else if (t == QLatin1String("PDFCreator"))
            s.pdfCreator = c;
        else if (t == QLatin1String("InFile") || t == QLatin1String("OutFile")) {
            lorix::FileSummary file = readFile(c, unknown);
            file.filePurpose = t;
            s.files.append(file);
        } else if (t == QLatin1String("UserAttributes"))
            readUserAttributes(c, s, unknown);
        else
            unknown << QLatin1String("parseWorkflowstep") << t << c;
    }
    return s;
}

inline lorix::Summary readSummary(const QString& text, QStringList& unknown)
{
    lorix::Summary result;
    for (const Element& root : elements(text)) {
        if (root.tag != QLatin1String("loxchange"))
            continue;
        for (const Element& e : elements(root.content)) {
            if (e.tag == QLatin1String("Workflowstep"))
                static_cast<lorix::Workflowstep&>(result) = readStep(e.content, unknown);
            else if (e.tag == QLatin1String("MD5Signature"))
                result.md5 = e.content;
        }
        result.fromXml = true;
        break;
    }
    return result;
}

/// Text of up to `pieces` pieces of `alphabet`.
inline QString randomText(QRandomGenerator& random, const QStringList& alphabet, int pieces)
{
    QString text;
    for (int count = random.bounded(pieces + 1); count > 0; --count)
        text += alphabet.at(random.bounded(int(alphabet.size())));
    return text;
}

/// One element with a name that fits into `parent` (or, rarely, does not), and
/// with random content.
inline QString randomElement(QRandomGenerator& random, const QString& parent)
{
    static const QHash<QString, QStringList> children = {
        {"", {"loxchange", "loxchange", "loxchange", "other"}},
        {"loxchange", {"Workflowstep", "Workflowstep", "Workflowstep", "MD5Signature", "other"}},
        {"Workflowstep",
         {"InFile",        "OutFile",    "InFile",    "OutFile",     "UserAttributes",
          "LorixRootFile", "Timestamp",  "Title",     "Description", "Comment",
          "Command",       "Tool",       "ToolPath",  "Host",        "User",
          "Creator",       "PDFTitle",   "PDFAuthor", "PDFSubject",  "PDFKeywords",
          "PDFProducer",   "PDFCreator", "other"}},
        {"InFile",
         {"Filename", "Filepath", "Filetype", "Description", "Comment", "LastModified",
          "GenerateMD5", "Embedded", "Preview", "PreviewWS", "Thumbnail", "ThumbnailOnly",
          "UncompressedSize", "UncompressedMD5", "CompressedMethod", "CompressedSize",
          "CompressedMD5", "UserAttributes", "InFile"}},
        {"UserAttributes", {"Attribute", "Attribute", "Attribute", "Attribute", "other"}},
        {"Attribute", {"Key", "Value", "Unit", "Key", "Value", "other"}}};
    static const QStringList texts = {"",    "x",          "1",        "0",    "-7",       "12a",
                                      " 3 ", "true",       "k",        "4711", "a &lt; b", "<",
                                      ">",   "<!-- c -->", "<b>y</b>", "\n"};
    const QStringList names =
        children.value(parent == QLatin1String("OutFile") ? QStringLiteral("InFile") : parent);
    const QString name = names.at(random.bounded(int(names.size())));
    if (random.bounded(12) == 0)
        return QLatin1Char('<') + name + QLatin1String("/>");
    QString content;
    if (children.contains(name) || name == QLatin1String("OutFile")) {
        for (int count = random.bounded(6); count > 0; --count) {
            content += randomElement(random, name);
            if (random.bounded(8) == 0)
                content += QLatin1String("<!-- - -->\n");
        }
    } else {
        content = texts.at(random.bounded(int(texts.size())));
    }
    return QLatin1Char('<') + name + QLatin1Char('>') + content + QLatin1String("</") + name +
           QLatin1Char('>');
}

/// The text with `edits` random edits: pieces cut out, doubled, moved, or put in.
inline QString damaged(QRandomGenerator& random, QString text, int edits)
{
    static const QStringList insertions = {"<",  ">",  "/", "</", "/>",  "<!--", "-->",
                                           "<?", "?>", " ", "a",  "<a>", "</a>", "<a/>"};
    for (; edits > 0 && !text.isEmpty(); --edits) {
        const int from = random.bounded(int(text.size()));
        const QString piece = text.mid(from, 1 + random.bounded(12));
        const int to = random.bounded(int(text.size()));
        const int kind = random.bounded(4);
        if (kind == 0)
            text.remove(from, piece.size());
        else if (kind == 1)
            text.insert(to, piece);
        else if (kind == 2)
            text.remove(from, 1);
        else
            text.insert(to, insertions.at(random.bounded(int(insertions.size()))));
    }
    return text;
}

/// How many random texts a test tries: `count`, times the environment's
/// LORIX_RANDOM_RUNS.
inline int runs(int count)
{
    bool ok = false;
    const int factor = qEnvironmentVariableIntValue("LORIX_RANDOM_RUNS", &ok);
    return ok && factor > 0 ? count * factor : count;
}

} // namespace plain
