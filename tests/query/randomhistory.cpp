// SPDX-License-Identifier: BSD-3-Clause
#include <query/randomhistory.h>

using namespace lorix;

namespace {

QString word(RandomQuery& random)
{
    static const QStringList words = {
        QString(),           QStringLiteral("x"),  QStringLiteral("X"),
        QStringLiteral("y"), QStringLiteral("z"),  QStringLiteral("xy"),
        QStringLiteral("1"), QStringLiteral("10"), QStringLiteral("2013-05-01"),
        QStringLiteral("yz")};
    return random.pick(words);
}

template <typename Record>
void addUserAttributes(RandomQuery& random, Record& record)
{
    for (int i = random.below(3); i > 0; --i) {
        const QString key =
            random.pick({QStringLiteral("Key"), QStringLiteral("key"), QStringLiteral("KEY 2")});
        if (!record.userAttributeKeys.contains(key))
            record.userAttributeKeys += key;
        record.userAttributes[key] = word(random);
    }
}

FileSummary randomFile(RandomQuery& random, int id)
{
    FileSummary file;
    file.tagId = id;
    file.filename = word(random);
    file.filepath = word(random);
    file.comment = word(random);
    file.description = word(random);
    file.embedded = random.once(2);
    file.compressedMethod = random.once(2) ? QStringLiteral("flate") : QString();
    file.uncompressedSize =
        random
            .pick({QStringLiteral("1"), QStringLiteral("10"), QStringLiteral("-1"),
                   QStringLiteral("1024"), QStringLiteral("1234567")})
            .toInt();
    file.uncompressedMD5 = word(random);
    file.filePurpose = random.pick(
        {QStringLiteral("InFile"), QStringLiteral("OutFile"), QStringLiteral("Undefined")});
    addUserAttributes(random, file);
    return file;
}

} // namespace

QList<Summary> randomHistory(RandomQuery& random, int candidates)
{
    QList<Summary> summaries;
    int files = 0;
    while (candidates > 0) {
        Summary summary;
        summary.tagId = int(summaries.size());
        summary.title = word(random);
        summary.tool = word(random);
        summary.host = word(random);
        summary.comment = word(random);
        addUserAttributes(random, summary);
        --candidates;
        for (int i = random.below(4); i > 0 && candidates > 0; --i, --candidates)
            summary.files += randomFile(random, files++);
        summaries += summary;
    }
    return summaries;
}
