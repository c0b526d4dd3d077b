/// CFont: a font that controls and device contexts use.
#pragma once

#include <memory>

#include "backend.h"
#include "object.h"

/// Empty until made; making it anew ends the font before.
class QUOREL_API CFont : public CObject {
public:
    CFont();
    ~CFont() override;

    /// Makes a font by its size on the screen in tenths of a point. @return false, and nothing
    /// changes, without a backend or memory
    bool CreatePointFont(int tenths, const AString& faceName);
    /// Null while there is none.
    const IBackendFont* Get() const { return m_Font.get(); }

private:
    std::unique_ptr<IBackendFont> m_Font;
};
