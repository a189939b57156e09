// SPDX-License-Identifier: BSD-3-Clause
#include <apps/viewer/verdictbar.h>

#include <apps/viewer/marks.h>

#include <QEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>

#include <algorithm>

namespace lorix::viewer {

VerdictBar::VerdictBar(QWidget* parent)
    : QFrame(parent), m_mark(new QLabel), m_text(new QLabel),
      m_showDamage(new QPushButton(tr("Show the damage"))), m_button(new QPushButton)
{
    setFrameShape(StyledPanel);
    setAutoFillBackground(true);
    setBackgroundRole(QPalette::Base);
    m_text->setWordWrap(true);
    m_text->setTextFormat(Qt::PlainText);
    m_text->setTextInteractionFlags(Qt::TextSelectableByMouse);
    m_text->setAccessibleName(tr("Whether the document is untouched"));
    m_button->setObjectName(QStringLiteral("checkButton"));
    m_showDamage->setObjectName(QStringLiteral("showDamageButton"));
    auto* const layout = new QHBoxLayout(this);
    layout->setContentsMargins(10, 6, 10, 6);
    layout->addWidget(m_mark);
    layout->addWidget(m_text, 1);
    layout->addWidget(m_showDamage);
    layout->addWidget(m_button);
    connect(m_button, &QPushButton::clicked, this, [this] {
        if (m_changed)
            Q_EMIT reloadRequested();
        else if (m_running)
            Q_EMIT stopRequested();
        else
            Q_EMIT checkRequested();
    });
    connect(m_showDamage, &QPushButton::clicked, this, &VerdictBar::damageRequested);
    showNotChecked();
}

void VerdictBar::say(CheckState state, const QString& text)
{
    m_state = state;
    showMark();
    m_text->setText(text);
    m_button->setText(m_changed                         ? tr("Open again")
                      : m_running                       ? tr("Stop")
                      : state == CheckState::NotChecked ? tr("Check")
                                                        : tr("Check again"));
    m_showDamage->setVisible(state == CheckState::Damaged);
}

void VerdictBar::showNotChecked()
{
    m_running = false;
    m_changed = false;
    say(CheckState::NotChecked, tr("Not checked yet. “Check” finds out whether the document and "
                                   "the files in it are unchanged since they were recorded."));
}

void VerdictBar::showRunning(int percent)
{
    m_running = true;
    m_changed = false;
    say(CheckState::NotChecked, tr("Checking … %1 %").arg(percent));
}

void VerdictBar::showResults(const CheckResults& results)
{
    m_running = false;
    m_changed = false;
    const auto errors = std::count_if(results.notices().cbegin(), results.notices().cend(),
                                      [](const Notice& notice) { return notice.isError; });
    QString first;
    for (const Notice& notice : results.notices())
        if (first.isEmpty() && (notice.isError || errors == 0))
            first = QLatin1Char(' ') + notice.text;
    if (results.damaged() > 0)
        say(CheckState::Damaged,
            tr("Damaged: %1 of %2 parts are not as they were recorded. The marks show which, and "
               "their pages say why.")
                    .arg(results.damaged())
                    .arg(results.checked()) +
                first);
    else if (errors > 0)
        say(CheckState::Damaged, tr("Damaged: the history does not hold together.") + first);
    else if (!results.isComplete())
        say(CheckState::NotChecked,
            tr("Stopped after %1 parts, all valid. The rest is not checked.")
                .arg(results.checked()));
    else if (results.isEmpty())
        say(CheckState::NotChecked, tr("There is nothing to check: no step has been recorded."));
    else
        say(CheckState::Valid,
            tr("Valid: all %1 parts, steps and files, are unchanged since they were recorded.")
                    .arg(results.checked()) +
                first);
}

void VerdictBar::showChanged(bool stillThere)
{
    m_running = false;
    m_changed = true;
    say(CheckState::NotChecked,
        stillThere
            ? tr("The document was changed on disk since it was opened. Open it again to see "
                 "what it holds now.")
            : tr("The document is not where it was any more: it was moved, renamed or "
                 "deleted. What is shown here was read before."));
}

QString VerdictBar::text() const
{
    return m_text->text();
}

void VerdictBar::changeEvent(QEvent* event)
{
    QFrame::changeEvent(event);
    if (event->type() == QEvent::PaletteChange)
        showMark();
}

void VerdictBar::showMark()
{
    m_mark->setPixmap(markIcon(m_state, palette()).pixmap(QSize(24, 24), devicePixelRatioF()));
    m_mark->setAccessibleName(stateName(m_state));
}

} // namespace lorix::viewer
