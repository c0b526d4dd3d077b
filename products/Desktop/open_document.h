/// OpenDocument: a text in an editor, its file and its window.
#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include <QMdiSubWindow>
#include <QPointer>
#include <QString>

#include "document_instance.h"
#include "file_session.h"
#include "host_design.h"
#include "module_host.h"

class NoticeBar;
class QVBoxLayout;

/// The sort of editor for a file. The names are those kept with recovered texts.
enum class EditorSort { netlist, javaScript, vbScript };
/// By the file's name: scripts by ".js" and ".vbs", all else a netlist.
EditorSort EditorSortOf(const std::string& path);
std::string NameOf(EditorSort sort);
EditorSort EditorSortNamed(const std::string& name);

/// One document. Destroying it closes its window and ends its editor.
class OpenDocument {
public:
    /// A document without a file and a window.
    /// @param title shown until there is a file
    /// @param host and desktop outlive the document. Without an editor (!GetEditor()) the module
    ///        made none.
    OpenDocument(ModuleHost& host, HostDesktop& desktop, EditorSort sort, const QString& title);
    OpenDocument(const OpenDocument&) = delete;
    OpenDocument& operator=(const OpenDocument&) = delete;
    ~OpenDocument();

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
    EditorSort GetSort() const { return m_Sort; }
    /// The file's name without folders, or what was given.
    QString GetTitle() const;
    /// A name for the recovery of this document, no other's in this process.
    const std::string& GetId() const { return m_Id; }
    void SetId(const std::string& id) { m_Id = id; }

    /// @name Window
    /// @{
    /// Opens the window in the frame area, or brings it to the front.
    void Show();
    /// Null before Show.
    QMdiSubWindow* GetShell() const { return m_Shell; }
    void SetShell(QMdiSubWindow* shell) { m_Shell = shell; }
    /// Shows title and modified mark.
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
    QVBoxLayout* GetBody() const;

    HostDesktop& m_Desktop;
    EditorSort m_Sort;
    QString m_Title;
    std::string m_Id;
    HostDesign m_Design;
    HostContext m_Context;
    DocumentInstance m_Instance;
    HostedEditor m_Editor;
    FileSession m_File;
    QPointer<QMdiSubWindow> m_Shell;
};
