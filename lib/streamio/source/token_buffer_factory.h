/// Makes the token buffer that fits a raw stream.
#pragma once

#include <locale>
#include <memory>

#include "token_streambuf.h"

namespace io {

class CBase_grammar;

/// What a token buffer is made of.
struct Buffer_request {
    CRawStreambuf* raw = nullptr;     ///< not owned
    CBase_grammar* grammar = nullptr; ///< not owned; null stands for the binary form
    unsigned flags = 0;               ///< of StreamFlags
    bool isAutodetect = false;        ///< the first unit tells the form, if there is one
    bool isString = false;            ///< a unit of text is a character, not a byte
    const std::locale* locale = nullptr;
};

std::unique_ptr<CToken_streambuf> MakeTokenBuffer(const Buffer_request& request);

/// A raw stream that is empty and takes nothing.
CRawStreambuf& GetNullRaw();

} // namespace io
