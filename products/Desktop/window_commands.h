/// The tables of the window's own commands.
#pragma once

#include <optional>
#include <span>

#include <QKeySequence>

#include "line_icon.h"
#include "main_window.h"

/// When a command can be used.
enum class Needs { nothing, document, file, undo, redo, modified, project };

struct MainWindow::Command {
    const char* m_Text; ///< null: a separator
    const char* m_Keys; ///< as QKeySequence reads them; null: none
    std::optional<LineIcon> m_Icon;
    Needs m_Needs;
    void (MainWindow::*m_Run)();
    const char* m_Status;
    QAction::MenuRole m_Role = QAction::NoRole;
};

struct WindowActions {
    static std::span<const MainWindow::Command> File();
    static std::span<const MainWindow::Command> Edit();
    static std::span<const MainWindow::Command> View();
    static std::span<const MainWindow::Command> Window();
    static std::span<const MainWindow::Command> Help();
};
