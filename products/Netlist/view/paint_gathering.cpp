#include "paint_gathering.h"

#include <vector>

#include "document.h"
#include "sim_edit_view.h"

PaintGathering::PaintGathering(CDocument& document) : m_Document(document) {
    for (CView* view : document.GetViews())
        if (auto* text = dynamic_cast<CSimEditView*>(view))
            ++text->m_Gathering;
}

PaintGathering::~PaintGathering() {
    for (CView* view : std::vector(m_Document.GetViews())) {
        auto* const text = dynamic_cast<CSimEditView*>(view);
        if (!text || text->m_Gathering == 0 || --text->m_Gathering > 0) // 0: came meanwhile
            continue;
        text->EndGathering();
    }
}
