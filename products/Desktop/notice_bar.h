/// NoticeBar: a line above a text that tells its user something and may ask.
#pragma once

#include <functional>

#include <QFrame>

class QHBoxLayout;

/// Text, buttons and a button that closes the bar. It goes when any of them is pressed.
class NoticeBar : public QFrame {
public:
    enum class Kind { information, warning };

    NoticeBar(Kind kind, const QString& text, QWidget* parent = nullptr);

    /// Adds a button; what it does is done once the bar has gone.
    void AddButton(const QString& text, std::function<void()> action);

protected:
    void changeEvent(QEvent* event) override;

private:
    void Paint();
    void Leave();

    Kind m_Kind;
    QHBoxLayout* m_Buttons;
    bool m_Painting = false;
};
