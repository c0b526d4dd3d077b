#include "dc.h"

#include <utility>

ColorRef CDC::SetTextColor(ColorRef color) {
    return std::exchange(m_Style.m_Color, color);
}

ColorRef CDC::SetBkColor(ColorRef color) {
    return std::exchange(m_Style.m_Background, color);
}

void CDC::TextOut(std::u16string_view text) {
    m_Place.x += m_Surface.DrawText(m_Place, text, m_Style);
}
