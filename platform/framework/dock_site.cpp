#include "dock_site.h"

CDockSite::CDockSite() = default;

CDockSite::~CDockSite() = default;

CPoint CDockSite::ClientToScreen(CPoint point) const {
    const CPoint origin = GetClientOrigin();
    return {ToPixel(std::int64_t{point.x} + origin.x), ToPixel(std::int64_t{point.y} + origin.y)};
}

CPoint CDockSite::ScreenToClient(CPoint point) const {
    const CPoint origin = GetClientOrigin();
    return {ToPixel(std::int64_t{point.x} - origin.x), ToPixel(std::int64_t{point.y} - origin.y)};
}
