#include "standard_dialogs.h"

#include <algorithm>

#include <QApplication>
#include <QColorDialog>
#include <QDir>
#include <QFileDialog>
#include <QMenu>
#include <QMessageBox>
#include <QPrintDialog>
#include <QPrintPreviewDialog>
#include <QPrinter>
#include <QPrinterInfo>
#include <QProgressDialog>
#include <QPushButton>
#include <QRegularExpression>

#include "cmd_target.h"
#include "menu.h"
#include "page_layout.h"
#include "print_job.h"
#include "qt_text.h"

namespace {

/// How long a job may take until it shows its progress, in milliseconds.
constexpr int kSilence = 1000;

/// A message box's buttons by the low nibble of its style, with what the framework calls them.
struct ButtonRow {
    int m_Style;
    QMessageBox::StandardButton m_Button;
    int m_Result;
};
constexpr ButtonRow kButtons[] = {
    {0, QMessageBox::Ok, kIdOk},         {1, QMessageBox::Ok, kIdOk},
    {1, QMessageBox::Cancel, kIdCancel}, {2, QMessageBox::Abort, kIdAbort},
    {2, QMessageBox::Retry, kIdRetry},   {2, QMessageBox::Ignore, kIdIgnore},
    {3, QMessageBox::Yes, kIdYes},       {3, QMessageBox::No, kIdNo},
    {3, QMessageBox::Cancel, kIdCancel}, {4, QMessageBox::Yes, kIdYes},
    {4, QMessageBox::No, kIdNo},         {5, QMessageBox::Retry, kIdRetry},
    {5, QMessageBox::Cancel, kIdCancel},
};
/// Its icon by the second nibble.
constexpr QMessageBox::Icon kIcons[] = {QMessageBox::NoIcon, QMessageBox::Critical,
                                        QMessageBox::Question, QMessageBox::Warning,
                                        QMessageBox::Information};

QMessageBox::Icon IconOf(int style) {
    const auto index = static_cast<std::size_t>(style >> 4 & 0xF);
    return index < std::size(kIcons) ? kIcons[index] : QMessageBox::NoIcon;
}

void AddItems(QMenu& shown, const CMenu& menu, CCmdTarget& target) {
    for (std::size_t i = 0; i < menu.GetItemCount(); ++i) {
        const CMenuItem& item = menu.GetItem(i);
        if (item.m_Popup) {
            AddItems(*shown.addMenu(ToQt(item.m_Text)), *item.m_Popup, target);
            continue;
        }
        if (item.IsSeparator()) {
            shown.addSeparator();
            continue;
        }
        CCmdUI ui(item.m_Command);
        target.UpdateCommand(ui);
        QAction* const action =
            shown.addAction(ToQt(ui.GetText().empty() ? item.m_Text : ui.GetText()));
        action->setEnabled(ui.IsEnabled());
        action->setCheckable(ui.IsChecked());
        action->setChecked(ui.IsChecked());
        action->setData(item.m_Command);
    }
}

/// The last page that can be typed.
constexpr int kMostDialogPages = 99'999;

void PrepareRange(QPrintDialog& dialog, const PrintRequest& request) {
    dialog.setOption(QAbstractPrintDialog::PrintSelection, request.m_AllowSelection);
    dialog.setOption(QAbstractPrintDialog::PrintPageRange);
    const int last = std::min(request.m_ToPage, kMostDialogPages);
    dialog.setMinMax(1, last);
    dialog.setFromTo(request.m_FromPage, last);
    dialog.setPrintRange(request.m_Selection ? QAbstractPrintDialog::Selection
                                             : QAbstractPrintDialog::AllPages);
}

void TakeRange(const QPrintDialog& dialog, PrintRequest& request) {
    request.m_Selection = dialog.printRange() == QAbstractPrintDialog::Selection;
    if (dialog.printRange() == QAbstractPrintDialog::PageRange && dialog.fromPage() > 0) {
        request.m_FromPage = dialog.fromPage();
        request.m_ToPage = std::max(dialog.toPage(), dialog.fromPage());
    }
}

} // namespace

int ShowMessageBox(QWidget* parent, const AString& text, int style) {
    QMessageBox box(parent);
    box.setText(ToQt(text));
    box.setTextFormat(Qt::PlainText);
    box.setIcon(IconOf(style));
    box.setWindowTitle(QGuiApplication::applicationDisplayName());
    for (const ButtonRow& row : kButtons)
        if (row.m_Style == (style & 0xF))
            box.addButton(row.m_Button);
    if (box.buttons().isEmpty())
        box.addButton(QMessageBox::Ok);
    const int pressed = box.exec();
    const auto row = std::ranges::find_if(kButtons, [&](const ButtonRow& r) {
        return r.m_Style == (style & 0xF) && r.m_Button == pressed;
    });
    return row == std::end(kButtons) ? int{kIdCancel} : row->m_Result;
}

QStringList FiltersOf(const AString& filter) {
    QStringList filters;
    const QStringList pieces = ToQt(filter).split(QLatin1Char('|'));
    for (qsizetype i = 0; i + 1 < pieces.size() && !pieces[i].isEmpty(); i += 2) {
        // Qt reads the patterns from the last parentheses, which a text of its own may hold too.
        const qsizetype parenthesis = pieces[i].indexOf(QLatin1Char('('));
        QString patterns = pieces[i + 1];
        patterns.replace(QLatin1Char(';'), QLatin1Char(' '));
        patterns.replace(QLatin1String("*.*"), QLatin1String("*"));
        filters.append(
            QStringLiteral("%1 (%2)").arg(pieces[i].left(parenthesis).trimmed(), patterns));
    }
    return filters;
}

namespace {

/// Why a chosen file is none that the request means; empty for a good one.
QString FaultOf(const QString& path, const FileRequest& request) {
    const QFileInfo file(path);
    static const QRegularExpression sWildcards(QStringLiteral("[*?]"));
    if (!request.m_Open && file.fileName().contains(sWildcards))
        return QStringLiteral("Give the file a name without * and ?.");
    if (request.m_PathMustExist && !file.dir().exists())
        return QStringLiteral("The folder %1 isn't there.").arg(file.path());
    return {};
}

} // namespace

std::optional<AString> AskForFile(QWidget* parent, const FileRequest& request) {
    QFileDialog dialog(parent);
    dialog.setAcceptMode(request.m_Open ? QFileDialog::AcceptOpen : QFileDialog::AcceptSave);
    dialog.setFileMode(request.m_Open ? QFileDialog::ExistingFile : QFileDialog::AnyFile);
    dialog.setOption(QFileDialog::DontConfirmOverwrite, !request.m_OverwritePrompt);
    if (!request.m_Title.empty())
        dialog.setWindowTitle(ToQt(request.m_Title));
    if (const QStringList filters = FiltersOf(request.m_Filter); !filters.isEmpty())
        dialog.setNameFilters(filters);
    if (!request.m_FileName.empty()) {
        const QFileInfo preset(ToQt(request.m_FileName));
        if (preset.isAbsolute())
            dialog.setDirectory(preset.path());
        dialog.selectFile(preset.fileName());
    }
    while (dialog.exec() == QDialog::Accepted && !dialog.selectedFiles().isEmpty()) {
        const QString file = dialog.selectedFiles().front();
        const QString fault = FaultOf(file, request);
        if (fault.isEmpty())
            return FromQt(file);
        QMessageBox::warning(parent, dialog.windowTitle(), fault);
    }
    return std::nullopt;
}

std::optional<ColorRef> AskForColor(QWidget* parent, ColorRef preset,
                                    std::span<const ColorRef> custom) {
    QColorDialog dialog(ToQt(preset), parent);
    for (int i = 0; i < std::min(static_cast<int>(custom.size()), QColorDialog::customCount()); ++i)
        QColorDialog::setCustomColor(i, ToQt(custom[static_cast<std::size_t>(i)]));
    if (dialog.exec() != QDialog::Accepted)
        return std::nullopt;
    return FromQt(dialog.currentColor());
}

std::unique_ptr<PrintDevice> AskForPrinter(QWidget* parent, PrintRequest& request) {
    if (request.m_Direct && QPrinterInfo::defaultPrinter().isNull())
        return nullptr;
    auto printer = std::make_unique<QPrinter>(QPrinter::HighResolution);
    printer->setPageLayout(GetPageLayout());
    if (!request.m_Direct) {
        QPrintDialog dialog(printer.get(), parent);
        PrepareRange(dialog, request);
        if (dialog.exec() != QDialog::Accepted)
            return nullptr;
        TakeRange(dialog, request);
    }
    return MakePrinterDevice(std::move(printer));
}

void ShowPrintPreview(QWidget* parent, const std::function<void(QPrinter&)>& print) {
    QPrinter printer(QPrinter::HighResolution);
    printer.setPageLayout(GetPageLayout());
    QPrintPreviewDialog dialog(&printer, parent);
    QObject::connect(&dialog, &QPrintPreviewDialog::paintRequested, &dialog,
                     [&](QPrinter* target) { print(*target); });
    dialog.exec();
}

unsigned ShowPopupMenu(const CMenu& menu, const QPoint& at, CCmdTarget& target) {
    QMenu shown;
    AddItems(shown, menu, target);
    const QAction* const chosen = shown.exec(at);
    return chosen && chosen->isEnabled() ? chosen->data().toUInt() : 0;
}

std::unique_ptr<QProgressDialog> MakeProgressDialog(const QString& title) {
    auto progress = std::make_unique<QProgressDialog>(QApplication::activeWindow());
    progress->setWindowModality(Qt::ApplicationModal);
    progress->setMinimumDuration(kSilence);
    progress->setWindowTitle(title);
    progress->setAutoReset(false);
    return progress;
}
