// SPDX-License-Identifier: BSD-3-Clause
#include "apps/viewer/exampledocuments.h"

#include <lorix/container/lorixparser.h>

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

namespace examples {

namespace {

QString run(const QString& program, const QStringList& arguments)
{
    QProcess process;
    process.setProcessChannelMode(QProcess::MergedChannels);
    process.start(program, arguments);
    if (process.waitForStarted() && process.waitForFinished(120000) && process.exitCode() == 0)
        return {};
    return process.errorString() + QLatin1Char('\n') + QString::fromUtf8(process.readAll());
}

QByteArray contentOf(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

QByteArray damage(const QString& path)
{
    QByteArray bytes = contentOf(path);
    bytes.replace("Mesh study", "Mush study");
    lorix::LorixParser parser;
    parser.open(path);
    for (const lorix::FileTag& file : parser.getFiles())
        if (file.filename == QLatin1String("result.csv")) {
            const qint64 at = file.position + file.taglen + file.offset + file.cfilesize / 2;
            bytes[at] = bytes.at(at) == '1' ? '2' : '1';
            break;
        }
    return bytes;
}

class Example
{
public:
    Example()
    {
        const QString sources = qEnvironmentVariable("LORIX_EXAMPLES");
        QString problem = run(sources + QStringLiteral("/make-example.sh"), {m_folder.path()});
        if (problem.isEmpty() && QFile::copy(path(), shorter()))
            problem = run(QStringLiteral("python3"),
                          {sources + QStringLiteral("/../tools/lorixdel.py"), shorter()});
        QFile file(damaged());
        m_made =
            problem.isEmpty() && file.open(QIODevice::WriteOnly) && file.write(damage(path())) > 0;
        if (!m_made)
            qWarning("the example cannot be made: %s", qPrintable(problem));
    }

    bool isMade() const { return m_made; }
    QString folder() const { return m_folder.path(); }
    QString path() const { return m_folder.filePath(QStringLiteral("cooling-fin.pdf")); }
    QString damaged() const { return m_folder.filePath(QStringLiteral("damaged-fin.pdf")); }
    QString shorter() const { return m_folder.filePath(QStringLiteral("shorter-fin.pdf")); }

private:
    QTemporaryDir m_folder;
    bool m_made = false;
};

const Example& example()
{
    static const Example made;
    return made;
}

} // namespace

QString coolingFin()
{
    return example().isMade() ? example().path() : QString();
}

QString damaged()
{
    return example().isMade() ? example().damaged() : QString();
}

QString shorter()
{
    return example().isMade() ? example().shorter() : QString();
}

QString original(const QString& name)
{
    return QDir(example().folder()).filePath(QStringLiteral("work/") + name);
}

} // namespace examples
