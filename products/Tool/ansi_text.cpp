#include "ansi_text.h"

#include <algorithm>
#include <charconv>

#include "code_page.h"
#include "environment.h"
#include "output.h"

namespace {

constexpr std::string_view kReset = "\x1b[0m";
constexpr std::string_view kPaper = "\x1b[0;48;2;255;255;255;38;2;0;0;0m";
constexpr std::string_view kEraseToEnd = "\x1b[K"; // in the background that is set
constexpr std::string_view kFaint = "\x1b[2m";
constexpr char16_t kControlPictures = 0x2400; // of 0x00 to 0x1F, in order
constexpr char16_t kDeletePicture = 0x2421;

bool IsContinuation(char c) {
    return (static_cast<unsigned char>(c) & 0xC0) == 0x80;
}

void AppendColor(std::uint32_t color, std::string& out) {
    out += "\x1b[38;2";
    for (int shift = 0; shift < 24; shift += 8) {
        out += ';';
        out += std::to_string(color >> shift & 0xFF);
    }
    out += 'm';
}

/// What is shown for a character.
char16_t Visible(char16_t c) {
    if (c < 0x20)
        return static_cast<char16_t>(kControlPictures + c);
    if (c == 0x7F)
        return kDeletePicture;
    return c > 0x7F && c < 0xA0 ? codepage::kReplacement : c;
}

} // namespace

void ColorOption::AddTo(CLI::App& command) {
    command.add_option("--color", m_When, "When to colour: auto, always or never")
        ->type_name("WHEN")
        ->check(CLI::IsMember({"auto", "always", "never"}));
}

AnsiText::Style ColorOption::GetStyle() const {
    const bool isTerminal = Output::Get().IsTerminal();
    const bool showsColors = isTerminal && sys::GetEnvironment("NO_COLOR").value_or("").empty() &&
                             sys::GetEnvironment("TERM").value_or("dumb") != "dumb";
    if (m_When == "never" || (m_When == "auto" && !showsColors))
        return AnsiText::Style::plain;
    return isTerminal ? AnsiText::Style::onPaper : AnsiText::Style::colored;
}

AnsiText::AnsiText(Style style, std::string_view sample)
    : m_Style(style), m_IsUtf8(codepage::IsValidUtf8(sample)) {}

void AnsiText::AppendLine(std::string_view line, std::span<const ColorSpan> colors,
                          std::string& out) const {
    std::size_t at = 0;
    const auto upTo = [&](int column) {
        std::size_t end = std::clamp(static_cast<std::size_t>(column), at, line.size());
        while (m_IsUtf8 && end < line.size() && IsContinuation(line[end]))
            ++end;
        const std::string_view part = line.substr(at, end - at);
        at = end;
        return part;
    };
    const bool onPaper = m_Style == Style::onPaper;
    if (onPaper)
        out += kPaper;
    for (const ColorSpan& span : InColor() ? colors : std::span<const ColorSpan>()) {
        AppendVisible(upTo(span.m_Start), out);
        AppendColor(span.m_Color, out);
        AppendVisible(upTo(span.m_End + 1), out);
        out += onPaper ? kPaper : kReset;
    }
    AppendVisible(line.substr(at), out);
    if (onPaper)
        (out += kEraseToEnd) += kReset;
}

void AnsiText::AppendNumber(int row, std::size_t digits, std::string& out) const {
    const std::string number = std::to_string(row + 1);
    if (InColor())
        out += kFaint;
    out.append(digits - std::min(digits, number.size()), ' ');
    out += number;
    out += "  ";
    if (InColor())
        out += kReset;
}

void AnsiText::AppendVisible(std::string_view bytes, std::string& out) const {
    const auto isPlain = [](char c) { return c >= 0x20 && c < 0x7F; };
    if (std::ranges::all_of(bytes, isPlain)) {
        out += bytes;
        return;
    }
    std::u16string text;
    if (m_IsUtf8)
        codepage::AppendUtf8ToUtf16(bytes, text);
    else
        codepage::AppendDecoded(codepage::Page::kWindows1252, bytes, text);
    std::ranges::transform(text, text.begin(), Visible);
    codepage::AppendUtf16ToUtf8(text, out);
}
