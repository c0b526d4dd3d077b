#include "about_box.h"

#include <QApplication>
#include <QClipboard>
#include <QDialogButtonBox>
#include <QLabel>
#include <QPushButton>
#include <QScreen>
#include <QStyle>
#include <QSysInfo>
#include <QVBoxLayout>

#include "data_files.h"
#include "desktop_core.h"
#include "line_icon.h"
#include "qt_strings.h"

namespace {

constexpr int kIconSize = 64;

QString ScreensText() {
    QStringList texts;
    for (const QScreen* screen : QGuiApplication::screens())
        texts << QStringLiteral("%1x%2 at %3")
                     .arg(screen->size().width())
                     .arg(screen->size().height())
                     .arg(screen->devicePixelRatio());
    return texts.join(QLatin1String(", "));
}

} // namespace

QString CollectDiagnostics(DesktopCore& core) {
    const std::pair<const char*, QString> rows[] = {
        {"Quorel", QStringLiteral(QUOREL_VERSION)},
        {"System", QSysInfo::prettyProductName() + QLatin1String(", kernel ") +
                       QSysInfo::kernelVersion() + QLatin1String(", ") +
                       QSysInfo::currentCpuArchitecture()},
        {"Qt", QLatin1String(qVersion()) + QLatin1String(", ") + QGuiApplication::platformName() +
                   QLatin1String(", style ") + QApplication::style()->name()},
        {"Screens", ScreensText()},
        {"Desktop", qEnvironmentVariable("XDG_CURRENT_DESKTOP")},
        {"Locale", QLocale::system().name()},
        {"Module", FromPath(core.m_Module.GetPath())},
        {"Configuration", FromPath(FindConfigFile())},
        {"Options", FromPath(OptionStore::UserFile())},
        {"Recovery", FromPath(RecoveryStore::UserFolder())},
    };
    QString text;
    for (const auto& [name, value] : rows)
        text += QStringLiteral("%1: %2\n").arg(QLatin1String(name), value);
    for (const std::string& trouble : core.GetTroubles())
        text += QStringLiteral("Trouble: %1\n").arg(QString::fromStdString(trouble));
    return text;
}

AboutBox::AboutBox(DesktopCore& core, QWidget* parent) : QDialog(parent) {
    setWindowTitle(QStringLiteral("About Quorel"));
    auto* picture = new QLabel;
    picture->setPixmap(MakeProgramIcon().pixmap(kIconSize));
    auto* text = new QLabel(QStringLiteral("<h2>Quorel</h2><p>Version %1</p><p>Edits the netlists "
                                           "and scripts of electronic circuit designs.</p>")
                                .arg(QStringLiteral(QUOREL_VERSION)));
    auto* details = new QLabel(CollectDiagnostics(core));
    details->setTextFormat(Qt::PlainText);
    details->setTextInteractionFlags(Qt::TextSelectableByMouse);
    details->setEnabled(true);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Close);
    auto* copy =
        buttons->addButton(QStringLiteral("Copy &Diagnostics"), QDialogButtonBox::ActionRole);
    connect(copy, &QPushButton::clicked, this,
            [&core] { QApplication::clipboard()->setText(CollectDiagnostics(core)); });
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    auto* top = new QHBoxLayout;
    top->setSpacing(16);
    top->addWidget(picture, 0, Qt::AlignTop);
    top->addWidget(text, 1);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(16, 16, 16, 16);
    layout->addLayout(top);
    layout->addWidget(details);
    layout->addWidget(buttons);
}
