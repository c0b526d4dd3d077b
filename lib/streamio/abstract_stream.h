/// What streams of blocks have in common, in both directions.
#pragma once

#include <memory>
#include <string_view>

#include "astring.h"
#include "quorel_export.h"
#include "stream_state.h"

namespace io {

class CBlock_index;

/// Flags of the making of a stream and of BuildIndex.
enum StreamFlags : unsigned {
    kReadIndex = 0x01,     ///< input: read the index that the stream may have
    kAllLevels = 0x02,     ///< BuildIndex: enter nested blocks too
    kFastScan = 0x04,      ///< BuildIndex, input: look at tokens, not at items
    kCheckIndex = 0x08,    ///< input: each entry of the index read must stand at its block
    kCheckBlocks = 0x10,   ///< with kCheckIndex: each such block must be without errors
    kCaseSensitive = 0x40, ///< input: case mode Sensitive
    kUpperCase = 0x80,     ///< input: case mode Upper, without kCaseSensitive
    kBinary = 0x100,       ///< the binary form
    kCrLf = 0x200,         ///< output: lines end with CR LF
    kDropSource = 0x400    ///< input: numbers don't keep their source text
};

/// A stream of tokens and blocks over a raw stream. One thread at a time.
class QUOREL_API CAbstract_stream {
public:
    CAbstract_stream(const CAbstract_stream&) = delete;
    CAbstract_stream& operator=(const CAbstract_stream&) = delete;
    virtual ~CAbstract_stream();

    /// Ends the work with the raw stream; an output stream finishes its index. Nothing but the
    /// destructor may follow.
    virtual void Close() {}
    virtual bool IsBinary() const { return false; }
    /// Makes an index: an output stream, at its start, enters the blocks that it writes from now on
    /// and stores the index as it closes; an input stream scans the blocks from where it stands.
    virtual bool BuildIndex(unsigned flags) = 0;
    /// Goes to a block by its path, the names from the outermost one on joined by tabs. False, and
    /// the stream stays, without an index or without such an entry.
    virtual bool SeekBlock(const AString& path);

    virtual void PopLevel() = 0;
    virtual void PushLevel(int width) = 0;

    /// Format of the numbers that an output stream writes; each returns the old value. An input
    /// stream returns -1, false or a blank.
    virtual int SetPrecision(int) { return -1; }
    virtual int SetWidth(int) { return -1; }
    virtual bool SetHex(bool) { return false; }
    virtual char16_t SetFill(char16_t) { return u' '; }

    /// The words around a block. An input stream takes only a word that its grammar scans as one
    /// Keyword, Symbol or line end. False if the old word stays.
    virtual bool SetBeginWord(std::u16string_view word);
    virtual bool SetEndWord(std::u16string_view word);

    /// The state part of Tell and Seek: a fresh state, the present one, and back to one.
    virtual void NewState(CAbstract_stream_pos& pos) const = 0;
    virtual void SaveState(CAbstract_stream_pos& pos) const = 0;
    virtual void RestoreState(const CAbstract_stream_pos& pos) = 0;

    virtual bool Good() const = 0;
    virtual bool Eof() const = 0;
    virtual bool Fail() const = 0;
    virtual bool Bad() const = 0;
    virtual int GetLine() const = 0;

    /// Where the stream stands, with its state. Not valid for a raw stream that can't tell.
    CAbstract_stream_pos Tell() const;
    /// Back to a position. False, and the state as it was, if the raw stream can't.
    bool Seek(const CAbstract_stream_pos& pos);

    unsigned GetLevel() const noexcept { return mLevel; }
    int GetIndentWidth() const noexcept { return mIndentWidth; }
    /// Both return the old value.
    int SetIndentWidth(int width) noexcept { return std::exchange(mIndentWidth, width); }
    char16_t SetIndentChar(char16_t ch) noexcept { return std::exchange(mIndentChar, ch); }
    const AString& GetBeginWord() const noexcept { return mBeginWord; }
    const AString& GetEndWord() const noexcept { return mEndWord; }
    /// The stream's index, or null.
    const CBlock_index* GetIndex() const noexcept { return mIndex.get(); }

protected:
    CAbstract_stream();
    virtual std::streamoff TellRaw() const = 0;
    virtual bool SeekRaw(std::streamoff pos) = 0;

    unsigned mLevel = 0;
    int mIndentWidth = 1;
    char16_t mIndentChar = u'\t';
    AString mBeginWord = u"$begin";
    AString mEndWord = u"$end";
    std::unique_ptr<CBlock_index> mIndex;
};

} // namespace io
