#include "netlist_app.h"

CNetlistApp::CNetlistApp() : CWinApp(u"Netlist") {
    CurrentOptions(); // made before this object, so that it outlives it
}

void CNetlistApp::RebuildFont() {
    m_TextFont.reset();
    ++m_FontNumber;
    if (IBackendDesk* desk = GetBackend())
        m_TextFont = desk->CreateFont(GetOptions().TextFont);
}
