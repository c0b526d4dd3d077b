/// The two backends as a test works them: each case runs on both.
#pragma once

#include <algorithm>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include <QApplication>
#include <QDialog>
#include <QDir>
#include <QFile>
#include <QTimer>

#include "headless_desk.h"
#include "qt_canvas.h"
#include "qt_desk.h"
#include "view_window.h"

/// Notes what a window is told, and paints by a function.
class NotingSink : public IWindowSink {
public:
    std::intptr_t HandleMessage(unsigned message, std::uintptr_t first,
                                std::intptr_t second) override {
        m_Log.push_back({message, first, second});
        if (m_OnMessage)
            m_OnMessage(message);
        return 0;
    }
    void HandlePaint(IBackendSurface& surface, bool erase) override {
        m_Painted.push_back(surface.GetClipBox());
        m_Erased = erase;
        if (m_Paint)
            m_Paint(surface);
    }
    bool PreTranslateKey(unsigned key, unsigned modifiers) override {
        return key == m_Accelerator.first && modifiers == m_Accelerator.second;
    }
    IAccessibleText* GetAccessibleText() override { return m_Text; }

    /// The numbers of the messages noted, but for those that only some backends send.
    std::vector<unsigned> TakeMessages() {
        std::vector<unsigned> numbers;
        for (const Message& message : std::exchange(m_Log, {}))
            if (message.m_Number != kMsgSize && message.m_Number != kMsgMdiActivate)
                numbers.push_back(message.m_Number);
        return numbers;
    }

    struct Message {
        unsigned m_Number;
        std::uintptr_t m_First;
        std::intptr_t m_Second;
        bool operator==(const Message&) const = default;
    };
    std::vector<Message> m_Log;
    std::vector<CRect> m_Painted;
    bool m_Erased = false;
    std::function<void(IBackendSurface&)> m_Paint;
    std::function<void(unsigned)> m_OnMessage;
    std::pair<unsigned, unsigned> m_Accelerator{0, 0};
    IAccessibleText* m_Text = nullptr;
};

/// What a user does to a control.
struct DialogStep {
    enum Kind { click, type, choose } m_Kind;
    unsigned m_Control;
    std::u16string m_Text = {};
};

/// A backend and a user.
class Stage {
public:
    virtual ~Stage() = default;
    virtual IBackendDesk& GetDesk() = 0;
    /// Lets everything that waits happen.
    virtual void Settle() = 0;
    /// Names the first difference between two windows' pictures within an area, empty for none.
    virtual std::string Compare(IBackendWindow& a, IBackendWindow& b, const CRect& area) = 0;
    virtual std::optional<CRect> GetShownCaret(IBackendWindow& window) = 0;
    /// The next dialog is worked like that.
    virtual void WorkNextDialog(std::vector<DialogStep> steps) = 0;
    /// The pages of a job that came to its end, 0 when none did.
    virtual int GetPrintedPages() = 0;
};

class HeadlessStage : public Stage {
public:
    HeadlessDesk& GetDesk() override { return m_Desk; }
    void Settle() override { m_Desk.Pump(); }
    std::string Compare(IBackendWindow& a, IBackendWindow& b, const CRect& area) override {
        const CellGrid& first = static_cast<HeadlessWindow&>(a).GetGrid();
        const CellGrid& second = static_cast<HeadlessWindow&>(b).GetGrid();
        for (int row = area.top / kCellSize.cy; row < area.bottom / kCellSize.cy; ++row)
            for (int column = area.left / kCellSize.cx; column < area.right / kCellSize.cx;
                 ++column)
                if (first.GetCell(row, column) != second.GetCell(row, column))
                    return "cell " + std::to_string(row) + ' ' + std::to_string(column);
        return {};
    }
    std::optional<CRect> GetShownCaret(IBackendWindow& window) override {
        return static_cast<HeadlessWindow&>(window).GetCaret();
    }
    void WorkNextDialog(std::vector<DialogStep> steps) override {
        m_Desk.m_DialogScripts.push_back([steps](HeadlessDialog& dialog) {
            for (const DialogStep& step : steps)
                EXPECT_TRUE(step.m_Kind == DialogStep::click ? dialog.Click(step.m_Control)
                            : step.m_Kind == DialogStep::type
                                ? dialog.Type(step.m_Control, step.m_Text)
                                : dialog.Choose(step.m_Control, step.m_Text));
        });
    }
    int GetPrintedPages() override {
        const PrintRecord& record = *m_Desk.m_PrintJobs.back();
        return record.m_Completed ? static_cast<int>(record.m_Pages.size()) : 0;
    }

private:
    HeadlessDesk m_Desk;
};

class QtStage : public Stage {
public:
    QtStage() : m_Pdf(QDir::temp().filePath(QStringLiteral("platform_qt_%1.pdf").arg(getpid()))) {
        PdfOutput output;
        output.m_Path = AString(m_Pdf.toStdU16String());
        m_Desk.SetPdfOutput(output);
    }
    ~QtStage() override { QFile::remove(m_Pdf); }
    QtDesk& GetDesk() override { return m_Desk; }
    void Settle() override {
        for (int i = 0; i < 5; ++i)
            QApplication::processEvents();
    }
    std::string Compare(IBackendWindow& a, IBackendWindow& b, const CRect& area) override {
        const QImage& first = static_cast<ViewWindow&>(a).GetImage();
        const QImage& second = static_cast<ViewWindow&>(b).GetImage();
        for (int y = area.top; y < area.bottom; ++y)
            for (int x = area.left; x < area.right; ++x)
                if (first.pixel(x, y) != second.pixel(x, y))
                    return "pixel " + std::to_string(x) + ' ' + std::to_string(y);
        return {};
    }
    std::optional<CRect> GetShownCaret(IBackendWindow& window) override {
        const auto& view = static_cast<ViewWindow&>(window);
        QImage shown = CanvasOf(window).grab().toImage().convertToFormat(QImage::Format_RGB32);
        CRect around;
        for (int y = 0; y < std::min(shown.height(), view.GetImage().height()); ++y)
            for (int x = 0; x < std::min(shown.width(), view.GetImage().width()); ++x)
                if (shown.pixel(x, y) != view.GetImage().pixel(x, y))
                    around = around.Union({x, y, x + 1, y + 1});
        return around.IsEmpty() ? std::nullopt : std::optional(around);
    }
    void WorkNextDialog(std::vector<DialogStep> steps) override {
        QTimer::singleShot(0, [steps] {
            auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
            ASSERT_NE(dialog, nullptr);
            for (const DialogStep& step : steps)
                if (dialog->isVisible())
                    DoStep(*dialog, step);
            if (dialog->isVisible())
                dialog->close();
        });
    }
    int GetPrintedPages() override {
        QFile file(m_Pdf);
        return file.open(QIODevice::ReadOnly)
                   ? static_cast<int>(file.readAll().count("/Type /Page\n"))
                   : 0;
    }
    static QWidget& CanvasOf(IBackendWindow& window) {
        return *QtDesk::GetWidget(window)->focusProxy();
    }

private:
    static void DoStep(QDialog& dialog, const DialogStep& step);

    QString m_Pdf;
    QtDesk m_Desk;
};
