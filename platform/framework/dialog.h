/// CDialog: a modal dialog shown from its table. CDataExchange: between its members and controls.
#pragma once

#include <cstdint>
#include <span>

#include "astring.h"
#include "backend.h"
#include "cmd_target.h"
#include "object.h"

class CDialog;

/// Moves the values of members to a dialog's controls, or back. A text that isn't what the member
/// needs is refused: then that member and all further ones stay as they are.
class QUOREL_API CDataExchange {
public:
    /// @param controls must outlive this object
    CDataExchange(IBackendDialog& controls, bool toMembers)
        : m_Controls(controls), m_ToMembers(toMembers) {}

    void Text(unsigned control, AString& member);
    void Check(unsigned control, bool& member);
    /// Takes a decimal integer, white space around it; beyond 32 bits the nearest that there is.
    void Integer(unsigned control, std::int32_t& member);
    /// Takes a finite number.
    void Number(unsigned control, double& member);

    /// Why a text was refused, for the user; empty when none was.
    const AString& GetRefusal() const { return m_Refusal; }

private:
    bool Takes() const { return m_ToMembers && m_Refusal.empty(); }

    IBackendDialog& m_Controls;
    bool m_ToMembers;
    AString m_Refusal;
};

/// One row of a notice map: a control, a ControlNotice and what handles it. Made by `Notice`.
struct NoticeEntry {
    using Handler = void (*)(CDialog&);

    unsigned m_Control;
    unsigned m_Notice;
    Handler m_Handler;
};

/// A class's notice map: its own rows, and the map of its base class or null. Constant data.
struct NoticeMap {
    std::span<const NoticeEntry> m_Entries;
    const NoticeMap* m_Base = nullptr;

    /// The first row that fits, the class's own before its base's; null when there is none.
    QUOREL_API const NoticeEntry* Find(unsigned control, unsigned notice) const;
};

/// A dialog. A derived class has members for what the controls hold, moves them in DoDataExchange,
/// and handles buttons and other notices by its notice map. The click on a control kIdOk or
/// kIdCancel is OnOK or OnCancel.
class QUOREL_API CDialog : public CObject, private IDialogSink {
public:
    explicit CDialog(unsigned resourceId);
    CDialog(const CDialog&) = delete;
    CDialog& operator=(const CDialog&) = delete;
    ~CDialog() override;

    /// Shows the dialog until it ends. @return what EndDialog was given; kIdCancel without a
    /// backend, and without a table of its number
    virtual int DoModal();

protected:
    /// The controls; null while the dialog isn't on show.
    IBackendDialog* GetControls() const { return m_Controls; }
    /// Exchanges members and controls. A refusal is shown to the user. @return whether there was
    /// none, and the dialog is on show
    bool UpdateData(bool toMembers);
    void EndDialog(int result);

    /// One call for each member that a control holds. The base has none.
    virtual void DoDataExchange(CDataExchange& exchange);
    /// The controls are there. The base fills them from the members.
    virtual void OnInitDialog();
    /// The base ends the dialog with kIdOk when no control's text is refused.
    virtual void OnOK();
    virtual void OnCancel();
    /// The class's map; static data.
    virtual const NoticeMap& GetNoticeMap() const;

private:
    friend class CPropertySheet;

    void DialogShown(IBackendDialog& dialog) override;
    void ControlNotice(unsigned control, unsigned notice) override;

    unsigned m_ResourceId;
    IBackendDialog* m_Controls = nullptr;
};

namespace notice_map {

template <auto Member>
void Call(CDialog& dialog) {
    (static_cast<typename command_map::MemberOf<decltype(Member)>::Class&>(dialog).*Member)();
}

} // namespace notice_map

/// A row whose handler is the member function `void Handler()`.
template <auto Handler>
constexpr NoticeEntry Notice(unsigned control, unsigned notice = kNoticeClicked) {
    return {control, notice, &notice_map::Call<Handler>};
}
