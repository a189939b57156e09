// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QObject>
#include <QString>
#include <QStringList>

/// Writes down every signal of a queue in the order of emission, one line each:
///
///     section 0 valid
///     file 3 invalid
///     saved /tmp/a valid
///     percent 50 a.txt
///     log 2 Could not ...
///
/// Lines of the stop watch end in the name alone, since their figures differ
/// from run to run: "time validation finished".
class SignalRecorder : public QObject
{
    Q_OBJECT

public:
    QStringList lines;

    /// Connects every signal of a queue that this class knows.
    explicit SignalRecorder(QObject* queue);

    /// The lines so far; forgets them.
    QStringList take();

public Q_SLOTS:
    void sectionProcessed(int id, bool valid);
    void fileProcessed(int id, bool valid);
    void savedFileProcessed(QString filename, bool valid);
    void percentFinishedChanged(int percent, QString name);
    void log(QString message, int type);
};
