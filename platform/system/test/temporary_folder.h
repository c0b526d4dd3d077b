/// A folder of its own for each test.
#pragma once

#include <cstdlib>
#include <string>
#include <string_view>

#include "atomic_file.h"
#include "directory.h"
#include "file_io.h"
#include "temporary_file.h"

class TemporaryFolder {
public:
    TemporaryFolder() {
        std::string form = sys::TemporaryDirectory() + "sys-test-XXXXXX";
        mPath = std::string(::mkdtemp(form.data())) + '/';
    }
    ~TemporaryFolder() {
        static_cast<void>(sys::EmptyDirectoryTree(mPath, nullptr));
        static_cast<void>(sys::RemoveDirectory(mPath));
    }
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    std::string At(std::string_view name) const { return mPath + std::string(name); }

    /// Writes a file into the folder and gives its path.
    std::string Write(std::string_view name, std::string_view bytes) const {
        static_cast<void>(sys::WriteFileAtomically(At(name), bytes));
        return At(name);
    }

    std::vector<std::string> List() const {
        std::vector<std::string> names;
        static_cast<void>(sys::ListDirectory(mPath, names));
        return names;
    }

private:
    std::string mPath;
};

/// What is in a file; "?" if it can't be read.
inline std::string Contents(const std::string& path) {
    std::string text;
    return sys::ReadWholeFile(path, 1u << 20u, text) ? text : "?";
}

/// Sets an environment variable, or with null unsets it, for the rest of a test.
class ScopedVariable {
public:
    ScopedVariable(const char* name, const char* value) : mName(name) {
        value != nullptr ? ::setenv(name, value, 1) : ::unsetenv(name);
    }
    ~ScopedVariable() { ::unsetenv(mName); }

private:
    const char* mName;
};
