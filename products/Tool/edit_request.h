/// `edit --batch`: a line of a batch as what is to be edited.
#pragma once

#include <string>
#include <vector>

#include "editor_session.h"
#include "geometry.h"
#include "json_text.h"

/// The widest and highest window, in cells.
inline constexpr int kMostCells = 1000;

/// What a run of `edit` works on, the command line's or a request's.
struct EditRequest {
    SessionOptions m_Session;
    CSize m_Cells{80, 25};
    std::string m_Archive;
    std::vector<std::string> m_Script; ///< an action each
};

/// Reads a request; members that are missing are those of `defaults`. Options are added to the
/// defaults'. BadRequest when a member is of the wrong type or out of its range.
EditRequest ReadRequest(const Json& json, const EditRequest& defaults);
