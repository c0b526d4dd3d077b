/// FindBox: a box of the module's toolbar on the screen.
#pragma once

#include <functional>

#include <QComboBox>

#include "combo_box.h"

/// Shows the module's box and edits in it. Return searches on, Escape goes back to the text.
class FindBox : public QComboBox, public IComboBoxPeer {
public:
    /// @param box outlives this widget
    FindBox(CComboBox& box, QWidget* parent);
    ~FindBox() override;

    std::function<void(bool backward)> m_OnReturn;
    std::function<void()> m_OnEscape;
    std::function<void()> m_OnFocus; ///< it comes into the box

    void ComboBoxChanged() override;
    void EditCommand(unsigned message) override;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    bool TakeKey(const QKeyEvent& key);

    CComboBox& m_Box;
    bool m_Syncing = false;
};
