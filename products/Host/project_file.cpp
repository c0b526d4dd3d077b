#include "project_file.h"

#include <cerrno>

#include "atomic_file.h"
#include "file_io.h"
#include "project_reader.h"
#include "project_writer.h"

namespace {

constexpr std::string_view kUtf8Mark = "\xEF\xBB\xBF";

sys::Status Refuse(std::string_view reason) {
    return {EINVAL, "this is no project that can be read: " + std::string(reason)};
}

} // namespace

sys::Status ReadProject(std::string bytes, Project& project,
                        std::vector<ProjectProblem>& problems) {
    project = {};
    problems.clear();
    if (bytes.size() > kMaxProjectFile)
        return Refuse("it is too long");
    if (bytes.starts_with('\0'))
        return Refuse("it is in the binary form of blocks");
    if (bytes.starts_with(kUtf8Mark))
        bytes.erase(0, kUtf8Mark.size());
    const auto file = std::make_shared<const std::string>(std::move(bytes));
    const std::string reason = ProjectReader(file, *file, problems).Read(project);
    if (reason.empty())
        return {};
    project = {};
    return Refuse(reason);
}

std::string WriteProject(const Project& project) {
    std::string bytes;
    AppendProject(project, bytes);
    return bytes;
}

sys::Status LoadProject(const std::string& path, Project& project,
                        std::vector<ProjectProblem>& problems) {
    std::string bytes;
    project = {};
    problems.clear();
    if (sys::Status status = sys::ReadWholeFile(path, kMaxProjectFile, bytes); !status)
        return status;
    sys::Status status = ReadProject(std::move(bytes), project, problems);
    return status ? status : sys::Failure("open", path, status.code, status.reason);
}

sys::Status SaveProject(const std::string& path, const Project& project, sys::IFileWatch* watch) {
    sys::AtomicFile file(watch);
    sys::Status status = file.Open(path);
    if (status)
        status = file.Write(WriteProject(project));
    return status ? file.Commit() : status;
}
