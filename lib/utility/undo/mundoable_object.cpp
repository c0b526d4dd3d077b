#include "mundoable_object.h"

MUndoableObject::~MUndoableObject() = default;
