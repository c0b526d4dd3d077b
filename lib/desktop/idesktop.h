/// IDesktop: what the module asks of the desktop that hosts it.
#pragma once

#include "astring.h"
#include "quorel_export.h"

class CWnd;
class IEditor;
class IGlobalManager;
class IQuorelCommand;
class QuorelCommandContext;
class QuorelMessage;
class Undo_Manager;
namespace io {
class CStreamio_object;
}

/// Where messages for the user go.
class QUOREL_API IMessageSink {
public:
    /// Takes a copy of the message.
    virtual void PostMessage(const QuorelMessage& message) = 0;

protected:
    ~IMessageSink() = default;
};

/// The side of the desktop's main window that toolbars need.
class QUOREL_API IToolBarHost {
public:
    /// The main window; null when the desktop has none.
    virtual CWnd* GetMainWindow() = 0;
    /// Lays the main window out again; the module calls it with (0, 1).
    virtual void RecalcLayout(int first, int second) = 0;
    /// Gives the name under which toolbar states are kept, may be empty.
    virtual void GetToolBarStateName(AString& name) = 0;

protected:
    ~IToolBarHost() = default;
};

/// The desktop's windows as a whole.
class QUOREL_API IUserInterface {
public:
    /// Brings everything on show up to date after a command.
    virtual void Refresh() = 0;

protected:
    ~IUserInterface() = default;
};

/// Message boxes and the holder of messages collected during a command.
class QUOREL_API IPrompt {
public:
    /// Buttons of a prompt, as the low nibble of its style asks for them, and the user's answers.
    enum Style { kOk = 0, kYesNoCancel = 3, kError = 16, kWarning = 48, kInformation = 64 };
    enum Answer { kAnswerOk = 1, kAnswerCancel = 2, kAnswerYes = 6, kAnswerNo = 7 };

    /// Shows a modal box.
    /// @param style buttons plus icon, see Style; @param reserved 0
    /// @return an Answer
    virtual int ShowPrompt(const AString& text, int style, int reserved) = 0;
    /// The messages collected and not yet shown.
    virtual int GetMessageCount() = 0;
    /// Shows the messages collected, with the context of the command that caused them.
    virtual void ShowMessages(const QuorelCommandContext& context) = 0;

protected:
    ~IPrompt() = default;
};

/// The desktop as given to IFactory::InitializeFactory. It and all objects that it gives stay the
/// desktop's and outlive the module's use of them. The arguments named `reserved` are 0.
class QUOREL_API IDesktop {
public:
    /// Never null.
    virtual IMessageSink* GetMessageSink() = 0;
    /// Null for a desktop without toolbars.
    virtual IToolBarHost* GetToolBarHost() = 0;
    /// Never null.
    virtual IUserInterface* GetUserInterface() = 0;

    /// The first of the two directories that are searched for configuration files.
    virtual void GetInstallDirectory(AString& directory) = 0;
    /// The second one.
    virtual void GetSysLibDirectory(AString& directory) = 0;
    /// The root key of the module's stored settings.
    virtual void GetRegistryKey(AString& key) = 0;

    /// Executes the command, which belongs to the manager from then on.
    virtual void RunCommand(IQuorelCommand* command, Undo_Manager* manager) = 0;
    /// Undoes the manager's latest command; nothing when there is none.
    virtual void UndoCommand(Undo_Manager* manager) = 0;
    /// Redoes the manager's latest undone command; nothing when there is none.
    virtual void RedoCommand(Undo_Manager* manager) = 0;

    /// @name Options: a store of texts and integers by section and key, persistent or not
    /// @{
    /// The stored integer, or defaultValue when none is stored or what is stored is no integer.
    virtual int GetIntegerOption(int reserved, const AString& section, const AString& key,
                                 int defaultValue) = 0;
    /// Fills value with the stored text, or with defaultValue.
    virtual void GetStringOption(AString& value, int reserved, const AString& section,
                                 const AString& key, const AString& defaultValue) = 0;
    /// Fills the object from its stored text form. @return whether one was stored and read
    virtual bool GetBlockOption(int reserved, const AString& section, const AString& key,
                                io::CStreamio_object& object) = 0;
    virtual void SetStringOption(int reserved, const AString& section, const AString& key,
                                 const AString& value) = 0;
    virtual void SetIntegerOption(int reserved, const AString& section, const AString& key,
                                  int value) = 0;
    /// @}

    /// The manager registered under that name for all modules, or null.
    virtual IGlobalManager* GetGlobalManager(const AString& name) = 0;
    /// Registers a manager, which belongs to the desktop from then on.
    virtual void SetGlobalManager(const AString& name, IGlobalManager* manager) = 0;

    /// Never null.
    virtual IPrompt* GetPrompt() = 0;
    /// Tells which editor is active when its view belongs to no instance; null: none is.
    virtual void SetActiveEditor(IEditor* editor, int reserved) = 0;

protected:
    ~IDesktop() = default;
};
