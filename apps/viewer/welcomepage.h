// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QWidget>

QT_BEGIN_NAMESPACE
class QLabel;
class QListWidget;
QT_END_NAMESPACE

namespace lorix::viewer {

/// What the window shows before a document is open: what the program is for,
/// and the ways to open one.
class WelcomePage : public QWidget
{
    Q_OBJECT

public:
    explicit WelcomePage(QWidget* parent = nullptr);

    void setRecentFiles(const QStringList& paths);
    /// Why the last document could not be opened; empty for nothing.
    void setProblem(const QString& text);
    QString problem() const;

Q_SIGNALS:
    void openRequested();
    void fileChosen(const QString& path);

private:
    QLabel* m_problem;
    QLabel* m_recentTitle;
    QListWidget* m_recent;
};

} // namespace lorix::viewer
