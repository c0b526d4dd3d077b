// Token streams over strings and files.

#include "delimiter_grammar.h"
#include "token_ifile.h"
#include "token_istring.h"
#include "token_ofile.h"
#include "token_ostring.h"

namespace io {

CToken_ostring::CToken_ostring(unsigned size, bool binary, CBase_grammar* grammar)
    : Ostring_storage(size),
      CToken_ostream(mRaw, grammar, binary ? unsigned{kBinary} : 0u, nullptr, Raw::kString) {
    SetQuoteBlockNames(dynamic_cast<CToken_grammar*>(grammar) != nullptr);
}

CToken_ostring::~CToken_ostring() = default;

void CToken_ostring::GetString(AString& text) const {
    text = GetView();
}

CToken_istring::CToken_istring(AString text, CBase_grammar* grammar, unsigned flags)
    : Istring_storage(std::move(text)),
      CToken_istream(mRaw, nullptr, grammar, flags, Form::kAutodetect, nullptr, Raw::kString) {}

CToken_istring::CToken_istring(AString text, const AString& delimiters)
    : Istring_storage(std::move(text)),
      CToken_istream(mRaw, std::make_unique<CDelimiter_grammar>(delimiters.c_str()), nullptr, 0,
                     Form::kGiven, nullptr, Raw::kString) {}

CToken_istring::~CToken_istring() = default;

CToken_ifile::CToken_ifile(const std::string& path, unsigned flags, CBase_grammar* grammar)
    : Ifile_storage(path), CToken_istream(mRaw, grammar, flags, Form::kAutodetect) {
    if (!IsOpen() || mFile.HasFailed())
        SetFail();
}

CToken_ifile::~CToken_ifile() = default;

CToken_ofile::CToken_ofile(const std::string& path, unsigned flags, CBase_grammar* grammar)
    : Ofile_storage(path), CToken_ostream(mRaw, grammar, flags) {
    if (!IsOpen())
        mRaw.setstate(std::ios_base::badbit);
}

CToken_ofile::~CToken_ofile() {
    CToken_ofile::Close();
}

void CToken_ofile::Close() {
    CToken_ostream::Close();
    if (!mFile.Close())
        mRaw.setstate(std::ios_base::badbit);
}

} // namespace io
