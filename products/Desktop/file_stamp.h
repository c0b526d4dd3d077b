/// FileStamp: what a file on the disk looks like from outside, to notice that it was written.
#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>

struct FileStamp {
    std::uintmax_t m_Size = 0;
    std::filesystem::file_time_type m_Time;
    bool operator==(const FileStamp&) const = default;

    /// Nothing for a file that isn't there.
    static std::optional<FileStamp> Of(const std::string& path);
};
