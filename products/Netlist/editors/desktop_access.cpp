#include "desktop_access.h"

#include "idesktop.h"

IDesktop* gDesktop = nullptr;

IDesktop* GetDesktop() {
    return gDesktop;
}

IMessageSink* GetDesktopMessageSink() {
    return gDesktop ? gDesktop->GetMessageSink() : nullptr;
}
