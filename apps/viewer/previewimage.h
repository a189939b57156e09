// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QByteArray>
#include <QImage>

#include <functional>

namespace lorix::viewer {

/// A picture of what the bytes hold: an image, or the first page of a PDF where
/// the program was built with a PDF library; null for anything else, for what
/// would take too much memory, and once `cancelled` answers true. May be called
/// on any thread.
QImage previewImage(const QByteArray& bytes, const std::function<bool()>& cancelled);

/// Whether PDFs have a preview.
bool canShowPdf();

} // namespace lorix::viewer
