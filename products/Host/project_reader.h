/// ProjectReader: block text as a project.
#pragma once

#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "project.h"
#include "project_file.h"
#include "project_scanner.h"

/// Reads a project file. What it doesn't understand goes to the kept items of the block in which it
/// stands, and to the problems.
class ProjectReader {
public:
    /// @param file holds the bytes as long as a text of the project refers to them
    ProjectReader(std::shared_ptr<const std::string> file, std::string_view bytes,
                  std::vector<ProjectProblem>& problems)
        : m_File(std::move(file)), m_Bytes(bytes), m_Problems(problems), m_Scanner(bytes) {}

    /// Reads all. @return why it is no project; empty: it is one
    std::string Read(Project& project);

private:
    struct File {
        Project& m_Project;
        int m_Format = 1;
        bool m_HasProject = false;
    };
    struct Text {
        AString* m_Text; ///< null: lines are counted only
        std::size_t m_LineCount = 0;
    };

    /// Bits of the rows of a block that were met.
    struct Met {
        std::uint32_t m_Items = 0;
        std::uint32_t m_Blocks = 0;
    };
    /// An item that a block may hold. Names differ from those of the block's other items.
    template <class Target>
    struct ItemRow {
        std::u16string_view m_Name;
        bool (*m_Take)(Target& target, const io::CBlock_item& item); ///< false: of a wrong type
        bool m_IsMany;
    };
    template <class Target>
    struct BlockRow {
        std::u16string_view m_Name;
        void (ProjectReader::*m_Read)(Target& target); ///< begins in front of the block
        bool m_IsMany;
    };
    template <class Target>
    struct Rows {
        std::u16string_view m_Name; ///< of the block; empty: the file itself
        std::span<const ItemRow<Target>> m_Items;
        std::span<const BlockRow<Target>> m_Blocks;
    };
    struct Tables;
    friend AString ReadTextBody(std::string_view body);

    template <class Target>
    void ReadBlock(Target& target, const Rows<Target>& rows, KeptItems& kept);
    template <class Target>
    void ReadItems(Target& target, const Rows<Target>& rows, KeptItems& kept);
    template <class Target>
    void ReadInnerBlock(Target& target, const Rows<Target>& rows, KeptItems& kept, Met& met);
    template <class Target>
    void ReadItem(Target& target, const Rows<Target>& rows, KeptItems& kept, Met& met);
    template <class Target>
    static std::string TakeItem(Target& target, const Rows<Target>& rows,
                                const io::CBlock_item& item, Met& met);
    void EndBlock(std::u16string_view name, KeptItems& kept);
    void ReadQuoted(KeptItems& kept);

    void ReadProject(File& file);
    void ReadDesign(File& file);
    void ReadInstance(ProjectDesign& design);
    void ReadScript(ProjectDesign& design);
    void ReadNetlist(ProjectDesign& design) { ReadText(design.m_Netlist); }
    void ReadScriptText(ProjectScript& script) { ReadText(script.m_Text); }
    void ReadText(ProjectText& text);
    void PassIndex(File& file);

    void Report(int line, std::string message) { m_Problems.push_back({line, std::move(message)}); }
    /// Keeps what was read since an offset.
    void Keep(std::size_t offset, KeptItems& kept);

    static constexpr std::size_t kNoEnd = static_cast<std::size_t>(-1);

    std::shared_ptr<const std::string> m_File;
    std::string_view m_Bytes;
    std::vector<ProjectProblem>& m_Problems;
    ProjectScanner m_Scanner;
    std::size_t m_BlockEnd = kNoEnd; ///< where the end of the block read last stands
};

/// The text of a block's items that are lines. What is no line is passed over.
AString ReadTextBody(std::string_view body);
