// SPDX-License-Identifier: BSD-3-Clause
#include <apps/lorix/commands/argscommand.h>

#include <apps/lorix/interrupt.h>
#include <apps/lorix/invocationview.h>

#include <lorix/bounds.h>

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QProcessEnvironment>

namespace lorix::cli {

namespace {

// The text of a file, or of standard input for "-"; what is wrong goes to `error`.
QString readText(const QString& name, QString& error)
{
    QFile file(name);
    const bool open = name == QLatin1String("-") ? file.open(stdin, QIODevice::ReadOnly)
                                                 : file.open(QIODevice::ReadOnly);
    if (!open) {
        error = file.errorString();
        return {};
    }
    const qint64 mostBytes = Bounds().argfileBytes;
    const QByteArray bytes = file.read(mostBytes + 1);
    if (file.error() != QFileDevice::NoError)
        error = file.errorString();
    else if (bytes.size() > mostBytes)
        error = QStringLiteral("too large for an argument file, which may have %1")
                    .arg(humanSize(mostBytes));
    return QString::fromUtf8(bytes);
}

QString complaintLine(const QString& file, const Complaint& complaint, const Paint& paint)
{
    const QString severity = complaint.severity + u':';
    const bool isError = complaint.severity == QLatin1String("error");
    return QStringLiteral("%1:%2:%3: %4 %5\n")
        .arg(printable(file), QString::number(complaint.line), QString::number(complaint.column),
             isError ? paint.bad(severity) : paint.warning(severity), printable(complaint.message));
}

} // namespace

QString ArgsCommand::summary() const
{
    return QStringLiteral("Read argument files of the add tool and show what they ask for");
}

QString ArgsCommand::examples() const
{
    return QStringLiteral("  lorix args step.args\n"
                          "  lorix args -D case=7 --json step.args | jq .invocation.title\n"
                          "  lorix args --keep-variables - < step.args");
}

void ArgsCommand::declare(CLI::App& app)
{
    addTexts(app, "FILE", m_files, "Argument files; - is standard input")->required();
    addTexts(app, "-D,--define", m_definitions,
             "A variable, NAME=VALUE, beside those of the environment; may be given several times")
        ->type_name("NAME=VALUE")
        ->allow_extra_args(false);
    app.add_flag("--keep-variables", m_keepVariables, "Show variables as they are written");
}

bool ArgsCommand::prepareVariables(Console& console)
{
    const QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    const QStringList names = environment.keys();
    for (const QString& name : names)
        m_variables.insert(name, environment.value(name));
    for (const QString& definition : qAsConst(m_definitions)) {
        const qsizetype equals = definition.indexOf(u'=');
        if (equals <= 0) {
            console.error(QStringLiteral("%1 is no definition; it takes the form NAME=VALUE")
                              .arg(quoted(definition)));
            return false;
        }
        m_variables.insert(definition.left(equals), definition.mid(equals + 1));
    }
    return true;
}

int ArgsCommand::run(Console& console, const GlobalOptions& options)
{
    if (!prepareVariables(console))
        return Unusable;
    const Paint paint(console.colored());
    int exitCode = Done;
    for (const QString& file : qAsConst(m_files)) {
        const Answer answer = examine(file, paint);
        exitCode = worse(exitCode, answer.exitCode);
        if (options.json) {
            console.writeBytes(QJsonDocument(answer.json).toJson(QJsonDocument::Compact) + '\n');
        } else {
            console.write(answer.text);
            for (const QString& error : answer.errors)
                console.error(error);
        }
        if (Interrupt::requested())
            return Interrupted;
    }
    return exitCode;
}

Answer ArgsCommand::examine(const QString& file, const Paint& paint) const
{
    Answer answer = Answer::start(name(), file);
    QString error;
    const QString text = readText(file, error);
    if (!error.isEmpty()) {
        answer.fail(Unusable, QStringLiteral("argfile.unreadable"), file, error);
        return answer;
    }
    const ArgfileCheck check = ArgfileCheck::read(text, m_keepVariables ? nullptr : &m_variables);
    QJsonArray complaints;
    for (const Complaint& complaint : check.complaints) {
        answer.text += complaintLine(file, complaint, paint);
        complaints.append(complaint.toJson());
    }
    if (check.hasErrors())
        answer.exitCode = No;
    else
        answer.text += invocationText(check.invocation, paint);
    answer.json.insert(QStringLiteral("complaints"), complaints);
    answer.json.insert(QStringLiteral("invocation"), invocationJson(check.invocation));
    return answer;
}

} // namespace lorix::cli
