/// Where the saved forms of toolbars stand in a desktop's store.
#pragma once

#include "astring.h"
#include "quorel_export.h"

/// The string resource, the desktop's own, that names the section of all toolbar settings.
inline constexpr ResourceId kToolBarSectionString{33913};

/// The section for names and buttons: that string.
QUOREL_API AString GetToolBarSection();
/// The section for states: below that one, by the host's state name; empty if the name is empty.
QUOREL_API AString GetToolBarStateSection(const AString& stateName);

/// The key of the names of a module's bars. @param owner the name of its CToolBarsData
QUOREL_API AString GetToolBarNamesKey(const AString& owner);
/// The keys of one bar's state and buttons.
QUOREL_API AString GetToolBarStateKey(const AString& owner, const AString& bar);
QUOREL_API AString GetToolBarButtonsKey(const AString& owner, const AString& bar);
