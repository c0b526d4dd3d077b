#include "reg_program.h"

#include <algorithm>

namespace {

/// Printable ASCII as it is, the rest as `\xNN`; in a class also what would be misread there.
void AppendByte(std::string& text, unsigned byte, std::string_view special) {
    constexpr std::string_view kDigits = "0123456789ABCDEF";
    const auto c = static_cast<char>(byte);
    if (byte < ' ' || byte > '~' || special.find(c) != std::string_view::npos)
        text += {'\\', 'x', kDigits[byte >> 4], kDigits[byte & 15]};
    else
        text += c;
}

std::string SetText(const ByteSet& set) {
    std::string text = "[";
    for (unsigned first = set.Next(0); first < 256;) {
        const unsigned end = (~set).Next(first);
        const unsigned last = end - 1;
        AppendByte(text, first, "]-^\\");
        if (last > first) {
            text += last - first > 1 ? "-" : "";
            AppendByte(text, last, "]-^\\");
        }
        first = set.Next(end);
    }
    return text + "]";
}

std::string OperandText(const RegCode& code, const RegNode& node, RegOperand operand) {
    std::string text;
    switch (operand) {
    case RegOperand::Set:
        return SetText(code.Set(node.operand));
    case RegOperand::Text:
        for (const char c : std::string_view(code.Text(node), node.length))
            AppendByte(text, static_cast<unsigned char>(c), "\"\\");
        return "\"" + text + "\"";
    case RegOperand::Group:
        return std::to_string(node.value);
    default:
        return "";
    }
}

} // namespace

std::string DumpRegProgram(const RegCode& code) {
    std::string text;
    const auto nodes = code.Nodes();
    for (std::size_t place = 0; place < nodes.size(); ++place) {
        const RegNode& node = nodes[place];
        const auto* const row = std::find_if(
            kRegOps.begin(), kRegOps.end(), [&node](const RegOpRow& r) { return r.op == node.op; });
        text += (place == 0 ? "" : " ") + std::to_string(place) + ":" + row->name +
                OperandText(code, node, row->operand);
        if (node.next != 0)
            text += ">" + std::to_string(static_cast<long>(place) + node.next);
    }
    return text;
}
