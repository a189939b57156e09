// SPDX-License-Identifier: BSD-3-Clause
#include <apps/viewer/colours.h>

#include <algorithm>
#include <cmath>

namespace lorix::viewer {

namespace {

double linear(float channel)
{
    const double value = static_cast<double>(channel);
    return value <= 0.03928 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
}

double luminance(const QColor& colour)
{
    return 0.2126 * linear(colour.redF()) + 0.7152 * linear(colour.greenF()) +
           0.0722 * linear(colour.blueF());
}

} // namespace

double contrast(const QColor& one, const QColor& other)
{
    const double a = luminance(one);
    const double b = luminance(other);
    return (std::max(a, b) + 0.05) / (std::min(a, b) + 0.05);
}

QColor readable(const QColor& colour, const QColor& ground, double least)
{
    // Towards white or black, whichever leads farther away from the ground.
    const bool lighter = contrast(Qt::white, ground) > contrast(Qt::black, ground);
    const float end = lighter ? 1.0F : 0.0F;
    QColor found = colour;
    for (int step = 1; step <= 20 && contrast(found, ground) < least; ++step) {
        const float part = static_cast<float>(step) / 20.0F;
        found = QColor::fromRgbF(colour.redF() + (end - colour.redF()) * part,
                                 colour.greenF() + (end - colour.greenF()) * part,
                                 colour.blueF() + (end - colour.blueF()) * part);
    }
    return found;
}

QColor selectionGround(const QPalette& palette)
{
    return readable(palette.color(QPalette::Highlight), palette.color(QPalette::HighlightedText));
}

QColor alarmColour(const QPalette& palette)
{
    return readable(QColor(0xc9, 0x2a, 0x35), palette.color(QPalette::Base));
}

bool isDark(const QPalette& palette)
{
    return palette.color(QPalette::Base).lightness() < palette.color(QPalette::Text).lightness();
}

} // namespace lorix::viewer
