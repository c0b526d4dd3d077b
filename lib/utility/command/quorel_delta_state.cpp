#include "quorel_delta_state.h"

#include "assertion.h"

QuorelDeltaState::~QuorelDeltaState() = default;

void QuorelDeltaState::Undo() {
    USE_ASSERT(m_isChangeDone == true);
    m_isChangeDone = false;
}

void QuorelDeltaState::Redo() {
    USE_ASSERT(m_isChangeDone == false);
    m_isChangeDone = true;
}
