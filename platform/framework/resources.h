/// Constant tables by resource number: strings, menus, accelerators, dialogs and button pictures.
#pragma once

#include <cstdint>
#include <span>
#include <string_view>

#include "quorel_export.h"
#include "resource_strings.h"

/// A row of a menu. A popup's rows follow it up to its popupEnd.
struct MenuRow {
    enum Kind : std::uint8_t { item, separator, popup, popupEnd };
    Kind m_Kind;
    unsigned m_Command;         ///< of an item, else 0
    std::u16string_view m_Text; ///< "&" before the mnemonic, the key behind a tab
};

struct MenuResource {
    unsigned m_Id;
    std::span<const MenuRow> m_Rows;
};

/// A key with its KeyModifiers, and the command that it gives.
struct Accelerator {
    unsigned m_Key;
    unsigned m_Modifiers;
    unsigned m_Command;
};

struct AcceleratorResource {
    unsigned m_Id;
    std::span<const Accelerator> m_Keys;
};

/// A control of a dialog, placed in dialog units (a quarter of a character wide, an eighth high).
struct ControlRow {
    enum Kind : std::uint8_t {
        label,
        edit,
        pushButton,
        defaultButton,
        checkBox,
        radioButton,
        groupBox,
        comboBox,
        colorSample
    };
    Kind m_Kind;
    unsigned m_Id;
    std::u16string_view m_Text;
    int m_X, m_Y, m_Width, m_Height;
    bool m_StartsGroup = false; ///< a radio group begins at this control
};

struct DialogResource {
    unsigned m_Id;
    std::u16string_view m_Title;
    int m_Width, m_Height;
    std::span<const ControlRow> m_Controls;
};

/// The picture of a button, in the X pixmap form: "width height colours 1", the colours, the rows.
struct PictureResource {
    unsigned m_Id;
    std::span<const char* const> m_Rows;
};

/// Everything that one module brings. The tables are constant and outlive their registration.
struct ResourceTables {
    std::span<const StringRow> m_Strings; ///< ascending numbers
    std::span<const MenuResource> m_Menus;
    std::span<const AcceleratorResource> m_Accelerators;
    std::span<const DialogResource> m_Dialogs;
    std::span<const PictureResource> m_Pictures;
};

/// Makes a module's tables known for as long as this object lives. A number that several modules
/// use means the one registered last. Strings are found through AString's resource numbers.
/// Look-ups cost the length of the tables.
class QUOREL_API ResourceRegistration {
public:
    /// @param tables must outlive this object
    explicit ResourceRegistration(const ResourceTables& tables);
    ResourceRegistration(const ResourceRegistration&) = delete;
    ResourceRegistration& operator=(const ResourceRegistration&) = delete;
    ~ResourceRegistration();

private:
    const ResourceTables* m_Tables;
    StringTable m_Strings;
};

/// @name Look-ups; null when no registered table has the number
/// @{
QUOREL_API const MenuResource* FindMenu(unsigned id);
QUOREL_API const AcceleratorResource* FindAccelerators(unsigned id);
QUOREL_API const DialogResource* FindDialog(unsigned id);
QUOREL_API const PictureResource* FindPicture(unsigned id);
/// @}
