#include "qt_desk.h"

#include <cmath>

#include <QApplication>
#include <QClipboard>
#include <QCursor>
#include <QDrag>
#include <QKeyEvent>
#include <QMdiSubWindow>
#include <QMimeData>
#include <QProgressDialog>
#include <QThread>

#include "accessible_canvas.h"
#include "frame_window.h"
#include "image_surface.h"
#include "print_job.h"
#include "qt_dialog.h"
#include "qt_keys.h"
#include "qt_seat.h"
#include "qt_text.h"
#include "standard_dialogs.h"
#include "view_window.h"

namespace {

QWidget* DialogParent() {
    return QApplication::activeWindow();
}

} // namespace

QtDesk::QtDesk() : m_Seat(std::make_unique<QtSeat>()) {
    AccessibleCanvas::Install();
}

QtDesk::~QtDesk() {
    if (GetBackend() == this)
        SetBackend(nullptr);
}

void QtDesk::SetFrameArea(QMdiArea* area) {
    m_Seat->SetFrameArea(area);
}

void QtDesk::SetFrameHooks(FrameHooks hooks) {
    m_Seat->m_Hooks = std::move(hooks);
}

bool QtDesk::OfferKey(const QKeyEvent& key) {
    const QMdiArea* const area = m_Seat->GetFrameArea();
    const QWidget* const shell = area ? area->activeSubWindow() : nullptr;
    FrameWindow* const frame = shell ? m_Seat->GetFrameOf(shell) : nullptr;
    const unsigned code = KeyCodeOf(key.key());
    m_Seat->NoteModifiers(key.modifiers());
    return frame && code != 0 &&
           frame->GetSink().PreTranslateKey(code, ModifiersOf(key.modifiers()));
}

QWidget* QtDesk::GetWidget(IBackendWindow& window) {
    const auto* own = dynamic_cast<QtWindow*>(&window);
    return own ? own->GetWidget() : nullptr;
}

void QtDesk::SetPdfOutput(std::optional<PdfOutput> output) {
    m_Seat->m_PdfOutput = std::move(output);
}

std::unique_ptr<IBackendWindow> QtDesk::CreateWindow(WindowKind kind, IBackendWindow* parent,
                                                     IWindowSink& sink) {
    if (kind == WindowKind::frame)
        return std::make_unique<FrameWindow>(*m_Seat, sink);
    return std::make_unique<ViewWindow>(*m_Seat, dynamic_cast<FrameWindow*>(parent), sink);
}

bool QtDesk::SetClipboardText(const AString& text) {
    QGuiApplication::clipboard()->setText(WithPlainLineEnds(text));
    return true;
}

std::optional<AString> QtDesk::GetClipboardText() {
    if (m_Seat->m_PrimaryPaste)
        return m_Seat->m_PrimaryPaste;
    const QMimeData* data = QGuiApplication::clipboard()->mimeData();
    return data && data->hasText() ? std::optional(FromQt(data->text())) : std::nullopt;
}

bool QtDesk::HasClipboardText() {
    const QMimeData* data = QGuiApplication::clipboard()->mimeData();
    return m_Seat->m_PrimaryPaste || (data && data->hasText());
}

bool QtDesk::IsKeyDown(unsigned key, bool now) {
    return m_Seat->IsKeyDown(key, now);
}

CPoint QtDesk::GetPointer() {
    return QtSeat::ToScreen(QCursor::pos());
}

void QtDesk::SetCursor(CursorShape shape) {
    m_Seat->SetCursor(shape);
}

std::unique_ptr<IBackendFont> QtDesk::CreateFont(const LogFont& font) {
    return std::make_unique<QtFont>(font);
}

std::vector<AString> QtDesk::GetFixedPitchFonts() {
    return QtFont::GetFixedPitchFamilies();
}

CSize QtDesk::GetFrameAreaSize() {
    const QMdiArea* const area = m_Seat->GetFrameArea();
    return area ? CSize{area->viewport()->width(), area->viewport()->height()} : CSize{};
}

int QtDesk::GetBorderWidth() {
    return std::max(1, static_cast<int>(std::lround(QtSeat::GetScreenRatio())));
}

IBackendSurface& QtDesk::GetScreen() {
    return m_Seat->GetScreen();
}

int QtDesk::ShowMessage(const AString& text, int style) {
    return ShowMessageBox(DialogParent(), text, style);
}

std::optional<AString> QtDesk::AskFile(const FileRequest& request) {
    return AskForFile(DialogParent(), request);
}

std::optional<ColorRef> QtDesk::AskColor(ColorRef preset, std::span<const ColorRef> custom) {
    return AskForColor(DialogParent(), preset, custom);
}

int QtDesk::RunDialog(const AString& title, std::span<const DialogResource* const> pages,
                      IDialogSink& sink) {
    return QtDialog(title, pages, sink, DialogParent()).Run();
}

unsigned QtDesk::TrackMenu(const CMenu& menu, CPoint at, CCmdTarget& target) {
    return ShowPopupMenu(menu, QtSeat::FromScreen(at).toPoint(), target);
}

DropEffect QtDesk::DragText(const AString& text) {
    QWidget* const from = m_Seat->GetPointerWidget();
    // The click of a middle-button paste is over before it could become a drag.
    if (!from || m_Seat->m_PrimaryPaste)
        return DropEffect::none;
    auto* data = new QMimeData;
    data->setText(WithPlainLineEnds(text));
    auto* drag = new QDrag(from); // deletes itself
    drag->setMimeData(data);
    const Qt::DropAction action = drag->exec(Qt::CopyAction | Qt::MoveAction, Qt::CopyAction);
    return action == Qt::MoveAction   ? DropEffect::move
           : action == Qt::CopyAction ? DropEffect::copy
                                      : DropEffect::none;
}

std::unique_ptr<IBackendPrinter> QtDesk::AskPrinter(PrintRequest& request) {
    std::unique_ptr<PrintDevice> device;
    bool isWatched = false;
    if (m_Seat->m_PdfOutput) {
        device = MakePdfDevice(*m_Seat->m_PdfOutput);
        request.m_FromPage = m_Seat->m_PdfOutput->m_FromPage;
        request.m_ToPage = m_Seat->m_PdfOutput->m_ToPage;
    } else {
        device = AskForPrinter(DialogParent(), request);
        isWatched = true;
    }
    if (!device)
        return nullptr;
    return std::make_unique<PrintJob>(std::move(device), m_Seat->m_DefaultFont, isWatched);
}

void QtDesk::ShowPreview(const PrintFunction& print) {
    ShowPrintPreview(DialogParent(), [&](QPrinter& printer) {
        constexpr bool kIsWatched = true;
        print(std::make_unique<PrintJob>(MakeTargetDevice(printer), m_Seat->m_DefaultFont,
                                         kIsWatched));
    });
}

bool QtDesk::ShowProgress(const AString& what, int thousandths) {
    if (!m_Progress) {
        m_Progress = MakeProgressDialog(QGuiApplication::applicationDisplayName());
        m_Progress->setRange(0, 1000);
        m_Progress->setLabelText(ToQt(what));
    }
    m_Progress->setValue(thousandths); // which lets the user answer
    return !m_Progress->wasCanceled();
}

void QtDesk::EndProgress() {
    m_Progress.reset();
}

void QtDesk::Wait(int milliseconds) {
    QThread::msleep(static_cast<unsigned long>(std::max(milliseconds, 0)));
}
