// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QList>
#include <QObject>
#include <QPair>
#include <QString>

/// Receives log messages through the two-argument slot and keeps them in order.
class LogRecorder : public QObject
{
    Q_OBJECT

public:
    QList<QPair<QString, int>> messages;

    /// The texts alone.
    QStringList texts() const;

public Q_SLOTS:
    void log(QString message, int type);
};
