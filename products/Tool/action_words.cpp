#include "action_words.h"

#include <algorithm>
#include <charconv>
#include <limits>

#include "messages.h"
#include "tool_error.h"

namespace {

constexpr int kMostCount = 1'000'000;
constexpr int kMostId = 0xFFFF;
constexpr int kMostNumber = std::numeric_limits<int>::max();

/// A word that is to be read, and where it goes.
struct Word {
    std::string_view m_Text;
    std::span<const Accelerator> m_Keys;
    ActionArguments& m_Into;
};

bool ReadInteger(std::string_view text, int least, int most, int& number) {
    const char* const end = text.data() + text.size();
    const auto read = std::from_chars(text.data(), end, number);
    return read.ec == std::errc() && read.ptr == end && number >= least && number <= most;
}

template <int Least, int Most>
bool ReadNumber(const Word& word) {
    return ReadInteger(word.m_Text, Least, Most, word.m_Into.m_Numbers.emplace_back());
}

bool ReadCount(const Word& word) {
    return ReadInteger(word.m_Text, 0, kMostCount, word.m_Into.m_Count);
}

bool ReadText(const Word& word) {
    word.m_Into.m_Texts.push_back(AString::FromMultiByte(AString::kUtf8, word.m_Text));
    return true;
}

template <bool ActionArguments::*Flag>
bool ReadFlag(const Word& word) {
    word.m_Into.*Flag = true;
    return true;
}

/// A number by its name.
struct Name {
    std::string_view m_Name;
    unsigned m_Number;
};

const Name* FindName(std::span<const Name> names, std::string_view name) {
    const auto found = std::ranges::find(names, name, &Name::m_Name);
    return found == names.end() ? nullptr : &*found;
}

bool ReadScroll(const Word& word) {
    static constexpr Name kCodes[] = {{"line-up", kScrollLineUp},
                                      {"line-down", kScrollLineDown},
                                      {"page-up", kScrollPageUp},
                                      {"page-down", kScrollPageDown}};
    const Name* const code = FindName(kCodes, word.m_Text);
    if (code)
        word.m_Into.m_Code = code->m_Number;
    return code != nullptr;
}

constexpr Name kModifiers[] = {{"Ctrl", kModControl}, {"Shift", kModShift}, {"Alt", kModAlt}};

constexpr Name kKeys[] = {
    {"Left", kKeyLeft},     {"Right", kKeyRight},
    {"Up", kKeyUp},         {"Down", kKeyDown},
    {"Home", kKeyHome},     {"End", kKeyEnd},
    {"PageUp", kKeyPageUp}, {"PageDown", kKeyPageDown},
    {"Enter", kKeyReturn},  {"Backspace", kKeyBack},
    {"Delete", kKeyDelete}, {"Insert", kKeyInsert},
    {"Escape", kKeyEscape}, {"F2", kKeyF2},
    {"F3", kKeyF3},
};

/// The key of an accelerator that is a letter, written large or small; 0 for any other name.
unsigned LetterOf(std::string_view name, std::span<const Accelerator> keys) {
    const char letter = name.size() == 1 ? name.front() : '\0';
    const auto key = static_cast<unsigned char>(letter & ~('a' - 'A'));
    const bool isLetter = key >= 'A' && key <= 'Z';
    return isLetter && std::ranges::find(keys, key, &Accelerator::m_Key) != keys.end() ? key : 0;
}

bool ReadKey(const Word& word) {
    std::string_view name = word.m_Text;
    for (std::size_t plus; (plus = name.find('+')) != name.npos; name.remove_prefix(plus + 1)) {
        const Name* const modifier = FindName(kModifiers, name.substr(0, plus));
        if (!modifier)
            return false;
        word.m_Into.m_Modifiers |= modifier->m_Number;
    }
    const Name* const key = FindName(kKeys, name);
    word.m_Into.m_Key = key ? key->m_Number : LetterOf(name, word.m_Keys);
    return word.m_Into.m_Key != 0;
}

/// The kinds of words by what a usage calls them.
constexpr struct Kind {
    std::string_view m_Name;
    bool (*m_Read)(const Word& word);
} kKinds[] = {
    {"TEXT", &ReadText},
    {"WITH", &ReadText},
    {"NAME", &ReadText},
    {"LINE", &ReadText},
    {"ROW", &ReadNumber<0, kMostNumber>},
    {"COLUMN", &ReadNumber<0, kMostNumber>},
    {"DELTA", &ReadNumber<std::numeric_limits<int>::min(), kMostNumber>},
    {"ID", &ReadNumber<0, kMostId>},
    {"KEY", &ReadKey},
    {"COUNT", &ReadCount},
    {"line-up|line-down|page-up|page-down", &ReadScroll},
    {"--case", &ReadFlag<&ActionArguments::m_MatchCase>},
    {"--up", &ReadFlag<&ActionArguments::m_Up>},
    {"alt", &ReadFlag<&ActionArguments::m_Alt>},
};

bool ReadAs(std::string_view kind, const Word& word) {
    const auto* const found = std::ranges::find(kKinds, kind, &Kind::m_Name);
    return found != std::end(kKinds) && found->m_Read(word);
}

/// The parts of a usage: what must be there, and what may.
struct Usage {
    std::vector<std::string_view> m_Required;
    std::vector<std::string_view> m_Optional;
};

Usage PartsOf(std::string_view usage) {
    Usage parts;
    for (std::size_t blank; (blank = usage.find(' ')) != usage.npos;) {
        usage.remove_prefix(blank + 1);
        const std::string_view part = usage.substr(0, usage.find(' '));
        if (part.starts_with('['))
            parts.m_Optional.push_back(part.substr(1, part.size() - 2));
        else
            parts.m_Required.push_back(part);
    }
    return parts;
}

/// Reads a word as one of the parts that may be there, each once. One in small letters or with
/// dashes is its own word.
bool ReadOptional(std::vector<std::string_view>& parts, const Word& word) {
    for (std::size_t i = 0; i < parts.size(); ++i) {
        const bool isOwnWord = parts[i].front() < 'A' || parts[i].front() > 'Z';
        if ((isOwnWord && parts[i] != word.m_Text) || !ReadAs(parts[i], word))
            continue;
        parts.erase(parts.begin() + static_cast<std::ptrdiff_t>(i));
        return true;
    }
    return false;
}

} // namespace

ActionArguments ReadArguments(std::string_view usage, std::span<const std::string> words,
                              std::span<const Accelerator> keys) {
    ActionArguments arguments;
    Usage parts = PartsOf(usage);
    bool good = words.size() > parts.m_Required.size();
    for (std::size_t i = 1; good && i < words.size(); ++i) {
        const Word word{words[i], keys, arguments};
        good = i <= parts.m_Required.size() ? ReadAs(parts.m_Required[i - 1], word)
                                            : ReadOptional(parts.m_Optional, word);
    }
    if (!good)
        throw ToolError(ExitCode::no, "this isn't: " + std::string(usage));
    return arguments;
}
