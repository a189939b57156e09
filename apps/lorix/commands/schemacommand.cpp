// SPDX-License-Identifier: BSD-3-Clause
#include <apps/lorix/commands/schemacommand.h>

#include <QDir>
#include <QFile>
#include <QJsonDocument>

static void initSchemas()
{
    // The parts are in a static library, whose resources nobody else asks for.
    Q_INIT_RESOURCE(lorix_schemas);
}

namespace lorix::cli {

namespace {

QJsonObject part(const QString& name)
{
    QFile file(QStringLiteral(":/schema/") + name);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    return QJsonDocument::fromJson(file.readAll()).object();
}

} // namespace

QJsonObject SchemaCommand::schema()
{
    initSchemas();
    QJsonObject whole = part(QStringLiteral("common.json"));
    QJsonArray alternatives;
    const QStringList names = QDir(QStringLiteral(":/schema")).entryList(QDir::Files, QDir::Name);
    for (const QString& name : names) {
        if (name != QLatin1String("common.json"))
            alternatives.append(part(name));
    }
    whole.insert(QStringLiteral("oneOf"), alternatives);
    return whole;
}

QString SchemaCommand::summary() const
{
    return QStringLiteral("Print the JSON Schema of all --json output");
}

void SchemaCommand::declare(CLI::App& app)
{
    Q_UNUSED(app)
}

int SchemaCommand::run(Console& console, const GlobalOptions& options)
{
    Q_UNUSED(options)
    console.writeBytes(QJsonDocument(schema()).toJson());
    return Done;
}

} // namespace lorix::cli
