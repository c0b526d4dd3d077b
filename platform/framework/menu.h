/// CMenu: a menu as data, built from a resource table.
#pragma once

#include <cstddef>
#include <memory>
#include <vector>

#include "astring.h"
#include "object.h"

class CMenu;

/// An entry: a command, a separator (command 0, no popup) or a popup.
struct CMenuItem {
    unsigned m_Command = 0;
    AString m_Text;
    std::unique_ptr<CMenu> m_Popup;

    bool IsSeparator() const { return m_Command == 0 && !m_Popup; }
};

/// A list of entries. Empty until loaded; what is shown of it is the backend's or the host's.
class QUOREL_API CMenu : public CObject {
public:
    CMenu();
    CMenu(const CMenu&) = delete;
    CMenu& operator=(const CMenu&) = delete;
    ~CMenu() override;

    /// Replaces the entries by those of a registered resource. @return false and stays as it was
    /// when there is none of that number or its popups aren't balanced
    bool LoadMenu(unsigned id);
    void DestroyMenu();
    /// Whether it has been loaded and not destroyed since.
    bool IsLoaded() const { return m_Loaded; }

    std::size_t GetItemCount() const { return m_Items.size(); }
    const CMenuItem& GetItem(std::size_t index) const { return m_Items[index]; }
    /// The popup at an index; null when the entry is none or the index beyond the end.
    CMenu* GetSubMenu(std::size_t index) const;
    /// The entry of a command, in popups too; null when there is none.
    const CMenuItem* FindCommand(unsigned command) const;

private:
    std::vector<CMenuItem> m_Items;
    bool m_Loaded = false;
};
