/// OpenDocument: a text in an editor, its file and its window.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include <QMdiSubWindow>
#include <QPointer>
#include <QString>

#include "file_session.h"
#include "host_design.h"
#include "host_instance.h"
#include "module_host.h"
#include "text_home.h"

class NoticeBar;
class QVBoxLayout;

/// The sort of editor for a file. The names are those kept with recovered texts.
enum class EditorSort { netlist, javaScript, vbScript };
/// By the file's name: scripts by ".js" and ".vbs", all else a netlist.
EditorSort EditorSortOf(const std::string& path);
std::string NameOf(EditorSort sort);
EditorSort EditorSortNamed(const std::string& name);

/// One document. Destroying it closes its window and ends its editor.
class OpenDocument : private IEditorExtender {
public:
    /// A document without a file and a window.
    /// @param title shown until there is a file
    /// @param home  of a text without a file of its own, else null; then it has no instance yet
    /// @param host and desktop outlive the document. Without an editor (!GetEditor()) the module
    ///        made none.
    OpenDocument(ModuleHost& host, HostDesktop& desktop, EditorSort sort, const QString& title,
                 ITextHome* home = nullptr);
    OpenDocument(const OpenDocument&) = delete;
    OpenDocument& operator=(const OpenDocument&) = delete;
    virtual ~OpenDocument();

    /// The user has saved the script by the editor's own command, which writes no file.
    std::function<void(OpenDocument&)> m_OnScriptSaved;

    /// @name Text and file
    /// @{
    /// Puts the file's text in place of the present one, unmodified.
    sys::Status Load(const std::string& path, bool mayStop = false);
    /// Writes the text into the file, unmodified from then on.
    sys::Status Save(const std::string& path);
    std::string GetArchive();
    bool IsModified() const { return m_Editor.m_Inspector->IsModified(); }
    /// The text is nowhere else, whether it was edited or not: it is to be saved, and kept for
    /// recovery.
    void MarkUnsaved();
    /// A document as new: no file, no text, nothing done to it. It may give way to a file.
    bool IsPristine() const;
    /// Null for a text with a file, or one to come.
    ITextHome* GetHome() const { return m_Home; }
    FileSession& GetFile() { return m_File; }
    const FileSession& GetFile() const { return m_File; }
    /// @}

    /// @name Undo and redo: of the newest command, or of the journal's newest action where no
    /// command stands for it, as for a text that was pasted
    /// @{
    bool CanUndo();
    bool CanRedo();
    void Undo();
    void Redo();
    /// The text's commands: a script's own, or its design's.
    Undo_Manager& GetCommands();
    /// @}

    HostedEditor& GetEditor() { return m_Editor; }
    /// The editor as a script's; null for a netlist.
    IScriptEditor* GetScript() const;
    /// What was set is the text as it was found: unmodified, with nothing to undo.
    void TakeAsLoaded();
    EditorSort GetSort() const { return m_Sort; }
    /// The file's name without folders, or what was given.
    QString GetTitle() const;
    /// A name for the recovery of this document, no other's in this process.
    const std::string& GetId() const { return m_Id; }
    void SetId(const std::string& id) { m_Id = id; }

    /// @name Windows: one for each design instance
    /// @{
    HostInstance& AddInstance(const AString& name);
    const std::vector<std::unique_ptr<HostInstance>>& GetInstances() const { return m_Instances; }
    /// The active window if it is the document's, else its first; null while it has none.
    QMdiSubWindow* GetShell() const;
    /// The instance's window, null while it has none.
    QMdiSubWindow* GetShellOf(const HostInstance& instance) const;
    bool HasShell(const QWidget* shell) const;
    void AddShell(QMdiSubWindow& shell, HostInstance& instance);
    /// Closes the window of an instance; the text stays open.
    void CloseShell(const QWidget* shell);
    /// Shows titles and modified marks.
    void RefreshTitle();
    /// Shows a bar above the text, in place of one with that topic; the document's window owns it.
    void ShowNotice(NoticeBar* bar, const QString& topic);
    void HideNotice(const QString& topic);
    bool HasNotice(const QString& topic) const;
    /// @}

    /// The change count that was kept for recovery last; before that the new editor's.
    std::uint64_t m_KeptChange = 0;
    static constexpr std::uint64_t kNothingKept = ~std::uint64_t{0};

private:
    void TextChanged(IQuorelCommand*) override {}
    void Saved() override;
    void Closed() override {}
    struct Shell {
        QPointer<QMdiSubWindow> m_Window;
        HostInstance* m_Instance;
    };
    QVBoxLayout* GetBody() const;
    QString TitleOf(HostInstance& instance) const;

    HostDesktop& m_Desktop;
    ITextHome* m_Home;
    EditorSort m_Sort;
    QString m_Title;
    std::string m_Id;
    HostDesign m_Design;
    HostContext m_Context;
    std::vector<std::unique_ptr<HostInstance>> m_Instances;
    HostedEditor m_Editor;
    FileSession m_File;
    std::vector<Shell> m_Shells;
};
