/// The one export macro of the system.
#pragma once

/// Marks what a shared library shows to others. All targets are built with hidden visibility, so a
/// class that crosses a library's border carries this to have one type information per process.
#define QUOREL_API __attribute__((visibility("default")))
