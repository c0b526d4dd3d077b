/// HeadlessPrinter: a print job that records its pages.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "backend.h"

/// A text as it was drawn, with its upper left corner.
struct PrintedText {
    int m_X;
    int m_Y;
    std::u16string m_Text;
    ColorRef m_Color;
    bool operator==(const PrintedText&) const = default;
};

/// A line as it was drawn.
struct PrintedRule {
    CPoint m_From;
    CPoint m_To;
    int m_Width;
    bool operator==(const PrintedRule&) const = default;
};

struct PrintedPage {
    std::vector<PrintedText> m_Texts;
    std::vector<PrintedRule> m_Rules;
};

/// What a job printed; stays when the job has ended.
struct PrintRecord {
    AString m_Title;
    std::vector<PrintedPage> m_Pages;
    bool m_Completed = false; ///< EndDocument came; a job dropped before leaves it false
};

/// The device that a desk offers: the page in device units, the measures of every print font, and
/// the page at which it refuses to go on.
struct PrinterSettings {
    CSize m_PageSize{800, 1000};
    CSize m_Resolution{96, 96};
    FontMetrics m_Font{20, 0, 10, 10};
    int m_FailingPage = 0; ///< 1-based, 0 for never
    int m_LastWanted = 0;  ///< the page behind which the user gives up, 0 for never
};

/// Records what is drawn on a page.
class QUOREL_API PageSurface : public IBackendSurface {
public:
    explicit PageSurface(const PrinterSettings& settings) : m_Settings(settings) {}
    ~PageSurface() override;

    /// Where drawing goes; null: nowhere.
    void SetPage(PrintedPage* page) { m_Page = page; }

    void FillRect(const CRect&, ColorRef) override {}
    void InvertRect(const CRect&) override {}
    int DrawText(CPoint at, std::u16string_view text, const TextStyle& style) override;
    CSize MeasureText(std::u16string_view text, const IBackendFont* font) override;
    FontMetrics GetFontMetrics(const IBackendFont*) override { return m_Settings.m_Font; }
    void DrawLine(CPoint from, CPoint to, int width, ColorRef color) override;
    void SetOrigin(CPoint origin) override { m_Origin = origin; }
    void SetClip(const CRect*) override {}
    CRect GetClipBox() override;
    CSize GetSize() override { return m_Settings.m_PageSize; }
    CSize GetResolution() override { return m_Settings.m_Resolution; }

private:
    const PrinterSettings m_Settings;
    CPoint m_Origin;
    PrintedPage* m_Page = nullptr;
};

class QUOREL_API HeadlessPrinter : public IBackendPrinter {
public:
    HeadlessPrinter(const PrinterSettings& settings, std::shared_ptr<PrintRecord> record);
    ~HeadlessPrinter() override;

    CSize GetPageSize() override { return m_Settings.m_PageSize; }
    CSize GetResolution() override { return m_Settings.m_Resolution; }
    IBackendSurface& GetSurface() override { return m_Surface; }
    bool StartDocument(const AString& title) override;
    bool GoOn(int page, int lastPage) override;
    bool StartPage() override;
    bool EndPage() override;
    bool EndDocument() override;

private:
    const PrinterSettings m_Settings;
    std::shared_ptr<PrintRecord> m_Record;
    PageSurface m_Surface;
};
