#include "profile_store.h"

#include <algorithm>
#include <utility>

#include "atomic_file.h"
#include "file_io.h"
#include "profile_line.h"

namespace sys {
namespace {

bool IsKey(std::string_view text, std::string_view key) {
    const ProfileLine line = ReadProfileLine(text);
    return line.kind == ProfileLine::Kind::kKey && CompareNames(line.name, key) == 0;
}

bool IsBlank(std::string_view text) {
    return text.find_first_not_of(" \t") == text.npos;
}

bool HasLineEnd(std::string_view text) {
    return text.find_first_of("\r\n") != text.npos;
}

std::string_view FirstLineEnd(std::string_view text) {
    const std::string_view end = text.substr(std::min(text.find_first_of("\r\n"), text.size()));
    return end.starts_with("\r\n") ? "\r\n" : end.starts_with('\r') ? "\r" : "\n";
}

/// The line that gives back exactly this key and value, in quotes where they are needed; empty when
/// there is none.
std::string MakeKeyLine(std::string_view key, std::string_view value) {
    for (const std::string_view quote : {"", "\""}) {
        std::string text(key);
        text.append("=").append(quote).append(value).append(quote);
        const ProfileLine line = ReadProfileLine(text);
        if (line.kind == ProfileLine::Kind::kKey && line.name == key && line.value == value &&
            !HasLineEnd(text)) {
            return text;
        }
    }
    return {};
}

/// The header that gives back exactly this section; empty when there is none.
std::string MakeHeader(std::string_view section) {
    std::string text("[");
    text.append(section).append("]");
    return ReadProfileLine(text).name == section && !HasLineEnd(text) ? text : std::string();
}

} // namespace

Status ProfileStore::Load(const std::string& path) {
    std::string text;
    Status status = ReadWholeFile(path, kMaxSize, text);
    Parse(text);
    return status;
}

void ProfileStore::Parse(std::string_view text) {
    *this = ProfileStore();
    std::string_view rest = SkipByteOrderMark(text);
    mMark = text.substr(0, text.size() - rest.size());
    mLineEnd = FirstLineEnd(rest);
    AddSection({});
    while (!rest.empty()) {
        const std::string_view line = TakeLine(rest);
        if (ReadProfileLine(line).kind == ProfileLine::Kind::kSection) {
            AddSection(std::string(line));
        } else {
            mSections.back().lines.emplace_back(line);
        }
    }
}

ProfileStore::Section& ProfileStore::AddSection(std::string header) {
    return mSections.emplace_back(Section{std::move(header), {}});
}

const ProfileStore::Section* ProfileStore::FindSection(std::string_view name) const {
    const auto found =
        std::find_if(mSections.begin(), mSections.end(), [&](const Section& section) {
            return !section.header.empty() &&
                   CompareNames(ReadProfileLine(section.header).name, name) == 0;
        });
    return found == mSections.end() ? nullptr : &*found;
}

ProfileStore::Section* ProfileStore::FindSection(std::string_view name) {
    return const_cast<Section*>(std::as_const(*this).FindSection(name));
}

std::optional<std::string> ProfileStore::Find(std::string_view section,
                                              std::string_view key) const {
    const Section* found = FindSection(section);
    if (found == nullptr) {
        return std::nullopt;
    }
    const auto line = std::find_if(found->lines.begin(), found->lines.end(),
                                   [&](const std::string& text) { return IsKey(text, key); });
    if (line == found->lines.end()) {
        return std::nullopt;
    }
    return std::string(ReadProfileLine(*line).value);
}

bool ProfileStore::Set(std::string_view section, std::string_view key, std::string_view value) {
    std::string header = MakeHeader(section);
    std::string text = MakeKeyLine(key, value);
    if (header.empty() || text.empty()) {
        return false;
    }
    Section* target = FindSection(section);
    if (target == nullptr) {
        SetOffNextSection();
        target = &AddSection(std::move(header));
    }
    std::vector<std::string>& lines = target->lines;
    const auto line = std::find_if(lines.begin(), lines.end(),
                                   [&](const std::string& old) { return IsKey(old, key); });
    if (line != lines.end()) {
        *line = std::move(text);
        return true;
    }
    // Blank lines at a section's end belong between it and the next.
    const auto last = std::find_if_not(lines.rbegin(), lines.rend(), &IsBlank);
    lines.insert(last.base(), std::move(text));
    return true;
}

void ProfileStore::SetOffNextSection() {
    if (mSections.empty()) {
        return;
    }
    const Section& last = mSections.back();
    const std::string& lastLine = last.lines.empty() ? last.header : last.lines.back();
    if (!IsBlank(lastLine)) {
        mSections.back().lines.emplace_back();
    }
}

bool ProfileStore::Remove(std::string_view section, std::string_view key) {
    Section* found = FindSection(section);
    // All of them: a second one would step into the place of the first.
    return found != nullptr && std::erase_if(found->lines, [&](const std::string& text) {
                                   return IsKey(text, key);
                               }) > 0;
}

std::string ProfileStore::ToText() const {
    std::string text = mMark;
    for (const Section& section : mSections) {
        if (!section.header.empty()) {
            text.append(section.header).append(mLineEnd);
        }
        for (const std::string& line : section.lines) {
            text.append(line).append(mLineEnd);
        }
    }
    return text;
}

Status ProfileStore::Save(const std::string& path) const {
    return WriteFileAtomically(path, ToText());
}

} // namespace sys
