// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <apps/viewer/history.h>

#include <QList>
#include <QString>

namespace lorix::viewer {

/// What to do where a file of the same name is there already.
enum class Clash { Skip, Replace, KeepBoth };

/// One file to be extracted, and what has come of it.
struct ExtractJob
{
    int container = 0; ///< In the history.
    int id = 0;        ///< In the container.
    QString name;      ///< Harmless path below the target folder.
    qint64 bytes = 0;  ///< Size of the content.
    bool replace = false;

    enum Outcome { Waiting, Written, Damaged, Skipped, Failed };
    Outcome outcome = Waiting;
    QString problem; ///< In words; for Damaged and Failed.
};

/// The jobs for these places; a step stands for all its files. Files that are
/// not embedded are left out, and so is what the person has twice.
QList<ExtractJob> planFor(const History& history, const QList<Place>& places);

/// The jobs for all files of the document, and, with `nested`, for those of the
/// documents inside of it, each in a folder of its own.
QList<ExtractJob> planForAll(const History& history, bool nested);

/// How many of the names are taken in the folder.
int countClashes(const QList<ExtractJob>& jobs, const QString& folder);

/// Settles what is taken, for all jobs alike.
void settleClashes(QList<ExtractJob>& jobs, const QString& folder, Clash choice);

} // namespace lorix::viewer
