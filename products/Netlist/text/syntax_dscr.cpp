#include "syntax_dscr.h"

#include "assertion.h"
#include "line_scanner.h"

CSyntaxDscr::CSyntaxDscr() = default;
CSyntaxDscr::~CSyntaxDscr() = default;

void CSyntaxDscr::AddRange(std::unique_ptr<CColorRange> range) {
    const bool valid = range && range->Open.IsValid() && range->Close.IsValid();
    USE_ASSERT(valid);
    if (!valid)
        return;
    m_canCarry = m_canCarry || !range->Close.Facts().matchesAnyEnd;
    m_ranges.push_back(std::move(range));
    m_scanner.reset();
}

void CSyntaxDscr::AddToken(std::unique_ptr<CColorToken> token) {
    const bool valid = token && token->Token.IsValid() && token->StartSep && token->StopSep &&
                       token->StartSep->IsValid() && token->StopSep->IsValid();
    USE_ASSERT(valid);
    if (!valid)
        return;
    m_tokens.push_back(std::move(token));
    m_scanner.reset();
}

LineColours CSyntaxDscr::Colour(std::string_view text, std::int32_t carried) const {
    if (!m_scanner)
        m_scanner = std::make_unique<LineScanner>(*this);
    return m_scanner->Colour(text, carried);
}
