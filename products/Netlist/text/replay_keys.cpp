#include "replay_keys.h"

#include "record_type.h"
#include "sim_edit_doc.h"

void PrimitiveKeys::PutCaret(std::int32_t row, std::int32_t column) {
    m_row = row;
    m_column = column;
}

void PrimitiveKeys::PressDelete() {
    std::int32_t width = 0;
    if (m_column < m_document.Line(m_row).Length())
        m_document.DelChar(m_row, m_column, 0, width);
    else if (m_row + 1 < m_document.LineCount())
        m_document.CatLine(m_row, 0, 0);
}

void PrimitiveKeys::PressBackspace() {
    std::int32_t start = 0;
    std::int32_t width = 0;
    if (m_column > 0) {
        const bool isTab = m_document.TabAt(m_row, m_column - 1, start, width) != 0;
        m_column = isTab ? start : m_column - 1;
        m_document.DelChar(m_row, m_column, 0, width);
    } else if (m_row > 0) {
        m_row -= 1;
        m_column = m_document.CatLine(m_row, 0, 0);
    }
}

void PrimitiveKeys::PressReturn() {
    m_document.SplitLine(m_row, m_column, 0, 0, 0);
    m_row += 1;
    m_column = 0;
}

void PrimitiveKeys::TypeChar(char character) {
    if (!CanBeTyped(character))
        return;
    std::int32_t width = 0;
    m_document.InsertChar(m_row, m_column, character, 0, width);
    m_column += width;
}
