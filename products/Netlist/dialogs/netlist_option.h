/// CNetlistOption: the sheet of the editor options that the user can change.
#pragma once

#include "color_option.h"
#include "font_option.h"

/// Its OK puts the options into force and stores them; views are the caller's matter.
class CNetlistOption : public CPropertySheet {
public:
    explicit CNetlistOption(const AString& caption);

private:
    CColorOption m_ColorPage;
    CFontOption m_FontPage;
};
