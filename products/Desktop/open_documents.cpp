#include "open_documents.h"

#include <algorithm>
#include <filesystem>

#include <QMdiSubWindow>
#include <QTabBar>
#include <QTimer>

#include "block.h"
#include "desktop_core.h"
#include "project.h"

OpenDocuments::OpenDocuments(DesktopCore& core, QWidget* parent) : QMdiArea(parent), m_Core(core) {
    setTabsClosable(true);
    setTabsMovable(true);
    setDocumentMode(true);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    setVerticalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    setBackground(palette().brush(QPalette::Dark));
    m_Core.m_Desk.SetFrameArea(this);
    m_Core.m_Desk.SetFrameHooks(MakeHooks());
}

OpenDocuments::~OpenDocuments() {
    m_Core.m_Desk.SetFrameHooks({});
    m_OnActivated = nullptr;
    m_Documents.clear();
    m_Core.m_Desk.SetFrameArea(nullptr);
}

FrameHooks OpenDocuments::MakeHooks() {
    FrameHooks hooks;
    hooks.m_Activated = [this](IBackendWindow& frame) {
        TakeShell(QtDesk::GetWidget(frame));
        if (m_OnActivated)
            m_OnActivated();
    };
    hooks.m_TitleChanged = [this](IBackendWindow& frame, const AString&) {
        QWidget* const shell = QtDesk::GetWidget(frame);
        TakeShell(shell);
        if (OpenDocument* document = OfShell(shell))
            document->RefreshTitle();
    };
    hooks.m_Closing = [this](IBackendWindow& frame) {
        const QPointer<QWidget> shell = QtDesk::GetWidget(frame);
        QTimer::singleShot(0, this, [this, shell] {
            OpenDocument* const document = shell ? OfShell(shell) : nullptr;
            if (document && document->GetHome())
                document->CloseShell(shell);
            else if (document && m_OnClosing)
                m_OnClosing(*document);
        });
        return false;
    };
    return hooks;
}

/// The first that is heard of a window comes while its document is being shown.
void OpenDocuments::TakeShell(QWidget* shell) {
    auto* const sub = qobject_cast<QMdiSubWindow*>(shell);
    if (m_Opening && sub && !OfShell(sub))
        m_Opening->AddShell(*sub, *m_OpeningInstance);
}

OpenDocument* OpenDocuments::Create(EditorSort sort, const QString& title, ITextHome* home) {
    auto made =
        std::make_unique<OpenDocument>(m_Core.m_Module, m_Core.m_Desktop, sort, title, home);
    if (!made->GetEditor())
        return nullptr;
    made->m_OnScriptSaved = [this](OpenDocument& saved) {
        QTimer::singleShot(0, this, [this, id = saved.GetId()] {
            const auto document = std::ranges::find(m_Documents, id, &OpenDocument::GetId);
            if (document != m_Documents.end() && m_OnScriptSaved)
                m_OnScriptSaved(**document);
        });
    };
    m_Documents.push_back(std::move(made));
    return m_Documents.back().get();
}

void OpenDocuments::BringForward(QMdiSubWindow& shell) {
    if (shell.isMinimized())
        shell.showNormal();
    setActiveSubWindow(&shell);
}

void OpenDocuments::Show(OpenDocument& document) {
    if (QMdiSubWindow* shell = document.GetShell())
        BringForward(*shell);
    else if (!document.GetInstances().empty())
        Show(document, *document.GetInstances().front());
}

void OpenDocuments::Show(OpenDocument& document, HostInstance& instance) {
    if (QMdiSubWindow* shell = document.GetShellOf(instance))
        BringForward(*shell);
    else
        OpenWindows(document, instance, [&](IEditor& editor) { editor.OpenView(&instance); });
}

void OpenDocuments::Place(OpenDocument& document, HostInstance& instance,
                          const ProjectPlacement& placement) {
    io::CBlock block;
    block.AddItem(io::CBlockItemPtr(placement.GetViews()));
    OpenWindows(document, instance, [&](IEditor& editor) { editor.ReadViews(&block, &instance); });
}

/// Windows that come to light meanwhile are the instance's.
void OpenDocuments::OpenWindows(OpenDocument& document, HostInstance& instance,
                                const std::function<void(IEditor&)>& open) {
    m_Opening = &document;
    m_OpeningInstance = &instance;
    open(*document.GetEditor().m_Editor);
    m_Opening = nullptr;
    document.RefreshTitle();
}

void OpenDocuments::Remove(OpenDocument& document) {
    const auto place =
        std::ranges::find(m_Documents, &document, &std::unique_ptr<OpenDocument>::get);
    if (place == m_Documents.end())
        return;
    const std::unique_ptr<OpenDocument> gone = std::move(*place);
    m_Documents.erase(place);
}

std::vector<OpenDocument*> OpenDocuments::GetAll() const {
    std::vector<OpenDocument*> all;
    for (const auto& document : m_Documents)
        all.push_back(document.get());
    return all;
}

OpenDocument* OpenDocuments::OfShell(const QWidget* shell) const {
    for (const auto& document : m_Documents)
        if (document->HasShell(shell))
            return document.get();
    return nullptr;
}

OpenDocument* OpenDocuments::GetActive() const {
    return OfShell(currentSubWindow());
}

OpenDocument* OpenDocuments::FindPath(const std::string& path) const {
    for (const auto& document : m_Documents) {
        const std::string& own = document->GetFile().GetPath();
        std::error_code error;
        if (!own.empty() && (own == path || std::filesystem::equivalent(own, path, error)))
            return document.get();
    }
    return nullptr;
}

QString OpenDocuments::NewTitle() {
    return QStringLiteral("Untitled %1").arg(++m_Untitled);
}

void OpenDocuments::SetTabs(bool on) {
    setViewMode(on ? TabbedView : SubWindowView);
    if (QTabBar* bar = findChild<QTabBar*>(); on && bar) {
        bar->setExpanding(false);
        bar->setElideMode(Qt::ElideMiddle);
    }
}
