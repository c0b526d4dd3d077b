/// IFactoryTools: what a host shows of a module beside its editors.
#pragma once

#include <cstdint>
#include <span>

#include "quorel_export.h"

class CComboBox;
struct Accelerator;

/// A place on a toolbar. Its status text and tip are the string resource of the command's number.
struct ToolBarEntry {
    static constexpr std::uint32_t kSeparator = 0xFFFFFFFF; ///< as command: a gap
    static constexpr std::uint32_t kControlPlace = 289; ///< as bitmap: a control fills the place

    std::uint32_t m_Command;
    std::uint32_t m_Bitmap;
    std::uint8_t m_State;
    std::uint8_t m_Style;
};

/// Reached by dynamic_cast from the factory. What it gives is the factory's.
class QUOREL_API IFactoryTools {
public:
    /// The name of the module's toolbar.
    virtual const char16_t* GetToolBarName() = 0;
    virtual std::span<const ToolBarEntry> GetToolBarEntries() = 0;
    /// The box that stands at a command's place on the toolbar; null for another command. A host
    /// shows it as its peer, and sets its text and focus as the user does.
    virtual CComboBox* GetToolBarBox(std::uint32_t command) = 0;
    /// The keys of the editors' commands; none before the factory's start.
    virtual std::span<const Accelerator> GetKeys() = 0;
    /// Takes the option font that many sizes up, or down, or back to the first size for 0; stores
    /// it and shows all views with it. @return its height in pixels
    virtual int ZoomText(int steps) = 0;

protected:
    ~IFactoryTools() = default;
};
