#include "status_line.h"

#include <QLabel>

#include "open_document.h"

namespace {

/// The widest text of each field, so that nothing moves while somebody types, and what it means.
constexpr struct {
    const char* m_Widest;
    const char* m_Tip;
} kFields[] = {
    {"Line 0000000, Column 0000", "Line and column of the caret"},
    {"0000000 lines selected", "What is selected"},
    {"OVR", "Typing inserts (INS) or overwrites (OVR)"},
    {"Windows-1252", "How the file's bytes stand for characters"},
    {"CR LF", "How lines end in the file"},
    {"Modified", "Whether there is something to save"},
};

QString Latin(std::string_view text) {
    return QString::fromLatin1(text.data(), static_cast<qsizetype>(text.size()));
}

QString SelectionText(IEditorInspector& inspector) {
    const auto selection = inspector.GetSelection();
    if (!selection || !selection->m_Selected || selection->m_Anchor == selection->m_End)
        return {};
    const int rows = std::abs(selection->m_Anchor.m_Row - selection->m_End.m_Row) + 1;
    const int columns = std::abs(selection->m_Anchor.m_Column - selection->m_End.m_Column);
    if (selection->m_Block)
        return QStringLiteral("Block %1 \u00D7 %2").arg(rows).arg(columns);
    return rows > 1 ? QStringLiteral("%1 lines selected").arg(rows)
                    : QStringLiteral("%1 selected").arg(columns);
}

} // namespace

StatusLine::StatusLine(QWidget* parent) : QStatusBar(parent) {
    static_assert(std::size(kFields) == kFieldCount);
    for (std::size_t i = 0; i < m_Fields.size(); ++i) {
        auto* label = new QLabel(this);
        label->setMinimumWidth(
            label->fontMetrics().horizontalAdvance(QLatin1String(kFields[i].m_Widest)));
        label->setToolTip(QLatin1String(kFields[i].m_Tip));
        label->setTextFormat(Qt::PlainText);
        m_Fields[i] = label;
        addPermanentWidget(label);
    }
}

void StatusLine::SetField(Field field, const QString& text) {
    QLabel& label = *m_Fields[field];
    if (label.text() != text)
        label.setText(text);
}

void StatusLine::Show(OpenDocument* document) {
    IEditorInspector* const inspector = document ? document->GetEditor().m_Inspector : nullptr;
    const auto caret = inspector ? inspector->GetCaret() : std::nullopt;
    SetField(kPlace, caret ? QStringLiteral("Line %1, Column %2")
                                 .arg(caret->m_Caret.m_Row + 1)
                                 .arg(caret->m_Caret.m_Column + 1)
                           : QString());
    SetField(kSelection, inspector ? SelectionText(*inspector) : QString());
    SetField(kMode, !caret                ? QString()
                    : caret->m_InsertMode ? QStringLiteral("INS")
                                          : QStringLiteral("OVR"));
    const FileForm form = document ? document->GetFile().GetForm() : FileForm{};
    SetField(kEncoding, document ? Latin(NameOf(form.m_Encoding)) : QString());
    SetField(kLineEnds,
             document ? Latin(NameOf(document->GetFile().GetSavedLineEnds())) : QString());
    SetField(kModified,
             document && document->IsModified() ? QStringLiteral("Modified") : QString());
}
