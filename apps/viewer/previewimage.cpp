// SPDX-License-Identifier: BSD-3-Clause
#include <apps/viewer/previewimage.h>

#include <QBuffer>
#include <QImageReader>
#include <QVariant>
#include <QXmlStreamReader>

#ifdef LORIX_HAVE_POPPLER
#include <poppler-qt6.h>
#endif

#include <algorithm>
#include <iterator>
#include <memory>

namespace lorix::viewer {

namespace {

const int largestSide = 1600; // pixels of a preview
const int largestDrawing = 2 * 1024 * 1024;
const int deepestDrawing = 40; // elements within elements

// Others are rare, and their readers have been looked at by few.
const char* const formats[] = {"png", "jpeg", "gif", "bmp", "svg", "webp",
                               "ppm", "pgm",  "pbm", "ico", "tiff"};

#ifdef LORIX_HAVE_POPPLER
bool isCancelled(const QVariant& closure)
{
    const auto* const cancelled =
        static_cast<const std::function<bool()>*>(closure.value<const void*>());
    return (*cancelled)();
}

QImage firstPage(const QByteArray& bytes, const std::function<bool()>& cancelled)
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
    const int width = static_cast<int>(points.width() * dotsPerInch / 72.0) + 1;
    const int height = static_cast<int>(points.height() * dotsPerInch / 72.0) + 1;
    return page->renderToImage(dotsPerInch, dotsPerInch, 0, 0, width, height,
                               Poppler::Page::Rotate0, nullptr, nullptr, isCancelled,
                               QVariant::fromValue(static_cast<const void*>(&cancelled)));
}
#endif

// Drawings can be made so that drawing them never ends, or goes so deep that
// there is no stack left: by elements within elements, by elements that are used
// again and again, by entities. Plain ones have none of these.
bool isPlainDrawing(const QByteArray& bytes)
{
    if (bytes.size() > largestDrawing)
        return false;
    QXmlStreamReader xml(bytes);
    int depth = 0;
    while (!xml.atEnd()) {
        const QXmlStreamReader::TokenType token = xml.readNext();
        if (token == QXmlStreamReader::DTD)
            return false;
        if (token == QXmlStreamReader::EndElement)
            --depth;
        if (token != QXmlStreamReader::StartElement)
            continue;
        if (++depth > deepestDrawing)
            return false;
        for (const char* const name : {"use", "pattern", "marker", "mask", "filter", "image"})
            if (xml.name() == QLatin1String(name))
                return false;
    }
    return !xml.hasError();
}

QImage imageOf(const QByteArray& bytes)
{
    QBuffer buffer;
    buffer.setData(bytes);
    buffer.open(QIODevice::ReadOnly);
    QImageReader reader(&buffer);
    const QByteArray format = reader.format();
    if (!std::count(std::begin(formats), std::end(formats), format) ||
        (format == "svg" && !isPlainDrawing(bytes)))
        return {};
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

QImage previewImage(const QByteArray& bytes, const std::function<bool()>& cancelled)
{
    if (!bytes.left(1024).contains("%PDF-"))
        return imageOf(bytes);
#ifdef LORIX_HAVE_POPPLER
    return firstPage(bytes, cancelled);
#else
    Q_UNUSED(cancelled);
    return {};
#endif
}

} // namespace lorix::viewer
