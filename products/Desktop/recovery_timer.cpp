#include "recovery_timer.h"

#include <algorithm>
#include <utility>

#include "open_document.h"

namespace {

std::uint64_t ChangesOf(OpenDocument& document) {
    return document.GetEditor().m_Inspector->GetChangeCount();
}

bool NeedsKeeping(OpenDocument& document) {
    return document.IsModified() && ChangesOf(document) != document.m_KeptChange;
}

RecoveredText Describe(OpenDocument& document) {
    const auto caret = document.GetEditor().m_Inspector->GetCaret();
    return {.m_Id = document.GetId(),
            .m_Path = document.GetFile().GetPath(),
            .m_Title = document.GetTitle().toStdString(),
            .m_Editor = NameOf(document.GetSort()),
            .m_KnownFile = document.GetFile().GetKnownDisk(),
            .m_Form = document.GetFile().GetForm(),
            .m_Caret = caret ? caret->m_Caret : TextPosition{0, 0},
            .m_Archive = document.GetArchive()};
}

} // namespace

RecoveryTimer::RecoveryTimer(RecoveryStore& store, Documents documents,
                             std::function<void(const std::string&)> tell)
    : m_Store(store), m_Documents(std::move(documents)), m_Tell(std::move(tell)) {
    m_Timer.setSingleShot(true);
    QObject::connect(&m_Timer, &QTimer::timeout, &m_Timer, [this] { KeepAll(); });
}

void RecoveryTimer::Look() {
    std::uint64_t changes = 0;
    bool isNeeded = false;
    for (OpenDocument* document : m_Documents()) {
        changes += ChangesOf(*document);
        isNeeded = isNeeded || NeedsKeeping(*document);
    }
    if (!isNeeded) {
        m_Timer.stop();
        m_SinceFirst.invalidate();
        return;
    }
    if (m_SinceFirst.isValid() && changes == m_SeenChanges)
        return;
    m_SeenChanges = changes;
    if (!m_SinceFirst.isValid())
        m_SinceFirst.start();
    const qint64 left = qint64{kMostPauses} * m_Pause - m_SinceFirst.elapsed();
    m_Timer.start(static_cast<int>(std::clamp<qint64>(left, 0, m_Pause)));
}

void RecoveryTimer::KeepAll() {
    m_Timer.stop();
    m_SinceFirst.invalidate();
    for (OpenDocument* document : m_Documents()) {
        if (!NeedsKeeping(*document))
            continue;
        const std::uint64_t changes = ChangesOf(*document);
        if (const sys::Status status = m_Store.Keep(Describe(*document)); status)
            document->m_KeptChange = changes;
        else if (!std::exchange(m_Told, true))
            m_Tell(status.reason);
    }
    if (m_OnKept)
        m_OnKept();
}

void RecoveryTimer::Forget(OpenDocument& document) {
    m_Store.Forget(document.GetId());
    document.m_KeptChange = ChangesOf(document);
}
