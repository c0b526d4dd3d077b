#include "file_stamp.h"

std::optional<FileStamp> FileStamp::Of(const std::string& path) {
    std::error_code error;
    const std::uintmax_t size = std::filesystem::file_size(path, error);
    const auto time =
        error ? std::filesystem::file_time_type() : std::filesystem::last_write_time(path, error);
    return error ? std::nullopt : std::optional(FileStamp{size, time});
}
