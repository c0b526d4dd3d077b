#include "file_path.h"

#include <algorithm>

#include "directory.h"
#include "file_status.h"

namespace {

constexpr std::u16string_view kSlashes = u"/\\";
constexpr std::u16string_view kDirectoryEnds = u"/\\:";

bool IsOneOf(char16_t unit, std::u16string_view set) {
    return set.find(unit) != set.npos;
}

constexpr std::u16string_view kOwnDot = u".";
constexpr std::u16string_view kParentDots = u"..";

bool IsOneOfDots(std::u16string_view name) {
    return name == kOwnDot || name == kParentDots;
}

bool IsRooted(std::u16string_view path) {
    return !path.empty() && IsOneOf(path.front(), kSlashes);
}

/// Length of the part that is the directory: up to and with the last slash, or the last ":" without
/// one.
std::size_t DirectoryLength(std::u16string_view path) {
    const std::size_t slash = path.find_last_of(kSlashes);
    return (slash != path.npos ? slash : path.rfind(u':')) + 1; // npos + 1 is 0
}

/// The length of a directory without its closing slash, if it has one.
std::size_t LengthWithoutSlash(std::u16string_view directory) {
    const bool isClosed = !directory.empty() && IsOneOf(directory.back(), kSlashes);
    return directory.size() - (isClosed ? 1 : 0);
}

/// Bytes that aren't UTF-8 would be another directory's name, so the system's own name for the
/// current one takes their place.
AString CurrentDirectoryWithSlash() {
    const std::string bytes = sys::CurrentDirectory();
    AString path = AString::CanDecode(AString::kUtf8, bytes)
                       ? AString::FromMultiByte(AString::kUtf8, bytes)
                       : AString(u"/proc/self/cwd");
    path += u'/';
    return path;
}

/// What goes in front of a path: nothing if it stands alone, since it is rooted or has a ":".
AString PrefixOf(std::u16string_view path, const AString& base) {
    if (IsRooted(path) || path.find(u':') != path.npos) {
        return {};
    }
    AString prefix = base.empty() ? CurrentDirectoryWithSlash() : base;
    if (!IsOneOf(prefix.back(), kDirectoryEnds)) {
        prefix += u'/';
    }
    return prefix;
}

} // namespace

FilePath::FilePath(const AString& path) : FilePath(path, AString()) {}

FilePath::FilePath(const AString& path, const AString& baseDirectory) : mGiven(path) {
    const AString prefix = PrefixOf(path, baseDirectory);
    mFull = prefix;
    mFull += path;
    mNamePos = static_cast<std::uint32_t>(prefix.size() + DirectoryLength(path));
    if (!prefix.empty() && !baseDirectory.empty()) {
        mGiven = mFull;
    }
    ResolveDots();
    FindExtension();
    std::replace(mFull.begin(), mFull.end(), u'\\', u'/');
}

/// Resolves a closing "." or ".." until the name is another. But for the current directory, which
/// can come in front once, each round only cuts the end of the text, so that a long row of them
/// takes linear time; the search for a ":" is therefore made once.
void FilePath::ResolveDots() {
    const std::size_t colon = mFull.find(u':');
    while (mNamePos != 0 && IsOneOfDots(std::u16string_view(mFull).substr(mNamePos))) {
        const bool isRooted = IsRooted(mFull);
        const bool isParent = mFull.size() - mNamePos == kParentDots.size();
        mFull.resize(LengthWithoutSlash(std::u16string_view(mFull).substr(0, mNamePos)));
        if (isParent) {
            mFull.resize(DirectoryLength(mFull));
            mFull.resize(LengthWithoutSlash(mFull));
        }
        if (mFull.empty()) {
            mFull = isRooted ? std::u16string_view(u"/") : kOwnDot;
        }
        if (!IsRooted(mFull) && colon >= mFull.size()) {
            mFull.insert(0, CurrentDirectoryWithSlash());
        }
        mNamePos = static_cast<std::uint32_t>(DirectoryLength(mFull));
    }
}

void FilePath::FindExtension() {
    mExtensionPos = mNamePos;
    if (mNamePos == 0 || mNamePos >= mFull.size()) {
        return;
    }
    const std::size_t dot = mFull.rfind(u'.');
    const bool hasExtension = dot != AString::npos && dot > mNamePos;
    mExtensionPos = static_cast<std::uint32_t>(hasExtension ? dot + 1 : mFull.size());
}

AString FilePath::GetDirectory() const {
    return mFull.substr(0, mNamePos);
}

AString FilePath::GetFileName() const {
    return mFull.substr(mNamePos);
}

AString FilePath::GetExtension() const {
    return mFull.substr(mExtensionPos);
}

std::string FilePath::GetSystemPath() const {
    return mFull.ToCString(AString::kUtf8);
}

std::uint32_t FilePath::GetModifiedTime() const {
    std::string path = GetSystemPath();
    // The root is all slash. It takes the place of the drives, of which there are none here.
    if (path.size() > 1 && path.back() == '/') {
        path.pop_back();
    }
    sys::FileStatus status;
    mModifiedTime = 0;
    if (sys::GetFileStatus(path, status)) {
        mModifiedTime = std::max(static_cast<std::uint32_t>(status.modifiedTime), 1u);
    }
    return mModifiedTime;
}
