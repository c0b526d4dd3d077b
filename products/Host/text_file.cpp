#include "text_file.h"

#include <algorithm>
#include <array>
#include <cstring>

#include "code_page.h"

namespace {

constexpr std::string_view kUtf8Mark = "\xEF\xBB\xBF";
constexpr std::array<std::string_view, 2> kUtf16Marks{"\xFF\xFE", "\xFE\xFF"};

bool IsAscii(char c) {
    return static_cast<unsigned char>(c) < 0x80;
}

/// The first byte at or behind from that isn't ASCII, by words of eight.
std::size_t FindNonAscii(std::string_view text, std::size_t from) {
    for (std::uint64_t word = 0; from + sizeof word <= text.size(); from += sizeof word) {
        std::memcpy(&word, text.data() + from, sizeof word);
        if (word & 0x8080808080808080u)
            break;
    }
    while (from < text.size() && IsAscii(text[from]))
        ++from;
    return from;
}

std::size_t FindAscii(std::string_view text, std::size_t from) {
    while (from < text.size() && !IsAscii(text[from]))
        ++from;
    return from;
}

/// Copies text with each run of other characters than ASCII as convert appends it.
/// @return false, the result is of no use then, as soon as convert does
template <class Convert>
bool ConvertRuns(std::string_view text, std::string& out, Convert convert) {
    out.reserve(text.size() + text.size() / 16);
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t run = FindNonAscii(text, at);
        out.append(text, at, run - at);
        at = FindAscii(text, run);
        if (at > run && !convert(text.substr(run, at - run)))
            return false;
    }
    return true;
}

/// Turns UTF-8 into Windows-1252. @return false and leaves text when that would lose something
bool Utf8ToPage(std::string& text) {
    std::string out;
    std::u16string units;
    const bool good = ConvertRuns(text, out, [&](std::string_view run) {
        units.clear();
        codepage::AppendUtf8ToUtf16(run, units);
        codepage::AppendEncoded(codepage::Page::kWindows1252, units, out);
        return codepage::CanEncode(codepage::Page::kWindows1252, units);
    });
    if (good)
        text.swap(out);
    return good;
}

void PageToUtf8(std::string& text) {
    std::string out;
    std::u16string units;
    ConvertRuns(text, out, [&](std::string_view run) {
        units.clear();
        codepage::AppendDecoded(codepage::Page::kWindows1252, run, units);
        codepage::AppendUtf16ToUtf8(units, out);
        return true;
    });
    text.swap(out);
}

/// Finds the encoding and turns text into Windows-1252 where it can.
FileEncoding DecodeCharacters(std::string& text, bool& mark) {
    if (std::ranges::any_of(kUtf16Marks, [&](auto utf16) { return text.starts_with(utf16); }))
        return FileEncoding::bytes;
    if (FindNonAscii(text, 0) == text.size())
        return FileEncoding::ascii;
    if (!codepage::IsValidUtf8(text))
        return FileEncoding::windows1252;
    mark = text.starts_with(kUtf8Mark);
    std::string inner = mark ? text.substr(kUtf8Mark.size()) : std::move(text);
    const bool fits = Utf8ToPage(inner);
    text = !fits && mark ? std::string(kUtf8Mark) + inner : std::move(inner);
    mark = mark && fits;
    return fits ? FileEncoding::utf8 : FileEncoding::bytes;
}

struct EndCounts {
    std::size_t m_CrLf = 0;
    std::size_t m_Lf = 0; ///< alone
    std::size_t m_Cr = 0; ///< alone
};

EndCounts CountLineEnds(std::string_view text) {
    EndCounts counts;
    for (std::size_t at = 0; (at = text.find('\n', at)) != text.npos; ++at)
        ++(at > 0 && text[at - 1] == '\r' ? counts.m_CrLf : counts.m_Lf);
    const std::size_t all = static_cast<std::size_t>(std::ranges::count(text, '\r'));
    counts.m_Cr = all - counts.m_CrLf;
    return counts;
}

LineEnds KindOf(const EndCounts& counts) {
    const int kinds = (counts.m_CrLf > 0) + (counts.m_Lf > 0) + (counts.m_Cr > 0);
    if (kinds > 1)
        return LineEnds::mixed;
    if (counts.m_CrLf > 0)
        return LineEnds::crLf;
    return counts.m_Lf > 0 ? LineEnds::lf : counts.m_Cr > 0 ? LineEnds::cr : LineEnds::none;
}

/// Makes every line end a CR LF.
void UnifyLineEnds(std::string& text, const EndCounts& counts) {
    std::string out;
    out.reserve(text.size() + counts.m_Lf + counts.m_Cr);
    std::size_t from = 0;
    for (std::size_t at = 0; (at = text.find_first_of("\r\n", at)) != text.npos; from = at) {
        out.append(text, from, at - from).append("\r\n");
        at += text.compare(at, 2, "\r\n") == 0 ? 2 : 1;
    }
    out.append(text, from);
    text.swap(out);
}

/// Takes one character of each CR LF away.
void DropFromLineEnds(std::string& text, char dropped) {
    std::erase(text, dropped);
}

} // namespace

FileForm DecodeFile(std::string& bytes) {
    FileForm form;
    form.m_Encoding = DecodeCharacters(bytes, form.m_ByteOrderMark);
    const EndCounts counts = CountLineEnds(bytes);
    form.m_LineEnds = KindOf(counts);
    if (counts.m_Lf + counts.m_Cr > 0)
        UnifyLineEnds(bytes, counts);
    return form;
}

void EncodeFile(std::string& archive, const FileForm& form) {
    // Lines hold neither CR nor LF.
    if (form.m_LineEnds == LineEnds::lf || form.m_LineEnds == LineEnds::none)
        DropFromLineEnds(archive, '\r');
    else if (form.m_LineEnds == LineEnds::cr)
        DropFromLineEnds(archive, '\n');
    if (form.m_Encoding == FileEncoding::utf8 || form.m_Encoding == FileEncoding::ascii)
        PageToUtf8(archive);
    if (form.m_ByteOrderMark)
        archive.insert(0, kUtf8Mark);
}

std::string_view NameOf(FileEncoding encoding) {
    static constexpr std::string_view kNames[] = {"ASCII", "Windows-1252", "UTF-8", "Bytes"};
    return kNames[static_cast<std::size_t>(encoding)];
}

std::string_view NameOf(LineEnds lineEnds) {
    static constexpr std::string_view kNames[] = {"none", "CR LF", "LF", "CR", "mixed"};
    return kNames[static_cast<std::size_t>(lineEnds)];
}
