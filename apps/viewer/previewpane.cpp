// SPDX-License-Identifier: BSD-3-Clause
#include <apps/viewer/previewpane.h>

#include <apps/viewer/previewimage.h>

#include <lorix/container/lorixparser.h>

#include <QFontDatabase>
#include <QLabel>
#include <QPlainTextEdit>
#include <QStringDecoder>

namespace lorix::viewer {

namespace {

const qsizetype shownText = 256 * 1024; // bytes; more is slow to lay out and not read here

bool isText(const QByteArray& bytes)
{
    return !bytes.contains('\0');
}

} // namespace

PreviewPane::PreviewPane(QWidget* parent)
    : QStackedWidget(parent), m_text(new QPlainTextEdit(this)), m_picture(new QLabel(this)),
      m_note(new QLabel(this))
{
    m_text->setReadOnly(true);
    m_text->setLineWrapMode(QPlainTextEdit::NoWrap);
    m_text->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    m_text->setAccessibleName(tr("Preview of the file"));
    m_picture->setAlignment(Qt::AlignCenter);
    m_picture->setMinimumSize(1, 1);
    m_picture->setAccessibleName(tr("Preview of the file as a picture"));
    m_note->setAlignment(Qt::AlignCenter);
    m_note->setWordWrap(true);
    m_note->setTextFormat(Qt::PlainText);
    addWidget(m_text);
    addWidget(m_picture);
    addWidget(m_note);
    clear();
}

void PreviewPane::clear()
{
    m_background.cancel();
    showNote(QString());
}

void PreviewPane::show(const History& history, const Place& place)
{
    m_background.cancel();
    const FileSummary& file = history.file(place);
    if (file.tagId < 0) {
        showNote(tr("The document only describes this file, so there is nothing to preview."));
        return;
    }
    const auto& parser = history.containers().at(history.step(place.node).container).parser;
    const auto tag = parser->getFile(file.tagId);
    if (!tag || tag->filesize > largest || tag->cfilesize > largest) {
        showNote(tr("This file is too large for a preview. Extract it to look at it."));
        return;
    }
    const auto content = parser->getFileContent(file.tagId);
    if (!content)
        showNote(tr("The content cannot be read: this part of the document is damaged."));
    else if (content->isEmpty())
        showNote(tr("The file is empty."));
    else
        showBytes(*content);
}

void PreviewPane::showBytes(const QByteArray& bytes)
{
    if (isText(bytes) && !bytes.startsWith("%PDF-")) {
        QStringDecoder decoder(QStringDecoder::Utf8);
        const QString text = decoder(bytes.left(shownText));
        if (!decoder.hasError()) {
            showText(text, bytes.size() > shownText);
            return;
        }
    }
    showNote(tr("Making a preview …"));
    m_kind = QStringLiteral("wait");
    m_background.start([this, bytes](const Background::Cancelled&) -> Background::Finish {
        const QImage image = previewImage(bytes);
        return [this, image] {
            if (image.isNull())
                showNote(tr("There is no preview for this kind of file. Extract it and open it "
                            "with the program that it belongs to."));
            else
                showImage(image);
        };
    });
}

void PreviewPane::showNote(const QString& text)
{
    m_kind = QStringLiteral("note");
    m_image = QImage();
    m_note->setText(text);
    setCurrentWidget(m_note);
    Q_EMIT shown();
}

void PreviewPane::showText(const QString& text, bool cut)
{
    m_kind = QStringLiteral("text");
    m_image = QImage();
    m_text->setPlainText(cut ? text + QLatin1Char('\n') + tr("[… only the beginning is shown]")
                             : text);
    setCurrentWidget(m_text);
    Q_EMIT shown();
}

void PreviewPane::showImage(const QImage& image)
{
    m_kind = QStringLiteral("image");
    m_image = image;
    setCurrentWidget(m_picture);
    scaleImage();
    Q_EMIT shown();
}

void PreviewPane::scaleImage()
{
    if (m_image.isNull())
        return;
    const QSize room = size().boundedTo(m_image.size());
    m_picture->setPixmap(
        QPixmap::fromImage(m_image.scaled(room, Qt::KeepAspectRatio, Qt::SmoothTransformation)));
}

QString PreviewPane::text() const
{
    return currentWidget() == m_note ? m_note->text() : m_text->toPlainText();
}

void PreviewPane::resizeEvent(QResizeEvent* event)
{
    QStackedWidget::resizeEvent(event);
    scaleImage();
}

} // namespace lorix::viewer
