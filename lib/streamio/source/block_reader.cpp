#include "block_reader.h"

#include "name_index.h"
#include "names.h"

namespace io {

/// The children of one block or function on the common stack; what is not taken is dropped.
class Block_reader::Children {
public:
    explicit Children(Block_reader& reader)
        : mReader(reader), mStack(reader.mChildren), mFirst(mStack.size()) {}
    Children(const Children&) = delete;
    Children& operator=(const Children&) = delete;
    ~Children() { mStack.resize(mFirst); }

    void Add(Block_hold<CBlock_item>&& child) { mStack.push_back(std::move(child)); }
    void MoveTo(Item_list& list) {
        mReader.mArena.Fill(list, mStack.data() + mFirst, mStack.size() - mFirst);
    }

private:
    Block_reader& mReader;
    std::vector<Block_hold<CBlock_item>>& mStack;
    std::size_t mFirst;
};

Block_reader::Block_reader(CAbstract_istream& stream)
    : mStream(dynamic_cast<CToken_istream*>(&stream)) {
    USE_ASSERT(mStream);
    mIsBinary = mStream && mStream->IsBinary();
    mIsReady = mStream && mStream->Prepare();
}

ReadError Block_reader::Fail(ReadError error) {
    mErrorLine = mStream ? mStream->GetTokenLine() : 0;
    return error;
}

/// The current token behind any line ends. A Null token stays: the text that it was is lost, and
/// what follows must not be taken for it.
inline const CToken& Block_reader::Look() {
    const CToken& token = mStream->Peek();
    if (token.GetKind() != TokenKind::Eol) [[likely]]
        return token;
    mStream->SkipEolsIfSet();
    return mStream->Peek();
}

/// The same between items, where Null tokens stand for nothing.
inline const CToken& Block_reader::LookPastNull() {
    while (Look().GetKind() == TokenKind::Null)
        mStream->Step();
    return mStream->Peek();
}

inline char16_t Block_reader::LookSymbol() {
    return Look().GetSymbol();
}

// --- Values ---

namespace {

/// The kinds that are a value, as bits.
constexpr std::uint32_t kValueKinds = [] {
    std::uint32_t kinds = 0;
    for (int kind = 0; kind < kTokenKindCount; ++kind) {
        const auto k = static_cast<TokenKind>(kind);
        if (IsNumberKind(k) || IsQuotedKind(k) || k == TokenKind::Keyword || k == TokenKind::True ||
            k == TokenKind::False)
            kinds |= 1u << kind;
    }
    return kinds;
}();

bool IsValueKind(TokenKind kind) {
    return (kValueKinds >> static_cast<unsigned>(kind) & 1) != 0;
}

inline bool IsEmptyText(const CToken& token) {
    return token.IsText() && token.GetTextLength() == 0;
}

/// True for a token that no name and no argument begins with.
inline bool IsNoName(const CToken& token) {
    const TokenKind kind = token.GetKind();
    return kind == TokenKind::Null || kind >= TokenKind::Symbol ||
           (kind == TokenKind::Keyword && token.GetTextLength() == 0) ||
           ((kind == TokenKind::WhiteSpace || kind == TokenKind::Comment) &&
            token.GetTextLength() == 0);
}

/// The binary form has true and false without their words, by which a name is found.
void GiveWord(CToken& name) {
    if (const std::u16string_view word = WordOf(name.GetKind()); !word.empty())
        name = CToken(name.GetKind(), word);
}

} // namespace

inline ReadError Block_reader::ReadToken(CToken& value) {
    const CToken& token = Look();
    if (!IsValueKind(token.GetKind()))
        return Fail(ReadError::kValue);
    mStream->TakeToken(value);
    return ReadError::kOk;
}

ReadError Block_reader::ReadValue(CBlock_value& value) {
    return mIsReady ? ReadToken(value.mValue) : Fail(ReadError::kValue);
}

ReadError Block_reader::ReadNamedValue(CBlock_named_value& value) {
    if (!mIsReady || LookSymbol() != u'=')
        return Fail(ReadError::kEquals);
    mStream->Step();
    return ReadValue(value);
}

// --- Items and arguments ---

/// Takes `name = value` if all of it, and the token behind it, has been read ahead.
inline bool Block_reader::TakeNamedValue(Block_hold<CBlock_item>& item) {
    const auto ahead = mStream->PeekAhead();
    if (ahead.size() < 4 || ahead[1].token.GetSymbol() != u'=' ||
        !IsValueKind(ahead[2].token.GetKind()))
        return false;
    auto& value = mArena.Make<CBlock_named_value>(item);
    value.mName.Take(ahead[0].token);
    if (value.mName.GetTextLength() == 0)
        GiveWord(value.mName);
    value.mValue.Take(ahead[2].token);
    mStream->StepOver(3);
    return true;
}

ReadError Block_reader::ReadItem(Block_hold<CBlock_item>& item) {
    if (!mIsReady || IsNoName(Look()))
        return Fail(ReadError::kIdentifier);
    if (mStream->IsBeginHere())
        return ReadNestedBlock(item);
    if (TakeNamedValue(item))
        return ReadError::kOk;
    CToken name;
    mStream->TakeToken(name);
    return ReadBehindName(item, name, mStream->Peek().GetSymbol(),
                          false); // on the name's line
}

ReadError Block_reader::ReadArg(Block_hold<CBlock_item>& arg) {
    if (!mIsReady)
        return Fail(ReadError::kValue);
    if (IsNoName(Look())) {
        auto& value = mArena.Make<CBlock_value>(arg);
        return LookSymbol() == u',' ? ReadError::kOk : ReadValue(value);
    }
    const bool isEmptyText = IsEmptyText(mStream->Peek()); // always a value
    if (!isEmptyText && TakeNamedValue(arg))
        return ReadError::kOk;
    CToken name;
    mStream->TakeToken(name);
    return ReadBehindName(arg, name, isEmptyText ? u'\0' : LookSymbol(), true);
}

/// Makes an item that takes its name, and goes on behind the symbol that tells its class. The name
/// is moved once: a processor waits where a token is copied soon after a part of it was stored.
template <class T>
T& Block_reader::Make(Block_hold<CBlock_item>& item, CToken& name) {
    T& made = mArena.Make<T>(item);
    if (name.GetTextView().empty())
        GiveWord(name);
    made.mName.Take(name);
    mStream->Step();
    return made;
}

ReadError Block_reader::ReadBehindName(Block_hold<CBlock_item>& item, CToken& name, char16_t symbol,
                                       bool isArg) {
    switch (symbol) {
    case u'=':
        return ReadValue(Make<CBlock_named_value>(item, name));
    case u'(':
        if (mFuncDepth == kMaxBlockNesting)
            return Fail(ReadError::kItem);
        return ReadFuncBody(Make<CBlock_func>(item, name));
    case u'[':
        return ReadVecBody(Make<CBlock_vec>(item, name));
    default:
        if (!isArg)
            return Fail(ReadError::kParenOrEquals);
        mArena.Make<CBlock_value>(item).mValue.Take(name);
        return ReadError::kOk;
    }
}

/// What stands behind an argument or element: a comma, or in text the closing symbol.
inline ReadError Block_reader::ReadBehind(char16_t close) {
    const char16_t symbol = LookSymbol();
    if (symbol == u',')
        mStream->Step();
    else if (!mIsBinary && symbol != close)
        return Fail(ReadError::kCloseOrComma);
    return ReadError::kOk;
}

ReadError Block_reader::ReadFunc(CBlock_func& func) {
    if (!mIsReady || LookSymbol() != u'(')
        return Fail(ReadError::kOpen);
    mStream->Step();
    return ReadFuncBody(func);
}

ReadError Block_reader::ReadFuncBody(CBlock_func& func) {
    ++mFuncDepth;
    Children args(*this);
    const ReadError error = ReadArgs(args);
    args.MoveTo(func.mArgs);
    func.ResetCursor();
    --mFuncDepth;
    return error;
}

ReadError Block_reader::ReadArgs(Children& args) {
    while (LookSymbol() != u')') {
        if (mStream->Peek().GetKind() == TokenKind::Eof)
            return ReadError::kOk;
        Block_hold<CBlock_item> arg;
        if (const ReadError error = ReadArg(arg); error != ReadError::kOk)
            return error;
        args.Add(std::move(arg));
        if (const ReadError error = ReadBehind(u')'); error != ReadError::kOk)
            return error;
    }
    mStream->Step();
    return ReadError::kOk;
}

ReadError Block_reader::ReadVec(CBlock_vec& vec) {
    if (!mIsReady || LookSymbol() != u'[')
        return Fail(ReadError::kOpen);
    mStream->Step();
    return ReadVecBody(vec);
}

ReadError Block_reader::ReadVecBody(CBlock_vec& vec) {
    mElements.clear();
    const ReadError error = ReadElements();
    mArena.Fill(vec.mElements, mElements.data(), mElements.size());
    vec.mCursor = 0;
    vec.mFound = 1;
    return error;
}

/// Takes elements that have been read ahead, each with the comma behind it.
inline void Block_reader::TakeElements() {
    const auto ahead = mStream->PeekAhead();
    std::size_t next = 0;
    for (; next + 2 < ahead.size() && IsValueKind(ahead[next].token.GetKind()) &&
           ahead[next + 1].token.GetSymbol() == u',';
         next += 2)
        mElements.push_back(std::move(ahead[next].token));
    if (next != 0)
        mStream->StepOver(next);
}

ReadError Block_reader::ReadElements() {
    constexpr double kMaxSize = 65535;
    if (Look().IsNumber()) {
        CToken first = Look();
        if (!(first.GetNumber() >= 0 && first.GetNumber() <= kMaxSize))
            return Fail(ReadError::kVectorSize);
        mStream->Step();
        if (LookSymbol() == u':') {
            mStream->Step(); // the size takes no memory: what stands there decides
        } else {
            mElements.push_back(std::move(first));
            if (const ReadError error = ReadBehind(u']'); error != ReadError::kOk)
                return error;
        }
    }
    for (TakeElements(); LookSymbol() != u']'; TakeElements()) {
        const TokenKind kind = mStream->Peek().GetKind();
        if (kind == TokenKind::Eof)
            return ReadError::kOk;
        if (!IsValueKind(kind))
            return Fail(ReadError::kValue);
        mStream->TakeToken(mElements.emplace_back());
        if (const ReadError error = ReadBehind(u']'); error != ReadError::kOk)
            return error;
    }
    mStream->Step();
    return ReadError::kOk;
}

// --- Blocks ---

ReadError Block_reader::ReadNestedBlock(Block_hold<CBlock_item>& item) {
    if (mBlockDepth == kMaxBlockNesting)
        return Fail(ReadError::kItem);
    ReadBlockBody(mArena.Make<CBlock>(item));
    return ReadError::kOk;
}

void Block_reader::ReadBlock(CBlock& block) {
    if (mIsReady && mStream->IsBeginHere()) {
        ReadBlockBody(block);
        return;
    }
    const ReadError error = Fail(ReadError::kBeginEnd);
    block.mErrors.push_back(XStreamioError(error, mErrorLine));
    if (mStream)
        mStream->Accept(false);
}

void Block_reader::ReadBlockBody(CBlock& block) {
    mStream->TakeBegin(block.mName);
    block.ForgetNames();
    ++mBlockDepth;
    Children items(*this);
    ReadItems(block, items);
    items.MoveTo(block.mItems);
    block.mCursor = 0;
    --mBlockDepth;
}

void Block_reader::ReadItems(CBlock& block, Children& items) {
    for (;;) {
        if (LookPastNull().GetKind() == TokenKind::Eof)
            return;
        if (mStream->IsEndHere())
            return ReadEnd(block);
        Block_hold<CBlock_item> item;
        if (const ReadError error = ReadItem(item); error == ReadError::kOk)
            items.Add(std::move(item));
        else
            NoteAndSkip(block, error);
    }
}

void Block_reader::ReadEnd(CBlock& block) {
    mStream->ReadEnd();
    const bool isNull = mStream->Peek().GetKind() == TokenKind::Null; // an ill-formed text
    if (!isNull && (mStream->IsEol() || mStream->AtEof()))
        return;
    const bool isName = !isNull && mStream->IsValue(BlockName(block.mName));
    if (!isName)
        mErrorLine = mStream->GetTokenLine();
    if (!mStream->Accept(isName))
        NoteAndSkip(block, ReadError::kBeginEnd);
}

void Block_reader::NoteAndSkip(CBlock& block, ReadError error) {
    block.mErrors.push_back(XStreamioError(error, mErrorLine));
    mStream->Clear();
    mStream->SkipLine();
}

} // namespace io
