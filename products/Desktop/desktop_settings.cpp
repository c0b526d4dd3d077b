#include "desktop_settings.h"

#include <algorithm>

#include "qt_strings.h"
#include "recent_files.h"

namespace {

const AString kSection(u"Desktop");
constexpr int kLeastPause = 1;
constexpr int kMostPause = 60000;
/// What a value of the options' file can hold.
constexpr qsizetype kMostBytes = 1000;

AString RecentKey(qsizetype index) {
    return ToAString(QStringLiteral("Recent%1").arg(index + 1));
}

} // namespace

int DesktopSettings::GetNumber(const char16_t* key, int missing) const {
    const auto text = m_Store.Find(kSection, key);
    bool isNumber = false;
    const int number = text ? FromAString(*text).toInt(&isNumber) : 0;
    return isNumber ? number : missing;
}

void DesktopSettings::SetNumber(const char16_t* key, int number) {
    if (number != GetNumber(key, number + 1))
        m_Store.Set(kSection, key, ToAString(QString::number(number)));
}

QByteArray DesktopSettings::GetBytes(const char16_t* key) const {
    const auto text = m_Store.Find(kSection, key);
    return text ? QByteArray::fromBase64(FromAString(*text).toLatin1()) : QByteArray();
}

void DesktopSettings::SetBytes(const char16_t* key, const QByteArray& bytes) {
    const QByteArray packed = bytes.toBase64();
    if (packed.size() <= kMostBytes && bytes != GetBytes(key))
        m_Store.Set(kSection, key, ToAString(QString::fromLatin1(packed)));
}

int DesktopSettings::GetRecoveryPause() const {
    return std::clamp(GetNumber(u"RecoveryPause", kDefaultRecoveryPause), kLeastPause, kMostPause);
}

void DesktopSettings::SetRecoveryPause(int milliseconds) {
    SetNumber(u"RecoveryPause", milliseconds);
}

QStringList DesktopSettings::GetRecentFiles() const {
    QStringList paths;
    for (qsizetype i = 0; i < RecentFiles::kMost; ++i)
        if (const auto text = m_Store.Find(kSection, RecentKey(i)); text && !text->empty())
            paths << FromAString(*text);
    return paths;
}

void DesktopSettings::SetRecentFiles(const QStringList& paths) {
    for (qsizetype i = 0; i < RecentFiles::kMost; ++i) {
        const AString path = ToAString(paths.value(i));
        if (m_Store.Find(kSection, RecentKey(i)).value_or(AString()) != path)
            m_Store.Set(kSection, RecentKey(i), path);
    }
}
