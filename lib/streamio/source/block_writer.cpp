#include "block_writer.h"

#include <algorithm>
#include <typeinfo>

#include "char_class.h"
#include "item_walk.h"
#include "names.h"

namespace io {

Block_writer::Block_writer(CAbstract_ostream& stream)
    : mStream(dynamic_cast<CToken_ostream*>(&stream)) {
    USE_ASSERT(mStream);
    if (!mStream)
        return;
    mBuffer = &mStream->GetTokenStreambuf();
    mFlags = mStream->GetFormatFlags();
    mIsBinary = mStream->IsBinary();
}

// --- Items ---

/// An argument for which nothing stands: only the commas around it tell that it is there.
static bool IsNullArg(const CBlock_item& item) {
    return item.IsValue() && item.IsEmpty();
}

void Block_writer::Write(const CBlock_item& root) {
    if (!mStream)
        return;
    bool isBehindNull = false; // the item in front is such an argument
    for (Item_walk walk(root); walk.Next();) {
        const CBlock_item& item = walk.GetItem();
        const bool isEnd = walk.GetMeeting() != Item_walk::Meeting::kOpen;
        const bool isArg = walk.GetParent() && walk.GetParent()->IsFunc();
        const bool isNull = isArg && IsNullArg(item);
        if (walk.GetMeeting() == Item_walk::Meeting::kClose) {
            if (isBehindNull)
                mBuffer->WriteSymbol(u',');
            WriteClose(item);
        } else {
            if (isArg && !walk.IsFirst() && (!mIsBinary || isBehindNull || isNull))
                WriteComma();
            if (isEnd)
                WriteLeaf(item);
            else
                WriteOpen(item);
        }
        if (isEnd && walk.GetParent() && walk.GetParent()->IsBlock())
            mBuffer->EndLine(false);
        isBehindNull = isNull;
    }
}

/// An item without children. One of a class that an application has derived writes itself.
void Block_writer::WriteLeaf(const CBlock_item& item) {
    const std::type_info* const type = &typeid(item);
    if (type == &typeid(CBlock_named_value))
        WriteNamedValue(static_cast<const CBlock_named_value&>(item));
    else if (type == &typeid(CBlock_vec))
        WriteVec(static_cast<const CBlock_vec&>(item));
    else if (type == &typeid(CBlock_value))
        WriteValue(static_cast<const CBlock_value&>(item).GetValue());
    else
        item.Write(*mStream);
}

void Block_writer::WriteNamedValue(const CBlock_named_value& value) {
    if (!mStream)
        return;
    WriteName(value.GetNameToken());
    mBuffer->WriteSymbol(u'=');
    WriteValue(value.GetValue());
}

void Block_writer::WriteOpen(const CBlock_item& item) {
    if (item.IsBlock()) {
        mStream->BeginBlock(item.GetNameToken());
    } else {
        WriteName(item.GetNameToken());
        mBuffer->WriteSymbol(u'(');
    }
}

void Block_writer::WriteClose(const CBlock_item& item) {
    if (item.IsBlock())
        mStream->EndBlock(item.GetNameToken());
    else
        mBuffer->WriteSymbol(u')');
}

/// Between arguments or elements. The binary form has none but beside a null argument.
void Block_writer::WriteComma() {
    mBuffer->WriteSymbol(u',');
    if (!mIsBinary)
        mBuffer->WriteChar(u' ');
}

void Block_writer::WriteVec(const CBlock_vec& vec) {
    constexpr unsigned kMaxSize = 65535;
    if (!mStream)
        return;
    WriteName(vec.GetNameToken());
    mBuffer->WriteSymbol(u'[');
    mStream->Write(std::min(vec.GetSize(), kMaxSize));
    mBuffer->WriteSymbol(u':');
    if (!vec.IsEmpty() && !mIsBinary)
        mBuffer->WriteChar(u' ');
    for (const CToken& element : vec) {
        if (&element != vec.begin() && !mIsBinary)
            WriteComma();
        if (element.IsNumber())
            mBuffer->WriteToken(element, mFlags);
        else
            WriteText(element);
    }
    mBuffer->WriteSymbol(u']');
}

// --- Names and values ---

void Block_writer::WriteName(const CToken& name) {
    const TokenKind kind = name.GetKind();
    if (name.IsNumber() || kind == TokenKind::True || kind == TokenKind::False) {
        WriteNameOfValue(name);
        return;
    }
    const std::u16string_view text = name.GetTextView();
    const bool isPlain =
        mIsBinary ? kind == TokenKind::Keyword && IsPlainName(text) : IsKnownName(text);
    const TokenKind written = isPlain ? TokenKind::Keyword : TokenKind::SingleQuotedText;
    if (kind == written)
        mBuffer->WriteToken(name, mFlags);
    else
        mBuffer->WriteToken(CToken(written, text), mFlags);
}

/// A name that is a number, true or false keeps its text: as a text in the binary form, which has
/// no source texts; in the text form that of true or false as it stands.
void Block_writer::WriteNameOfValue(const CToken& name) {
    const AString text = name.GetText();
    if (mIsBinary && !text.empty() && text != WordOf(name.GetKind()))
        mBuffer->WriteToken(CToken(TokenKind::SingleQuotedText, text), mFlags);
    else if (!mIsBinary && mStream->GetGrammar()->IsTrueOrFalse(text))
        mBuffer->WriteToken(CToken(TokenKind::Keyword, text), mFlags);
    else
        mBuffer->WriteToken(name, mFlags);
}

void Block_writer::WriteValue(const CToken& value) {
    if (!mStream)
        return;
    if (IsIntegerKind(value.GetKind())) {
        WriteInteger(value);
    } else if (value.GetKind() == TokenKind::Hex) {
        const bool old = mStream->SetHex(true);
        mBuffer->WriteToken(value, mFlags);
        mStream->SetHex(old);
    } else {
        WriteText(value);
    }
}

void Block_writer::WriteInteger(const CToken& value) {
    const double number = value.GetNumber();
    const IntegerRange range = GetIntegerRange(value.GetKind());
    if (!(number >= range.lowest && number <= range.highest))
        mBuffer->WriteToken(value, mFlags);
    else if (value.GetKind() >= TokenKind::UnsignedShort)
        mStream->Write(static_cast<unsigned>(number));
    else
        mStream->Write(static_cast<int>(number)); // as a short it would lose its sign in binary
}

/// Any token that is no integer and no Hex, so that it reads back as a value.
void Block_writer::WriteText(const CToken& text) {
    const std::u16string_view view = text.GetTextView();
    bool isPlain = true;
    switch (text.GetKind()) {
    case TokenKind::Keyword:
        isPlain = mIsBinary || mStream->GetGrammar()->IsKeyword(view);
        break;
    case TokenKind::WhiteSpace:
    case TokenKind::Comment:
    case TokenKind::Symbol:
        isPlain = false;
        break;
    case TokenKind::Eol:
    case TokenKind::Eof:
    case TokenKind::Error:
        mBuffer->WriteToken(CToken(), mFlags);
        return;
    default:
        break;
    }
    if (isPlain)
        mBuffer->WriteToken(text, mFlags);
    else
        mBuffer->WriteToken(CToken(TokenKind::SingleQuotedText, view), mFlags);
}

/// IsPlainName, which the names that recur need only once.
bool Block_writer::IsKnownName(std::u16string_view text) {
    if (text.empty() || text.size() > CToken::kInlineUnits)
        return IsPlainName(text);
    std::uint32_t hash = 0;
    for (const char16_t ch : text)
        hash = (hash + ch) * 0x9E3779B1u; // of the golden ratio, which mixes into the high bits
    Short_name& known = mPlainNames[hash >> (32 - kNameBits)];
    if (text == std::u16string_view(known.units.data(), known.length))
        return true;
    const bool isPlain = IsPlainName(text);
    if (isPlain) {
        std::copy(text.begin(), text.end(), known.units.begin());
        known.length = static_cast<std::uint8_t>(text.size());
    }
    return isPlain;
}

/// True when the text reads as a name with that text: a Keyword that is no block word, or a number.
bool Block_writer::IsPlainName(std::u16string_view text) const {
    if (mStream->IsBlockWord(text))
        return false;
    if (mIsBinary)
        return !text.empty();
    return mStream->GetGrammar()->IsKeyword(text) || IsPlainNumber(text);
}

/// True when the text reads as one number. The grammar scans some more as one, such as 1e, whose
/// last characters go back to the input when they are read.
bool Block_writer::IsPlainNumber(std::u16string_view text) const {
    TokenKind kind;
    return mStream->GetGrammar()->IsOneToken(text, kind) && IsNumberKind(kind) &&
           (kind == TokenKind::Hex || text.back() == u'.' || chars::IsDigit(text.back()));
}

} // namespace io
