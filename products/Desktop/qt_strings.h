/// Texts and paths as Qt's, and back.
#pragma once

#include <string>

#include <QFile>
#include <QString>

#include "astring.h"

inline QString FromAString(const AString& text) {
    return QString::fromUtf16(text.data(), static_cast<qsizetype>(text.size()));
}

inline AString ToAString(const QString& text) {
    return AString(text.toStdU16String());
}

/// A path as a person reads it; bytes that aren't UTF-8 can't be shown exactly.
inline QString FromPath(const std::string& path) {
    return QFile::decodeName(path.c_str());
}

inline std::string ToPath(const QString& path) {
    return QFile::encodeName(path).toStdString();
}
