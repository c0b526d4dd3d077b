#include "wait_cursor.h"

#include "backend.h"

namespace {

int sDepth = 0;

void Show(CursorShape shape) {
    if (IBackendDesk* desk = GetBackend())
        desk->SetCursor(shape);
}

} // namespace

CWaitCursor::CWaitCursor() {
    if (sDepth++ == 0)
        Show(CursorShape::wait);
}

CWaitCursor::~CWaitCursor() {
    if (--sDepth == 0)
        Show(CursorShape::arrow);
}
