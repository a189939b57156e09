// SPDX-License-Identifier: BSD-3-Clause
#include <apps/viewer/detailspanel.h>

#include <apps/viewer/colours.h>
#include <apps/viewer/detailshtml.h>
#include <apps/viewer/previewpane.h>

#include <QEvent>
#include <QPushButton>
#include <QScrollBar>
#include <QSplitter>
#include <QTextBrowser>
#include <QVBoxLayout>

namespace lorix::viewer {

DetailsPanel::DetailsPanel(QWidget* parent)
    : QWidget(parent), m_page(new QTextBrowser),
      m_extract(new QPushButton(tr("Extract this file …"))), m_preview(new PreviewPane),
      m_splitter(new QSplitter(Qt::Vertical))
{
    m_page->setOpenLinks(false);
    m_page->setAccessibleName(tr("Details of the selected step or file"));
    m_extract->setObjectName(QStringLiteral("extractThisFile"));
    auto* const below = new QWidget;
    auto* const belowLayout = new QVBoxLayout(below);
    belowLayout->setContentsMargins(0, 0, 0, 0);
    belowLayout->addWidget(m_preview, 1);
    belowLayout->addWidget(m_extract);
    m_splitter->addWidget(m_page);
    m_splitter->addWidget(below);
    m_splitter->setStretchFactor(0, 3);
    m_splitter->setStretchFactor(1, 2);
    m_splitter->setChildrenCollapsible(false);
    auto* const layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_splitter);
    below->hide();
    connect(m_page, &QTextBrowser::anchorClicked, this, [this](const QUrl& url) {
        const Place place = placeOfLink(url.toString());
        if (m_history && m_history->contains(place))
            Q_EMIT placeChosen(place);
    });
    connect(m_extract, &QPushButton::clicked, this, [this] { Q_EMIT extractRequested(m_current); });
}

void DetailsPanel::setHistory(const QSharedPointer<History>& history)
{
    m_history = history;
    setCurrent(Place());
}

void DetailsPanel::setCurrent(const Place& place)
{
    m_current = place;
    showPage();
    const bool file = m_history && place.isFile();
    m_splitter->widget(1)->setVisible(file);
    m_extract->setEnabled(file && m_history->file(place).tagId >= 0);
    if (file)
        m_preview->show(m_history, place);
    else
        m_preview->clear();
}

void DetailsPanel::refreshStates()
{
    const int scrolled = m_page->verticalScrollBar()->value();
    showPage();
    m_page->verticalScrollBar()->setValue(scrolled);
}

void DetailsPanel::changeEvent(QEvent* event)
{
    QWidget::changeEvent(event);
    if (event->type() == QEvent::PaletteChange)
        refreshStates();
}

void DetailsPanel::showPage()
{
    // The palette's own colour of links is made for light grounds.
    const QColor link =
        readable(palette().color(QPalette::Link), m_page->palette().color(QPalette::Base));
    m_page->document()->setDefaultStyleSheet(QStringLiteral("a { color: %1 }").arg(link.name()));
    if (m_history && m_results)
        m_page->setHtml(detailsHtml(*m_history, *m_results, m_current));
    else
        m_page->clear();
}

} // namespace lorix::viewer
