/// FileCommands: opening, saving and closing as the user does it, with all that is asked.
#pragma once

#include <functional>
#include <string>

#include "command_line.h"
#include "open_documents.h"
#include "questions.h"

class DesktopCore;
class RecoveryTimer;
struct RecoveredText;

class FileCommands {
public:
    /// What the window around does for the files. None is empty.
    struct Surroundings {
        Asker m_Ask;
        /// Asks for a file, to open or to save. @return empty: cancelled
        std::function<QStringList(const QString& folder)> m_AskOpen;
        std::function<QString(const QString& preset)> m_AskSave;
        std::function<void(const QString& text, bool warning)> m_Tell;
        std::function<void(const QString& path)> m_Used; ///< for the list of recent files
        /// Opens what is no text. @return false: it is one. May be empty, unlike the others
        std::function<bool(const std::string& path)> m_OpenOther{};
    };

    /// All outlive the commands.
    FileCommands(DesktopCore& core, OpenDocuments& documents, RecoveryTimer& recovery,
                 Surroundings surroundings);

    /// @return null when the module makes no editor
    OpenDocument* New(EditorSort sort);
    /// Opens a file, or brings its window to the front, and puts the caret.
    /// @param mayBeNew a file that isn't there gives an empty text of that name
    /// @return null when it can't be opened, of which the user has been told, the user stopped it,
    ///         or it was no text
    OpenDocument* Open(const FileTarget& file, bool mayBeNew = false);
    void AskAndOpen();

    /// @return false: nothing was saved, the text is as it was
    bool Save(OpenDocument& document);
    bool SaveAs(OpenDocument& document);
    bool SaveAll();
    /// Takes the file's text again.
    void Revert(OpenDocument& document);
    /// Of a text with a home only its window closes.
    /// @return false: the user wants to go on with it
    bool Close(OpenDocument& document);
    /// Asks about every unsaved text first. Those with a home stay. @return false: nothing was
    /// closed
    bool CloseAll();

    /// Notices that somebody else has written the file, and asks above the text.
    void CheckDisk(OpenDocument& document);
    /// Offers the texts of processes that ended without saving them.
    void OfferRecovered();

private:
    sys::Status Load(OpenDocument& document, const std::string& path);
    OpenDocument* DocumentFor(EditorSort sort, const QString& title);
    void DropPristine(const OpenDocument* but);
    void ShowFormNotices(OpenDocument& document);
    bool SaveTo(OpenDocument& document, const std::string& path);
    bool Write(OpenDocument& document, const std::string& path);
    bool AskLineEnds(OpenDocument& document);
    bool MayOverwrite(OpenDocument& document);
    static void KeepText(OpenDocument& document);
    bool MayClose(OpenDocument& document);
    void Saved(OpenDocument& document);
    void Recover(const RecoveredText& text);
    void Fail(const QString& text, const sys::Status& status);
    void WithDocument(const std::string& id, const std::function<void(OpenDocument&)>& act);

    DesktopCore& m_Core;
    OpenDocuments& m_Documents;
    RecoveryTimer& m_Recovery;
    Surroundings m_Window;
};
