#include "backend.h"

namespace {

IBackendDesk* sDesk = nullptr;

} // namespace

void SetBackend(IBackendDesk* desk) {
    sDesk = desk;
}

IBackendDesk* GetBackend() {
    return sDesk;
}
