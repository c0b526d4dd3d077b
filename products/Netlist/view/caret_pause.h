/// CaretPause: hides a view's caret while pixels change below it.
#pragma once

#include "sim_edit_view.h"

/// Shows the caret again at its end if it was shown before.
class CSimEditView::CaretPause {
public:
    explicit CaretPause(CSimEditView& view) : m_View(view), m_WasShown(!view.m_CaretHidden) {
        view.HideCaret();
    }
    CaretPause(const CaretPause&) = delete;
    CaretPause& operator=(const CaretPause&) = delete;
    ~CaretPause() {
        if (m_WasShown)
            m_View.ShowCaret();
    }

private:
    CSimEditView& m_View;
    bool m_WasShown;
};
