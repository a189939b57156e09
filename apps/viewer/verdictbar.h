// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <apps/viewer/checkresults.h>

#include <QFrame>

QT_BEGIN_NAMESPACE
class QLabel;
class QPushButton;
QT_END_NAMESPACE

namespace lorix::viewer {

/// Says above the document whether it is untouched, and has the button that
/// finds out.
class VerdictBar : public QFrame
{
    Q_OBJECT

public:
    explicit VerdictBar(QWidget* parent = nullptr);

    void showNotChecked();
    void showRunning(int percent);
    /// What has come out; `results` may be incomplete.
    void showResults(const CheckResults& results);
    /// The document on disk is another one now, or gone.
    void showChanged(bool stillThere);
    QString text() const;

Q_SIGNALS:
    void checkRequested();
    void stopRequested();
    void reloadRequested();
    /// A person wants to see what is damaged.
    void damageRequested();

protected:
    void changeEvent(QEvent* event) override;

private:
    void showMark();
    void say(CheckState state, const QString& text);

    QLabel* m_mark;
    QLabel* m_text;
    QPushButton* m_showDamage;
    QPushButton* m_button;
    CheckState m_state = CheckState::NotChecked;
    bool m_running = false;
    bool m_changed = false;
};

} // namespace lorix::viewer
