/// QtDialog: a dialog made from dialog tables.
#pragma once

#include <map>
#include <optional>
#include <vector>

#include <QDialog>

#include "backend.h"

class QVBoxLayout;

/// Shows the tables' controls in dialog units, which grow with the font until every text fits. A
/// dialog without a button for OK or Cancel gets both.
class QtDialog final : public QDialog, public IBackendDialog {
public:
    QtDialog(const AString& title, std::span<const DialogResource* const> pages, IDialogSink& sink,
             QWidget* parent);

    /// Shows the dialog until it has ended. @return what End was given
    int Run();
    /// A control by its number, null when there is none.
    QWidget* FindControl(unsigned control) const;

    AString GetText(unsigned control) override;
    void SetText(unsigned control, const AString& text) override;
    bool IsChecked(unsigned control) override;
    void SetChecked(unsigned control, bool checked) override;
    void Enable(unsigned control, bool enabled) override;
    void AddItem(unsigned control, const AString& text) override;
    int GetSelection(unsigned control) override;
    void SetSelection(unsigned control, int index) override;
    void SetFont(unsigned control, const IBackendFont* font) override;
    void SetColor(unsigned control, ColorRef color) override;
    void End(int result) override;

    /// A closed window is a click on Cancel.
    void reject() override;

private:
    /// Pixels for a dialog unit.
    struct Units {
        double m_Across;
        double m_Down;
    };
    struct Page {
        const DialogResource* m_Resource;
        QWidget* m_Widget;
    };
    struct Placed {
        const ControlRow* m_Row;
        QWidget* m_Widget;
    };

    template <class T>
    T* Find(unsigned control) const;
    QWidget* MakePage(const DialogResource& page);
    void Connect(unsigned id, QWidget& widget);
    void AddButtonsIfMissing(QVBoxLayout& layout);
    Units ChooseUnits() const;
    void Place(const Units& units);
    void SelectFirstEdit();
    void Notice(unsigned control, unsigned notice);

    IDialogSink& m_Sink;
    std::vector<Page> m_Pages;
    std::vector<Placed> m_Placed;
    std::map<unsigned, QWidget*> m_Controls;
    std::optional<int> m_Result;
    int m_Noticing = 0;
};
