// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <lorix/export.h>
#include <lorix/queues/savedfile.h>
#include <lorix/queues/validatee.h>
#include <lorix/queues/validator.h>
#include <lorix/runner/logsource.h>
#include <lorix/runner/stopwatch.h>

#include <QFile>
#include <QList>

namespace lorix {

class LorixParser;

/// Checks sections, embedded files and files on disk against their digests, in
/// steps small enough for an event loop.
///
///     ValidationQueue queue(&parser, 0);
///     connect(&queue, &ValidationQueue::sectionProcessed, ...);
///     queue.repopulate(&parser);
///     while (queue.process()) {}
///
/// Each step reads and hashes at most one chunk. Signals are delivered within
/// process(); a receiver may add items, cancel or re-point the queue from its
/// slot. What cannot be read (a range outside the container, a file on disk
/// that does not open) has no bytes and so the wrong digest: the item is
/// reported invalid, and nothing else is said.
class LORIX_EXPORT ValidationQueue : public LogSource
{
    Q_OBJECT

public:
    /// An empty queue without parent. The parser is not owned, must live while
    /// items of it are queued, and may be null. `chunkSize` is in bytes; 0 and
    /// less mean 100000.
    ValidationQueue(LorixParser* parser, int chunkSize);

    /// Empties the queue, points it to `parser` and sets the counters to 0.
    void reinit(LorixParser* parser);

    /// reinit(), and starts the measurement that the message "validation
    /// finished: ...s" reports when the queue has run empty.
    void reset(LorixParser* parser);

    /// reset(), and queues everything that the parser found: the sections from
    /// the oldest to the newest, then the files by ascending id.
    void repopulate(LorixParser* parser);

    /// Queues the sections listed, oldest first, then the files listed, by
    /// ascending id. An id that the parser does not know is ignored and one
    /// listed twice is queued once. Does nothing without a parser.
    void addValidatees(const QList<int>& fileIds, const QList<int>& sectionIds);

    /// Queues files on disk in the order of the list.
    void addValidatees(const QList<SavedFile>& savedFiles);

    /// Drops the current item, if any, without a signal.
    void nextEntry();

    /// Does one step: at most one chunk of the current item. Whether items
    /// remain. With an empty queue it only reports the percentage, with an
    /// empty name.
    bool process();

Q_SIGNALS:
    /// An embedded file has been checked.
    void fileProcessed(int id, bool valid);

    /// A file on disk has been checked; a log message follows.
    void savedFileProcessed(QString filename, bool valid);

    /// A section has been checked.
    void sectionProcessed(int id, bool valid);

    /// After each step: the bytes done of all bytes queued since the queue was
    /// last empty, and the name of the item that the step worked on. A marker
    /// line counts in a section's size but not as done, so that sections alone
    /// end just below 100. 0 when the total is 0.
    void percentFinishedChanged(int percent, QString name);

public Q_SLOTS:
    /// Empties the queue, sets all counters to 0 and ends the measurement.
    void cancelValidation();

private:
    void clear();
    void enqueue(const Validatee& item);
    void begin(const Validatee& item);
    QByteArray readChunk(const Validatee& item, qint64 length);
    void advance(const Validatee& item);
    void finish(const Validatee& item);

    LorixParser* m_parser;
    Validator m_validator;
    StopWatch m_stopWatch;
    QList<Validatee> m_validatees;
    qint64 m_bytesDone = 0;
    qint64 m_totalBytes = 0;
    qint64 m_totalDone = 0;
    QFile m_savedFile;
    int m_chunkSize;
    bool m_begun = false;     // the current item's validator is set up
    bool m_tagFed = false;    // the current item's validation tag is in the digest
    quint64 m_generation = 0; // counts changes of the current item
};

} // namespace lorix
