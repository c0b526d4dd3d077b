#include "undoable_snapshot.h"

UndoableSnapshot::~UndoableSnapshot() = default;
