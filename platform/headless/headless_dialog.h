/// HeadlessDialog: a dialog as its controls by number, worked by a script instead of a user.
#pragma once

#include <map>
#include <optional>
#include <span>
#include <vector>

#include "backend.h"

/// A dialog on show. The notices of what a script does reach the sink at once; once the dialog has
/// ended, nothing does anything any more.
class QUOREL_API HeadlessDialog : public IBackendDialog {
public:
    HeadlessDialog(const AString& title, std::span<const DialogResource* const> pages,
                   IDialogSink& sink);
    virtual ~HeadlessDialog();

    AString GetText(unsigned control) override;
    void SetText(unsigned control, const AString& text) override;
    bool IsChecked(unsigned control) override;
    void SetChecked(unsigned control, bool checked) override;
    void Enable(unsigned control, bool enabled) override;
    void AddItem(unsigned control, const AString& text) override;
    int GetSelection(unsigned control) override;
    void SetSelection(unsigned control, int index) override;
    void SetFont(unsigned control, const IBackendFont* font) override;
    void SetColor(unsigned control, ColorRef color) override;
    void End(int result) override;

    /// @name What a user does; false for a control that isn't there or isn't enabled
    /// @{
    /// Clicks a button; a check box is turned over, a radio button checked.
    bool Click(unsigned control);
    /// Replaces the text of an edit field.
    bool Type(unsigned control, const AString& text);
    /// Chooses an item of a list by its text.
    bool Choose(unsigned control, const AString& item);
    /// @}

    const AString& GetTitle() const { return m_Title; }
    std::vector<AString> GetItems(unsigned control) const;
    const IBackendFont* GetFont(unsigned control) const;
    ColorRef GetColor(unsigned control) const;
    bool IsEnabled(unsigned control) const;
    /// What End was given; nothing while the dialog is on show.
    const std::optional<int>& GetResult() const { return m_Result; }

private:
    struct Control {
        ControlRow::Kind m_Kind;
        AString m_Text;
        int m_Group = 0;
        bool m_Checked = false;
        bool m_Enabled = true;
        std::vector<AString> m_Items;
        int m_Selection = -1;
        const IBackendFont* m_Font = nullptr;
        ColorRef m_Color = kBlack;
    };

    Control* Find(unsigned control);
    const Control* Find(unsigned control) const;
    /// The control for a user's doing: there, enabled, and the dialog on show.
    Control* FindForUser(unsigned control);

    AString m_Title;
    IDialogSink& m_Sink;
    std::map<unsigned, Control> m_Controls;
    std::optional<int> m_Result;
};
