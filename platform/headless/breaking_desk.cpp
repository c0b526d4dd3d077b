#include "breaking_desk.h"

#include <new>

namespace {

/// A job whose device fails where it is told to.
class BreakingPrinter : public IBackendPrinter {
public:
    BreakingPrinter(std::unique_ptr<IBackendPrinter> printer, unsigned broken, int lostPage)
        : m_Printer(std::move(printer)), m_Broken(broken), m_LostPage(lostPage) {}

    CSize GetPageSize() override { return m_Printer->GetPageSize(); }
    CSize GetResolution() override { return m_Printer->GetResolution(); }
    IBackendSurface& GetSurface() override { return m_Printer->GetSurface(); }
    bool StartDocument(const AString& title) override {
        return !(m_Broken & kBreakPrintStart) && m_Printer->StartDocument(title);
    }
    bool GoOn(int page, int lastPage) override { return m_Printer->GoOn(page, lastPage); }
    bool StartPage() override {
        ++m_Page;
        return !IsLost(kBreakPrintPage) && m_Printer->StartPage();
    }
    bool EndPage() override { return !IsLost(kBreakPrintPageEnd) && m_Printer->EndPage(); }
    bool EndDocument() override { return !(m_Broken & kBreakPrintEnd) && m_Printer->EndDocument(); }

private:
    bool IsLost(unsigned operation) const { return (m_Broken & operation) && m_Page >= m_LostPage; }

    std::unique_ptr<IBackendPrinter> m_Printer;
    unsigned m_Broken;
    int m_LostPage;
    int m_Page = 0;
};

} // namespace

BreakingDesk::~BreakingDesk() {
    if (GetBackend() == this)
        SetBackend(nullptr);
}

bool BreakingDesk::Refuses(BreakableOperation operation) {
    if (!(m_Broken & operation))
        return false;
    ++m_Refusals;
    return true;
}

bool BreakingDesk::SetClipboardText(const AString& text) {
    return !Refuses(kBreakClipboardWrite) && m_Desk.SetClipboardText(text);
}

std::optional<AString> BreakingDesk::GetClipboardText() {
    return Refuses(kBreakClipboardRead) ? std::nullopt : m_Desk.GetClipboardText();
}

std::unique_ptr<IBackendFont> BreakingDesk::CreateFont(const LogFont& font) {
    if (Refuses(kBreakFont))
        throw std::bad_alloc();
    return m_Desk.CreateFont(font);
}

std::optional<AString> BreakingDesk::AskFile(const FileRequest& request) {
    std::optional<AString> chosen = m_Desk.AskFile(request);
    return chosen && Refuses(kBreakFileWrite) ? u"/dev/full" : chosen;
}

DropEffect BreakingDesk::DragText(const AString& text) {
    if (Refuses(kBreakDragMemory))
        throw std::bad_alloc();
    return m_Desk.DragText(text);
}

std::unique_ptr<IBackendPrinter>
BreakingDesk::Break(std::unique_ptr<IBackendPrinter> printer) const {
    if (!printer)
        return nullptr;
    return std::make_unique<BreakingPrinter>(std::move(printer), m_Broken, m_LostPage);
}

std::unique_ptr<IBackendPrinter> BreakingDesk::AskPrinter(PrintRequest& request) {
    return Break(m_Desk.AskPrinter(request));
}

void BreakingDesk::ShowPreview(const PrintFunction& print) {
    m_Desk.ShowPreview(
        [&](std::unique_ptr<IBackendPrinter> printer) { print(Break(std::move(printer))); });
}
