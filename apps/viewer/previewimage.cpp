// SPDX-License-Identifier: BSD-3-Clause
#include <apps/viewer/previewimage.h>

#include <QBuffer>
#include <QImageReader>

#ifdef LORIX_HAVE_POPPLER
#include <poppler-qt6.h>
#endif

#include <algorithm>
#include <memory>

namespace lorix::viewer {

namespace {

const int largestSide = 1600; // pixels of a preview

#ifdef LORIX_HAVE_POPPLER
QImage firstPage(const QByteArray& bytes)
{
    const std::unique_ptr<Poppler::Document> document = Poppler::Document::loadFromData(bytes);
    if (!document || document->isLocked() || document->numPages() < 1)
        return {};
    const std::unique_ptr<Poppler::Page> page = document->page(0);
    if (!page)
        return {};
    document->setRenderHint(Poppler::Document::Antialiasing);
    document->setRenderHint(Poppler::Document::TextAntialiasing);
    // A page may claim to be of any size.
    const QSizeF points = page->pageSizeF();
    const double side = std::max({points.width(), points.height(), 1.0});
    const double dotsPerInch = std::min(110.0, largestSide / side * 72.0);
    return page->renderToImage(dotsPerInch, dotsPerInch);
}
#endif

QImage imageOf(const QByteArray& bytes)
{
    QBuffer buffer;
    buffer.setData(bytes);
    buffer.open(QIODevice::ReadOnly);
    QImageReader reader(&buffer);
    const QSize size = reader.size();
    if (std::max(size.width(), size.height()) > largestSide)
        reader.setScaledSize(size.scaled(largestSide, largestSide, Qt::KeepAspectRatio));
    return reader.read();
}

} // namespace

bool canShowPdf()
{
#ifdef LORIX_HAVE_POPPLER
    return true;
#else
    return false;
#endif
}

QImage previewImage(const QByteArray& bytes)
{
    if (!bytes.left(1024).contains("%PDF-"))
        return imageOf(bytes);
#ifdef LORIX_HAVE_POPPLER
    return firstPage(bytes);
#else
    return {};
#endif
}

} // namespace lorix::viewer
