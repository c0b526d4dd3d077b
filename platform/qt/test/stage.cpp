#include "stage.h"

#include <QAbstractButton>
#include <QComboBox>
#include <QKeyEvent>
#include <QLineEdit>

namespace {

/// Qt's program for all tests: without a screen, made before the first and gone after the last.
class QtEnvironment : public ::testing::Environment {
public:
    void SetUp() override {
        qputenv("QT_QPA_PLATFORM", "offscreen");
        m_Application = std::make_unique<QApplication>(m_Count, m_Values);
        QApplication::setCursorFlashTime(0); // a caret that stays
    }
    void TearDown() override { m_Application.reset(); }

private:
    int m_Count = 1;
    char m_Name[5] = "test";
    char* m_Values[2] = {m_Name, nullptr};
    std::unique_ptr<QApplication> m_Application;
};

const auto* const kEnvironment = ::testing::AddGlobalTestEnvironment(new QtEnvironment);

void TypeInto(QWidget& control, const std::u16string& text) {
    auto* box = qobject_cast<QComboBox*>(&control);
    auto* edit = box ? box->lineEdit() : qobject_cast<QLineEdit*>(&control);
    ASSERT_NE(edit, nullptr);
    edit->selectAll();
    QKeyEvent event(QEvent::KeyPress, Qt::Key_unknown, Qt::NoModifier,
                    QString::fromStdU16String(text));
    QApplication::sendEvent(edit, &event);
}

} // namespace

void QtStage::DoStep(QDialog& dialog, const DialogStep& step) {
    auto* control = dialog.findChild<QWidget*>(QString::number(step.m_Control));
    ASSERT_NE(control, nullptr) << step.m_Control;
    ASSERT_TRUE(control->isEnabled());
    if (step.m_Kind == DialogStep::click) {
        qobject_cast<QAbstractButton*>(control)->click();
    } else if (step.m_Kind == DialogStep::type) {
        TypeInto(*control, step.m_Text);
    } else {
        auto* box = qobject_cast<QComboBox*>(control);
        box->setCurrentIndex(box->findText(QString::fromStdU16String(step.m_Text)));
        Q_EMIT box->activated(box->currentIndex());
    }
}
