// SPDX-License-Identifier: BSD-3-Clause
#include <apps/viewer/extractdialog.h>

#include <apps/viewer/settings.h>

#include <apps/lorix/text.h>

#include <QCheckBox>
#include <QDesktopServices>
#include <QDir>
#include <QFileDialog>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QUrl>
#include <QVBoxLayout>

namespace lorix::viewer {

ExtractDialog::ExtractDialog(const QSharedPointer<History>& history, const QList<Place>& places,
                             QObject* logTarget, QWidget* parent)
    : QDialog(parent), m_history(history), m_places(places), m_extractor(logTarget),
      m_what(new QLabel), m_folder(new QLineEdit), m_browse(new QPushButton(tr("Browse …"))),
      m_nested(new QCheckBox(tr("Also the files inside the documents that are inside"))),
      m_message(new QLabel), m_clashes(new QWidget), m_bar(new QProgressBar),
      m_extract(new QPushButton(tr("Extract"))),
      m_showFolder(new QPushButton(tr("Show the folder"))), m_close(new QPushButton(tr("Cancel")))
{
    setWindowTitle(tr("Extract files"));
    buildLayout();
    m_folder->setText(QDir::toNativeSeparators(Settings::lastFolder(QStringLiteral("extract"))));
    m_nested->setVisible(places.isEmpty() && history->containers().size() > 1);
    connect(m_nested, &QCheckBox::toggled, this, &ExtractDialog::plan);
    connect(m_browse, &QPushButton::clicked, this, &ExtractDialog::browse);
    connect(m_extract, &QPushButton::clicked, this, &ExtractDialog::begin);
    connect(m_close, &QPushButton::clicked, this, &ExtractDialog::reject);
    connect(m_showFolder, &QPushButton::clicked, this, [this] {
        QDesktopServices::openUrl(
            QUrl::fromLocalFile(QDir::fromNativeSeparators(m_folder->text())));
    });
    connect(&m_extractor, &Extractor::progress, this, [this](int percent, const QString& name) {
        m_bar->setValue(percent);
        m_message->setText(tr("Writing %1").arg(cli::printable(name)));
    });
    connect(&m_extractor, &Extractor::finished, this, &ExtractDialog::showDone);
    plan();
}

void ExtractDialog::buildLayout()
{
    m_folder->setObjectName(QStringLiteral("extractFolder"));
    m_folder->setAccessibleName(tr("Folder to write to"));
    m_browse->setObjectName(QStringLiteral("extractBrowse"));
    m_extract->setObjectName(QStringLiteral("extractStart"));
    m_extract->setDefault(true);
    m_close->setObjectName(QStringLiteral("extractClose"));
    m_what->setTextFormat(Qt::PlainText);
    m_what->setWordWrap(true);
    m_message->setAccessibleName(tr("What has come of it"));
    m_message->setWordWrap(true);
    m_message->setTextFormat(Qt::PlainText);
    m_message->setTextInteractionFlags(Qt::TextSelectableByMouse);
    m_bar->setAccessibleName(tr("Progress"));
    m_bar->hide();
    m_showFolder->hide();
    auto* const folderRow = new QHBoxLayout;
    auto* const folderLabel = new QLabel(tr("&Folder:"));
    folderLabel->setBuddy(m_folder);
    folderRow->addWidget(folderLabel);
    folderRow->addWidget(m_folder, 1);
    folderRow->addWidget(m_browse);

    auto* const clashRow = new QHBoxLayout(m_clashes);
    clashRow->setContentsMargins(0, 0, 0, 0);
    const auto addChoice = [&](const QString& text, const char* name, Clash choice) {
        auto* const button = new QPushButton(text);
        button->setObjectName(QLatin1String(name));
        button->setAutoDefault(false);
        connect(button, &QPushButton::clicked, this, [this, choice] { decide(choice); });
        clashRow->addWidget(button);
    };
    addChoice(tr("&Keep both"), "clashKeepBoth", Clash::KeepBoth);
    addChoice(tr("&Skip these"), "clashSkip", Clash::Skip);
    addChoice(tr("&Replace them"), "clashReplace", Clash::Replace);
    clashRow->addStretch(1);
    m_clashes->hide();

    auto* const buttons = new QHBoxLayout;
    buttons->addStretch(1);
    buttons->addWidget(m_showFolder);
    buttons->addWidget(m_extract);
    buttons->addWidget(m_close);
    auto* const layout = new QVBoxLayout(this);
    layout->addWidget(m_what);
    layout->addLayout(folderRow);
    layout->addWidget(m_nested);
    layout->addWidget(m_message);
    layout->addWidget(m_clashes);
    layout->addWidget(m_bar);
    layout->addStretch(1);
    layout->addLayout(buttons);
    resize(560, 200);
}

void ExtractDialog::plan()
{
    m_jobs = m_places.isEmpty() ? planForAll(*m_history, m_nested->isChecked())
                                : planFor(*m_history, m_places);
    qint64 bytes = 0;
    for (const ExtractJob& job : std::as_const(m_jobs))
        bytes += std::max<qint64>(0, job.bytes);
    if (m_jobs.size() == 1)
        m_what->setText(
            tr("%1, %2").arg(cli::printable(m_jobs.first().name), cli::humanSize(bytes)));
    else
        m_what->setText(tr("%1 files, %2").arg(m_jobs.size()).arg(cli::humanSize(bytes)));
    if (m_jobs.isEmpty())
        m_message->setText(tr("The content of what you have selected is not in the document, so "
                              "there is nothing to extract."));
    m_extract->setEnabled(!m_jobs.isEmpty());
}

void ExtractDialog::browse()
{
    auto* const dialog =
        new QFileDialog(this, tr("Extract to"), QDir::fromNativeSeparators(m_folder->text()));
    dialog->setObjectName(QStringLiteral("folderDialog"));
    dialog->setFileMode(QFileDialog::Directory);
    dialog->setOption(QFileDialog::ShowDirsOnly);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    connect(dialog, &QFileDialog::fileSelected, this,
            [this](const QString& folder) { m_folder->setText(QDir::toNativeSeparators(folder)); });
    dialog->open();
}

void ExtractDialog::begin()
{
    const QString folder = QDir::fromNativeSeparators(m_folder->text().trimmed());
    if (folder.isEmpty()) {
        m_message->setText(tr("Choose the folder that the files shall go to."));
        m_folder->setFocus();
        return;
    }
    plan();
    m_extract->setEnabled(false);
    m_folder->setEnabled(false);
    m_browse->setEnabled(false);
    m_nested->setEnabled(false);
    const int clashes = countClashes(m_jobs, folder);
    if (clashes == 0) {
        go();
        return;
    }
    m_message->setText(tr("%1 of %2 files are in this folder already. What shall be done with "
                          "them?")
                           .arg(clashes)
                           .arg(m_jobs.size()));
    m_clashes->show();
    m_clashes->findChild<QPushButton*>()->setFocus();
}

void ExtractDialog::decide(Clash choice)
{
    m_clashes->hide();
    settleClashes(m_jobs, QDir::fromNativeSeparators(m_folder->text().trimmed()), choice);
    go();
}

void ExtractDialog::go()
{
    const QString folder = QDir::fromNativeSeparators(m_folder->text().trimmed());
    m_bar->setValue(0);
    m_bar->show();
    m_close->setText(tr("Stop"));
    m_extractor.start(m_history, m_jobs, folder);
}

void ExtractDialog::showDone()
{
    const QString folder = QDir::fromNativeSeparators(m_folder->text().trimmed());
    m_bar->hide();
    m_extract->hide();
    m_close->setText(tr("Close"));
    m_close->setDefault(true);
    m_close->setFocus();
    if (QDir(folder).exists()) {
        m_showFolder->show();
        Settings::setLastFolder(QStringLiteral("extract"), folder);
    }
    m_message->setText(describeOutcome(m_extractor.jobs(), folder));
    Q_EMIT extracted(m_message->text());
}

QString ExtractDialog::message() const
{
    return m_message->text();
}

// While files are being written, the button and Escape stop that first.
void ExtractDialog::reject()
{
    if (m_extractor.isRunning()) {
        m_extractor.cancel();
        showDone();
        return;
    }
    QDialog::reject();
}

} // namespace lorix::viewer
