/// CCmdTarget: an object to which commands are routed, with its constant command map.
#pragma once

#include <cstddef>
#include <span>

#include "astring.h"
#include "object.h"

class CCmdTarget;

/// The state of one command's button or menu entry, filled in by an update handler.
class QUOREL_API CCmdUI {
public:
    explicit CCmdUI(unsigned id) : m_Id(id) {}

    unsigned GetId() const { return m_Id; }
    void Enable(bool on = true) { m_Enabled = on; }
    void SetCheck(bool on = true) { m_Checked = on; }
    /// Replaces the entry's text; an empty text leaves the menu's own.
    void SetText(const AString& text) { m_Text = text; }
    bool IsEnabled() const { return m_Enabled; }
    bool IsChecked() const { return m_Checked; }
    const AString& GetText() const { return m_Text; }

private:
    unsigned m_Id;
    bool m_Enabled = true;
    bool m_Checked = false;
    AString m_Text;
};

/// One row of a command map: a command and what answers it. Rows are made by `Command`.
struct CommandEntry {
    using Handler = void (*)(CCmdTarget&);
    using Update = void (*)(CCmdTarget&, CCmdUI&);

    unsigned m_Id;
    Handler m_Handler;
    Update m_Update; ///< null: the command is enabled whenever its handler is reached
};

/// A class's command map: its own rows, and the map of its base class or null. Constant data.
struct CommandMap {
    std::span<const CommandEntry> m_Entries;
    const CommandMap* m_Base = nullptr;

    /// The first row of that id, the class's own before its base's; null when there is none.
    QUOREL_API const CommandEntry* Find(unsigned id) const;
};

namespace command_map {

template <class T>
struct MemberOf;
template <class R, class C, class... A>
struct MemberOf<R (C::*)(A...)> {
    using Class = C;
};

/// Calls a handler of a derived class on the target whose map named it.
template <auto Member>
void Call(CCmdTarget& target) {
    (static_cast<typename MemberOf<decltype(Member)>::Class&>(target).*Member)();
}
template <auto Member>
void CallUpdate(CCmdTarget& target, CCmdUI& ui) {
    (static_cast<typename MemberOf<decltype(Member)>::Class&>(target).*Member)(ui);
}

} // namespace command_map

/// A row whose handler is the member function `void Handler()`.
template <auto Handler>
constexpr CommandEntry Command(unsigned id) {
    return {id, &command_map::Call<Handler>, nullptr};
}
/// A row with an update handler `void Update(CCmdUI&)` too.
template <auto Handler, auto Update>
constexpr CommandEntry Command(unsigned id) {
    return {id, &command_map::Call<Handler>, &command_map::CallUpdate<Update>};
}

/// Answers commands by a constant table. A derived class overrides GetCommandMap with a static
/// map, and RouteCommand when others shall be asked after it (a view asks its document, a frame
/// its view).
class QUOREL_API CCmdTarget : public CObject {
public:
    CCmdTarget() = default;
    CCmdTarget(const CCmdTarget&) = delete;
    CCmdTarget& operator=(const CCmdTarget&) = delete;
    ~CCmdTarget() override;

    /// The object on this one's route that has a row for the command, and that row. Asking runs
    /// no handler. A null target means that nobody answers.
    struct Route {
        CCmdTarget* m_Target = nullptr;
        const CommandEntry* m_Entry = nullptr;
    };
    virtual Route RouteCommand(unsigned id);

    /// Fills ui by the update handler on the route; a command that nobody answers is disabled, one
    /// without an update handler enabled. @return whether somebody answers it
    bool UpdateCommand(CCmdUI& ui);
    /// Runs the handler on the route if its update handler has the command enabled.
    /// @return whether a handler ran
    bool RunCommand(unsigned id);
    /// Runs the handler on the route whatever its update handler says, as a message sent by the
    /// program does. @return whether a handler ran
    bool SendCommand(unsigned id);

protected:
    /// The class's map; static data. The base class's is empty.
    virtual const CommandMap& GetCommandMap() const;
};
