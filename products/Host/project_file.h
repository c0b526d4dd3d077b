/// Project files: reading and writing them.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "project.h"
#include "quorel_export.h"
#include "status.h"

namespace sys {
class IFileWatch;
}

/// Something in a project file that could not be read or understood.
struct ProjectProblem {
    int m_Line; ///< from 1 on
    std::string m_Message;
    bool operator==(const ProjectProblem&) const = default;
};

/// The highest format of project files that is known.
inline constexpr int kProjectFormat = 1;

/// The longest project file that is read: a gigabyte.
inline constexpr std::uint64_t kMaxProjectFile = std::uint64_t{1} << 30;

/// Reads the bytes of a project file; the form is that of doc/project-file.md. The texts of the
/// project stay bytes until they are asked for. Problems, in the order of their lines, are what was
/// not understood and is kept in the project. Memory: in proportion to the bytes.
/// @return a failure for bytes that are no project at all; the project is empty then
QUOREL_API sys::Status ReadProject(std::string bytes, Project& project,
                                   std::vector<ProjectProblem>& problems);

/// The bytes of a project file. What they read back as is the same project, with the same kept
/// items, and has these bytes again.
QUOREL_API std::string WriteProject(const Project& project);

/// The same with a file. A file is replaced as a whole, or stays as it was.
/// @param watch see AtomicFile
QUOREL_API sys::Status LoadProject(const std::string& path, Project& project,
                                   std::vector<ProjectProblem>& problems);
QUOREL_API sys::Status SaveProject(const std::string& path, const Project& project,
                                   sys::IFileWatch* watch = nullptr);
