#include "status.h"

#include <cerrno>
#include <system_error>

namespace sys {

Status Failure(std::string_view action, std::string_view subject, int code) {
    const int shown = code == 0 ? EIO : code;
    return Failure(action, subject, shown, std::generic_category().message(shown));
}

Status Failure(std::string_view action, std::string_view subject, int code,
               std::string_view reason) {
    std::string text = "cannot ";
    text.append(action).append(" '").append(subject).append("': ").append(reason);
    return {code == 0 ? EIO : code, std::move(text)};
}

} // namespace sys
