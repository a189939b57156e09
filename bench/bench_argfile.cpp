// SPDX-License-Identifier: BSD-3-Clause
// Reads argument files: bench_argfile split|read FILE. "split" stops at the
// arguments, "read" makes an invocation of them. Prints how many there were.
#include <lorix/argfile/argfileparser.h>
#include <lorix/argfile/argfilereader.h>

#include <QFile>

#include <cstdio>

int main(int argc, char** argv)
{
    if (argc != 3)
        return 2;
    QFile file(QFile::decodeName(argv[2]));
    if (!file.open(QIODevice::ReadOnly))
        return 2;
    const QString text = QString::fromUtf8(file.readAll());
    const QHash<QString, QString> variables{{QStringLiteral("a"), QStringLiteral("some value")}};
    qsizetype count = 0;
    if (qstrcmp(argv[1], "read") == 0)
        count = lorix::ArgfileReader().readArgfile(text, &variables).numFiles();
    else
        count = lorix::ArgfileParser::parseArgfile(text, &variables).size();
    std::printf("%lld\n", static_cast<long long>(count));
    return 0;
}
