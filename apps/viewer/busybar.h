// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QWidget>

QT_BEGIN_NAMESPACE
class QLabel;
class QProgressBar;
class QPushButton;
QT_END_NAMESPACE

namespace lorix::viewer {

/// Says in the status bar what long work is going on, how far it is, and stops
/// it.
class BusyBar : public QWidget
{
    Q_OBJECT

public:
    explicit BusyBar(QWidget* parent = nullptr);

    /// Shows the bar; without a percentage until the first setPercent().
    void begin(const QString& what);
    void setPercent(int percent, const QString& detail = QString());
    /// Says what has been reached where no percentage is known.
    void setDetail(const QString& detail);
    void end();

Q_SIGNALS:
    void stopRequested();

private:
    QLabel* m_label;
    QProgressBar* m_bar;
    QPushButton* m_stop;
    QString m_what;
};

} // namespace lorix::viewer
