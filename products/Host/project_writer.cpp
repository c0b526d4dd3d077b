#include "project_writer.h"

#include <algorithm>
#include <array>
#include <charconv>

#include "code_page.h"
#include "project_file.h"

namespace {

/// The longest size of a vector that reads.
constexpr std::size_t kMostSize = 65535;

/// The letter behind a backslash that stands for a character below 32, or 0.
constexpr std::string_view kEscapeLetters{"0\0\0\0\0\0\0abtnvfr", 14};

/// The characters behind a backslash in quoted text; empty for one that stands as it is.
char EscapeOf(char16_t ch) {
    if (ch == u'\'' || ch == u'\\')
        return static_cast<char>(ch);
    return ch < kEscapeLetters.size() ? kEscapeLetters[ch] : '\0';
}

class Writer {
public:
    explicit Writer(std::string& out) : m_Out(out) {}

    template <class Body>
    void Block(std::string_view name, Body body) {
        Line("$begin '").append(name).append("'\n");
        ++m_Depth;
        body();
        --m_Depth;
        Line("$end '").append(name).append("'\n");
    }
    void Value(std::string_view name, std::string_view value) {
        Line(name).append(1, '=').append(value).append(1, '\n');
    }
    void Text(std::string_view name, std::u16string_view text);
    void Lines(std::u16string_view text);
    void Placement(std::string_view name, const ProjectPlacement& placement);
    void Body(const ProjectText& text);
    void Kept(const KeptItems& kept);

private:
    std::string& Line(std::string_view start) { return m_Out.append(m_Depth, '\t').append(start); }
    void Quoted(std::u16string_view text);
    void Units(std::u16string_view text);

    std::string& m_Out;
    std::size_t m_Depth = 0;
};

void Writer::Text(std::string_view name, std::u16string_view text) {
    Line(name);
    IsQuotable(text) ? Quoted(text) : Units(text);
    m_Out += '\n';
}

void Writer::Quoted(std::u16string_view text) {
    m_Out += "='";
    while (!text.empty()) {
        const auto special = std::find_if(text.begin(), text.end(),
                                          [](char16_t ch) { return EscapeOf(ch) != '\0'; });
        const auto plain = static_cast<std::size_t>(special - text.begin());
        codepage::AppendUtf16ToUtf8(text.substr(0, plain), m_Out);
        text.remove_prefix(plain);
        if (text.empty())
            break;
        (m_Out += '\\') += EscapeOf(text.front());
        text.remove_prefix(1);
    }
    m_Out += '\'';
}

void Writer::Units(std::u16string_view text) {
    m_Out.append(1, '[').append(std::to_string(std::min(text.size(), kMostSize))).append(1, ':');
    for (std::size_t i = 0; i < text.size(); ++i)
        m_Out.append(i == 0 ? " " : ", ").append(std::to_string(unsigned{text[i]}));
    m_Out += ']';
}

void Writer::Lines(std::u16string_view text) {
    while (!text.empty()) {
        const std::size_t end = text.find(u'\n');
        Text("Line", text.substr(0, end));
        if (end == text.npos)
            return;
        text.remove_prefix(end + 1);
        if (text.empty())
            Text("Line", {}); // behind the last line end
    }
}

void Writer::Placement(std::string_view name, const ProjectPlacement& placement) {
    io::CBlock_func views{AString(std::string(name))};
    if (placement.GetViews())
        views = *placement.GetViews();
    views.SetName(AString(std::string(name)));
    AString text;
    views.ToString(text);
    Line(text.ToCString(AString::kUtf8)) += '\n';
}

void Writer::Body(const ProjectText& text) {
    Block("Text", [&] {
        if (!text.IsOfFile())
            Lines(text.Get());
        m_Out += text.GetBody();
        if (!text.GetBody().empty() && m_Out.back() != '\n')
            m_Out += '\n';
        Kept(text.m_Kept);
    });
}

void Writer::Kept(const KeptItems& kept) {
    for (const KeptItem& item : kept) {
        if (item.m_IsQuoted) {
            std::u16string units;
            for (const char byte : item.m_Bytes)
                units += static_cast<unsigned char>(byte);
            Block("Kept", [&] { Lines(units); });
        } else {
            m_Out.append(item.m_Bytes).append(1, '\n');
        }
    }
}

void AppendInstance(const ProjectInstance& instance, Writer& writer) {
    writer.Block("Instance", [&] {
        writer.Text("Name", instance.m_Name);
        writer.Placement("Netlist", instance.m_Placement);
        writer.Kept(instance.m_Kept);
    });
}

void AppendScript(const ProjectScript& script, Writer& writer) {
    writer.Block("Script", [&] {
        writer.Text("Name", script.m_Name);
        writer.Text("Language", script.m_Language);
        writer.Value("Use", script.m_IsUsed ? "true" : "false");
        writer.Placement("Script", script.m_Placement);
        writer.Body(script.m_Text);
        writer.Kept(script.m_Kept);
    });
}

void AppendDesign(const ProjectDesign& design, Writer& writer) {
    writer.Block("Design", [&] {
        writer.Text("Name", design.m_Name);
        writer.Body(design.m_Netlist);
        for (const auto& instance : design.m_Instances)
            AppendInstance(*instance, writer);
        for (const auto& script : design.m_Scripts)
            AppendScript(*script, writer);
        writer.Kept(design.m_Kept);
    });
}

} // namespace

bool IsQuotable(std::u16string_view text) {
    // U+FFFF is what the reader of tokens has for the end.
    return codepage::IsValidUtf16(text) && text.find(u'\xFFFF') == text.npos;
}

void AppendProject(const Project& project, std::string& out) {
    Writer writer(out);
    writer.Block("Project", [&] {
        writer.Value("Format", std::to_string(kProjectFormat));
        writer.Text("Name", project.m_Name);
        for (const auto& design : project.m_Designs)
            AppendDesign(*design, writer);
        writer.Kept(project.m_Kept);
    });
    writer.Kept(project.m_KeptBehind);
}
