/// A compiled expression.
#pragma once

#include "byte_set.h"
#include "reg_node.h"

#include <array>
#include <cstddef>
#include <memory>
#include <span>
#include <string>
#include <string_view>

/// How many of each thing a program holds.
struct RegCounts {
    std::size_t size = 1; ///< bytes of the compact encoding, its first byte included
    std::size_t nodes = 0;
    std::size_t sets = 0;
    std::size_t letters = 0; ///< characters of all EXACTLY nodes
};

/// The nodes with their sets and texts, in one piece of memory of exactly their size.
class RegCode {
public:
    RegCode() = default;
    /// Nodes and sets begin in their default state, texts are left undefined.
    explicit RegCode(const RegCounts& counts);

    std::span<RegNode> Nodes() { return {m_nodes, m_counts.nodes}; }
    std::span<const RegNode> Nodes() const { return {m_nodes, m_counts.nodes}; }
    ByteSet& Set(std::size_t index) { return m_sets[index]; }
    const ByteSet& Set(std::size_t index) const { return m_sets[index]; }
    char* Letters() { return m_letters; }

    const RegNode& Node(std::size_t place) const { return m_nodes[place]; }
    const char* Text(const RegNode& exactly) const { return m_letters + exactly.operand; }

    /// The bytes that can stand next in the subject if a match is to go on from a place. NUL stands
    /// for the subject's end. Each place has one, all known after linking.
    ByteSet& First(std::size_t place) { return m_firsts[place]; }
    const ByteSet& First(std::size_t place) const { return m_firsts[place]; }

    /// Where a try begins, known after linking.
    std::uint16_t Entry() const { return m_entry; }
    void SetEntry(std::uint16_t entry) { m_entry = entry; }

private:
    RegCounts m_counts;
    std::unique_ptr<std::byte[]> m_memory;
    ByteSet* m_firsts = nullptr;
    ByteSet* m_sets = nullptr;
    RegNode* m_nodes = nullptr;
    char* m_letters = nullptr;
    std::uint16_t m_entry = 0;
};

/// One compiled expression with the pointers of its last match.
class CRegProgram {
public:
    static constexpr int kPointers = 10;

    /// Start and end in the subject of the match (index 0) and of groups 1 to 9, null if not
    /// matched.
    std::array<const char*, kPointers> StartPointers{};
    std::array<const char*, kPointers> EndPointers{};

    unsigned char FirstChar = 0;    ///< every match starts with it; 0 if none is known
    bool Anchored = false;          ///< the expression has one branch, which begins with "^"
    const char* MustHave = nullptr; ///< a text that every match contains, in `Program`, or null
    std::size_t MustLength = 0;

    RegCode Program;
    std::size_t Size = 0; ///< bytes of the program in the compact encoding
    bool Valid = false;   ///< compilation succeeded
    bool HasGroups = false;
    int GroupCount = -1; ///< pointers set by the last match, less 1

    void ClearPointers();
    /// Counts the pointers that are set, for `GroupCount`.
    void CountGroups();
};

/// The program as text, one word a node.
std::string DumpRegProgram(const RegCode& code);

/// Walks over a program that may be in the making. Without one, in the pass that only counts, there
/// are no nodes and no ways on.
class CRegProgramAccessor {
protected:
    explicit CRegProgramAccessor(RegCode* code) : m_code(code) {}
    ~CRegProgramAccessor() = default;

    bool HasCode() const { return m_code != nullptr; }
    RegCode& Code() { return *m_code; }
    RegNode& NodeAt(RegPlace place) { return m_code->Nodes()[static_cast<std::size_t>(place)]; }

    /// The node behind `place`, `kNoPlace` if there is none.
    RegPlace NextOf(RegPlace place);

private:
    RegCode* m_code;
};
