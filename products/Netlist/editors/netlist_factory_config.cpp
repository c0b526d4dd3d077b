/// How the factory finds and reads the syntax configuration.
#include "file_io.h"
#include "file_path.h"
#include "idesktop.h"
#include "netlist_factory.h"
#include "profile_file.h"
#include "resource_ids.h"
#include "syntax_config.h"
#include "temporary_file.h"

namespace {

constexpr char16_t kConfigName[] = u"NetlistEditor.cfg";
constexpr char kTemporaryPrefix[] = "cfg";
/// The longest path of a directory for the copy, with its end mark.
constexpr std::size_t kMaxDirectory = 260;

/// The configuration's full path in the first of the two directories that holds it, else empty. A
/// directory that the desktop doesn't have isn't taken for the current one.
AString FindConfig(IDesktop& desktop) {
    AString directories[2];
    desktop.GetInstallDirectory(directories[0]);
    desktop.GetSysLibDirectory(directories[1]);
    for (const AString& directory : directories) {
        const FilePath path(kConfigName, directory);
        if (!directory.empty() && path.GetModifiedTime() != 0)
            return path.GetFullPath();
    }
    return {};
}

void ShowMissing(IDesktop& desktop) {
    AString text;
    text.Format(AString(ResourceId{kStringNoConfiguration}).c_str(), kConfigName);
    desktop.GetPrompt()->ShowPrompt(text, IPrompt::kWarning, 0);
}

} // namespace

void CNetlistFactory::EnsureSyntaxConfig() {
    if (!m_SyntaxDscrs.empty() && !m_ConfigPath.empty())
        return;
    LocateSyntaxConfig();
    ReadSyntaxConfig();
}

void CNetlistFactory::LocateSyntaxConfig() {
    DropConfigCopy(); // of an earlier try that gave no descriptions
    m_ConfigPath.clear();
    if (!m_Desktop)
        return;
    const AString found = FindConfig(*m_Desktop);
    if (found.empty()) {
        ShowMissing(*m_Desktop);
        return;
    }
    m_ConfigSource = found;
    m_ConfigIsTempCopy = CopySyntaxConfig(FilePath(found).GetSystemPath());
    if (!m_ConfigIsTempCopy)
        m_ConfigPath = m_ConfigSource;
}

/// Makes m_ConfigPath a temporary copy of source. @return false when that isn't possible
bool CNetlistFactory::CopySyntaxConfig(const std::string& source) {
    const std::string directory = sys::TemporaryDirectory();
    std::string copy;
    if (directory.empty() || directory.size() >= kMaxDirectory ||
        !AString::CanDecode(AString::kUtf8, directory) ||
        !sys::CreateTemporaryFile(directory, kTemporaryPrefix, copy))
        return false;
    if (!sys::CopyFile(source, copy, sys::ProfileFile::kMaxSize)) {
        static_cast<void>(sys::DeleteFile(copy));
        return false;
    }
    // Full, since the process may go to another directory before the copy is deleted.
    m_ConfigPath = FilePath(AString::FromMultiByte(AString::kUtf8, copy)).GetFullPath();
    return true;
}

void CNetlistFactory::DropConfigCopy() {
    if (m_ConfigIsTempCopy)
        static_cast<void>(sys::DeleteFile(FilePath(m_ConfigPath).GetSystemPath()));
    m_ConfigIsTempCopy = false;
}

void CNetlistFactory::ReadSyntaxConfig() {
    if (m_ConfigPath.empty())
        return;
    for (auto& syntax : ReadSyntaxDscrs(FilePath(m_ConfigPath).GetSystemPath(),
                                        FilePath(m_ConfigSource).GetSystemPath()))
        m_SyntaxDscrs.push_back(std::move(syntax));
}
