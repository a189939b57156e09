// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QByteArray>
#include <QImage>

namespace lorix::viewer {

/// A picture of what the bytes hold: an image, or the first page of a PDF where
/// the program was built with a PDF library; null for anything else. May be
/// called on any thread.
QImage previewImage(const QByteArray& bytes);

/// Whether PDFs have a preview.
bool canShowPdf();

} // namespace lorix::viewer
