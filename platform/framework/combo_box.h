/// CComboBox: an edit field with a list, such as the find box with its history.
#pragma once

#include <vector>

#include "wnd.h"

/// Shows a combo box and edits in it; implemented by whatever puts it on the screen.
class QUOREL_API IComboBoxPeer {
public:
    /// Text or items have changed by program.
    virtual void ComboBoxChanged() = 0;
    /// Cut, copy or paste (kMsgCut and so on) in the edit field.
    virtual void EditCommand(unsigned message) = 0;

protected:
    ~IComboBoxPeer() = default;
};

/// The box as data: works without being shown. Indices are 0-based.
class QUOREL_API CComboBox : public CWnd {
public:
    CComboBox();
    ~CComboBox() override;

    /// Sets the text of the edit field.
    void SetWindowText(const AString& text) override;
    int GetCount() const { return static_cast<int>(m_Items.size()); }
    /// The item's text, empty beyond the list.
    AString GetItemText(int index) const;
    /// The first item behind index start with exactly that text, without regard to case, going on
    /// from the list's begin; -1 when there is none.
    int FindStringExact(int start, const AString& text) const;
    /// Inserts an item before index, -1 for the end. @return its index, -1 when out of the list
    int InsertString(int index, const AString& text);
    /// @return the count left, -1 when out of the list
    int DeleteString(int index);
    void ResetContent();
    /// The selected item, -1 for none.
    int GetCurSel() const { return m_Selection; }
    /// Selects an item and takes its text; -1, or an index beyond the list, clears the selection
    /// and the text. @return the selection now
    int SetCurSel(int index);

    /// Who shows the box, not owned; null for nobody.
    void SetPeer(IComboBoxPeer* peer) { m_Peer = peer; }

protected:
    const MessageMap& GetMessageMap() const override;

private:
    std::intptr_t OnCut(std::uintptr_t first, std::intptr_t second);
    std::intptr_t OnCopy(std::uintptr_t first, std::intptr_t second);
    std::intptr_t OnPaste(std::uintptr_t first, std::intptr_t second);
    void TellPeer(unsigned message);
    void Changed();

    std::vector<AString> m_Items;
    int m_Selection = -1;
    IComboBoxPeer* m_Peer = nullptr;
};
