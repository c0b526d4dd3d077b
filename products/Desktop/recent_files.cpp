#include "recent_files.h"

#include <QDir>

#include "desktop_settings.h"

RecentFiles::RecentFiles(DesktopSettings& settings, std::function<void(const QString&)> open,
                         QWidget* parent)
    : QMenu(QStringLiteral("Open &Recent"), parent), m_Settings(settings), m_Open(std::move(open)) {
    connect(this, &QMenu::aboutToShow, this, &RecentFiles::Fill);
    Fill();
}

void RecentFiles::Add(const QString& path) {
    QStringList paths = m_Settings.GetRecentFiles();
    paths.removeAll(path);
    paths.prepend(path);
    m_Settings.SetRecentFiles(paths.mid(0, kMost));
    Fill();
}

void RecentFiles::Fill() {
    clear();
    const QString home = QDir::homePath() + QLatin1Char('/');
    int number = 0;
    for (const QString& path : m_Settings.GetRecentFiles()) {
        QString shown = path.startsWith(home) ? QLatin1String("~/") + path.mid(home.size()) : path;
        shown.replace(QLatin1Char('&'), QLatin1String("&&"));
        const QString mnemonic = ++number < 10 ? QStringLiteral("&%1  ").arg(number) : QString();
        QAction* const action = addAction(mnemonic + shown);
        connect(action, &QAction::triggered, this, [this, path] { m_Open(path); });
    }
    if (number == 0) {
        addAction(QStringLiteral("No files yet"))->setEnabled(false);
        return;
    }
    addSeparator();
    connect(addAction(QStringLiteral("&Clear List")), &QAction::triggered, this,
            [this] { m_Settings.SetRecentFiles({}); });
}
