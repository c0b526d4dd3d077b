/// A file of blocks to measure with: 200,000 leaf items in 25,000 blocks, 7 MB of text.
#pragma once

#include <array>
#include <cstdint>
#include <cstdio>
#include <string>

namespace work {

inline constexpr int kLeafItems = 200000;

/// Writes the same text each time: ten groups of 25 components of 100 items; an item has three
/// numbers, two texts, a function of three arguments, one of two, and a vector of ten numbers.
class BlockText {
public:
    static std::string Make() {
        BlockText maker;
        maker.Nested("Project", 0, 10, "Group_", [&](int depth, const std::string& group) {
            maker.Nested(group, depth, 25, "Component_", [&](int inner, const std::string& name) {
                maker.Nested(name, inner, 100, "Item_",
                             [&](int leaf, const std::string& item) { maker.Leaf(item, leaf); });
            });
        });
        return std::move(maker.mText);
    }

private:
    unsigned Below(unsigned bound) {
        mSeed = mSeed * 6364136223846793005U + 1442695040888963407U;
        return static_cast<unsigned>(mSeed >> 33) % bound;
    }

    template <class... Args>
    static std::string Print(const char* format, Args... args) {
        char line[64];
        return std::string(
            line, static_cast<std::size_t>(std::snprintf(line, sizeof line, format, args...)));
    }

    std::string Number() {
        switch (Below(4)) {
        case 0:
            return Print("%u", Below(100000));
        case 1:
            return Print("%u.%u", Below(1000), 1 + Below(9));
        case 2:
            return Print("%u.%03ue-%02u", 1 + Below(9), 1 + Below(999), 1 + Below(12));
        default:
            return Print("-%u.%02u", Below(100), 1 + Below(99));
        }
    }

    std::string Text() {
        static constexpr std::array<const char*, 12> kWords{
            "bias", "amp",    "stage", "load",   "mirror",  "ring",
            "vco",  "filter", "clock", "supply", "typical", "ground"};
        std::string text = kWords[Below(12)];
        for (unsigned i = Below(4); i > 0; --i)
            text.append(" ").append(kWords[Below(12)]);
        return "'" + text + "'";
    }

    void Line(int depth, const std::string& text) {
        mText.append(static_cast<std::size_t>(depth), '\t').append(text) += '\n';
    }

    template <class Child>
    void Nested(const std::string& name, int depth, int count, const char* prefix, Child child) {
        Line(depth, "$begin '" + name + "'");
        for (int i = 0; i < count; ++i)
            child(depth + 1, prefix + std::to_string(i));
        Line(depth, "$end '" + name + "'");
    }

    void Leaf(const std::string& name, int depth) {
        Line(depth, "$begin '" + name + "'");
        for (const char* number : {"x=", "y=", "width="})
            Line(depth + 1, number + Number());
        Line(depth + 1, "t=" + Text());
        Line(depth + 1, "label=" + Text());
        Line(depth + 1,
             "f(a=" + Number() + ", b=" + Text() + Print(", '%u.%umm')", Below(100), Below(10)));
        Line(depth + 1, Print("date(year=%u, month=%u)", 1990 + Below(35), 1 + Below(12)));
        std::string vector = "v[10: " + Number();
        for (int i = 1; i < 10; ++i)
            vector += ", " + Number();
        Line(depth + 1, vector + "]");
        Line(depth, "$end '" + name + "'");
    }

    std::string mText;
    std::uint64_t mSeed = 77;
};

} // namespace work
