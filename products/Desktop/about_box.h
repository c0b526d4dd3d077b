/// AboutBox: what this program is, and what a report of a fault needs.
#pragma once

#include <QDialog>

class DesktopCore;

/// Version, system, screens, folders: plain text for pasting. No text of a document is in it.
QString CollectDiagnostics(DesktopCore& core);

class AboutBox : public QDialog {
public:
    AboutBox(DesktopCore& core, QWidget* parent);
};
