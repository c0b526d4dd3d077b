#include "recovery_store.h"

#include <cerrno>
#include <charconv>
#include <cstdio>
#include <optional>
#include <span>
#include <string_view>

#include "atomic_file.h"
#include "directory.h"
#include "environment.h"
#include "file_io.h"

namespace {

constexpr std::string_view kHeader = "quorel recovery 1\n";
constexpr std::string_view kLockName = "lock";
constexpr std::string_view kSuffix = ".text";
constexpr std::uint64_t kMaxFile = std::uint64_t{4} << 30;

// A kept text is the header and then fields: name, blank, count of bytes, LF, the bytes, LF.

void AppendField(std::string& out, std::string_view name, std::string_view value) {
    out.append(name).append(1, ' ').append(std::to_string(value.size())).append(1, '\n');
    out.append(value).append(1, '\n');
}

/// The numbers of a text's form and caret, in the order in which they are kept.
std::string NumbersOf(const RecoveredText& text) {
    std::string numbers;
    for (const int number :
         {static_cast<int>(text.m_Form.m_Encoding), static_cast<int>(text.m_Form.m_ByteOrderMark),
          static_cast<int>(text.m_Form.m_LineEnds), text.m_Caret.m_Row, text.m_Caret.m_Column})
        numbers += std::to_string(number) + ' ';
    return numbers;
}

/// Reads blank-separated numbers into all of the targets.
bool ReadNumbers(std::string_view text, std::span<int> numbers) {
    const char* at = text.data();
    const char* const end = at + text.size();
    for (int& number : numbers) {
        const auto [behind, error] = std::from_chars(at, end, number);
        if (error != std::errc() || number < 0 || behind == end)
            return false;
        at = behind + 1;
    }
    return true;
}

bool SetNumbers(std::string_view value, RecoveredText& text) {
    int numbers[5] = {};
    if (!ReadNumbers(value, numbers) || numbers[0] > static_cast<int>(FileEncoding::bytes) ||
        numbers[2] > static_cast<int>(LineEnds::mixed))
        return false;
    text.m_Form = {static_cast<FileEncoding>(numbers[0]), numbers[1] != 0,
                   static_cast<LineEnds>(numbers[2])};
    text.m_Caret = {numbers[3], numbers[4]};
    return true;
}

constexpr struct {
    std::string_view m_Name;
    std::string RecoveredText::*m_Field;
} kTextFields[] = {
    {"path", &RecoveredText::m_Path},     {"title", &RecoveredText::m_Title},
    {"editor", &RecoveredText::m_Editor}, {"file", &RecoveredText::m_KnownFile},
    {"text", &RecoveredText::m_Archive},
};
constexpr std::string_view kNumbersName = "numbers";

bool SetField(std::string_view name, std::string_view value, RecoveredText& text) {
    for (const auto& field : kTextFields)
        if (name == field.m_Name)
            text.*field.m_Field = value;
    return name != kNumbersName || SetNumbers(value, text);
}

/// Takes the next field off the text. @return false when there is none that is whole
bool TakeField(std::string_view& rest, std::string_view& name, std::string_view& value) {
    const std::size_t blank = rest.find(' ');
    const std::size_t line = rest.find('\n');
    if (blank == rest.npos || line == rest.npos || blank > line)
        return false;
    std::size_t size = 0;
    const auto [end, error] = std::from_chars(&rest[blank + 1], rest.data() + line, size);
    if (error != std::errc() || end != rest.data() + line || size >= rest.size() - line - 1)
        return false;
    name = rest.substr(0, blank);
    value = rest.substr(line + 1, size);
    rest.remove_prefix(line + 1 + size + 1);
    return true;
}

std::optional<RecoveredText> Parse(std::string_view bytes) {
    if (!bytes.starts_with(kHeader))
        return std::nullopt;
    bytes.remove_prefix(kHeader.size());
    RecoveredText text;
    std::string_view name, value;
    while (!bytes.empty())
        if (!TakeField(bytes, name, value) || !SetField(name, value, text))
            return std::nullopt;
    return text;
}

std::string FormatText(const RecoveredText& text) {
    std::string out(kHeader);
    AppendField(out, kNumbersName, NumbersOf(text));
    for (const auto& field : kTextFields)
        AppendField(out, field.m_Name, text.*field.m_Field);
    return out;
}

} // namespace

std::string RecoveryStore::UserFolder() {
    const std::string state = sys::UserDirectory(sys::UserFolder::kState);
    return state.empty() ? state : state + "recovery/";
}

RecoveryStore::~RecoveryStore() {
    if (!IsOpen())
        return;
    std::vector<std::string> names;
    if (!sys::ListDirectory(m_Folder, names) || names.size() != 1)
        return;
    static_cast<void>(sys::DeleteFile(m_Folder + std::string(kLockName)));
    static_cast<void>(sys::RemoveDirectory(m_Folder));
}

sys::Status RecoveryStore::Open(const std::string& sharedFolder) {
    m_Shared = sys::WithClosingSlash(sharedFolder);
    sys::Status status = sys::MakeDirectories(m_Shared);
    const std::string stem = m_Shared + std::to_string(sys::ProcessId()) + '-';
    for (int i = 0; status && i < 1000; ++i) {
        m_Folder = stem + std::to_string(i) + '/';
        status = sys::MakeDirectory(m_Folder);
        if (status) {
            status = m_Lock.TryLock(m_Folder + std::string(kLockName));
            if (status)
                return {};
            // Another process may take the new folder for one that was left, before it is locked.
            if (status.code != EWOULDBLOCK && status.code != ENOENT) {
                static_cast<void>(sys::DeleteFile(m_Folder + std::string(kLockName)));
                static_cast<void>(sys::RemoveDirectory(m_Folder));
                return status;
            }
        } else if (status.code != EEXIST) {
            break;
        }
        status = {};
    }
    return status ? sys::Failure("make a folder in", m_Shared, EEXIST) : status;
}

sys::Status RecoveryStore::Keep(const RecoveredText& text) {
    if (!IsOpen())
        return sys::Failure("keep a text in", m_Shared, ENOENT);
    return sys::WriteFileAtomically(PathOf(text.m_Id), FormatText(text));
}

void RecoveryStore::Forget(const std::string& id) {
    if (IsOpen())
        static_cast<void>(sys::DeleteFile(PathOf(id)));
}

std::string RecoveryStore::NewId() {
    return "taken-" + std::to_string(m_NextId++);
}

std::vector<RecoveredText> RecoveryStore::TakeOrphans() {
    std::vector<RecoveredText> texts;
    std::vector<std::string> names;
    if (!IsOpen() || !sys::ListDirectory(m_Shared, names))
        return texts;
    for (const std::string& name : names)
        TakeFolder(m_Shared + name + '/', texts);
    return texts;
}

/// Moves a folder's texts into this process's own, one rename each, so that none is ever lost.
void RecoveryStore::TakeFolder(const std::string& folder, std::vector<RecoveredText>& texts) {
    sys::FileLock lock;
    std::vector<std::string> names;
    const std::string lockPath = folder + std::string(kLockName);
    if (folder == m_Folder || !lock.TryLock(lockPath) || !sys::ListDirectory(folder, names))
        return;
    std::size_t left = names.size();
    for (const std::string& name : names) {
        std::string bytes;
        if (!name.ends_with(kSuffix) || !sys::ReadWholeFile(folder + name, kMaxFile, bytes))
            continue;
        std::optional<RecoveredText> text = Parse(bytes);
        const std::string id = NewId();
        if (!text || std::rename((folder + name).c_str(), PathOf(id).c_str()) != 0)
            continue;
        text->m_Id = id;
        texts.push_back(std::move(*text));
        --left;
    }
    if (left == 1 && sys::DeleteFile(lockPath))
        static_cast<void>(sys::RemoveDirectory(folder));
}
