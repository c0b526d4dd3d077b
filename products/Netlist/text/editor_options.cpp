#include "editor_options.h"

#include "idesktop.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <limits>
#include <string_view>
#include <variant>

namespace {

const AString kSection(u"Options");
const AString kTextFontKey(u"TextFont");
const AString kBookmarkColorKey(u"BMColor");
const AString kDefaultTextFont(u"Courier New,-12,0,0,0,400,0,0,0,0,3,2,1,34");

struct IntegerOption {
    const char16_t* key;
    std::int32_t EditorOptions::*field;
};

struct StringOption {
    const char16_t* key;
    AString EditorOptions::*field;
};

constexpr std::array kIntegerOptions{
    IntegerOption{u"PrintLineNumbers", &EditorOptions::PrintLineNumbers},
    IntegerOption{u"PrintLBorder", &EditorOptions::PrintLBorder},
    IntegerOption{u"PrintRBorder", &EditorOptions::PrintRBorder},
    IntegerOption{u"PrintHead", &EditorOptions::PrintHead},
    IntegerOption{u"PrintFoot", &EditorOptions::PrintFoot},
    IntegerOption{u"BMColor", &EditorOptions::BMColor},
    IntegerOption{u"FillBlanksOnEnter", &EditorOptions::FillBlanksOnEnter},
    IntegerOption{u"DropBlanksOnSave", &EditorOptions::DropBlanksOnSave},
    IntegerOption{u"NumberOfUndos", &EditorOptions::NumberOfUndos},
    IntegerOption{u"ModelComment", &EditorOptions::ModelComment},
};

constexpr std::array kStringOptions{
    StringOption{u"PrintHeadText", &EditorOptions::PrintHeadText},
    StringOption{u"PrintFootText", &EditorOptions::PrintFootText},
};

/// The numbers of a font's text form behind the face name, in their order.
using FontNumber = std::variant<std::int32_t LogFont::*, std::uint8_t LogFont::*>;

constexpr std::array<FontNumber, 13> kFontNumbers{
    &LogFont::m_Height,         &LogFont::m_Width,         &LogFont::m_Escapement,
    &LogFont::m_Orientation,    &LogFont::m_Weight,        &LogFont::m_Italic,
    &LogFont::m_Underline,      &LogFont::m_StrikeOut,     &LogFont::m_CharSet,
    &LogFont::m_OutPrecision,   &LogFont::m_ClipPrecision, &LogFont::m_Quality,
    &LogFont::m_PitchAndFamily,
};

/// The leading decimal number of a field, kept within 32 bits; 0 where there is none.
std::int32_t ReadNumber(std::string_view text) {
    text.remove_prefix(std::min(text.find_first_not_of(" \t"), text.size()));
    if (text.size() > 1 && text[0] == '+' && text[1] != '-')
        text.remove_prefix(1);
    std::int32_t number = 0;
    const auto read = std::from_chars(text.data(), text.data() + text.size(), number);
    if (read.ec != std::errc::result_out_of_range)
        return number;
    using Limits = std::numeric_limits<std::int32_t>;
    return text[0] == '-' ? Limits::min() : Limits::max();
}

/// Takes the next field off rest; commas before it go too. Empty when there is none.
AString TakeField(std::u16string_view& rest) {
    rest.remove_prefix(std::min(rest.find_first_not_of(u','), rest.size()));
    const AString field(rest.substr(0, rest.find(u',')));
    rest.remove_prefix(field.size());
    return field;
}

} // namespace

EditorOptions& CurrentOptions() {
    static EditorOptions options = [] {
        EditorOptions defaults;
        defaults.TextFont = ParseTextFont(kDefaultTextFont);
        return defaults;
    }();
    return options;
}

void LoadOptions(IDesktop& desktop) {
    const EditorOptions defaults;
    EditorOptions& options = CurrentOptions();
    for (const IntegerOption& option : kIntegerOptions)
        options.*option.field =
            desktop.GetIntegerOption(0, kSection, option.key, defaults.*option.field);
    for (const StringOption& option : kStringOptions)
        desktop.GetStringOption(options.*option.field, 0, kSection, option.key,
                                defaults.*option.field);
    AString font;
    desktop.GetStringOption(font, 0, kSection, kTextFontKey, kDefaultTextFont);
    options.TextFont = ParseTextFont(font);
}

LogFont ParseTextFont(const AString& text) {
    LogFont font;
    std::u16string_view rest(text);
    font.m_FaceName = TakeField(rest);
    for (const FontNumber& number : kFontNumbers)
        std::visit(
            [&](auto field) {
                using Number = std::remove_reference_t<decltype(font.*field)>;
                font.*field = static_cast<Number>(ReadNumber(TakeField(rest).ToCString()));
            },
            number);
    return font;
}

AString FormatTextFont(const LogFont& font) {
    std::string numbers;
    for (const FontNumber& number : kFontNumbers)
        std::visit([&](auto field) { numbers += ',' + std::to_string(font.*field); }, number);
    AString text = font.m_FaceName;
    text += AString(numbers);
    return text;
}

void SaveTextFont(IDesktop& desktop, const LogFont& font) {
    desktop.SetStringOption(0, kSection, kTextFontKey, FormatTextFont(font));
}

void SaveBookmarkColor(IDesktop& desktop, std::int32_t color) {
    desktop.SetIntegerOption(0, kSection, kBookmarkColorKey, color);
}
