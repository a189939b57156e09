// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <lorix/container/inflater.h>
#include <lorix/export.h>
#include <lorix/queues/extractee.h>
#include <lorix/runner/logsource.h>
#include <lorix/runner/stopwatch.h>

#include <QFile>
#include <QHash>
#include <QList>

namespace lorix {

class LorixParser;

/// Writes embedded files to disk in steps small enough for an event loop.
///
///     ExtractionQueue queue(&parser);
///     queue.addExtractees({{parser.getNumFiles() - 1, "/tmp/ws_summary.xml"}});
///     while (queue.process()) {}
///
/// A step reads at most 100000 stored bytes. The targets are written as they
/// are named, whatever stands there: choosing safe names is the caller's part.
/// No digest is checked. An item that fails is reported with an error message
/// and fileProcessed(id, false), its partly written target stays, and the
/// queue goes on with the next one. A stream that ends early is no failure
/// here; what was inflated stands in the target.
class LORIX_EXPORT ExtractionQueue : public LogSource
{
    Q_OBJECT

public:
    /// An empty queue without parent. The parser is not owned, must live while
    /// items are queued, and may be null.
    explicit ExtractionQueue(LorixParser* parser);

    /// Empties the queue, points it to `parser` and sets the counters to 0.
    void reinit(LorixParser* parser);

    /// The same as reinit().
    void reset(LorixParser* parser);

    /// Queues the files whose ids are keys of `targets`, by ascending id, to be
    /// written to the paths that are the values. A key that is no file id is
    /// ignored. Does nothing without a parser.
    void addExtractees(const QHash<int, QString>& targets);

    /// Drops the current item, if any, without a signal; its remaining bytes
    /// count as done.
    void nextEntry();

    /// Ends the current item, `extractee`, as failed: logs `message` as an
    /// error, emits fileProcessed(id, false) and calls nextEntry(). Whether
    /// items remain.
    bool handleError(const QString& message, const Extractee& extractee);

    /// Does one step: at most one chunk of the current item. Whether items
    /// remain. With an empty queue it only reports the percentage, with an
    /// empty name.
    bool process();

    /// What the system said when the current or last target could not be
    /// opened or written, for receivers of the error message.
    QString targetError() const { return m_target.errorString(); }

Q_SIGNALS:
    /// An embedded file has been written as a whole, or has failed.
    void fileProcessed(int id, bool valid);

    /// After each step: the stored bytes done of all queued since the queue was
    /// last empty, and the target that the step worked on. 0 when the total is
    /// 0.
    void percentFinishedChanged(int percent, QString filename);

public Q_SLOTS:
    /// Closes the target, which stays as far as it is written, empties the
    /// queue, sets the counters to 0 and ends the measurement.
    void cancelExtraction();

protected:
    /// Called with the stored bytes of each step before they are written or
    /// inflated, for subclasses that look at what passes. Does nothing here.
    virtual void storedBytesRead(const Extractee& extractee, const QByteArray& bytes);

    /// Called with each piece of content, at most 1 MiB, as it is written. Of a
    /// step that fails nothing counts. Does nothing here.
    virtual void contentWritten(const Extractee& extractee, const char* bytes, qsizetype count);

private:
    void clear();
    void begin(const Extractee& item);
    void advance(const Extractee& item);
    bool writeInflated(const Extractee& item, const QByteArray& stored, bool* written);
    bool writeContent(const Extractee& item, const char* bytes, qsizetype count);

    LorixParser* m_parser;
    Inflater m_inflater;
    StopWatch m_stopWatch;
    QList<Extractee> m_extractees;
    QFile m_target;
    qint64 m_bytesDone = 0;
    qint64 m_totalBytes = 0;
    qint64 m_totalDone = 0;
    quint64 m_generation = 0; // counts changes of the current item
};

} // namespace lorix
