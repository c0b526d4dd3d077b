/// RecoveryTimer: keeps unsaved texts against the process's sudden end.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include <QElapsedTimer>
#include <QTimer>

#include "recovery_store.h"

class OpenDocument;

/// A text is kept once nothing has changed it for the pause, and at the latest four pauses after
/// the first change, so that somebody who never stops typing loses little too.
class RecoveryTimer {
public:
    using Documents = std::function<std::vector<OpenDocument*>()>;

    /// @param store outlives the timer @param documents gives those open
    /// @param tell told once of a text that can't be kept, with the reason
    RecoveryTimer(RecoveryStore& store, Documents documents,
                  std::function<void(const std::string&)> tell);
    RecoveryTimer(const RecoveryTimer&) = delete;
    RecoveryTimer& operator=(const RecoveryTimer&) = delete;

    void SetPause(int milliseconds) { m_Pause = milliseconds; }
    /// Something may have changed a text: to be called after the user's and the program's actions.
    /// Costs a look at each document.
    void Look();
    /// Keeps every unsaved text whose last state isn't kept, now.
    void KeepAll();
    /// A document was saved, reloaded or closed: what was kept of it isn't needed any more.
    void Forget(OpenDocument& document);

    /// Told after each round of keeping; for tests.
    std::function<void()> m_OnKept;

private:
    static constexpr int kMostPauses = 4;

    RecoveryStore& m_Store;
    Documents m_Documents;
    std::function<void(const std::string&)> m_Tell;
    int m_Pause = 1000;
    QTimer m_Timer;
    QElapsedTimer m_SinceFirst; ///< since the first change that isn't kept
    std::uint64_t m_SeenChanges = 0;
    bool m_Told = false;
};
