// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <apps/lorix/diagnosis.h>

#include <lorix/queues/savedfile.h>

#include <QList>
#include <QString>

#include <atomic>
#include <functional>

namespace lorix::cli {

/// One thing to check, and what came out of it.
struct CheckItem
{
    enum Kind { Section, File, Saved };

    Kind kind = Section;
    int id = 0;      ///< Section or file id.
    SavedFile saved; ///< What to check on disk, for Saved.
    qint64 size = 0; ///< Bytes to hash.

    bool checked = false; ///< False where the run was interrupted before.
    bool valid = false;
    Diagnosis diagnosis; ///< Why a section or file is invalid.
};

/// Checks many items with several validation queues side by side: one for each
/// job, on a thread and a parser of its own. The largest items go first, so
/// that no thread is left alone with one at the end. Results stand where the
/// items stand, whatever the number of jobs.
class CheckRun
{
public:
    /// A run over `items`, which it fills in. The sections and files are those
    /// of `parser`, which has `path` open; it may be null for saved files alone.
    CheckRun(LorixParser* parser, const QString& path, QList<CheckItem>& items);

    /// Works with up to `jobs` queues; `tick` is called on this thread every
    /// now and then with the bytes done so far. False when ctrl-C ended it
    /// early. Where another thread cannot open the container again as it was,
    /// the others do its work.
    bool run(int jobs, const std::function<void(qint64)>& tick);

    /// The bytes of all items.
    qint64 totalBytes() const { return m_totalBytes; }

private:
    class Worker;
    CheckItem* takeNext();
    void work(LorixParser* parser, const std::function<void()>& afterStep);
    void workElsewhere();

    LorixParser* m_parser;
    QString m_path;
    qint64 m_fileBytes = 0;
    QList<CheckItem>& m_items;
    CheckItem* m_first = nullptr;
    QList<int> m_order;
    qint64 m_totalBytes = 0;
    std::atomic<int> m_next{0};
    std::atomic<qint64> m_done{0};
};

} // namespace lorix::cli
