/// What `edit` answers: the state of an editor, its view and what is around it.
#pragma once

#include "edit_stage.h"
#include "json_writer.h"

/// Appends the state as one object. 8-bit text has one character for each byte, 16-bit text stands
/// as itself.
void WriteState(EditStage& stage, JsonWriter& json);
