// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <apps/viewer/background.h>
#include <apps/viewer/history.h>

#include <QImage>
#include <QStackedWidget>

QT_BEGIN_NAMESPACE
class QLabel;
class QPlainTextEdit;
QT_END_NAMESPACE

namespace lorix::viewer {

/// Shows what a file looks like: text, an image, or the first page of a PDF.
class PreviewPane : public QStackedWidget
{
    Q_OBJECT

public:
    /// Files beyond this many bytes, packed or not, have no preview.
    static constexpr int largest = 16 * 1024 * 1024;

    explicit PreviewPane(QWidget* parent = nullptr);

    void show(const QSharedPointer<History>& history, const Place& place);
    void clear();
    /// What is shown: "text", "image", "note" or, while it is being made, "wait".
    QString kind() const { return m_kind; }
    /// The text, or the note that says why there is no preview.
    QString text() const;
    const QImage& image() const { return m_image; }

Q_SIGNALS:
    /// A preview is there.
    void shown();

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    void showNote(const QString& text);
    void showWait();
    void showText(const QString& text, bool cut);
    void showImage(const QImage& image);
    void showImageOr(const QImage& image, const QString& text, bool cut);
    void showBytes(const QByteArray& bytes);
    void showLater(const QString& path, const FileTag& tag);
    void scaleImage();

    QPlainTextEdit* m_text;
    QLabel* m_picture;
    QLabel* m_note;
    QImage m_image;
    QString m_kind;
    Background m_background;
};

} // namespace lorix::viewer
