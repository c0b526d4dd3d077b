// The laws of project files, for tests and fuzz targets.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "project_file.h"

namespace project_law {

inline std::string Utf8(const AString& text) {
    return text.ToCString(AString::kUtf8);
}

inline void Dump(const KeptItems& kept, std::string& out) {
    for (const KeptItem& item : kept)
        out += (item.m_IsQuoted ? "\"" : "<") + item.m_Bytes + (item.m_IsQuoted ? "\"" : ">");
}

inline void Dump(const ProjectPlacement& placement, std::string& out) {
    for (const ProjectPlacement::Window& window : placement.GetWindows()) {
        out += '[';
        for (const int number : window)
            out += std::to_string(number) + " ";
        out += ']';
    }
}

inline void Dump(const ProjectText& text, std::string& out) {
    for (const char16_t unit : text.Get())
        unit < 0x80 ? (out += static_cast<char>(unit)) : (out += "u" + std::to_string(unit));
    out += "#" + std::to_string(text.CountLines());
    Dump(text.m_Kept, out);
}

/// All of a project on a few lines: kept items in angles, those that can't stand alone in quotes.
inline std::string Dump(const Project& project) {
    std::string out = Utf8(project.m_Name);
    for (const auto& design : project.m_Designs) {
        out += "\ndesign " + Utf8(design->m_Name) + ": ";
        Dump(design->m_Netlist, out);
        for (const auto& instance : design->m_Instances) {
            out += "\ninstance " + Utf8(instance->m_Name);
            Dump(instance->m_Placement, out);
            Dump(instance->m_Kept, out);
        }
        for (const auto& script : design->m_Scripts) {
            out += "\nscript " + Utf8(script->m_Name) + " " + Utf8(script->m_Language) +
                   (script->m_IsUsed ? " used: " : ": ");
            Dump(script->m_Placement, out);
            Dump(script->m_Text, out);
            Dump(script->m_Kept, out);
        }
        out += "\n";
        Dump(design->m_Kept, out);
    }
    out += "\nkept ";
    Dump(project.m_Kept, out);
    out += "\nbehind ";
    Dump(project.m_KeptBehind, out);
    return out;
}

/// What bytes that are a project are written as read back as the same project with the same kept
/// items, without further problems, and is written as the same bytes. Returns the broken law.
inline std::optional<std::string> FindBrokenLaw(const std::string& bytes) {
    Project first, second;
    std::vector<ProjectProblem> problems, left;
    if (!ReadProject(bytes, first, problems))
        return std::nullopt;
    const std::string once = WriteProject(first);
    if (!ReadProject(once, second, left))
        return "is refused when it is read back:\n" + once;
    if (Dump(first) != Dump(second))
        return "reads back as another:\n" + Dump(first) + "\n---\n" + Dump(second) + "\n---\n" +
               once;
    if (left.size() > problems.size())
        return "has more problems when it is read back:\n" + once;
    if (const std::string twice = WriteProject(second); twice != once)
        return "writes other bytes:\n" + once + "\n---\n" + twice;
    return std::nullopt;
}

} // namespace project_law
