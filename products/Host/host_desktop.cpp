#include "host_desktop.h"

#include <algorithm>
#include <limits>
#include <utility>

#include "quorel_command.h"
#include "read_error.h"
#include "streamio_object.h"

namespace {

/// By CommandRunner::Outcome.
constexpr const char16_t* kFailures[] = {u"An action has failed and was taken back: ",
                                         u"An action has failed and can't be taken back: ",
                                         u"An action was done, but what goes with it has failed: "};

} // namespace

HostUserInterface::~HostUserInterface() = default;

void HostUserInterface::Refresh() {
    if (m_OnRefresh)
        m_OnRefresh();
}

HostDesktop::HostDesktop(Settings settings, OptionStore& options)
    : m_Settings(std::move(settings)), m_Options(options) {
    m_Runner.m_OnFailure = [this](const CommandRunner::Failure& failure) {
        const AString text = kFailures[static_cast<std::size_t>(failure.m_Outcome)];
        m_Prompt.ShowPrompt(text + AString(failure.m_Reason), IPrompt::kError, 0);
    };
}

HostDesktop::~HostDesktop() {
    ReleaseCommands();
    ReleaseGlobalManagers();
}

void HostDesktop::GetInstallDirectory(AString& directory) {
    directory = AString::FromMultiByte(AString::kUtf8, m_Settings.m_InstallDirectory);
}

void HostDesktop::GetSysLibDirectory(AString& directory) {
    directory = AString::FromMultiByte(AString::kUtf8, m_Settings.m_SysLibDirectory);
}

CommandRunner& HostDesktop::GetRunner() {
    if (!std::exchange(m_HasLimit, true))
        m_Runner.SetLimit(
            GetIntegerOption(0, u"Options", u"NumberOfCommands", CommandRunner::kDefaultLimit));
    return m_Runner;
}

void HostDesktop::RunCommand(IQuorelCommand* command, Undo_Manager* manager) {
    GetRunner().Run(static_cast<QuorelCommand*>(command), ManagerOr(manager));
}

void HostDesktop::UndoCommand(Undo_Manager* manager) {
    GetRunner().Undo(ManagerOr(manager));
}

void HostDesktop::RedoCommand(Undo_Manager* manager) {
    GetRunner().Redo(ManagerOr(manager));
}

void HostDesktop::ReleaseCommands() {
    for (Undo_Manager* manager : m_Managed)
        manager->Clear();
    m_Commands.Clear();
    m_HasLimit = false;
    m_ActiveEditor = nullptr;
}

int HostDesktop::GetIntegerOption(int, const AString& section, const AString& key,
                                  int defaultValue) {
    long number = 0;
    const std::optional<AString> text = m_Options.Find(section, key);
    const bool isInteger = text && text->ToLong(number) &&
                           number >= std::numeric_limits<int>::min() &&
                           number <= std::numeric_limits<int>::max();
    return isInteger ? static_cast<int>(number) : defaultValue;
}

void HostDesktop::GetStringOption(AString& value, int, const AString& section, const AString& key,
                                  const AString& defaultValue) {
    value = m_Options.Find(section, key).value_or(defaultValue);
}

bool HostDesktop::GetBlockOption(int, const AString& section, const AString& key,
                                 io::CStreamio_object& object) {
    const std::optional<AString> text = m_Options.Find(section, key);
    try {
        return text && object.FromString(*text);
    } catch (const io::XStreamioError&) {
        return false;
    }
}

void HostDesktop::SetStringOption(int, const AString& section, const AString& key,
                                  const AString& value) {
    m_Options.Set(section, key, value);
}

void HostDesktop::SetIntegerOption(int, const AString& section, const AString& key, int value) {
    m_Options.Set(section, key, AString(std::to_string(value)));
}

HostDesktop::Managers::iterator HostDesktop::FindManager(const AString& name) {
    return std::ranges::find(m_Managers, name, &Managers::value_type::first);
}

IGlobalManager* HostDesktop::GetGlobalManager(const AString& name) {
    const auto found = FindManager(name);
    return found == m_Managers.end() ? nullptr : found->second.get();
}

/// The owner that a manager has under another name, else a new one.
std::shared_ptr<IGlobalManager> HostDesktop::Share(IGlobalManager* manager) const {
    for (const auto& [name, owner] : m_Managers)
        if (owner.get() == manager)
            return owner;
    return std::shared_ptr<IGlobalManager>(manager);
}

void HostDesktop::SetGlobalManager(const AString& name, IGlobalManager* manager) {
    std::shared_ptr<IGlobalManager> before; // ends last: it may ask for managers
    const auto owner = manager ? Share(manager) : nullptr;
    const auto found = FindManager(name);
    if (found != m_Managers.end() && found->second == owner)
        return;
    if (found != m_Managers.end()) {
        before = std::move(found->second);
        m_Managers.erase(found);
    }
    if (owner)
        m_Managers.emplace_back(name, owner);
}

void HostDesktop::ReleaseGlobalManagers() {
    while (!m_Managers.empty()) {
        const auto last = std::move(m_Managers.back().second);
        m_Managers.pop_back();
    }
}

void HostDesktop::SetActiveEditor(IEditor* editor, int) {
    m_ActiveEditor = editor;
}
