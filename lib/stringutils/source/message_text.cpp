#include "message_text.h"

#include <algorithm>

#include "text_format.h"

namespace messagetext {
namespace {

constexpr std::u16string_view kLineBreak = u"\r\n";
constexpr unsigned kNoWidth = 255;

/// The text so far, with its last line broken where the width demands it.
class Output {
public:
    Output(const Layout& layout, std::u16string& text)
        : mText(text), mWidth(layout.width == kNoWidth ? 0 : layout.width) {
        mText.clear();
    }

    void Add(char16_t ch) {
        if (mWidth != 0 && mText.size() - mLineStart >= mWidth && ch != u'\r' && ch != u'\n')
            if (BreakBefore(ch))
                return;
        if (ch == u' ')
            mLastBlank = mText.size();
        mText += ch;
        if (ch == u'\n')
            StartLine();
    }
    void Add(std::u16string_view text) {
        for (const char16_t ch : text)
            Add(ch);
    }
    bool IsFull() const { return mText.size() >= kCapacity; }

private:
    static constexpr std::size_t kNone = std::u16string::npos;

    void StartLine() {
        mLineStart = mText.size();
        mLastBlank = kNone;
    }

    /// Breaks a full line at its last blank, which goes; true when `ch` is itself that blank. A
    /// word that is longer than a line stays whole.
    bool BreakBefore(char16_t ch) {
        if (ch != u' ' && mLastBlank == kNone)
            return false;
        const std::size_t blank = ch == u' ' ? mText.size() : mLastBlank;
        mText.replace(blank, ch == u' ' ? 0 : 1, kLineBreak);
        mLineStart = blank + kLineBreak.size();
        mLastBlank = kNone;
        return ch == u' ';
    }

    std::u16string& mText;
    std::size_t mWidth; ///< 0 for none
    std::size_t mLineStart = 0;
    std::size_t mLastBlank = kNone;
};

class Former {
public:
    Former(std::u16string_view message, std::span<const FormatArg> args, const Layout& layout,
           std::u16string& out)
        : mRest(message), mArgs(args), mLayout(layout), mOut(layout, out) {}

    AString::MessageError Run() {
        while (!mRest.empty() && !mHasEnded && !mIsInvalid && !mOut.IsFull())
            Step();
        if (mIsInvalid)
            return AString::kMessageInvalid;
        return mOut.IsFull() ? AString::kMessageTooLong : AString::kMessageDone;
    }

private:
    static bool IsDigit(char16_t ch) { return ch >= u'0' && ch <= u'9'; }

    char16_t Take() {
        const char16_t ch = mRest.front();
        mRest.remove_prefix(1);
        return ch;
    }

    void Step() {
        const char16_t ch = Take();
        if (ch == u'%' && !mRest.empty())
            Escape();
        else if (ch == u'\r' || ch == u'\n')
            Break(ch);
        else
            mOut.Add(ch);
    }

    /// A line break of the message itself: CR, LF or CR LF.
    void Break(char16_t ch) {
        if (ch == u'\r' && mRest.starts_with(u'\n'))
            Take();
        if (mLayout.width == 0)
            mOut.Add(kLineBreak);
        else
            mOut.Add(u' ');
    }

    void Escape() {
        struct Row {
            char16_t letter;
            std::u16string_view text;
        };
        static constexpr Row kEscapes[] = {
            {u'n', kLineBreak}, {u'r', u"\r"}, {u't', u"\t"}, {u'b', u" "}};
        const char16_t ch = Take();
        if (ch == u'0') {
            mHasEnded = true;
        } else if (IsDigit(ch)) {
            Insert(ch);
        } else {
            const auto row = std::ranges::find(kEscapes, ch, &Row::letter);
            mOut.Add(row == std::end(kEscapes) ? std::u16string_view(&ch, 1) : row->text);
        }
    }

    void Insert(char16_t digit) {
        std::size_t number = static_cast<std::size_t>(digit - u'0');
        if (mLayout.ignoresInserts) {
            mOut.Add(u'%');
            mOut.Add(digit);
            return;
        }
        if (!mRest.empty() && IsDigit(mRest.front()))
            number = number * 10 + static_cast<std::size_t>(Take() - u'0');
        std::u16string_view format = u"s";
        if (mRest.starts_with(u'!')) {
            Take();
            const std::size_t end = mRest.find(u'!');
            mIsInvalid = end == mRest.npos;
            format = mRest.substr(0, end);
            mRest.remove_prefix(mIsInvalid ? mRest.size() : end + 1);
        }
        if (!mIsInvalid)
            InsertFormatted(number, format);
    }

    void InsertFormatted(std::size_t number, std::u16string_view format) {
        textformat::Arguments args(mArgs.subspan(std::min(number - 1, mArgs.size())));
        textformat::Conversion conversion = textformat::TakeConversion(format, args);
        const FormatArg arg = args.Next();
        mIsInvalid = args.HasMissed() || !format.empty() || conversion.letter == 0;
        if (mIsInvalid)
            return;
        // Wider than this is too long in any case.
        constexpr int kMost = static_cast<int>(kCapacity);
        conversion.width = std::min(conversion.width, kMost);
        conversion.precision = std::min(conversion.precision, kMost);
        std::u16string text;
        textformat::Append(conversion, arg, text);
        mOut.Add(std::u16string_view(text).substr(0, kCapacity));
    }

    std::u16string_view mRest;
    std::span<const FormatArg> mArgs;
    Layout mLayout;
    Output mOut;
    bool mHasEnded = false;
    bool mIsInvalid = false;
};

} // namespace

AString::MessageError Form(std::u16string_view message, std::span<const FormatArg> args,
                           const Layout& layout, std::u16string& out) {
    return Former(message, args, layout, out).Run();
}

} // namespace messagetext
