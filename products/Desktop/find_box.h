/// FindBox: a box of the module's toolbar on the screen.
#pragma once

#include <functional>

#include <QComboBox>

#include "combo_box.h"

/// Shows the module's box and edits in it. Return searches on, Escape goes back to the text, and
/// keys that don't edit are the text's.
class FindBox : public QComboBox, public IComboBoxPeer {
public:
    /// @param box outlives this widget
    FindBox(CComboBox& box, QWidget* parent);
    ~FindBox() override;

    std::function<void(bool backward)> m_OnReturn;
    std::function<void()> m_OnEscape;
    std::function<bool(const QKeyEvent& key)> m_OnOtherKey; ///< @return whether it was taken
    std::function<void()> m_OnFocus;                        ///< it comes into the box

    void ComboBoxChanged() override;
    void EditCommand(unsigned message) override;

protected:
    bool event(QEvent* event) override;

private:
    bool TakeKey(const QKeyEvent& key);
    bool Edits(const QKeyEvent& key) const;

    CComboBox& m_Box;
    bool m_Syncing = false;
};
