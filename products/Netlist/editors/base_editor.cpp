#include "base_editor.h"

#include <algorithm>

#include "assertion.h"
#include "block.h"
#include "block_func.h"
#include "debug_line.h"
#include "doc_template.h"
#include "frame.h"
#include "guarded.h"
#include "netlist_factory.h"
#include "sim_edit_view.h"
#include "syntax_dscr.h"
#include "view_placement.h"

namespace {

/// The view if it belongs to the instance, else null.
CSimEditView* ViewOf(CView* view, const IDesignInstance* instance) {
    auto* const own = dynamic_cast<CSimEditView*>(view);
    return own && own->GetInstance() == instance ? own : nullptr;
}

} // namespace

CBaseEditor::CBaseEditor(CNetlistFactory& factory)
    : EditorAccess(*this), m_Factory(&factory), m_Handle(this, [](CBaseEditor*) {}) {
    factory.EditorBegins(*this);
}

CBaseEditor::~CBaseEditor() {
    WriteDebugLine("BaseEditor destructor called\n");
    if (m_Factory)
        m_Factory->EditorEnds(*this);
}

const CAcceleratorTable* CBaseEditor::GetDefaultAccelerator() {
    return m_Factory ? &m_Factory->GetAccelerators() : nullptr;
}

void CBaseEditor::SetModifiedFlag(bool modified) {
    if (modified)
        NoteChange();
    CSimEditDoc::SetModifiedFlag(modified);
}

void CBaseEditor::UseSyntax(const EditorSyntax& syntax) {
    const int index = m_Factory ? syntax.IndexAmong(m_Factory->GetSyntaxDscrs().size()) : -1;
    if (index < 0)
        return;
    auto description = m_Factory->GetSyntaxDscrs()[static_cast<std::size_t>(index)];
    SetSyntaxDscr(description.get()); // may still colour by the one before
    m_SharedSyntax = std::move(description);
}

int CBaseEditor::SyntaxIndex() const {
    if (!m_Factory || !m_SharedSyntax)
        return -1;
    const auto& all = m_Factory->GetSyntaxDscrs();
    const auto place = std::ranges::find(all, m_SharedSyntax);
    return place == all.end() ? -1 : static_cast<int>(place - all.begin());
}

void CBaseEditor::OpenViewOf(IDesignInstance* instance) {
    USE_ASSERT_TEXT(instance, "idi");
    if (!instance || ViewOf(m_ActiveView, instance))
        return;
    for (CView* view : GetViews()) {
        if (!ViewOf(view, instance))
            continue;
        if (CFrameWnd* frame = view->GetParentFrame())
            frame->ActivateFrame(kShowRestore);
        return;
    }
    CSimEditView* const view = OpenNewView(instance, "sv");
    UpdateTitle({}, false);
    if (view)
        view->GetParentFrame()->ActivateFrame(kShowDefault);
}

/// A view of the instance in a new frame that isn't shown yet; null when no frame can be made.
CSimEditView* CBaseEditor::OpenNewView(IDesignInstance* instance, const char* viewText) {
    CDocTemplate* const docTemplate = m_Factory ? m_Factory->GetNetlistTemplate() : nullptr;
    CFrameWnd* const newFrame = docTemplate ? docTemplate->CreateNewFrame(this) : nullptr;
    USE_ASSERT(newFrame);
    if (!newFrame)
        return nullptr;
    docTemplate->InitialUpdateFrame(newFrame, this, false);
    auto* const sv = dynamic_cast<CSimEditView*>(newFrame->GetActiveView());
    USE_ASSERT_TEXT(sv, viewText);
    if (!sv) {
        newFrame->ActivateFrame(kShowDefault);
        return nullptr;
    }
    sv->SetInstance(instance);
    sv->OnInitialUpdate();
    m_ActiveView = sv;
    return sv;
}

void CBaseEditor::OpenPlacedView(IDesignInstance* instance, const io::CBlock_func& placement) {
    CSimEditView* const view = OpenNewView(instance, "view");
    if (view)
        ReadPlacement(*view, placement);
    UpdateTitle({}, false);
    if (view)
        view->GetParentFrame()->ActivateFrame(kShowDefault);
}

void CBaseEditor::ReadViewsOf(const io::CBlock* block, const AString& name,
                              IDesignInstance* instance) {
    io::CBlock_func written(name);
    if (!block || !block->Get(written))
        return;
    const std::vector<CView*> views = GetViews();
    auto view = views.begin();
    for (unsigned i = 0; i < written.GetSize(); ++i) {
        const auto item = written.GetArg(i);
        const auto* const placement = dynamic_cast<const io::CBlock_func*>(&*item);
        if (!placement)
            continue;
        view = std::find_if(view, views.end(), [&](CView* v) { return ViewOf(v, instance); });
        if (view == views.end())
            OpenPlacedView(instance, *placement);
        else
            ReadPlacement(**view++, *placement);
    }
}

void CBaseEditor::WriteViewsOf(io::CBlock* block, const AString& name,
                               IDesignInstance* instance) const {
    io::CBlock_func written(name);
    for (CView* view : GetViews())
        if (ViewOf(view, instance))
            written << io::CBlock_ptr<io::CBlock_func>(new io::CBlock_func(PlacementOf(*view)));
    if (block)
        block->Add(written);
}

bool CBaseEditor::IsFirstView(IDesignInstance* instance) const {
    return !GetViews().empty() && ViewOf(GetViews().front(), instance);
}

/// Destroys the frames of the views for which condition holds.
template <class Condition>
void CBaseEditor::CloseViewsIf(Condition condition) {
    const std::vector<CView*> views = GetViews(); // a frame takes its view out of the list
    for (CView* view : views) {
        const bool isThere = std::ranges::find(GetViews(), view) != GetViews().end();
        CFrameWnd* const frame = isThere && condition(view) ? view->GetParentFrame() : nullptr;
        if (frame)
            frame->DestroyWindow();
    }
}

void CBaseEditor::CloseViewsOf(IDesignInstance* instance) {
    CloseViewsIf([instance](CView* view) { return ViewOf(view, instance) != nullptr; });
}

void CBaseEditor::CloseEveryView() {
    CloseViewsIf([](CView*) { return true; });
}

void CBaseEditor::EndViews() {
    SetAutoDelete(false); // it is being deleted already
    m_Handle.reset();
    Guarded([this] { CloseEveryView(); });
}

void CBaseEditor::NameEditors(AString& name) const {
    name.clear();
    if (m_Factory)
        m_Factory->GetEditorsName(name);
}

void CBaseEditor::ReplaceText(const AString& text) {
    NoteChange();
    CSimEditDoc::SetText(text);
    UpdateAllViews(nullptr);
}

bool CBaseEditor::GiveMenu(CMenu& own, unsigned resourceId, CMenu*& menu,
                           std::vector<CCmdTarget*>& targets) const {
    if (!own.IsLoaded() && !own.LoadMenu(resourceId))
        return false;
    menu = &own;
    if (std::ranges::find(GetViews(), m_ActiveView) != GetViews().end())
        targets.push_back(m_ActiveView);
    return true;
}
