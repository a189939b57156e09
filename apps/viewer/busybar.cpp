// SPDX-License-Identifier: BSD-3-Clause
#include <apps/viewer/busybar.h>

#include <QHBoxLayout>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>

namespace lorix::viewer {

BusyBar::BusyBar(QWidget* parent)
    : QWidget(parent), m_label(new QLabel), m_bar(new QProgressBar),
      m_stop(new QPushButton(tr("Stop")))
{
    m_label->setTextFormat(Qt::PlainText);
    m_bar->setMaximumWidth(220);
    m_bar->setAccessibleName(tr("Progress"));
    m_stop->setObjectName(QStringLiteral("stopButton"));
    m_stop->setToolTip(tr("Stop the work that is going on"));
    auto* const layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_label);
    layout->addWidget(m_bar);
    layout->addWidget(m_stop);
    connect(m_stop, &QPushButton::clicked, this, &BusyBar::stopRequested);
    hide();
}

void BusyBar::begin(const QString& what)
{
    m_what = what;
    m_label->setText(what);
    m_bar->setRange(0, 0);
    show();
}

void BusyBar::setPercent(int percent, const QString& detail)
{
    m_bar->setRange(0, 100);
    m_bar->setValue(percent);
    setDetail(detail);
}

void BusyBar::setDetail(const QString& detail)
{
    const QString text = detail.isEmpty() ? m_what : m_what + QStringLiteral(": ") + detail;
    m_label->setText(m_label->fontMetrics().elidedText(text, Qt::ElideMiddle, 420));
}

void BusyBar::end()
{
    hide();
}

} // namespace lorix::viewer
