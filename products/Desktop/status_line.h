/// StatusLine: what the desktop shows below the texts.
#pragma once

#include <array>

#include <QStatusBar>

class OpenDocument;
class QLabel;

/// Line, column, insert mode, encoding, line ends and whether there is something to save.
class StatusLine : public QStatusBar {
public:
    explicit StatusLine(QWidget* parent = nullptr);

    /// Shows the state of a document; null: nothing is open. What is as before isn't touched.
    void Show(OpenDocument* document);

private:
    enum Field { kPlace, kSelection, kMode, kEncoding, kLineEnds, kModified, kFieldCount };
    void SetField(Field field, const QString& text);

    std::array<QLabel*, kFieldCount> m_Fields;
};
