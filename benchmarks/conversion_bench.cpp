// Conversion between 8-bit text and 16-bit units, with iconv on the same texts as the peer: whole
// texts of 1 MB in ASCII and in other languages, and a netlist's lines one by one.

#include <iconv.h>

#include "code_page.h"
#include "peer_bench.h"

namespace {

constexpr int kRounds = 41;
constexpr std::size_t kTextBytes = 1 << 20; // a turn is short, so that few are interrupted

/// Repeats a sample up to about kTextBytes.
std::string Repeated(std::string_view sample) {
    std::string text;
    while (text.size() < kTextBytes)
        text += sample;
    return text;
}

/// One direction of iconv, which converts from start to end each time it is called.
class Iconv {
public:
    Iconv(const char* to, const char* from) : mHandle(iconv_open(to, from)) {
        if (mHandle == reinterpret_cast<iconv_t>(-1)) {
            std::perror("iconv_open");
            std::exit(2);
        }
    }
    ~Iconv() { iconv_close(mHandle); }
    Iconv(const Iconv&) = delete;
    Iconv& operator=(const Iconv&) = delete;

    /// Returns the bytes written.
    std::size_t operator()(const void* in, std::size_t size, void* out, std::size_t room) const {
        char* from = const_cast<char*>(static_cast<const char*>(in));
        char* to = static_cast<char*>(out);
        const std::size_t before = room;
        if (iconv(mHandle, &from, &size, &to, &room) == static_cast<std::size_t>(-1)) {
            std::perror("iconv");
            std::exit(2);
        }
        return before - room;
    }

private:
    iconv_t mHandle;
};

/// A code of ours and its name there.
struct Code {
    const char* name;
    const char* iconvName;
    std::size_t (*decode)(std::string_view bytes, char16_t* out);
    std::size_t (*encode)(std::u16string_view text, char* out);
};

using codepage::Page;
template <Page page>
std::size_t DecodePage(std::string_view bytes, char16_t* out) {
    codepage::Decode(page, bytes, out);
    return bytes.size();
}
template <Page page>
std::size_t EncodePage(std::u16string_view text, char* out) {
    codepage::Encode(page, text, out);
    return text.size();
}
constexpr Code k1252 = {"1252", "CP1252", DecodePage<Page::kWindows1252>,
                        EncodePage<Page::kWindows1252>};
constexpr Code k850 = {"850", "CP850", DecodePage<Page::kDos850>, EncodePage<Page::kDos850>};
constexpr Code kUtf8 = {"UTF-8", "UTF-8", codepage::Utf8ToUtf16, codepage::Utf16ToUtf8};

/// A text of UTF-8 in the bytes of another code.
std::string FromUtf8(const Code& code, std::string_view utf8) {
    std::u16string text;
    codepage::AppendUtf8ToUtf16(utf8, text);
    std::string bytes(text.size(), '\0');
    bytes.resize(code.encode(text, bytes.data()));
    return bytes;
}

/// Both rows of one piece of work, and that both sides did the same.
template <class Ours, class Theirs>
void Compare(const std::string& work, double bytes, Ours ours, Theirs theirs) {
    if (ours() != theirs()) {
        std::fprintf(stderr, "%s: results differ in length\n", work.c_str());
        std::exit(1);
    }
    std::vector<double> own, peer; // by turns, so that other work on the machine meets both
    for (int round = 0; round < kRounds; ++round) {
        own.push_back(bench::TimeOf(1, ours) / bytes);
        peer.push_back(bench::TimeOf(1, theirs) / bytes);
    }
    bench::Row(work, "quorel", "ns/byte", bench::Median(std::move(own)));
    bench::Row(work, "iconv", "ns/byte", bench::Median(std::move(peer)));
}

/// A whole text in and out.
void CompareText(const Code& code, const char* language, const std::string& bytes) {
    std::vector<char16_t> wide(bytes.size());
    std::vector<char> narrow(bytes.size());
    const std::size_t units = code.decode(bytes, wide.data());
    const std::u16string text(wide.data(), units);
    const Iconv in("UTF-16LE", code.iconvName), out(code.iconvName, "UTF-16LE");
    const std::string work = std::string(code.name) + " " + language;
    const auto size = static_cast<double>(bytes.size());
    Compare(
        work + " to 16 bit", size, [&] { return 2 * code.decode(bytes, wide.data()); },
        [&] { return in(bytes.data(), bytes.size(), wide.data(), 2 * wide.size()); });
    Compare(
        work + " from 16 bit", size, [&] { return code.encode(text, narrow.data()); },
        [&] { return out(text.data(), 2 * text.size(), narrow.data(), narrow.size()); });
}

/// Lines one after the other, as an editor loads and saves them.
void CompareLines(const Code& code) {
    const std::string file = Repeated("R12 net_017 net_018 4.7k tc1=0.001\nC7 out 0 100n\n"
                                      "* stage two: gain of 20 dB at 1 kHz\n"
                                      "M4 d g s b nch w=2u l=0.18u ad=1p as=1p pd=4u ps=4u\n");
    const std::vector<std::string_view> lines = bench::LinesOf(file);
    std::vector<std::u16string> wideLines;
    for (const std::string_view line : lines)
        wideLines.emplace_back(line.begin(), line.end());
    char16_t wide[256];
    char narrow[256];
    const auto sumOver = [](const auto& all, auto convert) {
        return [&all, convert] {
            std::size_t sum = 0;
            for (const auto& line : all)
                sum += convert(line);
            return sum;
        };
    };
    const Iconv in("UTF-16LE", code.iconvName), out(code.iconvName, "UTF-16LE");
    const std::string work = std::string(code.name) + " netlist lines";
    const auto size = static_cast<double>(file.size());
    Compare(work + " to 16 bit", size,
            sumOver(lines, [&](std::string_view line) { return 2 * code.decode(line, wide); }),
            sumOver(lines, [&](std::string_view line) {
                return in(line.data(), line.size(), wide, sizeof wide);
            }));
    Compare(work + " from 16 bit", size,
            sumOver(wideLines, [&](std::u16string_view line) { return code.encode(line, narrow); }),
            sumOver(wideLines, [&](std::u16string_view line) {
                return out(line.data(), 2 * line.size(), narrow, sizeof narrow);
            }));
}

} // namespace

int main() {
    const std::string ascii = Repeated("R12 net_017 net_018 4.7k ; the quick brown fox\r\n");
    const std::string german = Repeated("Verstärker für große Lasten, 20 µA\r\n");
    for (const Code& code : {k1252, k850}) {
        CompareText(code, "ASCII", ascii);
        CompareText(code, "German", FromUtf8(code, german));
    }
    CompareText(kUtf8, "ASCII", ascii);
    CompareText(kUtf8, "German", german);
    CompareText(kUtf8, "Greek", Repeated("Ενισχυτής για μεγάλα φορτία\r\n"));
    CompareText(kUtf8, "Chinese", Repeated("用于大负载的放大器，二十微安\r\n"));
    CompareText(kUtf8, "beyond 16 bit", Repeated("𝛼𝛽𝛾𝛿 𝜔𝜇\r\n"));
    CompareLines(k1252);
    CompareLines(kUtf8);
}
