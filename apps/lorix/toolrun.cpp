// SPDX-License-Identifier: BSD-3-Clause
#include <apps/lorix/toolrun.h>

#include <apps/lorix/interrupt.h>
#include <apps/lorix/text.h>

#include <lorix/runner/applicationdir.h>

#include <QDir>
#include <QJsonDocument>

namespace lorix::cli {

namespace {

// Runners search below the folder that holds the program, whatever they are told.
QStringList fromBinaryDir(const QStringList& folders)
{
    const QDir binaryDir(getBinaryDir());
    QStringList result;
    for (const QString& folder : folders)
        result.append(binaryDir.relativeFilePath(QDir(folder).absolutePath()));
    return result;
}

// Takes the first folder that holds the tool as a script or as a frozen program.
void choose(LorixRunner& runner, const QStringList& folders)
{
    for (const QString& folder : folders) {
        runner.setSearchPaths({folder});
        for (const bool frozen : {false, true}) {
            runner.setUsePy2Exe(frozen);
            if (!runner.findLorixrun().isEmpty())
                return;
        }
    }
    // Whoever misses the tool is told about the script.
    runner.setUsePy2Exe(false);
}

// The runner's own report of the exit code; a tool's line ends in one line feed.
bool isRunnersReport(const QString& text)
{
    return text.endsWith(QLatin1String("\n\n"));
}

// A tool puts a colon or a blank between its mark and what it says.
QString withoutMark(const QString& text, int type)
{
    qsizetype start = 0;
    while (type != 0 && start < text.size() && (text[start] == u':' || text[start] == u' '))
        ++start;
    return text.mid(start, text.size() - start - (text.endsWith(u'\n') ? 1 : 0));
}

} // namespace

ToolRun::ToolRun(const QString& command, const QString& file, const QStringList& toolPaths,
                 Console& console, const GlobalOptions& options)
    : m_file(file), m_toolPaths(toolPaths), m_console(console), m_json(options.json),
      m_answer(Answer::start(command, file))
{}

void ToolRun::show(const Message& message)
{
    if (isRunnersReport(message.text))
        return;
    const QString text = withoutMark(message.text, message.type);
    if (m_json) {
        m_messages.append(QJsonObject{{QStringLiteral("severity"), message.severity()},
                                      {QStringLiteral("text"), text}});
        return;
    }
    if (message.type == 0) {
        m_console.write(printable(text) + u'\n');
        return;
    }
    const Paint paint(m_console.messagesColored());
    const QString mark = message.severity() + u':';
    m_console.error((message.type == 2 ? paint.bad(mark) : paint.warning(mark)) + u' ' +
                    printable(text));
}

int ToolRun::run(LorixRunner& runner, const QString& parameter)
{
    choose(runner, fromBinaryDir(m_toolPaths) + QStringList(QStringLiteral(".")));
    QObject::connect(&runner, &LorixRunner::intercept, &runner, [this] { m_console.flush(); });
    const int result = runner.runProcess(parameter);

    if (result == LorixRunner::ToolNotFound)
        m_answer.fail(Failed, QStringLiteral("tool.missing"), m_file,
                      QStringLiteral("the tool was not found beside this program; name the "
                                     "folder that holds it with --tool-path"));
    else if (result == LorixRunner::ToolNotStarted)
        m_answer.fail(Failed, QStringLiteral("tool.start"), m_file,
                      QStringLiteral("the tool could not be started; is there a \"python\" on "
                                     "the PATH?"));
    else
        m_answer.exitCode = result;
    if (m_json) {
        m_answer.json.insert(QStringLiteral("messages"), m_messages);
        m_answer.json.insert(QStringLiteral("exitCode"), m_answer.exitCode);
        m_console.writeBytes(QJsonDocument(m_answer.json).toJson(QJsonDocument::Compact) + '\n');
    } else {
        for (const QString& error : qAsConst(m_answer.errors))
            m_console.error(error);
    }
    return Interrupt::requested() ? Interrupted : m_answer.exitCode;
}

} // namespace lorix::cli
