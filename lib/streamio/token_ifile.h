/// Input of tokens and blocks from a file or from bytes in memory.
#pragma once

#include <string>

#include "raw_streambufs.h"
#include "token_istream.h"

namespace io {

/// What CToken_ifile reads from; stands in front of it among its bases.
struct QUOREL_API Ifile_storage {
    explicit Ifile_storage(const std::string& path)
        : mFile(path, std::ios_base::in), mRaw(&mFile) {}
    CFile_streambuf mFile;
    CRawIstream mRaw;
};

/// Reads a file of bytes: text in UTF-8 or the binary form, which its first byte tells.
class QUOREL_API CToken_ifile : private Ifile_storage, public CToken_istream {
public:
    /// A file that can't be opened or read makes a stream that has failed and is at its end.
    explicit CToken_ifile(const std::string& path, unsigned flags = 0,
                          CBase_grammar* grammar = &CToken_grammar_default::Get());
    ~CToken_ifile() override;

    bool IsOpen() const { return mFile.IsOpen(); }
    /// True when the file could not be read to its end; the tokens ended there.
    bool Bad() const override { return mFile.HasFailed() || CToken_istream::Bad(); }
};

} // namespace io
