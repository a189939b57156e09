// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QJsonArray>
#include <QJsonObject>
#include <QList>
#include <QString>

namespace lorix::cli {

/// What the program returns; `lorix help exit-status` explains it.
enum ExitCode {
    Done = 0,          ///< Done, or the answer is yes.
    No = 1,            ///< The answer is no: damage, no match, a difference.
    Unusable = 2,      ///< The call or the input cannot be used.
    Failed = 3,        ///< The work itself failed: disk full, a tool missing.
    Interrupted = 130, ///< Ended by ctrl-C.
};

/// Something that a container shows that should not be so, with its place.
struct Finding
{
    QString code;       ///< Dotted, for example "section.digest.mismatch".
    QString severity;   ///< "error" or "warning".
    QString path;       ///< The way through nested containers, names joined by " > "; may be empty.
    int id = -1;        ///< Section or file id, -1 where it concerns neither.
    qint64 offset = -1; ///< 0-based byte offset in the container, -1 when unknown.
    QString expected;
    QString found;
    QString message; ///< The whole thing in words.

    /// The members as an object; those without a value are left out.
    QJsonObject toJson() const;
};

/// What one command has to say about one input, for people and for programs.
/// It is a value, so that it can be made on any thread and printed in order.
struct Answer
{
    int exitCode = Done;
    QString text;       ///< For people: printable lines, each with its line feed.
    QJsonObject json;   ///< For programs: starts as Answer::start() gives it.
    QStringList errors; ///< Messages for standard error, each naming the file.

    /// An answer with the keys that every object has: "schema" ("lorix/1"),
    /// "command" and "file".
    static Answer start(const QString& command, const QString& file);

    /// Notes what made the input unusable or the work fail: for people as a
    /// message "FILE: text", for programs under "errors". The worst code wins.
    void fail(int code, const QString& errorCode, const QString& file, const QString& message);

    /// Adds to "findings" and, for severity "error", sets the exit code to No
    /// unless it is worse already.
    void addFinding(const Finding& finding);
    /// The same for many, in their order.
    void addFindings(const QList<Finding>& findings);
};

/// The worse of two exit codes.
int worse(int a, int b);

} // namespace lorix::cli
