/// A path split into directory, file name and extension.
#pragma once

#include <cstdint>
#include <string>

#include "astring.h"
#include "quorel_export.h"

/// A path that is split once, at construction, and from then on has one spelling, with forward
/// slashes only. Construction asks the system for nothing but the current directory; a copy is
/// member by member. Cost: linear in the path's length.
///
/// Construction of a path P with a base directory B; both kinds of slash separate:
///
/// - P is rooted when it begins with a slash. A P that neither is nor holds a ":" goes behind B,
///   with "/" between unless B ends with a slash or ":"; without a B, behind the current directory.
///   A rooted P, or one with a ":", drops B.
/// - The name is what stands behind the last slash or, without one, behind the last ":".
/// - A name "." or ".." is resolved against the directory in front of it, one at a time, until the
///   name is another; "." and ".." inside the path stay. The root's parent is the root.
/// - The extension stands behind the name's last ".", unless that is its first character.
///
/// On this platform ":" is a character like any other in a file's name, yet these rules keep it as
/// the separator that it is in paths from elsewhere: it ends a directory, and keeps a base away.
/// Since the text is never changed by it, a full path with ":" in any of its names still opens what
/// it names.
class QUOREL_API FilePath {
public:
    FilePath(const AString& path);
    FilePath(const AString& path, const AString& baseDirectory);

    /// The path as given, joined with the base directory when one was used, slashes as they were.
    const AString& GetGivenPath() const { return mGiven; }

    /// Directory and file name.
    const AString& GetFullPath() const { return mFull; }

    /// The directory with its closing separator; the full path when there is no file name.
    AString GetDirectory() const;

    /// The file name; empty when the path ends with its directory.
    AString GetFileName() const;

    /// What stands behind the dot; empty when there is none.
    AString GetExtension() const;

    /// The time of the last change in seconds since 1970, cut to 32 bits but never 0 for what is
    /// there: a file, a directory, the root. 0 when nothing is there, or it can't be reached. Asks
    /// the system at each call.
    std::uint32_t GetModifiedTime() const;

    /// The full path in the file system's bytes, which are UTF-8, so that any text may be a name.
    std::string GetSystemPath() const;

private:
    void ResolveDots();
    void FindExtension();

    AString mGiven;
    AString mFull;
    std::uint32_t mExtensionPos = 0; // first character of the extension in mFull, or its length
    std::uint32_t mNamePos = 0;      // first character of the file name in mFull, or its length
    mutable std::uint32_t mModifiedTime = 0;
};
