#include "ole_data_source.h"

#include <utility>

void COleDataSource::CacheText(AString text) {
    m_Text = std::move(text);
}

DropEffect COleDataSource::DoDragDrop() {
    IBackendDesk* const desk = GetBackend();
    return desk ? desk->DragText(m_Text) : DropEffect::none;
}
