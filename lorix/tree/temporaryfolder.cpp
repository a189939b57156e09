// SPDX-License-Identifier: BSD-3-Clause
#include <lorix/tree/temporaryfolder.h>

#include <QDir>
#include <QFile>

#include <atomic>
#include <cerrno>
#include <cstdlib>
#include <mutex>
#include <unistd.h>
#include <utility>

namespace lorix {

// The records are never freed, only used again, so that a signal handler can
// walk them at any moment; it takes no lock.
struct TemporaryFolder::Registered
{
    std::atomic<char*> path{nullptr};
    std::atomic<pid_t> owner{0};
    Registered* next = nullptr;     // of all records
    Registered* nextFree = nullptr; // of those without a path
    static std::atomic<Registered*> first;
    static Registered* firstFree;
    static std::mutex mutex;
};

std::atomic<TemporaryFolder::Registered*> TemporaryFolder::Registered::first{nullptr};
TemporaryFolder::Registered* TemporaryFolder::Registered::firstFree = nullptr;
std::mutex TemporaryFolder::Registered::mutex;

TemporaryFolder::Registered* TemporaryFolder::enter(const QString& path)
{
    const std::lock_guard<std::mutex> lock(Registered::mutex);
    Registered* record = Registered::firstFree;
    if (record) {
        Registered::firstFree = record->nextFree;
    } else {
        record = new Registered;
        record->next = Registered::first;
        Registered::first = record;
    }
    record->owner = ::getpid();
    record->path = qstrdup(QFile::encodeName(path).constData());
    return record;
}

void TemporaryFolder::leave(Registered* record)
{
    const std::lock_guard<std::mutex> lock(Registered::mutex);
    delete[] record->path.exchange(nullptr);
    record->nextFree = Registered::firstFree;
    Registered::firstFree = record;
}

// Every path is in the register before there is anything under it, or a signal
// in between would leave it behind.
TemporaryFolder::TemporaryFolder()
{
    Registered* record = enter(QDir::temp().filePath(QStringLiteral("lorix-XXXXXX")));
    if (const char* made = ::mkdtemp(record->path)) {
        m_path = QFile::decodeName(made);
        m_record = record;
    } else {
        leave(record);
    }
}

TemporaryFolder::~TemporaryFolder()
{
    if (!m_record)
        return;
    QDir(m_path).removeRecursively();
    for (Registered* file : std::as_const(m_files))
        leave(file);
    leave(m_record);
}

QString TemporaryFolder::makeFile()
{
    if (!m_record)
        return QString();
    // Nobody else can enter the folder, so that the names may be plain.
    const QString name = QStringLiteral("%1/%2.lorix").arg(m_path).arg(m_nextFile++);
    Registered* record = enter(name);
    QFile file(name);
    if (!file.open(QIODevice::WriteOnly | QIODevice::NewOnly,
                   QFile::ReadOwner | QFile::WriteOwner)) {
        leave(record);
        return QString();
    }
    m_files.insert(name, record);
    return name;
}

void TemporaryFolder::removeFile(const QString& path)
{
    Registered* record = m_files.take(path);
    if (!record)
        return;
    QFile::remove(path);
    leave(record);
}

void TemporaryFolder::removeAllNow()
{
    const int keptErrno = errno;
    const pid_t self = ::getpid();
    for (const bool folders : {false, true}) {
        for (Registered* record = Registered::first; record; record = record->next) {
            const char* path = record->path;
            if (path && record->owner == self)
                static_cast<void>(folders ? ::rmdir(path) : ::unlink(path));
        }
    }
    errno = keptErrno;
}

} // namespace lorix
