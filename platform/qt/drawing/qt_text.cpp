#include "qt_text.h"

QString WithPlainLineEnds(const AString& text) {
    // By hand: QString::replace moves all that follows once for each thousand of hits.
    QString plain(static_cast<qsizetype>(text.size()), Qt::Uninitialized);
    QChar* to = plain.data();
    for (auto at = text.begin(); at != text.end(); ++at)
        if (*at != u'\r' || at + 1 == text.end() || at[1] != u'\n')
            *to++ = *at;
    plain.truncate(to - plain.constData());
    return plain;
}
