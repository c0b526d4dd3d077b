#include "questions.h"

#include <QMessageBox>
#include <QPushButton>

namespace {

QMessageBox::Icon IconOf(Question::Kind kind) {
    constexpr QMessageBox::Icon kIcons[] = {QMessageBox::Information, QMessageBox::Question,
                                            QMessageBox::Warning, QMessageBox::Critical};
    return kIcons[static_cast<std::size_t>(kind)];
}

} // namespace

int AskInBox(QWidget* parent, const Question& question) {
    QMessageBox box(parent);
    box.setWindowTitle(QStringLiteral("Quorel"));
    box.setIcon(IconOf(question.m_Kind));
    box.setTextFormat(Qt::PlainText);
    box.setText(question.m_Text);
    box.setInformativeText(question.m_Details);
    QStringList texts = question.m_Buttons;
    if (texts.isEmpty())
        texts << QStringLiteral("&OK");
    QList<QPushButton*> buttons;
    for (const QString& text : texts)
        buttons << box.addButton(text, QMessageBox::ActionRole);
    box.setDefaultButton(buttons.first());
    box.setEscapeButton(buttons.last());
    box.exec();
    const qsizetype pressed = buttons.indexOf(static_cast<QPushButton*>(box.clickedButton()));
    return static_cast<int>(pressed < 0 ? buttons.size() - 1 : pressed);
}
