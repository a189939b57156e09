// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <apps/viewer/checkresults.h>

#include <QWidget>

QT_BEGIN_NAMESPACE
class QPushButton;
class QSplitter;
class QTextBrowser;
QT_END_NAMESPACE

namespace lorix::viewer {

class PreviewPane;

/// Everything that is known about the selected step or file.
class DetailsPanel : public QWidget
{
    Q_OBJECT

public:
    explicit DetailsPanel(QWidget* parent = nullptr);

    /// Shows another history, as a whole; null empties the panel.
    void setHistory(const QSharedPointer<History>& history);
    /// Where states come from; must outlive the panel.
    void setResults(const CheckResults* results) { m_results = results; }
    void setCurrent(const Place& place);
    /// Shows new results.
    void refreshStates();

    QTextBrowser* page() const { return m_page; }
    PreviewPane* preview() const { return m_preview; }

Q_SIGNALS:
    /// A person has followed a link.
    void placeChosen(const lorix::viewer::Place& place);
    /// ... wants this file on disk.
    void extractRequested(const lorix::viewer::Place& place);

protected:
    void changeEvent(QEvent* event) override;

private:
    void showPage();

    QTextBrowser* m_page;
    QPushButton* m_extract;
    PreviewPane* m_preview;
    QSplitter* m_splitter;
    QSharedPointer<History> m_history;
    const CheckResults* m_results = nullptr;
    Place m_current;
};

} // namespace lorix::viewer
