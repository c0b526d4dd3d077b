#include "option_store.h"

#include <cerrno>

#include "directory.h"
#include "environment.h"
#include "profile_file.h"
#include "profile_store.h"

namespace {

constexpr const char* kFileName = "options.ini";

AString FromUtf8(std::string_view text) {
    return AString::FromMultiByte(AString::kUtf8, text);
}

std::string ToUtf8(const AString& text) {
    return text.ToCString(AString::kUtf8);
}

} // namespace

bool OptionStore::NameLess::operator()(const Name& a, const Name& b) const {
    const int order = a.first.CompareNoCase(b.first);
    return order < 0 || (order == 0 && a.second.CompareNoCase(b.second) < 0);
}

std::string OptionStore::UserFile() {
    const std::string folder = sys::UserDirectory(sys::UserFolder::kConfig);
    return folder.empty() ? folder : folder + kFileName;
}

sys::Status OptionStore::Open(const std::string& path) {
    Clear();
    if (path.empty())
        return {};
    sys::ProfileFile file;
    sys::Status status = file.Open(path);
    if (!status && status.code != ENOENT)
        return status;
    // Save finds the file even if the process goes to another directory meanwhile.
    m_Path = path.starts_with('/') ? path : sys::CurrentDirectory() + '/' + path;
    for (std::size_t s = 0; s < file.GetSectionCount(); ++s)
        for (std::size_t k = 0; k < file.GetKeyCount(s); ++k)
            m_Values.insert_or_assign(
                Name(FromUtf8(file.GetSectionName(s)), FromUtf8(file.GetKeyName(s, k))),
                FromUtf8(file.GetValue(s, k)));
    return {};
}

sys::Status OptionStore::Save() {
    if (m_Path.empty() || m_Changed.empty())
        return {};
    sys::ProfileStore file;
    if (sys::Status status = file.Load(m_Path); !status && status.code != ENOENT)
        return status;
    sys::Status result;
    for (const Name& name : m_Changed) {
        const std::string section = ToUtf8(name.first), key = ToUtf8(name.second);
        if (!file.Set(section, key, ToUtf8(m_Values[name])) && result)
            result = sys::Failure("store the option", section + "/" + key, EINVAL,
                                  "a file of options can't hold it");
    }
    if (sys::Status made = sys::MakeDirectories(m_Path.substr(0, m_Path.rfind('/') + 1)); !made)
        return made;
    if (sys::Status saved = file.Save(m_Path); !saved)
        return saved;
    m_Changed.clear();
    return result;
}

std::optional<AString> OptionStore::Find(const AString& section, const AString& key) const {
    const auto found = m_Values.find(Name(section, key));
    return found == m_Values.end() ? std::nullopt : std::optional(found->second);
}

void OptionStore::Set(const AString& section, const AString& key, const AString& value) {
    const Name name(section, key);
    m_Values.insert_or_assign(name, value);
    m_Changed.insert(name);
}

void OptionStore::Clear() {
    m_Path.clear();
    m_Values.clear();
    m_Changed.clear();
}
