#include "project_reader.h"

#include <algorithm>
#include <cmath>
#include <optional>

#include "block_named_value.h"
#include "block_vec.h"
#include "project_writer.h"

namespace {

// --- Values of items ---

template <class Value>
bool TakeValue(const io::CBlock_item& item, Value& value) {
    return item.IsNamedValue() && static_cast<const io::CBlock_named_value&>(item).Get(value);
}

bool IsUnit(const io::CToken& token) {
    const double number = token.GetNumber();
    return token.IsNumber() && number >= 0 && number <= 0xFFFF && number == std::floor(number);
}

/// A text stands as one, or as the vector of its units, which go to `room`.
std::optional<std::u16string_view> GetText(const io::CBlock_item& item, AString& room) {
    if (item.IsNamedValue()) {
        const io::CToken& value = static_cast<const io::CBlock_named_value&>(item).GetValue();
        return value.IsText() ? std::optional(value.GetTextView()) : std::nullopt;
    }
    if (!item.IsVec())
        return std::nullopt;
    const auto& units = static_cast<const io::CBlock_vec&>(item);
    if (!std::all_of(units.begin(), units.end(), IsUnit))
        return std::nullopt;
    for (const io::CToken& unit : units)
        room += static_cast<char16_t>(unit.GetNumber());
    return room;
}

bool TakeText(const io::CBlock_item& item, AString& text) {
    AString room;
    const auto found = GetText(item, room);
    if (found)
        text = *found;
    return found.has_value();
}

bool TakePlacement(const io::CBlock_item& item, ProjectPlacement& placement) {
    if (!item.IsFunc() || !ProjectPlacement::IsOne(static_cast<const io::CBlock_func&>(item)))
        return false;
    auto* const views = new io::CBlock_func(static_cast<const io::CBlock_func&>(item));
    placement = ProjectPlacement(io::CBlock_ptr<io::CBlock_func>(views));
    return true;
}

std::string Quote(std::u16string_view name) {
    constexpr std::size_t kMostShown = 60;
    const bool isLong = name.size() > kMostShown;
    return "'" + AString(name.substr(0, kMostShown)).ToCString(AString::kUtf8) +
           (isLong ? "...'" : "'");
}

} // namespace

// --- The form: what each block may hold ---

struct ProjectReader::Tables {
    template <auto Member, class Target>
    static bool TextOf(Target& target, const io::CBlock_item& item) {
        return TakeText(item, target.*Member);
    }
    template <auto Member, class Target>
    static bool PlacementOf(Target& target, const io::CBlock_item& item) {
        return TakePlacement(item, target.*Member);
    }
    template <auto Member, class Target>
    static bool ValueOf(Target& target, const io::CBlock_item& item) {
        return TakeValue(item, target.*Member);
    }
    static bool NameOf(File& file, const io::CBlock_item& item) {
        return TakeText(item, file.m_Project.m_Name);
    }
    static bool LineOf(Text& text, const io::CBlock_item& item);

    static constexpr BlockRow<File> kFileBlocks[] = {
        {u"Project", &ProjectReader::ReadProject, false},
        {u"$base_index$", &ProjectReader::PassIndex, true},
        {u"$index$", &ProjectReader::PassIndex, true},
    };
    static constexpr Rows<File> kFile{{}, {}, kFileBlocks};

    static constexpr ItemRow<File> kProjectItems[] = {
        {u"Format", &ValueOf<&File::m_Format, File>, false},
        {u"Name", &NameOf, false},
    };
    static constexpr BlockRow<File> kProjectBlocks[] = {
        {u"Design", &ProjectReader::ReadDesign, true},
    };
    static constexpr Rows<File> kProject{u"Project", kProjectItems, kProjectBlocks};

    static constexpr ItemRow<ProjectDesign> kDesignItems[] = {
        {u"Name", &TextOf<&ProjectDesign::m_Name, ProjectDesign>, false},
    };
    static constexpr BlockRow<ProjectDesign> kDesignBlocks[] = {
        {u"Text", &ProjectReader::ReadNetlist, false},
        {u"Instance", &ProjectReader::ReadInstance, true},
        {u"Script", &ProjectReader::ReadScript, true},
    };
    static constexpr Rows<ProjectDesign> kDesign{u"Design", kDesignItems, kDesignBlocks};

    static constexpr ItemRow<ProjectInstance> kInstanceItems[] = {
        {u"Name", &TextOf<&ProjectInstance::m_Name, ProjectInstance>, false},
        {u"Netlist", &PlacementOf<&ProjectInstance::m_Placement, ProjectInstance>, false},
    };
    static constexpr Rows<ProjectInstance> kInstance{u"Instance", kInstanceItems, {}};

    static constexpr ItemRow<ProjectScript> kScriptItems[] = {
        {u"Name", &TextOf<&ProjectScript::m_Name, ProjectScript>, false},
        {u"Language", &TextOf<&ProjectScript::m_Language, ProjectScript>, false},
        {u"Use", &ValueOf<&ProjectScript::m_IsUsed, ProjectScript>, false},
        {u"Script", &PlacementOf<&ProjectScript::m_Placement, ProjectScript>, false},
    };
    static constexpr BlockRow<ProjectScript> kScriptBlocks[] = {
        {u"Text", &ProjectReader::ReadScriptText, false},
    };
    static constexpr Rows<ProjectScript> kScript{u"Script", kScriptItems, kScriptBlocks};

    static constexpr ItemRow<Text> kTextItems[] = {{u"Line", &LineOf, true}};
    static constexpr Rows<Text> kText{u"Text", kTextItems, {}};
    static constexpr Rows<Text> kKept{kKeptName, kTextItems, {}};
};

bool ProjectReader::Tables::LineOf(Text& text, const io::CBlock_item& item) {
    AString room;
    const auto line = GetText(item, room);
    if (!line)
        return false;
    if (text.m_Text) {
        if (text.m_LineCount > 0)
            *text.m_Text += u'\n';
        *text.m_Text += *line;
    }
    text.m_LineCount += 1 + static_cast<std::size_t>(std::count(line->begin(), line->end(), u'\n'));
    return true;
}

// --- Blocks ---

namespace {

/// The row of a name, or null.
template <class Row>
const Row* FindRow(std::span<const Row> rows, std::u16string_view name) {
    const auto found = std::find_if(rows.begin(), rows.end(), [&](const Row& row) {
        return io::CToken_streambuf::IsNoCaseWord(row.m_Name, name);
    });
    return found == rows.end() ? nullptr : &*found;
}

/// The bit of a row.
template <class Row>
std::uint32_t BitOf(std::span<const Row> rows, const Row& row) {
    return 1u << (&row - rows.data());
}

/// Whether an item of that row may stand there, given the bits of those that were met.
template <class Row>
bool IsFree(std::span<const Row> rows, const Row& row, std::uint32_t met) {
    return row.m_IsMany || (met & BitOf(rows, row)) == 0;
}

} // namespace

std::string ProjectReader::Read(Project& project) {
    File file{project};
    ReadItems(file, Tables::kFile, project.m_KeptBehind);
    if (!file.m_HasProject)
        return "no block 'Project' begins in it";
    if (file.m_Format > kProjectFormat || file.m_Format < 1)
        return "it is of format " + std::to_string(file.m_Format) + ", not " +
               std::to_string(kProjectFormat);
    return {};
}

template <class Target>
void ProjectReader::ReadBlock(Target& target, const Rows<Target>& rows, KeptItems& kept) {
    m_Scanner.EnterBlock();
    ReadItems(target, rows, kept);
}

/// Reads up to the end of the block, which it leaves.
template <class Target>
void ProjectReader::ReadItems(Target& target, const Rows<Target>& rows, KeptItems& kept) {
    Met met;
    for (;;) {
        switch (m_Scanner.Look()) {
        case ProjectScanner::Next::end:
            m_BlockEnd = kNoEnd;
            if (!rows.m_Name.empty())
                Report(m_Scanner.GetLine(), "the file ends inside " + Quote(rows.m_Name));
            return;
        case ProjectScanner::Next::blockEnd:
            EndBlock(rows.m_Name, kept);
            if (!rows.m_Name.empty())
                return;
            break;
        case ProjectScanner::Next::block:
            ReadInnerBlock(target, rows, kept, met);
            break;
        case ProjectScanner::Next::item:
            ReadItem(target, rows, kept, met);
            break;
        }
    }
}

template <class Target>
void ProjectReader::ReadInnerBlock(Target& target, const Rows<Target>& rows, KeptItems& kept,
                                   Met& met) {
    if (rows.m_Name != kKeptName && m_Scanner.IsBlock(kKeptName))
        return ReadQuoted(kept);
    for (const BlockRow<Target>& row : rows.m_Blocks) {
        if (IsFree(rows.m_Blocks, row, met.m_Blocks) && m_Scanner.IsBlock(row.m_Name)) {
            met.m_Blocks |= BitOf(rows.m_Blocks, row);
            return (this->*row.m_Read)(target);
        }
    }
    ReadItem(target, rows, kept, met);
}

/// Reads an item, or a block that isn't known here.
template <class Target>
void ProjectReader::ReadItem(Target& target, const Rows<Target>& rows, KeptItems& kept, Met& met) {
    const std::size_t offset = m_Scanner.GetLineStart();
    io::CBlockItemPtr item;
    if (const auto error = m_Scanner.ReadItem(item)) {
        Report(error->GetLine(), error->GetMessage().ToCString(AString::kUtf8));
    } else {
        std::string reason = TakeItem(target, rows, *item, met);
        if (reason.empty())
            return;
        Report(m_Scanner.GetLine(), std::move(reason));
    }
    Keep(offset, kept);
}

/// @return why it isn't understood; empty: it is
template <class Target>
std::string ProjectReader::TakeItem(Target& target, const Rows<Target>& rows,
                                    const io::CBlock_item& item, Met& met) {
    const std::u16string_view name = item.GetNameToken().GetTextView();
    const auto* const row = item.IsBlock() ? nullptr : FindRow(rows.m_Items, name);
    if (!row && !(item.IsBlock() && FindRow(rows.m_Blocks, name)))
        return Quote(name) + " is not known " +
               (rows.m_Name.empty() ? "outside of 'Project'" : "in " + Quote(rows.m_Name));
    if (!row || !IsFree(rows.m_Items, *row, met.m_Items)) // a block that is free was read already
        return Quote(name) + " stands here already";
    if (!row->m_Take(target, item))
        return Quote(name) + " has no value of its kind";
    met.m_Items |= BitOf(rows.m_Items, *row);
    return {};
}

/// @param name of the block; empty: there is none that could end
void ProjectReader::EndBlock(std::u16string_view name, KeptItems& kept) {
    const std::size_t offset = m_Scanner.GetStart();
    if (name.empty()) {
        m_Scanner.SkipLine();
    } else if (m_Scanner.LeaveBlock(name)) {
        m_BlockEnd = offset;
        return;
    }
    m_BlockEnd = kNoEnd;
    Report(m_Scanner.GetLine(), std::string(io::GetReadErrorMessage(io::ReadError::kBeginEnd)));
    kept.push_back({std::string(m_Scanner.GetBytesFrom(offset)), true});
}

void ProjectReader::Keep(std::size_t offset, KeptItems& kept) {
    const std::string_view bytes = m_Scanner.GetBytesFrom(offset);
    kept.push_back({std::string(bytes), !ProjectScanner::CanStandAlone(bytes)});
}

/// A kept item that stands in quotes.
void ProjectReader::ReadQuoted(KeptItems& kept) {
    const std::size_t offset = m_Scanner.GetLineStart();
    Report(m_Scanner.GetLine(), "an item that can't stand by itself");
    AString bytes;
    Text text{&bytes};
    KeptItems inner;
    ReadBlock(text, Tables::kKept, inner);
    const bool isByte =
        std::all_of(bytes.begin(), bytes.end(), [](char16_t ch) { return ch <= 0xFF; });
    if (!isByte || !inner.empty() || m_BlockEnd == kNoEnd)
        return Keep(offset, kept);
    std::string item(bytes.size(), '\0');
    std::transform(bytes.begin(), bytes.end(), item.begin(),
                   [](char16_t ch) { return static_cast<char>(ch); });
    kept.push_back({std::move(item), true});
}

void ProjectReader::ReadProject(File& file) {
    file.m_HasProject = true;
    ReadBlock(file, Tables::kProject, file.m_Project.m_Kept);
}

void ProjectReader::ReadDesign(File& file) {
    auto& design = *file.m_Project.m_Designs.emplace_back(std::make_unique<ProjectDesign>());
    ReadBlock(design, Tables::kDesign, design.m_Kept);
}

void ProjectReader::ReadInstance(ProjectDesign& design) {
    auto& instance = *design.m_Instances.emplace_back(std::make_unique<ProjectInstance>());
    ReadBlock(instance, Tables::kInstance, instance.m_Kept);
}

void ProjectReader::ReadScript(ProjectDesign& design) {
    auto& script = *design.m_Scripts.emplace_back(std::make_unique<ProjectScript>());
    ReadBlock(script, Tables::kScript, script.m_Kept);
}

/// An index tells where blocks stand; it would be wrong in a file that is written anew.
void ProjectReader::PassIndex(File&) {
    io::CBlockItemPtr index;
    m_Scanner.ReadItem(index);
}

// --- Texts ---

namespace {

/// The lines of a block's items without what stands on the line of its begin and of its end.
std::string_view TrimBody(std::string_view body) {
    constexpr std::string_view kBlanks = " \t";
    body.remove_suffix(body.size() - (body.find_last_not_of(kBlanks) + 1));
    const std::size_t first = std::min(body.find_first_not_of(kBlanks), body.size());
    if (body.substr(first).starts_with("\r\n"))
        body.remove_prefix(first + 2);
    else if (body.substr(first).starts_with('\n') || body.substr(first).starts_with('\r'))
        body.remove_prefix(first + 1);
    return body;
}

} // namespace

void ProjectReader::ReadText(ProjectText& text) {
    m_Scanner.EnterBlock();
    const std::size_t begin = m_Scanner.GetOffset();
    Text lines{nullptr};
    KeptItems kept;
    ReadItems(lines, Tables::kText, kept);
    const bool isSound = kept.empty() && m_BlockEnd != kNoEnd;
    const std::string_view body = m_Bytes.substr(begin, isSound ? m_BlockEnd - begin : kNoEnd);
    text = isSound ? ProjectText(m_File, TrimBody(body), lines.m_LineCount)
                   : ProjectText(ReadTextBody(body));
    text.m_Kept = std::move(kept);
}

AString ReadTextBody(std::string_view body) {
    std::vector<ProjectProblem> problems;
    ProjectReader reader(nullptr, body, problems);
    AString text;
    ProjectReader::Text lines{&text};
    KeptItems kept;
    reader.ReadItems(lines, ProjectReader::Tables::kText, kept);
    return text;
}
