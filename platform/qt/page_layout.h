/// The paper and margins that print jobs and previews begin with.
#pragma once

#include <QPageLayout>

#include "quorel_export.h"

/// What a host's page setup has chosen; until then the default printer's own.
QUOREL_API QPageLayout GetPageLayout();
QUOREL_API void SetPageLayout(const QPageLayout& layout);
