/// CFontOption: the page on which the text font's face and size are chosen.
#pragma once

#include "font.h"
#include "property_sheet.h"

/// A sample shows the choice, its size in points. The option takes the size as the height of
/// characters in device units. Its other fields stay.
class CFontOption : public CPropertyPage {
public:
    CFontOption();

protected:
    void DoDataExchange(CDataExchange& exchange) override;
    void OnInitDialog() override;
    /// The option takes face and size, is stored, and the text font is made anew.
    void OnOK() override;
    const NoticeMap& GetNoticeMap() const override;

private:
    void ListFonts();
    void OnFaceChosen();
    void OnFaceTyped();
    void OnSizeChanged();
    void ShowSample();

    static AString s_FaceName; ///< the face chosen last
    double m_Size = 0;
    CFont m_SampleFont;
};
