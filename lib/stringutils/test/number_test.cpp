// Numbers into text and out of it, with the C library in its "C" locale as the twin.

#include <climits>
#include <cmath>
#include <cstdlib>
#include <gtest/gtest.h>
#include <initializer_list>

#include "text_helpers.h"

namespace {

std::string Printed(const char* format, auto... args) {
    std::string text(static_cast<std::size_t>(std::snprintf(nullptr, 0, format, args...)), '\0');
    std::snprintf(text.data(), text.size() + 1, format, args...);
    return text;
}

/// Every value in all flags and sizes of each conversion.
template <class Value>
void CompareWithC(std::initializer_list<const char*> conversions,
                  std::initializer_list<Value> values) {
    for (const char* flags : {"", "-", "+", " ", "0", "#", "-0", "+ ", "#0", "+#-", " 0"}) {
        for (const char* size : {"", "1", "12", ".0", ".3", "9.2", ".25", "30.10"}) {
            for (const char* conversion : conversions) {
                const std::string format = std::string("%") + flags + size + conversion;
                for (const Value value : values)
                    ASSERT_EQ(U8(AString().Format(S(format).c_str(), value)),
                              Printed(format.c_str(), value))
                        << format << " of " << value;
            }
        }
    }
}

TEST(FormatTest, NumbersAreAsInC) {
    CompareWithC<int>({"d", "i", "u", "o", "x", "X", "hd", "hhu", "hx", "hho"},
                      {0, 1, -1, 8, 255, 65536, -129, INT_MAX, INT_MIN});
    CompareWithC<double>({"e", "E", "f", "F", "g", "G"},
                         {0.0,     -0.0,     1.0,      -1.5,      0.1,
                          2.5,     99999.95, 1e-5,     1.5e-4,    1e100,
                          -1e-300, 1e16,     123456.,  5e-324,    1.7976931348623157e308,
                          0.045,   1e5,      INFINITY, -INFINITY, NAN});
    for (const char* format : {"%.1074f", "%.1500f", "%.1200e", "%#.1200g", "%.1500g", "%1500.3f"})
        EXPECT_EQ(U8(AString().Format(S(format).c_str(), 5e-324)), Printed(format, 5e-324));
    for (const char* format : {"%a", "%A", "%.2a", "%+12a", "%#.0a", "%020a", "%.1200a"})
        EXPECT_EQ(U8(AString().Format(S(format).c_str(), 1.875)), Printed(format, 1.875)); // 1.e
}

TEST(FormatTest, TextsCharactersAndTheRest) {
    const std::int64_t big = 5000000000;
    AString own = u"own";
    AString work;
    const std::pair<AString, const char*> rows[] = {
        {work.Format(u"%s|%8s|%-8s|%.2s|%8.2s", u"Ωhm", u"Ωhm", u"Ωhm", u"Ωhm", u"Ωhm"),
         "Ωhm|     Ωhm|Ωhm     |Ωh|      Ωh"},
        {work.Format(u"%6s|%S|%-3hs|", "caf\xE9", "\x80", std::string("a")), "  café|€|a  |"},
        {work.Format(u"%s %s", own, static_cast<const char16_t*>(nullptr)), "own (null)"},
        {work.Format(u"%c%c%C%3c|%-3c|%c", u'Ω', '\xB5', 0xB5, 'x', 'y', 0x41), "Ωµµ  x|y  |A"},
        {work.Format(u"%*d|%-*d|%*d|%.*f|%.*f", 5, 1, 5, 2, -5, 3, 2, 1.0, -1, 1.0),
         "    1|2    |3    |1.00|1.000000"},
        {work.Format(u"%lld %I64d %ld %zu %jx %I32d", big, big, big, big, big, big),
         "5000000000 5000000000 5000000000 5000000000 12a05f200 705032704"},
        {work.Format(u"%d %u %x", big, static_cast<unsigned char>(200), static_cast<short>(-1)),
         "5000000000 200 ffffffff"},
        {work.Format(u"%p", reinterpret_cast<const void*>(0xBEEF)), "000000000000BEEF"},
        {work.Format(u"a%nb%d", &big, 7), "ab7"},
        {work.Format(u"100%% %y %5"), "100% %y %5"},
        {work.Format(u"%d %s %f %x", 2.5, 7, 3, u"text"), "2.5 7 3.000000 text"},
        {own.Format(u"<%s%s>", own.c_str(), own), "<ownown>"}};
    for (const auto& [made, expected] : rows)
        EXPECT_EQ(U8(made), expected);
    EXPECT_EQ(work.Format(u"%s%5000d", AString(5000, u'x'), 1).size(), 10000u);
}

TEST(ParseTest, NumbersAreAsInC) {
    std::vector<AString> texts;
    AString("| |12| 12.5  |12.5x|+1|-1|+-1|--1|1.|.5|.|1e|1e5|1e+5|1E-5|1e+|1 2|1.5.2|0x|0x1|"
            "0X1F|0x1.8p1|0x.8|0x.|0x1p|0x1p-3x|inf|-INFINITY|infinit|infinityx|nan|NaN(1a_)|"
            "nan(|nanx|1e400|-1e400|1e-400|4.9e-324|2.4703282292062327e-324|1.797693134862315"
            "9e308|0e999999999999999999|0.0000000000000000000000000000000001e400|100000000000"
            "0e-400|0x1p5000|0x0.0001p-5000|1,5|0b1|1_0|\t\n1\r|9007199254740993|0.1e1 |00012"
            "|1e0x")
        .Split(u"|", texts);
    for (const AString& wide : texts) {
        const std::string narrow = U8(wide);
        const char* text = narrow.c_str();
        char* end = nullptr;
        const auto isNumber = [&] {
            return end != text && std::string(end).find_first_not_of(" \t\r\n") == narrow.npos;
        };
        const double expected = std::strtod(text, &end);
        double value = 42;
        EXPECT_EQ(wide.ToDouble(value), isNumber()) << text;
        EXPECT_EQ(std::isnan(value), isNumber() && std::isnan(expected)) << text;
        EXPECT_TRUE(std::isnan(value) || value == (isNumber() ? expected : 42)) << text;
        for (const int base : {0, 2, 10, 16, 36}) {
            const long whole = std::strtol(text, &end, base);
            long wholeValue = 42;
            EXPECT_EQ(wide.ToLong(wholeValue, base), isNumber()) << text << " in " << base;
            EXPECT_EQ(wholeValue, isNumber() ? whole : 42) << text << " in " << base;
        }
    }
}

TEST(ParseTest, WholeNumbersAreCutToTheRange) {
    const std::tuple<const char*, int, long> rows[] = {
        {"9223372036854775807", 10, LONG_MAX},
        {"9223372036854775808", 10, LONG_MAX},
        {"-9223372036854775808", 10, LONG_MIN},
        {"-9223372036854775809", 10, LONG_MIN},
        {"99999999999999999999", 10, LONG_MAX},
        {"-fffffffffffffffff", 16, LONG_MIN},
        {"10000000000000000000000000000000000000000000000000000000000000001", 2, LONG_MAX}};
    for (const auto& [text, base, wantedValue] : rows) {
        long value = 0;
        EXPECT_TRUE(S(text).ToLong(value, base));
        EXPECT_EQ(value, wantedValue) << text;
    }
    long value = 42;
    for (const int base : {-1, 1, 37})
        EXPECT_FALSE(AString(u"1").ToLong(value, base));
    EXPECT_TRUE(AString(u"\u2003\u00A012\u3000").ToLong(value));
    EXPECT_EQ(value, 12);
}

} // namespace
