/// OpenDocuments: all texts that are open, and the area of their windows.
#pragma once

#include <functional>
#include <memory>
#include <vector>

#include <QMdiArea>

#include "open_document.h"

class DesktopCore;
class ProjectPlacement;
struct FrameHooks;

/// Owns the documents in the order of opening. Their windows are sub windows, or tabs.
class OpenDocuments : public QMdiArea {
public:
    /// @param core outlives the area
    explicit OpenDocuments(DesktopCore& core, QWidget* parent = nullptr);
    ~OpenDocuments() override;

    /// A new document without a window. @return null when the module makes none
    OpenDocument* Create(EditorSort sort, const QString& title, ITextHome* home = nullptr);
    /// Opens the document's window, or brings it to the front; of many the one in use.
    void Show(OpenDocument& document);
    /// The same with the window of one of its instances.
    void Show(OpenDocument& document, HostInstance& instance);
    /// Opens the windows of an instance as they stood.
    void Place(OpenDocument& document, HostInstance& instance, const ProjectPlacement& placement);
    /// Closes the document's window and destroys it, whatever is in it.
    void Remove(OpenDocument& document);

    std::vector<OpenDocument*> GetAll() const;
    /// The one whose window is active, null when none is.
    OpenDocument* GetActive() const;
    /// The one of that file, null when none is. Links lead to the file that they name.
    OpenDocument* FindPath(const std::string& path) const;
    /// A name that no document without a file has yet.
    QString NewTitle();

    void SetTabs(bool on);
    bool AreTabs() const { return viewMode() == TabbedView; }

    std::function<void()> m_OnActivated;
    /// The user has saved a script by its editor's own command; called in a turn of its own.
    std::function<void(OpenDocument&)> m_OnScriptSaved;
    /// The user wants to close a document's window; called in a turn of its own. The windows of a
    /// document with a home close by themselves.
    std::function<void(OpenDocument&)> m_OnClosing;

private:
    OpenDocument* OfShell(const QWidget* shell) const;
    void TakeShell(QWidget* shell);
    void BringForward(QMdiSubWindow& shell);
    void OpenWindows(OpenDocument& document, HostInstance& instance,
                     const std::function<void(IEditor&)>& open);
    FrameHooks MakeHooks();

    DesktopCore& m_Core;
    std::vector<std::unique_ptr<OpenDocument>> m_Documents;
    OpenDocument* m_Opening = nullptr; ///< whose window is being made
    HostInstance* m_OpeningInstance = nullptr;
    int m_Untitled = 0;
};
