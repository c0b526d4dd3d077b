#include "font.h"

#include <algorithm>
#include <limits>
#include <new>

namespace {

constexpr int kTenthsPerInch = 720;

/// The height that a font of so many tenths of a point has on the screen.
std::int32_t HeightOf(int tenths, int unitsPerInch) {
    using Limits = std::numeric_limits<std::int32_t>;
    const std::int64_t height = std::int64_t{tenths} * unitsPerInch / kTenthsPerInch;
    return static_cast<std::int32_t>(
        std::clamp<std::int64_t>(-height, Limits::min(), Limits::max()));
}

} // namespace

CFont::CFont() = default;

CFont::~CFont() = default;

bool CFont::CreatePointFont(int tenths, const AString& faceName) {
    IBackendDesk* const desk = GetBackend();
    if (!desk)
        return false;
    const std::int32_t height = HeightOf(tenths, desk->GetScreen().GetResolution().cy);
    try {
        m_Font = desk->CreateFont({.m_FaceName = faceName, .m_Height = height});
    } catch (const std::bad_alloc&) {
        return false;
    }
    return true;
}
