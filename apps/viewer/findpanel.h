// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <apps/viewer/background.h>
#include <apps/viewer/matchsearch.h>

#include <QWidget>

QT_BEGIN_NAMESPACE
class QLabel;
class QPushButton;
class QTreeWidget;
class QTreeWidgetItem;
QT_END_NAMESPACE

namespace lorix::viewer {

class QueryEdit;

/// Asks the history a question: a line for the query, examples to begin with,
/// what is wrong with it, and what has been found.
class FindPanel : public QWidget
{
    Q_OBJECT

public:
    explicit FindPanel(QWidget* parent = nullptr);

    void setHistory(const QSharedPointer<History>& history);
    /// Looks for what the line says.
    void find();
    bool isBusy() const { return m_search.isBusy(); }

    QueryEdit* edit() const { return m_edit; }
    QTreeWidget* list() const { return m_list; }
    QString message() const;
    const FoundMatches& found() const { return m_found; }
    /// The queries of the gallery, each with what it asks for.
    static QList<QPair<QString, QString>> examples();

Q_SIGNALS:
    /// Everything that has been found, with the variables that stand for it.
    void matchesChanged(const QHash<lorix::viewer::Place, QString>& matches);
    void placeChosen(const lorix::viewer::Place& place);

private:
    void buildLayout();
    void showErrors();
    void take(const FoundMatches& found);
    void addMatch(int number, const FoundMatch& match);
    void choose(QTreeWidgetItem* item);

    QSharedPointer<History> m_history;
    Background m_search;
    FoundMatches m_found;
    QueryEdit* m_edit;
    QPushButton* m_find;
    QPushButton* m_examples;
    QLabel* m_message;
    QTreeWidget* m_list;
};

} // namespace lorix::viewer
