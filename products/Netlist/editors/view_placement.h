/// The place of a view's frame, as a project keeps it.
#pragma once

#include "block_func.h"

class CView;

/// `View(WindowPos(...))` with the nine numbers of the frame: how it is shown, where it stands
/// minimised and maximised, and its normal rectangle. Of all frames only the active one is written
/// as shown normal or maximised. Without a frame the function is empty.
io::CBlock_func PlacementOf(const CView& view);
/// Puts the view's frame to where that says, no larger than the area in which frames stand, and
/// activates it if it was the active one. What isn't the nine numbers changes nothing.
void ReadPlacement(const CView& view, const io::CBlock_func& placement);
