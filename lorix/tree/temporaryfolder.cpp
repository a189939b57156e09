// SPDX-License-Identifier: BSD-3-Clause
#include <lorix/tree/temporaryfolder.h>

#include <QDir>
#include <QFile>
#include <QTemporaryFile>

#include <atomic>
#include <cerrno>
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

TemporaryFolder::TemporaryFolder() : m_folder(QDir::temp().filePath(QStringLiteral("lorix-XXXXXX")))
{
    if (m_folder.isValid())
        m_record = enter(m_folder.path());
}

TemporaryFolder::~TemporaryFolder()
{
    if (!m_record)
        return;
    m_folder.remove();
    for (Registered* file : std::as_const(m_files))
        leave(file);
    leave(m_record);
}

QString TemporaryFolder::makeFile()
{
    if (!m_record)
        return QString();
    QTemporaryFile file(m_folder.filePath(QStringLiteral("XXXXXX.lorix")));
    if (!file.open())
        return QString();
    file.setAutoRemove(false);
    m_files.insert(file.fileName(), enter(file.fileName()));
    return file.fileName();
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
