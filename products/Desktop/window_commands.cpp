#include "window_commands.h"

namespace {
constexpr auto kNoIcon = std::nullopt;
} // namespace

std::span<const MainWindow::Command> WindowActions::File() {
    using W = MainWindow;
    static constexpr W::Command kRows[] = {
        {"&New Netlist", "Ctrl+N", LineIcon::fileNew, Needs::nothing, &W::NewNetlist,
         "Begin a new netlist"},
        {"New &JavaScript", nullptr, kNoIcon, Needs::nothing, &W::NewJavaScript,
         "Begin a new script in JavaScript"},
        {"New &VBScript", nullptr, kNoIcon, Needs::nothing, &W::NewVBScript,
         "Begin a new script in VBScript"},
        {"&Open\u2026", "Ctrl+O", LineIcon::open, Needs::nothing, &W::OpenAsked,
         "Open netlists, scripts, other texts or a project"},
        {},
        {"&Save", "Ctrl+S", LineIcon::save, Needs::document, &W::Save, "Save the text"},
        {"Save &As\u2026", "Ctrl+Shift+S", kNoIcon, Needs::document, &W::SaveAs,
         "Save the text into another file"},
        {"Save A&ll", nullptr, kNoIcon, Needs::document, &W::SaveAll, "Save all changed texts"},
        {"Re&vert", nullptr, kNoIcon, Needs::file, &W::Revert, "Go back to the saved text"},
        {"&Export\u2026", nullptr, kNoIcon, Needs::document, &W::Export,
         "Write the text into a file of its own"},
        {},
        {"Save Pro&ject", nullptr, kNoIcon, Needs::project, &W::SaveProject,
         "Save all texts of the project and where its windows stand"},
        {"Save Projec&t As\u2026", nullptr, kNoIcon, Needs::project, &W::SaveProjectAs,
         "Save the project into another file"},
        {"Close Project", nullptr, kNoIcon, Needs::project, &W::CloseProject,
         "Close the project with all its windows"},
        {},
        {"Page Set&up\u2026", nullptr, kNoIcon, Needs::nothing, &W::PageSetup,
         "Choose paper and margins"},
        {"Print Previe&w\u2026", nullptr, kNoIcon, Needs::document, &W::Preview,
         "See the pages before they are printed"},
        {"&Print\u2026", "Ctrl+P", LineIcon::print, Needs::document, &W::Print, "Print the text"},
        {},
        {"&Close", "Ctrl+W", kNoIcon, Needs::document, &W::CloseActive, "Close the text"},
        {"&Quit", "Ctrl+Q", kNoIcon, Needs::nothing, &W::Quit, "Close all texts and end",
         QAction::QuitRole},
    };
    return kRows;
}

std::span<const MainWindow::Command> WindowActions::Edit() {
    using W = MainWindow;
    static constexpr W::Command kRows[] = {
        {"&Undo", "Ctrl+Z", LineIcon::undo, Needs::undo, &W::Undo, "Undo the last action"},
        {"&Redo", "Ctrl+Y", LineIcon::redo, Needs::redo, &W::Redo, "Redo the action undone last"},
        {},
    };
    return kRows;
}

std::span<const MainWindow::Command> WindowActions::View() {
    using W = MainWindow;
    static constexpr W::Command kRows[] = {
        {"Zoom &In", "Ctrl++", kNoIcon, Needs::nothing, &W::ZoomIn, "Show texts larger"},
        {"Zoom &Out", "Ctrl+-", kNoIcon, Needs::nothing, &W::ZoomOut, "Show texts smaller"},
        {"&Normal Size", "Ctrl+0", kNoIcon, Needs::nothing, &W::ZoomReset,
         "Show texts in their first size"},
        {},
        {"Custo&mise Toolbars...", nullptr, kNoIcon, Needs::document, &W::CustomizeToolBars,
         "Choose the buttons of the toolbars"},
        {"&Full Screen", "F11", kNoIcon, Needs::nothing, &W::ToggleFullScreen,
         "Let the window fill the screen, or no longer"},
        {},
    };
    return kRows;
}

std::span<const MainWindow::Command> WindowActions::Window() {
    using W = MainWindow;
    static constexpr W::Command kRows[] = {
        {"&Next", "Ctrl+Tab", kNoIcon, Needs::document, &W::NextWindow, "Go to the next text"},
        {"&Previous", "Ctrl+Shift+Tab", kNoIcon, Needs::document, &W::PreviousWindow,
         "Go to the text before"},
        {},
        {"&Tile", nullptr, kNoIcon, Needs::document, &W::Tile, "Show all texts side by side"},
        {"&Cascade", nullptr, kNoIcon, Needs::document, &W::Cascade,
         "Show the texts one over the other"},
        {"Tabs or &Windows", nullptr, kNoIcon, Needs::nothing, &W::ToggleTabs,
         "Show texts as tabs, or as windows inside this one"},
        {},
        {"Close &All", nullptr, kNoIcon, Needs::document, &W::CloseAllWindows, "Close all texts"},
    };
    return kRows;
}

std::span<const MainWindow::Command> WindowActions::Help() {
    using W = MainWindow;
    static constexpr W::Command kRows[] = {
        {"&Keys", "F1", kNoIcon, Needs::nothing, &W::ShowKeys, "See what each key does"},
        {},
        {"&About Quorel", nullptr, kNoIcon, Needs::nothing, &W::ShowAbout,
         "Version and details for reports", QAction::AboutRole},
    };
    return kRows;
}
