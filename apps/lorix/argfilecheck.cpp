// SPDX-License-Identifier: BSD-3-Clause
#include <apps/lorix/argfilecheck.h>

#include <apps/lorix/messages.h>

#include <lorix/argfile/argfileparser.h>
#include <lorix/argfile/argfilereader.h>

#include <algorithm>

namespace lorix::cli {

namespace {

const QString errorSeverity = QStringLiteral("error");
const QString warningSeverity = QStringLiteral("warning");

// Where each argument starts in the text: at the first of the adjacent tokens
// that make it.
QList<int> argumentStarts(const QString& text)
{
    QList<int> starts;
    bool inArgument = false;
    const QList<ArgfileToken> tokens = ArgfileParser::getHighlighterList(text);
    for (const ArgfileToken& token : tokens) {
        if (!token.isSeparator() && !inArgument)
            starts.append(token.position());
        inArgument = !token.isSeparator();
    }
    return starts;
}

// What keeps a text from being split shows in what makes it splittable: then the
// last token starts where the trouble does.
Complaint splittingComplaint(const QString& text)
{
    struct Cure
    {
        const char* suffix;
        const char* code;
        const char* message;
    };
    static const Cure cures[] = {
        {"x", "argfile.backslash.last", "a backslash ends the text"},
        {"'", "argfile.quote.open", "the single quote opened here is never closed"},
        {"x\"", "argfile.quote.open", "the double quote opened here is never closed"},
    };
    Complaint complaint;
    for (const Cure& cure : cures) {
        const QList<ArgfileToken> tokens =
            ArgfileParser::getHighlighterList(text + QLatin1String(cure.suffix));
        if (tokens.isEmpty())
            continue;
        const bool atEnd = &cure == &cures[0];
        complaint.offset = atEnd ? static_cast<int>(text.size()) - 1 : tokens.last().position();
        complaint.code = QLatin1String(cure.code);
        complaint.severity = errorSeverity;
        complaint.message = QLatin1String(cure.message);
        break;
    }
    return complaint;
}

bool opensFile(const QString& option)
{
    return option == QLatin1String("-i") || option == QLatin1String("-o") ||
           option == QLatin1String("--infile") || option == QLatin1String("--outfile");
}

bool belongsToFile(const QString& option)
{
    static const QStringList options = {
        QStringLiteral("-f"),          QStringLiteral("-a"),
        QStringLiteral("-u"),          QStringLiteral("--file-flag"),
        QStringLiteral("--file-attr"), QStringLiteral("--file-user")};
    return options.contains(option);
}

// Walks over accepted arguments option by option, as the reader does, and asks
// the reader about each alone.
class OptionWalk
{
public:
    OptionWalk(const QStringList& arguments, const QList<int>& starts)
        : m_arguments(arguments), m_starts(starts), m_reader(&m_messages), m_silent(nullptr)
    {}

    QList<Complaint> complaints()
    {
        qsizetype i = 0;
        while (i < m_arguments.size())
            i += step(i);
        return m_complaints;
    }

private:
    qsizetype step(qsizetype i)
    {
        const QString& option = m_arguments[i];
        m_reader.parseCommandline({option});
        const QList<Message> unread = m_messages.takeAll();
        if (!unread.isEmpty()) {
            add(i, "argfile.option.unread", warningSeverity, unread.first().text);
            return 1;
        }
        const qsizetype size = optionSize(i);
        if (belongsToFile(option) && !m_hasFile) {
            add(i, "argfile.option.early", warningSeverity,
                QStringLiteral("option %1 stands before the first file and is ignored")
                    .arg(option));
            return size;
        }
        m_hasFile = m_hasFile || opensFile(option);
        // Options for a file need one to be looked at.
        const QStringList file = {QStringLiteral("-i"), QStringLiteral("file")};
        m_reader.parseCommandline(file + m_arguments.mid(i, size));
        for (const Message& message : m_messages.takeAll())
            add(i + 1, "argfile.name.unknown", errorSeverity, message.text);
        return size;
    }

    qsizetype optionSize(qsizetype i)
    {
        for (qsizetype size = 1; size <= 3; ++size) {
            const QStringList one = m_arguments.mid(i, size);
            if (m_silent.checkOptionSignatures(one).size() == size)
                return size;
        }
        return m_arguments.size() - i;
    }

    void add(qsizetype argument, const char* code, const QString& severity, const QString& message)
    {
        m_complaints.append(
            {QLatin1String(code), severity, message, m_starts.value(argument), 1, 1});
    }

    const QStringList& m_arguments;
    const QList<int>& m_starts;
    Messages m_messages;
    ArgfileReader m_reader;
    ArgfileReader m_silent;
    bool m_hasFile = false;
    QList<Complaint> m_complaints;
};

// Lines and columns of complaints that stand in the order of the text.
void setPlaces(const QString& text, QList<Complaint>& complaints)
{
    int line = 1;
    int column = 1;
    int offset = 0;
    for (Complaint& complaint : complaints) {
        for (; offset < complaint.offset; ++offset) {
            const QChar c = text[offset];
            const bool half = c == u'\r' && offset + 1 < text.size() && text[offset + 1] == u'\n';
            if (c == u'\n' || (c == u'\r' && !half)) {
                ++line;
                column = 1;
            } else if (!c.isLowSurrogate()) {
                ++column;
            }
        }
        complaint.line = line;
        complaint.column = column;
    }
}

} // namespace

QJsonObject Complaint::toJson() const
{
    return {{QStringLiteral("code"), code},       {QStringLiteral("severity"), severity},
            {QStringLiteral("message"), message}, {QStringLiteral("line"), line},
            {QStringLiteral("column"), column},   {QStringLiteral("offset"), offset}};
}

bool ArgfileCheck::hasErrors() const
{
    return std::any_of(complaints.begin(), complaints.end(), [](const Complaint& complaint) {
        return complaint.severity == errorSeverity;
    });
}

ArgfileCheck ArgfileCheck::read(const QString& text, const QHash<QString, QString>* variables)
{
    ArgfileCheck check;
    if (!text.isEmpty() && ArgfileParser::splitIntoTokens(text).isEmpty()) {
        check.complaints.append(splittingComplaint(text));
        setPlaces(text, check.complaints);
        return check;
    }
    QStringList arguments = ArgfileParser::parseArgfile(text, variables);
    if (variables)
        arguments.replaceInStrings(QStringLiteral("$$"), QStringLiteral("$"));
    const QList<int> starts = argumentStarts(text);

    Messages messages;
    ArgfileReader reader(&messages);
    const QStringList accepted = reader.checkOptionSignatures(arguments);
    const QList<Message> cutOff = messages.takeAll();
    check.invocation = reader.parseCommandline(accepted);
    check.complaints = OptionWalk(accepted, starts).complaints();
    for (const Message& message : cutOff) {
        const bool unknown = message.text.startsWith(QLatin1String("unknown"));
        check.complaints.append({unknown ? QStringLiteral("argfile.option.unknown")
                                         : QStringLiteral("argfile.parameters.missing"),
                                 errorSeverity, message.text, starts.value(accepted.size()), 1, 1});
    }
    setPlaces(text, check.complaints);
    return check;
}

} // namespace lorix::cli
