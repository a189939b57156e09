// SPDX-License-Identifier: BSD-3-Clause
#include <apps/viewer/targetwords.h>

#include <apps/lorix/text.h>

#include <QCoreApplication>
#include <QRegularExpression>

namespace lorix::viewer {

namespace {

struct Text
{
    Q_DECLARE_TR_FUNCTIONS(TargetWords)
};

struct Kind
{
    const char* pattern; ///< What the last bracket captures is %1.
    const char* words;
};

const Kind kinds[] = {
    {"^the target folder is a file$",
     QT_TRANSLATE_NOOP("TargetWords", "the target folder is a file. Choose a folder")},
    {"^the folder on the way is a link$",
     QT_TRANSLATE_NOOP("TargetWords", "a folder on the way is a link that may lead elsewhere; "
                                      "nothing is written through links. Choose another folder")},
    {"^there is a file where a folder is needed$",
     QT_TRANSLATE_NOOP("TargetWords", "there is a file where a folder is needed. Choose another "
                                      "folder")},
    {"^there is a folder of that name$",
     QT_TRANSLATE_NOOP("TargetWords", "there is a folder of that name. Choose another folder")},
    {"^exists already",
     QT_TRANSLATE_NOOP("TargetWords", "a file of that name has come up in the meantime; it was "
                                      "left alone")},
    {"^the target folder cannot be made: (.*)$",
     QT_TRANSLATE_NOOP("TargetWords", "the folder cannot be made (%1). Choose another one")},
    {"^the folder .* cannot be made: (.*)$",
     QT_TRANSLATE_NOOP("TargetWords", "a folder for it cannot be made (%1)")},
    {"^cannot be written: (.*)$",
     QT_TRANSLATE_NOOP("TargetWords", "it cannot be written (%1). Make room, or choose a folder "
                                      "that you may write to")},
    {"^cannot be given its name: (.*)$",
     QT_TRANSLATE_NOOP("TargetWords", "it cannot be given its name (%1)")},
};

} // namespace

QString targetWords(const QString& problem)
{
    for (const Kind& kind : kinds) {
        const QRegularExpression pattern(QLatin1String(kind.pattern));
        const QRegularExpressionMatch match = pattern.match(problem);
        if (!match.hasMatch())
            continue;
        QString words = Text::tr(kind.words);
        return words.replace(QLatin1String("%1"), cli::printable(match.captured(1)));
    }
    return cli::printable(problem);
}

} // namespace lorix::viewer
