// SPDX-License-Identifier: BSD-3-Clause
#include <apps/viewer/logpane.h>

#include <apps/lorix/text.h>

#include <QFontDatabase>
#include <QHBoxLayout>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTime>
#include <QVBoxLayout>

#include <algorithm>

namespace lorix::viewer {

namespace {

const int keptLines = 5000;
const int longestMessage = 2000; // characters; a name may be of any length
const int showEveryMs = 60;

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
    clearButton->setToolTip(tr("Forget all messages"));
    m_timer.setSingleShot(true);
    connect(&m_timer, &QTimer::timeout, this, &LogPane::flush);
    connect(clearButton, &QPushButton::clicked, this, &LogPane::clear);
    auto* const layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_lines, 1);
    auto* const buttons = new QVBoxLayout;
    buttons->addWidget(clearButton);
    buttons->addStretch(1);
    layout->addLayout(buttons);
}

QString LogPane::text()
{
    flush();
    return m_lines->toPlainText();
}

// Lines are shown together now and then: a document may give rise to very many,
// of which only the last are kept.
void LogPane::log(QString message, int type)
{
    const QString kind = type == 2 ? tr("Error: ") : type == 1 ? tr("Warning: ") : QString();
    const QString time = QTime::currentTime().toString(QStringLiteral("HH:mm:ss  "));
    const QString line = cli::printable(message.left(longestMessage).trimmed());
    m_waiting.append(time + kind + line);
    if (m_waiting.size() > 2 * keptLines)
        m_waiting = m_waiting.mid(m_waiting.size() - keptLines);
    if (!m_timer.isActive())
        m_timer.start(showEveryMs);
    if (type > 0)
        Q_EMIT trouble();
}

void LogPane::flush()
{
    m_timer.stop();
    if (m_waiting.isEmpty())
        return;
    const qsizetype tooMany = std::max<qsizetype>(0, m_waiting.size() - keptLines);
    m_lines->appendPlainText(m_waiting.mid(tooMany).join(QLatin1Char('\n')));
    m_waiting.clear();
}

void LogPane::clear()
{
    m_waiting.clear();
    m_lines->clear();
}

} // namespace lorix::viewer
