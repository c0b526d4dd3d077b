#include "read_error.h"

#include <iterator>

namespace io {

std::string_view GetReadErrorMessage(ReadError code) noexcept {
#define IO_READ_ERROR_MESSAGE(number, name, message) message,
    static constexpr std::string_view kMessages[] = {IO_READ_ERRORS(IO_READ_ERROR_MESSAGE)};
#undef IO_READ_ERROR_MESSAGE
    const auto index = static_cast<std::size_t>(static_cast<int>(code));
    return index < std::size(kMessages) ? kMessages[index] : std::string_view();
}

AString XStreamioError::GetMessage() const {
    return AString(std::string(GetReadErrorMessage(mCode)));
}

} // namespace io
