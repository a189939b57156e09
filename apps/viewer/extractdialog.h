// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <apps/viewer/extractor.h>

#include <QDialog>

QT_BEGIN_NAMESPACE
class QCheckBox;
class QLabel;
class QLineEdit;
class QProgressBar;
class QPushButton;
QT_END_NAMESPACE

namespace lorix::viewer {

/// Asks for a folder, asks once what to do with files that are there already,
/// shows the progress, and says at the end what has come of it.
class ExtractDialog : public QDialog
{
    Q_OBJECT

public:
    /// For these places, or for everything when there are none.
    ExtractDialog(const QSharedPointer<History>& history, const QList<Place>& places,
                  QObject* logTarget, QWidget* parent = nullptr);

    /// What the dialog says at present.
    QString message() const;

Q_SIGNALS:
    /// All is done; message() says what has come of it.
    void extracted(const QString& message);

protected:
    void reject() override;

private:
    void buildLayout();
    void plan();
    void begin();
    void go();
    void decide(Clash choice);
    void showDone();
    void browse();

    QSharedPointer<History> m_history;
    QList<Place> m_places;
    QList<ExtractJob> m_jobs;
    Extractor m_extractor;
    QLabel* m_what;
    QLineEdit* m_folder;
    QPushButton* m_browse;
    QCheckBox* m_nested;
    QLabel* m_message;
    QWidget* m_clashes;
    QProgressBar* m_bar;
    QPushButton* m_extract;
    QPushButton* m_showFolder;
    QPushButton* m_close;
};

} // namespace lorix::viewer
