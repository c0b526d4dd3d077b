/// Output of tokens and blocks to a file.
#pragma once

#include <string>

#include "raw_streambufs.h"
#include "token_ostream.h"

namespace io {

/// What CToken_ofile writes to; stands in front of it among its bases.
struct QUOREL_API Ofile_storage {
    explicit Ofile_storage(const std::string& path)
        : mFile(path, std::ios_base::in | std::ios_base::out | std::ios_base::trunc), mRaw(&mFile) {
    }
    CFile_streambuf mFile;
    CRawOstream mRaw;
};

/// Writes a file of bytes anew: text in UTF-8, or with kBinary the binary form.
class QUOREL_API CToken_ofile : private Ofile_storage, public CToken_ostream {
public:
    explicit CToken_ofile(const std::string& path, unsigned flags = 0,
                          CBase_grammar* grammar = &CToken_grammar_default::Get());
    ~CToken_ofile() override;

    /// Finishes the index and the file. Good() tells afterwards whether all of it was written.
    void Close() override;
    bool IsOpen() const { return mFile.IsOpen(); }
};

} // namespace io
