#include "qt_text.h"

#include <algorithm>

QString WithPlainLineEnds(const AString& text) {
    // By hand: QString::replace moves all that follows once for each thousand of hits.
    QString plain(static_cast<qsizetype>(text.size()), Qt::Uninitialized);
    QChar* to = plain.data();
    const QStringView all(text.data(), plain.size());
    for (qsizetype from = 0, end = 0; from < all.size(); from = end + 1) {
        const qsizetype found = all.indexOf(u'\r', from);
        end = found < 0 ? all.size() : found;
        to = std::copy(all.begin() + from, all.begin() + end, to);
        if (found >= 0 && !all.sliced(found + 1).startsWith(u'\n'))
            *to++ = u'\r';
    }
    plain.truncate(to - plain.constData());
    return plain;
}
