// SPDX-License-Identifier: BSD-3-Clause
#include <apps/lorix/container.h>

#include <apps/lorix/text.h>

#include <lorix/queues/storedrange.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <algorithm>

namespace lorix::cli {

namespace {

struct Reason
{
    const char* code;
    QString message;
};

Reason whyNotOpened(const Input& input, const LorixParser& parser)
{
    const QFileInfo info(input.path);
    if (!info.exists())
        return {"input.missing", QStringLiteral("there is no such file")};
    if (info.isDir() && !input.named)
        return {"input.unreadable", QStringLiteral("this folder cannot be read")};
    if (info.isDir())
        return {"input.folder",
                QStringLiteral("this is a folder; add -r to look at the files in it")};
    if (!info.isFile())
        return {"input.special", QStringLiteral("this is no regular file")};
    QFile file(input.path);
    if (!file.open(QIODevice::ReadOnly))
        return {"input.unreadable", QStringLiteral("cannot be read: %1").arg(file.errorString())};
    if (info.size() > parser.bounds().fileBytes)
        return {"input.toolarge",
                QStringLiteral("is larger than the format allows (%1 bytes, at most %2)")
                    .arg(info.size())
                    .arg(parser.bounds().fileBytes)};
    return {"input.nocontainer",
            QStringLiteral("carries no history (no header line \"%<--! $LORIX_PDF "
                           "[version:1.0]\" among its first ten lines)")};
}

// What else lies in a folder is passed over: other files, pipes, sockets.
bool isPassedOver(const Input& input, const Reason& reason)
{
    return !input.named && (qstrcmp(reason.code, "input.nocontainer") == 0 ||
                            qstrcmp(reason.code, "input.special") == 0);
}

bool sameRecords(const LorixParser& a, const LorixParser& b)
{
    const QList<SectionTag> sectionsA = a.getSections();
    const QList<SectionTag> sectionsB = b.getSections();
    const QList<FileTag> filesA = a.getFiles();
    const QList<FileTag> filesB = b.getFiles();
    return std::equal(sectionsA.begin(), sectionsA.end(), sectionsB.begin(), sectionsB.end(),
                      [](const SectionTag& x, const SectionTag& y) {
                          return x.position == y.position && x.left == y.left && x.size == y.size &&
                                 x.validationTag == y.validationTag;
                      }) &&
           std::equal(filesA.begin(), filesA.end(), filesB.begin(), filesB.end(),
                      [](const FileTag& x, const FileTag& y) {
                          return x.position == y.position && x.md5file == y.md5file &&
                                 storedStart(x) == storedStart(y) && storedSize(x) == storedSize(y);
                      });
}

} // namespace

bool openContainer(LorixParser& parser, const Input& input, Answer& answer, bool& skipped)
{
    skipped = false;
    if (parser.open(input.path))
        return true;
    const Reason reason = whyNotOpened(input, parser);
    if (isPassedOver(input, reason))
        skipped = true;
    else
        answer.fail(Unusable, QLatin1String(reason.code), input.path, reason.message);
    return false;
}

bool openAgain(LorixParser& parser, const QString& path, const LorixParser& first)
{
    return parser.open(path) && sameRecords(parser, first);
}

} // namespace lorix::cli
