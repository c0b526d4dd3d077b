/// The dialogs that Qt brings, asked as the framework asks.
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <span>

#include <QPoint>
#include <QStringList>

#include "backend.h"

class PrintDevice;
class QPrinter;
class QProgressDialog;
class QWidget;

/// @name As the operations of IBackendDesk
/// @{
int ShowMessageBox(QWidget* parent, const AString& text, int style);
std::optional<AString> AskForFile(QWidget* parent, const FileRequest& request);
std::optional<ColorRef> AskForColor(QWidget* parent, ColorRef preset,
                                    std::span<const ColorRef> custom);
/// The device chosen, null when there is none.
std::unique_ptr<PrintDevice> AskForPrinter(QWidget* parent, PrintRequest& request);
/// Shows what is printed whenever the dialog asks for it.
void ShowPrintPreview(QWidget* parent, const std::function<void(QPrinter&)>& print);
/// Shows a menu at a place of Qt's.
unsigned ShowPopupMenu(const CMenu& menu, const QPoint& at, CCmdTarget& target);
/// @}

/// A bar for a job that takes longer, with a button to stop it; modal once it is shown.
std::unique_ptr<QProgressDialog> MakeProgressDialog(const QString& title);

/// Qt's filters for FileRequest's: "Text|*.txt;*.cir||" gives "Text (*.txt *.cir)".
QStringList FiltersOf(const AString& filter);
