// SPDX-License-Identifier: BSD-3-Clause
#include "clirunner.h"

#include <apps/lorix/application.h>
#include <apps/lorix/interrupt.h>

#include <QJsonDocument>
#include <QtGlobal>

#include <cstdio>

namespace {

QByteArray contentOf(std::FILE* file)
{
    QByteArray content;
    std::rewind(file);
    char buffer[65536];
    while (const size_t count = std::fread(buffer, 1, sizeof buffer, file))
        content.append(buffer, static_cast<qsizetype>(count));
    std::fclose(file);
    return content;
}

} // namespace

QList<QJsonObject> CliCall::objects() const
{
    QList<QJsonObject> result;
    for (const QByteArray& line : out.split('\n')) {
        if (line.isEmpty())
            continue;
        QJsonParseError error;
        const QJsonDocument document = QJsonDocument::fromJson(line, &error);
        if (!document.isObject())
            qFatal("no JSON object: %s", line.constData());
        result.append(document.object());
    }
    return result;
}

CliCall runCli(const QStringList& arguments)
{
    CliCall call;
    std::FILE* out = std::tmpfile();
    std::FILE* err = std::tmpfile();
    {
        lorix::cli::Interrupt::set(false);
        lorix::cli::Console console(out, err);
        lorix::cli::Application application(console);
        call.exitCode = application.run(arguments);
    }
    call.out = contentOf(out);
    call.err = contentOf(err);
    return call;
}
