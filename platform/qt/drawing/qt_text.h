/// Texts, colours and rectangles of the system as Qt's, and back.
#pragma once

#include <string_view>

#include <QColor>
#include <QRect>
#include <QString>

#include "astring.h"
#include "geometry.h"

inline QString ToQt(std::u16string_view text) {
    return QString::fromUtf16(text.data(), static_cast<qsizetype>(text.size()));
}

inline std::u16string_view ViewOf(const QString& text) {
    return {reinterpret_cast<const char16_t*>(text.utf16()), static_cast<std::size_t>(text.size())};
}

inline AString FromQt(const QString& text) {
    return AString(ViewOf(text));
}

/// Line ends of the clipboard: CR LF in the framework's texts, LF for the programs around.
QString WithPlainLineEnds(const AString& text);

inline QColor ToQt(ColorRef color) {
    return QColor(static_cast<int>(color & 0xFF), static_cast<int>(color >> 8 & 0xFF),
                  static_cast<int>(color >> 16 & 0xFF));
}

inline ColorRef FromQt(const QColor& color) {
    return static_cast<ColorRef>(color.red() | color.green() << 8 | color.blue() << 16);
}

inline QRect ToQt(const CRect& rect) {
    return {rect.left, rect.top, rect.Width(), rect.Height()};
}
