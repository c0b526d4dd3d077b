/// Question: what is asked of the user in a box, apart from how it is shown.
#pragma once

#include <functional>

#include <QString>
#include <QStringList>

class QWidget;

struct Question {
    enum class Kind { information, question, warning, error };

    Kind m_Kind = Kind::question;
    QString m_Text;    ///< a sentence
    QString m_Details; ///< more, may be empty
    /// The first is what Return presses, the last what Escape does. None: one that closes the box.
    QStringList m_Buttons;
};

/// Asks and gives the index of the button.
using Asker = std::function<int(const Question&)>;

/// Asks in a box over a window.
int AskInBox(QWidget* parent, const Question& question);
