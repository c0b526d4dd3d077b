/// CSyntaxDscr: what a language looks like, and the colouring of a line by it.
#pragma once

#include "astring.h"
#include "color_spans.h"
#include "quorel_export.h"
#include "reg_exp.h"

#include <cstdint>
#include <memory>
#include <span>
#include <string_view>
#include <vector>

class LineScanner;

/// Something that opens and closes, such as a comment or a string.
struct CColorRange {
    CRegExp Open;
    CRegExp Close;
    std::uint32_t Color = 0;
};

/// A word with what must stand before and behind it. Many tokens share their separators.
struct CColorToken {
    CRegExp Token;
    std::shared_ptr<const CRegExp> StartSep;
    std::shared_ptr<const CRegExp> StopSep;
    std::uint32_t Color = 0;
};

/// The colours of one line. The spans lie in the description's own buffer until its next use.
struct LineColours {
    std::int32_t rangeIn = -1;
    std::int32_t rangeOut = -1;
    std::span<const std::uint8_t> spans; ///< in the form of ColorSpans
};

/// A syntax description. Owns its ranges and tokens; a line's range numbers are indices of Ranges.
/// For one thread: colouring uses a buffer of the description.
class QUOREL_API CSyntaxDscr {
public:
    CSyntaxDscr();
    CSyntaxDscr(const CSyntaxDscr&) = delete;
    CSyntaxDscr& operator=(const CSyntaxDscr&) = delete;
    ~CSyntaxDscr();

    std::vector<AString> FileExts;  ///< stored for whoever asks
    std::vector<AString> Languages; ///< stored for whoever asks

    const std::vector<std::unique_ptr<CColorRange>>& Ranges() const { return m_ranges; }
    const std::vector<std::unique_ptr<CColorToken>>& Tokens() const { return m_tokens; }
    /// Appends an entry, whose expressions must be valid. One that isn't is an assertion and is
    /// destroyed.
    void AddRange(std::unique_ptr<CColorRange> range);
    void AddToken(std::unique_ptr<CColorToken> token);

    /// Whether some line may leave a range open. If not, each line's end closes every range that is
    /// open there, and lines to which none is carried don't depend on each other.
    bool CanCarry() const { return m_canCarry; }

    /// The colours of a line's expanded text when the range with the index carried was open before
    /// it; -1, or an index that isn't in Ranges, means none. Ranges win over tokens, tokens earlier
    /// in Tokens over later ones; a token that overlaps a span is dropped. Cost: linear in the
    /// text.
    LineColours Colour(std::string_view text, std::int32_t carried) const;

private:
    std::vector<std::unique_ptr<CColorToken>> m_tokens;
    std::vector<std::unique_ptr<CColorRange>> m_ranges;
    mutable std::unique_ptr<LineScanner> m_scanner; ///< made when first needed
    bool m_canCarry = false;
};
