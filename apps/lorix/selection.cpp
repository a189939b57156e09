// SPDX-License-Identifier: BSD-3-Clause
#include <apps/lorix/selection.h>

#include <apps/lorix/command.h>
#include <apps/lorix/text.h>

#include <QFile>
#include <QFileInfo>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace lorix::cli {

namespace {

// Whether what we print is appended to this file.
bool goesOn(const QFile& file)
{
    const int mode = ::fcntl(STDOUT_FILENO, F_GETFL);
    if (mode < 0 || (mode & O_APPEND) == 0)
        return false;
    struct stat ours
    {};
    struct stat theirs
    {};
    return ::fstat(STDOUT_FILENO, &theirs) == 0 && ::fstat(file.handle(), &ours) == 0 &&
           S_ISREG(ours.st_mode) && ours.st_dev == theirs.st_dev && ours.st_ino == theirs.st_ino;
}

} // namespace

void Selection::declare(CLI::App& app)
{
    addText(app, "--since", m_sinceText,
            "Leave out files that were last changed before this time, such as "
            "2026-03-01T10:00, or before this file was")
        ->type_name("TIME");
    addText(app, "--skip-done", m_donePath,
            "Leave out what this output of --json, of the same command, already has")
        ->type_name("FILE");
}

QString Selection::prepare(const DoneList::Fits& fits)
{
    m_leftOut = 0;
    const QString problem = readTime();
    return problem.isEmpty() ? readDone(fits) : problem;
}

QString Selection::readTime()
{
    if (m_sinceText.isEmpty())
        return {};
    const QFileInfo file(m_sinceText);
    m_since =
        file.exists() ? file.lastModified() : QDateTime::fromString(m_sinceText, Qt::ISODateWithMs);
    if (m_since.isValid())
        return {};
    return QStringLiteral("--since: %1 is neither a file nor a time such as 2026-03-01T10:00")
        .arg(quoted(m_sinceText));
}

QString Selection::readDone(const DoneList::Fits& fits)
{
    if (m_donePath.isEmpty())
        return {};
    QFile file(m_donePath);
    if (QFileInfo(m_donePath).isDir() || !file.open(QIODevice::ReadOnly) ||
        !m_done.read(file, fits))
        return QStringLiteral("--skip-done: %1 cannot be read: %2")
            .arg(quoted(m_donePath), file.errorString());
    const qint64 whole = file.size() - m_done.cutBytes();
    if (m_done.cutBytes() > 0 && goesOn(file) && ::ftruncate(STDOUT_FILENO, whole) != 0)
        return QStringLiteral("--skip-done: %1: its last line is cut and cannot be removed")
            .arg(quoted(m_donePath));
    return {};
}

bool Selection::leavesOut(const Input& input)
{
    const bool leaves = m_done.contains(input.path) ||
                        (m_since.isValid() && QFileInfo(input.path).lastModified() < m_since &&
                         QFileInfo::exists(input.path));
    m_leftOut += leaves ? 1 : 0;
    return leaves;
}

} // namespace lorix::cli
