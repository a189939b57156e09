// SPDX-License-Identifier: BSD-3-Clause
#include <apps/lorix/answer.h>

#include <apps/lorix/text.h>

#include <algorithm>

namespace lorix::cli {

namespace {

void appendTo(QJsonObject& object, const QString& key, const QJsonObject& item)
{
    QJsonArray array = object.value(key).toArray();
    array.append(item);
    object.insert(key, array);
}

} // namespace

QJsonObject Finding::toJson() const
{
    QJsonObject object;
    object.insert(QStringLiteral("code"), code);
    object.insert(QStringLiteral("severity"), severity);
    object.insert(QStringLiteral("message"), message);
    if (!path.isEmpty())
        object.insert(QStringLiteral("path"), path);
    if (id >= 0)
        object.insert(QStringLiteral("id"), id);
    if (offset >= 0)
        object.insert(QStringLiteral("offset"), offset);
    if (!expected.isEmpty())
        object.insert(QStringLiteral("expected"), expected);
    if (!found.isEmpty())
        object.insert(QStringLiteral("found"), found);
    return object;
}

Answer Answer::start(const QString& command, const QString& file)
{
    Answer answer;
    answer.json.insert(QStringLiteral("schema"), QStringLiteral("lorix/1"));
    answer.json.insert(QStringLiteral("command"), command);
    answer.json.insert(QStringLiteral("file"), file);
    return answer;
}

void Answer::fail(int code, const QString& errorCode, const QString& file, const QString& message)
{
    exitCode = worse(exitCode, code);
    errors.append(printable(file) + QStringLiteral(": ") + printable(message));
    QJsonObject error;
    error.insert(QStringLiteral("code"), errorCode);
    error.insert(QStringLiteral("message"), message);
    appendTo(json, QStringLiteral("errors"), error);
}

void Answer::addFinding(const Finding& finding)
{
    addFindings({finding});
}

void Answer::addFindings(const QList<Finding>& findings)
{
    if (findings.isEmpty())
        return;
    QJsonArray array = json.value(QLatin1String("findings")).toArray();
    for (const Finding& finding : findings) {
        if (finding.severity == QLatin1String("error"))
            exitCode = worse(exitCode, No);
        array.append(finding.toJson());
    }
    json.insert(QStringLiteral("findings"), array);
}

int worse(int a, int b)
{
    return std::max(a, b);
}

} // namespace lorix::cli
