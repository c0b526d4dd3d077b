/// CColorOption: the page on which the bookmark colour is chosen.
#pragma once

#include "property_sheet.h"

class CColorOption : public CPropertyPage {
public:
    CColorOption();

protected:
    void OnInitDialog() override;
    /// The option takes the colour and is stored.
    void OnOK() override;
    const NoticeMap& GetNoticeMap() const override;

private:
    void OnEditColor();
    void ShowColor();

    ColorRef m_Color = kBlack; ///< being edited
};
