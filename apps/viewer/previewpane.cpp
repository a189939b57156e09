// SPDX-License-Identifier: BSD-3-Clause
#include <apps/viewer/previewpane.h>

#include <apps/viewer/previewimage.h>

#include <lorix/container/lorixparser.h>

#include <QFontDatabase>
#include <QLabel>
#include <QPlainTextEdit>
#include <QStringDecoder>

#include <algorithm>

namespace lorix::viewer {

namespace {

const qsizetype shownText = 256 * 1024; // bytes; more is slow to lay out and not read here
const qsizetype shownLine = 10000;      // characters; likewise
const qint64 readAtOnce = 256 * 1024;   // bytes; more is read beside the window

// Control characters that texts have: tab, line feed, form feed, carriage return.
bool isControl(char byte)
{
    const auto code = static_cast<unsigned char>(byte);
    return code < 0x20 && code != 9 && code != 10 && code != 12 && code != 13;
}

// Drawings are better looked at than read.
bool isDrawing(const QString& text)
{
    return QStringView(text).left(1024).contains(QLatin1String("<svg"));
}

// UTF-8, or else the older coding of western languages where nothing speaks
// against it; null for what is no text.
QString decoded(const QByteArray& bytes)
{
    if (bytes.startsWith("%PDF-"))
        return {};
    const bool plain = std::none_of(bytes.cbegin(), bytes.cend(), isControl);
    QStringDecoder decoder(QStringDecoder::Utf8);
    const QString text = decoder(bytes);
    if (!decoder.hasError() && !bytes.contains('\0'))
        return text;
    return plain ? QString::fromLatin1(bytes) : QString();
}

QString previewText(const QByteArray& bytes, bool& cut)
{
    cut = bytes.size() > shownText;
    const QString text = decoded(bytes.left(shownText));
    if (text.isNull())
        return text;
    QString lines;
    qsizetype from = 0;
    while (from < text.size()) {
        const qsizetype feed = text.indexOf(QLatin1Char('\n'), from);
        const qsizetype end = feed < 0 ? text.size() : feed;
        lines += QStringView(text).mid(from, std::min(end - from, shownLine));
        if (end - from > shownLine) {
            lines += QStringLiteral(" …");
            cut = true;
        }
        if (feed >= 0)
            lines += QLatin1Char('\n');
        from = end + 1;
    }
    return lines.isNull() ? QStringLiteral("") : lines;
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

void PreviewPane::show(const QSharedPointer<History>& history, const Place& place)
{
    m_background.cancel();
    const FileSummary& file = history->file(place);
    if (file.tagId < 0) {
        showNote(tr("The document only describes this file, so there is nothing to preview."));
        return;
    }
    const HistoryContainer& container =
        history->containers().at(history->step(place.node).container);
    const auto tag = container.parser->getFile(file.tagId);
    if (!tag || tag->filesize > largest || tag->cfilesize > largest) {
        showNote(tr("This file is too large for a preview. Extract it to look at it."));
        return;
    }
    if (std::max(tag->filesize, tag->cfilesize) > readAtOnce) {
        showLater(container.path, *tag);
        return;
    }
    const auto content = container.parser->getFileContent(file.tagId);
    if (!content)
        showNote(tr("The content cannot be read: this part of the document is damaged."));
    else
        showBytes(*content);
}

void PreviewPane::showBytes(const QByteArray& bytes)
{
    bool cut = false;
    const QString text = bytes.isEmpty() ? QStringLiteral("") : previewText(bytes, cut);
    if (!text.isNull() && !isDrawing(text)) {
        showText(text, cut);
        return;
    }
    showWait();
    m_background.start(
        [this, bytes, text, cut](const Background::Cancelled& cancelled) -> Background::Finish {
            const QImage image = previewImage(bytes, cancelled);
            return [this, image, text, cut] { showImageOr(image, text, cut); };
        });
}

// Beside the window, with a parser of its own: that of the document may be at
// work with a check.
void PreviewPane::showLater(const QString& path, const FileTag& tag)
{
    showWait();
    m_background.start([this, path,
                        tag](const Background::Cancelled& cancelled) -> Background::Finish {
        LorixParser parser;
        const auto found = parser.open(path) ? parser.getFile(tag.id) : nullptr;
        if (!found || found->position != tag.position || found->md5file != tag.md5file)
            return
                [this] { showNote(tr("The document was changed on disk since it was opened.")); };
        const auto content = parser.getFileContent(tag.id);
        if (!content)
            return [this] {
                showNote(tr("The content cannot be read: this part of the document is damaged."));
            };
        bool cut = false;
        const QString text = previewText(*content, cut);
        QImage image;
        if (text.isNull() || isDrawing(text))
            image = previewImage(*content, cancelled);
        return [this, image, text, cut] { showImageOr(image, text, cut); };
    });
}

void PreviewPane::showImageOr(const QImage& image, const QString& text, bool cut)
{
    if (!image.isNull())
        showImage(image);
    else if (!text.isNull())
        showText(text, cut);
    else
        showNote(tr("There is no preview for this kind of file. Extract it and open it with the "
                    "program that it belongs to."));
}

void PreviewPane::showWait()
{
    showNote(tr("Making a preview …"));
    m_kind = QStringLiteral("wait");
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
    if (text.isEmpty()) {
        showNote(tr("The file is empty."));
        return;
    }
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
    const double ratio = devicePixelRatioF();
    const QSize room = (QSizeF(size()) * ratio).toSize().boundedTo(m_image.size());
    QPixmap picture =
        QPixmap::fromImage(m_image.scaled(room, Qt::KeepAspectRatio, Qt::SmoothTransformation));
    picture.setDevicePixelRatio(ratio);
    m_picture->setPixmap(picture);
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
