// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QByteArray>
#include <QJsonObject>
#include <QList>
#include <QString>
#include <QStringList>

/// One call of the command line tool inside the test's own process.
struct CliCall
{
    int exitCode = -1;
    QByteArray out;
    QByteArray err;

    /// The objects that --json printed, one per line; fails the test where a
    /// line is none.
    QList<QJsonObject> objects() const;
};

/// Runs `lorix` with these arguments.
CliCall runCli(const QStringList& arguments);
