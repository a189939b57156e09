// SPDX-License-Identifier: BSD-3-Clause
#include <apps/viewer/logpane.h>

#include <apps/lorix/text.h>

#include <QFontDatabase>
#include <QHBoxLayout>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTime>
#include <QVBoxLayout>

namespace lorix::viewer {

namespace {

const int keptLines = 5000;

} // namespace

LogPane::LogPane(QWidget* parent) : QWidget(parent), m_lines(new QPlainTextEdit)
{
    m_lines->setReadOnly(true);
    m_lines->setMaximumBlockCount(keptLines);
    m_lines->setLineWrapMode(QPlainTextEdit::NoWrap);
    m_lines->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    m_lines->setAccessibleName(tr("Messages"));
    m_lines->setPlaceholderText(tr("What the program does is noted here."));
    auto* const clearButton = new QPushButton(tr("Clear"));
    connect(clearButton, &QPushButton::clicked, this, &LogPane::clear);
    auto* const layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_lines, 1);
    auto* const buttons = new QVBoxLayout;
    buttons->addWidget(clearButton);
    buttons->addStretch(1);
    layout->addLayout(buttons);
}

QString LogPane::text() const
{
    return m_lines->toPlainText();
}

void LogPane::log(QString message, int type)
{
    const QString kind = type == 2 ? tr("Error: ") : type == 1 ? tr("Warning: ") : QString();
    const QString time = QTime::currentTime().toString(QStringLiteral("HH:mm:ss  "));
    m_lines->appendPlainText(time + kind + cli::printable(message.trimmed()));
    if (type > 0)
        Q_EMIT trouble();
}

void LogPane::clear()
{
    m_lines->clear();
}

} // namespace lorix::viewer
