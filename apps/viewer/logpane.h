// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QStringList>
#include <QTimer>
#include <QWidget>

QT_BEGIN_NAMESPACE
class QPlainTextEdit;
QT_END_NAMESPACE

namespace lorix::viewer {

/// Shows the messages of the library and of the program, the newest last.
class LogPane : public QWidget
{
    Q_OBJECT

public:
    explicit LogPane(QWidget* parent = nullptr);

    /// All lines that are kept.
    QString text();

public Q_SLOTS:
    /// Appends a message: 0 information, 1 warning, 2 error. The library's
    /// messages are connected to this slot by its name.
    void log(QString message, int type);
    void clear();

Q_SIGNALS:
    /// A warning or an error has come in.
    void trouble();

private:
    void flush();

    QPlainTextEdit* m_lines;
    QStringList m_waiting; // lines that are not shown yet
    QTimer m_timer;
};

} // namespace lorix::viewer
