#include "page_layout.h"

#include <optional>

#include <QPrinter>

namespace {
std::optional<QPageLayout> sLayout;
} // namespace

QPageLayout GetPageLayout() {
    return sLayout ? *sLayout : QPrinter().pageLayout();
}

void SetPageLayout(const QPageLayout& layout) {
    sLayout = layout;
}
