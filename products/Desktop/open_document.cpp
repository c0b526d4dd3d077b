#include "open_document.h"

#include <algorithm>
#include <cerrno>

#include <QFileInfo>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QVBoxLayout>

#include "host_desktop.h"
#include "ieditor.h"
#include "notice_bar.h"
#include "qt_strings.h"

namespace {

constexpr struct {
    EditorSort m_Sort;
    const char* m_Name;
    const char* m_Suffix;
    const char16_t* m_Language;
} kSorts[] = {
    {EditorSort::netlist, "netlist", nullptr, u""},
    {EditorSort::javaScript, "javascript", ".js", u"JavaScript"},
    {EditorSort::vbScript, "vbscript", ".vbs", u"VBScript"},
};

std::string NewId() {
    static int sNext = 0;
    return "text-" + std::to_string(sNext++);
}

} // namespace

EditorSort EditorSortOf(const std::string& path) {
    const QString name = FromPath(path);
    for (const auto& row : kSorts)
        if (row.m_Suffix && name.endsWith(QLatin1String(row.m_Suffix), Qt::CaseInsensitive))
            return row.m_Sort;
    return EditorSort::netlist;
}

std::string NameOf(EditorSort sort) {
    return kSorts[static_cast<std::size_t>(sort)].m_Name;
}

EditorSort EditorSortNamed(const std::string& name) {
    for (const auto& row : kSorts)
        if (name == row.m_Name)
            return row.m_Sort;
    return EditorSort::netlist;
}

OpenDocument::OpenDocument(ModuleHost& host, HostDesktop& desktop, EditorSort sort,
                           const QString& title, ITextHome* home)
    : m_Desktop(desktop), m_Home(home), m_Sort(sort), m_Title(title), m_Id(NewId()),
      m_Design(ToAString(title), desktop), m_Context(ToAString(title), &desktop) {
    if (!home)
        AddInstance(ToAString(title));
    const AString language(kSorts[static_cast<std::size_t>(sort)].m_Language);
    m_Editor = sort == EditorSort::netlist
                   ? host.CreateNetlistEditor(&m_Design)
                   : host.CreateScriptEditor(&m_Context, {}, language, ToAString(title));
    if (m_Editor)
        m_KeptChange = m_Editor.m_Inspector->GetChangeCount();
    if (IScriptEditor* script = GetScript())
        script->AddExtender(this);
}

OpenDocument::~OpenDocument() {
    if (IScriptEditor* script = GetScript())
        script->RemoveExtender(this);
}

IScriptEditor* OpenDocument::GetScript() const {
    return dynamic_cast<IScriptEditor*>(m_Editor.m_Editor.get());
}

void OpenDocument::Saved() {
    MarkUnsaved(); // until its file is written
    if (m_OnScriptSaved)
        m_OnScriptSaved(*this);
}

sys::Status OpenDocument::Load(const std::string& path, bool mayStop) {
    std::string archive;
    if (sys::Status status = m_File.Load(path, archive); !status)
        return status;
    const bool isLoaded = m_Editor.m_Driver->LoadArchive(archive, mayStop);
    GetCommands().Clear(); // of the text that is gone
    if (!isLoaded)
        return sys::Failure("load", path, ECANCELED);
    m_Editor.m_Driver->SetModified(false);
    RefreshTitle();
    return {};
}

void OpenDocument::TakeAsLoaded() {
    GetCommands().Clear();
    m_Editor.m_Driver->SetModified(false);
    m_KeptChange = m_Editor.m_Inspector->GetChangeCount();
}

sys::Status OpenDocument::Save(const std::string& path) {
    if (sys::Status status = m_File.Save(path, GetArchive(), IsModified()); !status)
        return status;
    m_Editor.m_Driver->SetModified(false);
    RefreshTitle();
    return {};
}

void OpenDocument::MarkUnsaved() {
    m_Editor.m_Driver->SetModified(true);
    m_KeptChange = kNothingKept;
}

Undo_Manager& OpenDocument::GetCommands() {
    Undo_Manager* const own = m_Editor.m_Inspector->GetUndoManager();
    return own ? *own : m_Design.GetCommands();
}

bool OpenDocument::CanUndo() {
    return GetCommands().GetUndoCommand() || m_Editor.m_Inspector->GetUndoCount() > 0;
}

bool OpenDocument::CanRedo() {
    return GetCommands().GetRedoCommand() || m_Editor.m_Inspector->GetRedoCount() > 0;
}

void OpenDocument::Undo() {
    if (GetCommands().GetUndoCommand())
        m_Desktop.UndoCommand(&GetCommands());
    else
        m_Editor.m_Driver->UndoEdit();
}

void OpenDocument::Redo() {
    if (GetCommands().GetRedoCommand())
        m_Desktop.RedoCommand(&GetCommands());
    else
        m_Editor.m_Driver->RedoEdit();
}

std::string OpenDocument::GetArchive() {
    std::string archive;
    m_Editor.m_Inspector->GetArchive(archive);
    return archive;
}

bool OpenDocument::IsPristine() const {
    return !m_Home && m_File.GetPath().empty() && !IsModified() &&
           m_Editor.m_Inspector->GetChangeCount() == m_KeptChange;
}

QString OpenDocument::GetTitle() const {
    const std::string& path = m_File.GetPath();
    return path.empty() ? m_Title : QFileInfo(FromPath(path)).fileName();
}

HostInstance& OpenDocument::AddInstance(const AString& name) {
    return *m_Instances.emplace_back(std::make_unique<HostInstance>(name, m_Design.GetViewKeys()));
}

QMdiSubWindow* OpenDocument::GetShell() const {
    QMdiSubWindow* first = nullptr;
    for (const Shell& shell : m_Shells) {
        const QMdiArea* const area = shell.m_Window ? shell.m_Window->mdiArea() : nullptr;
        if (area && area->currentSubWindow() == shell.m_Window)
            return shell.m_Window;
        first = first ? first : shell.m_Window.data();
    }
    return first;
}

QMdiSubWindow* OpenDocument::GetShellOf(const HostInstance& instance) const {
    const auto found = std::ranges::find_if(m_Shells, [&](const Shell& shell) {
        return shell.m_Window && shell.m_Instance == &instance;
    });
    return found == m_Shells.end() ? nullptr : found->m_Window.data();
}

bool OpenDocument::HasShell(const QWidget* shell) const {
    return shell &&
           std::ranges::any_of(m_Shells, [&](const Shell& own) { return own.m_Window == shell; });
}

void OpenDocument::AddShell(QMdiSubWindow& shell, HostInstance& instance) {
    std::erase_if(m_Shells, [](const Shell& own) { return !own.m_Window; });
    m_Shells.push_back({&shell, &instance});
}

void OpenDocument::CloseShell(const QWidget* shell) {
    const auto found = std::ranges::find_if(
        m_Shells, [&](const Shell& own) { return shell && own.m_Window == shell; });
    if (found != m_Shells.end())
        m_Editor.m_Editor->CloseViews(found->m_Instance);
}

/// That of a text with a home tells the instance.
QString OpenDocument::TitleOf(HostInstance& instance) const {
    AString name;
    instance.GetInstanceName(name);
    const QString own = FromAString(name);
    return m_Home && own != m_Title ? own + QStringLiteral(" \u2013 ") + m_Title : GetTitle();
}

void OpenDocument::RefreshTitle() {
    if (!m_Home)
        m_Instances.front()->SetName(ToAString(GetTitle()));
    for (const Shell& shell : m_Shells) {
        if (!shell.m_Window)
            continue;
        QString title = TitleOf(*shell.m_Instance);
        // "[*]" is the place of the mark; one in the name is to be shown as it is.
        title.replace(QLatin1String("[*]"), QLatin1String("[*][*]"));
        shell.m_Window->setWindowTitle(title + QLatin1String("[*]"));
        shell.m_Window->setWindowModified(IsModified());
        shell.m_Window->setToolTip(FromPath(m_File.GetPath()));
    }
}

QVBoxLayout* OpenDocument::GetBody() const {
    const QMdiSubWindow* const shell = GetShell();
    QWidget* const body = shell ? shell->widget() : nullptr;
    return body ? qobject_cast<QVBoxLayout*>(body->layout()) : nullptr;
}

void OpenDocument::ShowNotice(NoticeBar* bar, const QString& topic) {
    HideNotice(topic);
    bar->setObjectName(topic);
    if (QVBoxLayout* body = GetBody())
        body->insertWidget(0, bar);
    else
        delete bar;
}

void OpenDocument::HideNotice(const QString& topic) {
    QVBoxLayout* const body = GetBody();
    QWidget* const bar = body ? body->parentWidget()->findChild<QWidget*>(topic) : nullptr;
    if (bar) {
        bar->setObjectName(QString());
        bar->hide();
        bar->deleteLater();
    }
}

bool OpenDocument::HasNotice(const QString& topic) const {
    const QVBoxLayout* const body = GetBody();
    return body && body->parentWidget()->findChild<QWidget*>(topic);
}
