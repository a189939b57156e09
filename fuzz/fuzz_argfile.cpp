// SPDX-License-Identifier: BSD-3-Clause
#include <lorix/argfile/argfileparser.h>
#include <lorix/argfile/argfilereader.h>
#include <lorix/argfile/argumentlist.h>

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>

using namespace lorix;

namespace {

void require(bool holds)
{
    if (!holds)
        std::abort();
}

// Bit 1 of the first byte chooses between UTF-8 and raw UTF-16.
QString textOf(const uint8_t* data, size_t size)
{
    if (size == 0)
        return {};
    if ((data[0] & 2) == 0)
        return QString::fromUtf8(reinterpret_cast<const char*>(data + 1),
                                 static_cast<qsizetype>(size - 1));
    QString text(static_cast<qsizetype>((size - 1) / 2), Qt::Uninitialized);
    std::memcpy(text.data(), data + 1, static_cast<size_t>(text.size()) * sizeof(QChar));
    return text;
}

void checkTokens(const QString& text, const QList<ArgfileToken>& tokens)
{
    QString together;
    for (const ArgfileToken& token : tokens) {
        require(token.position() == together.size() && token.originalLength() > 0);
        together += token.originalText();
    }
    require(tokens.isEmpty() || together == text);
}

void checkArguments(const QStringList& arguments)
{
    for (const QString& argument : arguments) {
        // A blank brings the double quotes, within which everything reads back.
        const QString blank = argument + u' ';
        require(ArgfileParser::parseArgfile(quoteString(blank, true), nullptr) ==
                QStringList({blank}));
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    const QString text = textOf(data, size);
    const QHash<QString, QString> variables{{QStringLiteral("a"), QStringLiteral("x y\"'\\$a#")},
                                            {QStringLiteral("b"), QString()}};
    const QHash<QString, QString>* given = size > 0 && (data[0] & 1) ? &variables : nullptr;

    const QList<ArgfileToken> tokens = ArgfileParser::splitIntoTokens(text);
    checkTokens(text, tokens);
    require(ArgfileParser::getHighlighterList(text).size() == tokens.size());
    const QStringList arguments = ArgfileParser::parseArgfile(text, given);
    require(ArgfileParser::parseArgfile(text, nullptr).size() == arguments.size());
    checkArguments(arguments);

    ArgfileReader reader;
    const ArgFile step = reader.readArgfile(text, given);
    reader.parseCommandline(arguments);
    reader.readArgfile(step.toCommandline(true), given);
    reader.readArgfile(step.toCommandline(false), given);
    return 0;
}
