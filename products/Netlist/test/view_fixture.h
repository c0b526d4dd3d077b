/// A text view on a headless window, worked and looked at as its user does.
#pragma once

#include <functional>
#include <optional>
#include <random>
#include <string>

#include "combo_box.h"
#include "ifactory_tools.h"
#include "module_fixture.h"
#include "tool_bars_data.h"

/// A place on the window in cells, row first.
struct ScreenCell {
    int m_Row;
    int m_Column;
    bool operator==(const ScreenCell&) const = default;
    friend void PrintTo(const ScreenCell& cell, std::ostream* out) {
        *out << '(' << cell.m_Row << ", " << cell.m_Column << ')';
    }
};

class ViewTest : public ModuleTest {
protected:
    /// Opens an editor with one view, which has the focus; the text is loaded into it.
    void Open(std::string_view text, CSize cells = {80, 25}) {
        m_Desk.m_ClientSize = {cells.cx * kCellSize.cx, cells.cy * kCellSize.cy};
        m_Open.emplace(Factory().CreateEditor(m_Component));
        (*m_Open)->OpenView(&m_Instance);
        m_Open->m_Driver->LoadArchive(text);
        View().SetFocus();
        m_Desk.Pump();
    }
    OpenEditor& Editor() { return *m_Open; }
    /// The box on the module's toolbar.
    CComboBox& FindBox() {
        ToolBarControl* control = nullptr;
        auto& tools = dynamic_cast<IFactoryTools&>(Factory());
        EXPECT_TRUE(tools.GetToolBars()->FindControl(42014, control));
        return dynamic_cast<CComboBox&>(*control->mWindow);
    }
    /// The view made last.
    HeadlessWindow& View() {
        HeadlessWindow* view = nullptr;
        for (HeadlessWindow* window : m_Desk.GetWindows())
            if (window->GetKind() == WindowKind::view)
                view = window;
        return *view;
    }

    /// @name What the user does
    /// @{
    /// A message of the pointer at pixels right and below of a cell's left upper corner.
    void Mouse(unsigned message, ScreenCell cell, CPoint pixels = {}) {
        m_Desk.m_Pointer = {cell.m_Column * kCellSize.cx + pixels.x,
                            cell.m_Row * kCellSize.cy + pixels.y};
        View().Send(message, 0, MakePointValue(m_Desk.m_Pointer.x, m_Desk.m_Pointer.y));
    }
    void Press(ScreenCell cell, bool alt = false) {
        Hold(kKeyLeftButton, true);
        Hold(kKeyAlt, alt);
        Mouse(kMsgLButtonDown, cell);
        Hold(kKeyAlt, false);
    }
    void Release(ScreenCell cell) {
        Hold(kKeyLeftButton, false);
        Mouse(kMsgLButtonUp, cell);
    }
    void Click(ScreenCell cell) {
        Press(cell);
        Release(cell);
    }
    void Drag(ScreenCell from, ScreenCell to, bool alt = false) {
        Press(from, alt);
        Mouse(kMsgMouseMove, to);
        Release(to);
    }
    void DoubleClick(ScreenCell cell) {
        Click(cell);
        Mouse(kMsgLButtonDblClk, cell);
    }
    void Wheel(int delta) { View().Send(kMsgMouseWheel, static_cast<std::uintptr_t>(delta)); }
    void Scroll(unsigned message, ScrollCode code, int position = 0) {
        View().Send(message, code, position);
    }
    /// A key-down with other keys held.
    void Key(unsigned key, std::initializer_list<unsigned> held = {}) {
        for (const unsigned modifier : held)
            Hold(modifier, true);
        View().Send(kMsgKeyDown, key, 1);
        for (const unsigned modifier : held)
            Hold(modifier, false);
    }
    void Type(std::u16string_view text) {
        for (const char16_t character : text)
            View().Send(kMsgChar, character, 1);
    }
    void Hold(unsigned key, bool down) {
        if (down)
            m_Desk.m_KeysDown.insert(key);
        else
            m_Desk.m_KeysDown.erase(key);
    }
    /// @}

    /// @name What the user sees
    /// @{
    std::u16string RowText(int row) { return View().GetGrid().GetRowText(row); }
    /// A row with x for each inverted cell and a point for the others, those at its end left out.
    std::string Highlight(int row) {
        std::string marks;
        for (int column = 0; column < View().GetGrid().GetColumnCount(); ++column)
            marks += View().GetGrid().GetCell(row, column).m_Inverted ? 'x' : '.';
        marks.resize(marks.find_last_of('x') + 1);
        return marks;
    }
    std::optional<ScreenCell> Caret() {
        const std::optional<CRect>& caret = View().GetCaret();
        if (!caret)
            return std::nullopt;
        return ScreenCell{caret->top / kCellSize.cy, caret->left / kCellSize.cx};
    }
    /// The document's row at the window's top.
    int TopRow() { return Editor().m_Inspector->GetScroll()->m_TopRow; }
    /// @}

    /// The law of all painting: the picture and the caret are those of a full repaint.
    void ExpectTruePicture() {
        m_Desk.Pump();
        const std::vector<Cell> shown = Picture();
        const auto caret = View().GetCaret();
        View().Invalidate({0, 0, View().GetClientSize().cx, View().GetClientSize().cy}, true);
        View().Update();
        EXPECT_EQ(View().GetCaret(), caret);
        const std::vector<Cell> full = Picture();
        const auto [at, other] = std::ranges::mismatch(shown, full);
        const auto columns = View().GetGrid().GetColumnCount();
        EXPECT_TRUE(at == shown.end()) << "differs at row " << (at - shown.begin()) / columns
                                       << ", column " << (at - shown.begin()) % columns;
    }

    /// Takes random steps, of which each tells what it did, and holds the law after each.
    using RandomStep = std::function<std::string(std::minstd_rand&)>;
    void RunRandomly(unsigned seed, int steps, const RandomStep& step) {
        std::minstd_rand random(seed);
        std::string told;
        for (int i = 0; i < steps && !HasFailure(); ++i) {
            told += step(random) + '\n';
            SCOPED_TRACE(told.substr(told.size() - std::min<std::size_t>(told.size(), 600)));
            ExpectTruePicture();
        }
    }

    IComponent* m_Component = nullptr; ///< whose netlist is opened
    TestInstance m_Instance{u"amplifier"};
    std::optional<OpenEditor> m_Open;

private:
    /// All cells, a blank without the colour that nobody sees.
    std::vector<Cell> Picture() {
        const CellGrid& grid = View().GetGrid();
        std::vector<Cell> cells;
        for (int row = 0; row < grid.GetRowCount(); ++row)
            for (int column = 0; column < grid.GetColumnCount(); ++column) {
                cells.push_back(grid.GetCell(row, column));
                if (cells.back().m_Character == u' ')
                    cells.back().m_Color = kBlack;
            }
        return cells;
    }
};
