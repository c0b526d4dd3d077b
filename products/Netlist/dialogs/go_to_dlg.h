/// CGoToDlg: asks for a line by its number.
#pragma once

#include "dialog.h"

class CGoToDlg : public CDialog {
public:
    explicit CGoToDlg(std::int32_t lineCount);

    std::int32_t m_Line = 1; ///< 1-based, whether there is such a line or not
    AString m_Range;         ///< the numbers that there are, for the user

protected:
    void DoDataExchange(CDataExchange& exchange) override;
};
