/// The entry of a backend library that a host opens at run time to print into a PDF file.
#pragma once

#include "backend.h"

/// Where print jobs go when nobody is asked.
struct PdfOutput {
    enum class Paper { a4, letter };

    AString m_Path; ///< is replaced when a job has come to its end, and only then
    Paper m_Paper = Paper::a4;
    int m_FromPage = 1; ///< 1-based, both included
    int m_ToPage = kLastPage;
};

/// Starts the library's window system without a screen, unless the process has one running, and
/// gives its desk; print jobs go to that file. Called again it changes the file alone.
/// @return the desk, whose fonts the job's pages are drawn with; null when it can't start
extern "C" using OpenPdfDeskFunction = IBackendDesk * (const PdfOutput& output);
/// Ends desk and window system; nothing of theirs may be left. Without a desk nothing happens.
extern "C" using ClosePdfDeskFunction = void();

/// The names of the two functions in the library.
inline constexpr const char* kOpenPdfDeskName = "QuorelOpenPdfDesk";
inline constexpr const char* kClosePdfDeskName = "QuorelClosePdfDesk";
