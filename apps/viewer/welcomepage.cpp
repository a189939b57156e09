// SPDX-License-Identifier: BSD-3-Clause
#include <apps/viewer/welcomepage.h>

#include <apps/viewer/words.h>

#include <apps/lorix/text.h>

#include <QDir>
#include <QFileInfo>
#include <QHBoxLayout>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QVBoxLayout>

namespace lorix::viewer {

WelcomePage::WelcomePage(QWidget* parent)
    : QWidget(parent), m_problem(new QLabel), m_recentTitle(new QLabel(tr("Opened lately"))),
      m_recent(new QListWidget)
{
    auto* const title = new QLabel(tr("See how a document came about"));
    QFont large = title->font();
    large.setPointSizeF(large.pointSizeF() * 1.8);
    title->setFont(large);
    auto* const what = new QLabel(
        tr("Some documents, PDF files mostly, carry their own history: the steps in which they "
           "were made, and the files that went into each step. Open one here to look at its "
           "history, to check that nobody has changed it, and to get the files out."));
    what->setWordWrap(true);
    auto* const open = new QPushButton(tr("Open a document …"));
    open->setObjectName(QStringLiteral("welcomeOpen"));
    open->setDefault(true);
    auto* const drop = new QLabel(tr("… or drop one onto this window."));
    m_problem->setWordWrap(true);
    m_problem->setTextFormat(Qt::PlainText);
    m_problem->setFrameShape(QFrame::StyledPanel);
    m_problem->setMargin(8);
    m_problem->setAccessibleName(tr("Problem"));
    m_recent->setAccessibleName(tr("Documents opened lately"));
    m_recentTitle->setBuddy(m_recent);

    auto* const column = new QWidget;
    column->setMaximumWidth(620);
    auto* const layout = new QVBoxLayout(column);
    layout->setSpacing(14);
    layout->addStretch(1);
    layout->addWidget(title);
    layout->addWidget(what);
    layout->addWidget(m_problem);
    layout->addWidget(open, 0, Qt::AlignLeft);
    layout->addWidget(drop);
    layout->addWidget(m_recentTitle);
    layout->addWidget(m_recent, 2);
    layout->addStretch(1);
    auto* const outer = new QHBoxLayout(this);
    outer->addStretch(1);
    outer->addWidget(column, 10);
    outer->addStretch(1);

    connect(open, &QPushButton::clicked, this, &WelcomePage::openRequested);
    connect(m_recent, &QListWidget::itemActivated, this, [this](QListWidgetItem* item) {
        Q_EMIT fileChosen(item->data(Qt::UserRole).toString());
    });
    setProblem(QString());
    setRecentFiles({});
}

void WelcomePage::setRecentFiles(const QStringList& paths)
{
    m_recent->clear();
    for (const QString& path : paths) {
        const QFileInfo info(path);
        auto* const item = new QListWidgetItem(
            cli::printable(QStringLiteral("%1  –  %2")
                               .arg(info.fileName(), QDir::toNativeSeparators(info.path()))));
        item->setToolTip(plainTip(cli::printable(path)));
        item->setData(Qt::UserRole, path);
        m_recent->addItem(item);
    }
    m_recent->setVisible(!paths.isEmpty());
    m_recentTitle->setVisible(!paths.isEmpty());
}

void WelcomePage::setProblem(const QString& text)
{
    m_problem->setText(text);
    m_problem->setVisible(!text.isEmpty());
}

QString WelcomePage::problem() const
{
    return m_problem->text();
}

} // namespace lorix::viewer
