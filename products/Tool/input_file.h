/// Reading of the files that a command names.
#pragma once

#include <cstdint>
#include <string>

/// The name of standard input.
inline constexpr const char* kStandardInput = "-";

/// The longest file that is read: a gigabyte.
inline constexpr std::uint64_t kMaxInput = 1ull << 30;

/// The bytes of a file, of standard input for "-". One that can't be read or is longer than
/// kMaxInput ends the command with ExitCode::file.
std::string ReadInput(const std::string& path);
