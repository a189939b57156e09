// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <apps/viewer/background.h>
#include <apps/viewer/comparison.h>
#include <apps/viewer/historyloader.h>

#include <QWidget>

QT_BEGIN_NAMESPACE
class QCheckBox;
class QLabel;
class QPushButton;
class QTreeWidget;
QT_END_NAMESPACE

namespace lorix::viewer {

/// Two documents side by side: the steps that are the same stand in one row,
/// and below are the fields of the selected row.
class ComparePage : public QWidget
{
    Q_OBJECT

public:
    explicit ComparePage(QObject* logTarget, QWidget* parent = nullptr);

    /// The document on the left; forgets what was compared.
    void setHistory(const QSharedPointer<History>& history);
    /// Reads the document at `path` and shows it on the right.
    void compareWith(const QString& path);
    bool isBusy() const { return m_loader.isBusy() || m_search.isBusy(); }

    QTreeWidget* steps() const { return m_steps; }
    QTreeWidget* fields() const { return m_fields; }
    QString summary() const;
    /// The match on show, 0 for the best.
    int shownMatch() const { return m_shown; }

Q_SIGNALS:
    /// A person wants to choose the other document.
    void chooseRequested();
    /// A comparison is on show, or a message why there is none.
    void shown();

private:
    void buildLayout();
    void search(int count);
    void take(const QList<LorixDiffResult>& matches, int asked, bool stopped);
    void showMatch(int number);
    void showRows();
    void showFields();
    void say(const QString& text);

    HistoryLoader m_loader;
    Background m_search;
    QSharedPointer<History> m_left;
    QSharedPointer<History> m_right;
    QList<LorixDiffResult> m_matches;
    QList<ComparisonRow> m_rows;
    int m_shown = 0;
    bool m_noMore = false;

    QLabel* m_summary;
    QPushButton* m_choose;
    QPushButton* m_previous;
    QPushButton* m_next;
    QCheckBox* m_onlyDifferent;
    QTreeWidget* m_steps;
    QTreeWidget* m_fields;
};

} // namespace lorix::viewer
