/// Regular expressions for colouring.
#pragma once

#include "quorel_export.h"
#include "reg_error_handler.h"
#include "reg_facts.h"
#include "reg_subject.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

class RegCode;
struct RegEngine;

/// Bounds of the matcher's work and memory. The defaults suit everyone; tests make them tiny.
struct RegLimits {
    std::size_t waste = 4096; ///< steps of failed tries on one subject before the thorough way
    std::size_t depth = 256;  ///< open choices of a try before the thorough way; 256 at most
    std::size_t block = 128 * 1024;            ///< characters whose states the thorough way keeps
    std::size_t cache = 256 * 1024;            ///< bytes of its automaton before that starts afresh
    std::size_t notes = std::size_t{16} << 20; ///< bytes of each of its two lists of notes
};

/// One compiled expression and its last match.
///
/// Syntax: branches separated by `|`, each a sequence of atoms with an optional `*`, `+` or `?`.
/// Atoms are
/// `(...)` (nine at most), `.`, `^`, `$`, `\<` and `\>` (start and end of a word), `[...]`,
/// `[^...]`, a backslash with the character that it makes literal, and any other character. Bytes,
/// no locale.
///
/// The match is the leftmost one; among those, alternatives are preferred from left to right, and
/// repetitions take as much as they can. Any search takes time linear in the subject and bounded
/// memory, whatever the expression: below 64 MB for subjects up to 256 million characters. That is
/// the sum of the limits below at their defaults and of three times the 8 MB of states that a block
/// may add, as RegViability cuts the subject.
///
/// An object serves one caller at a time, operations marked const included (they use its scratch
/// memory).
class QUOREL_API CRegExp {
public:
    static constexpr int kMaxGroup = 9;

    /// Compiles `expression`, which ends at its first NUL. With `ignoreCase`, each letter outside
    /// of a class becomes a class of its two forms first. A null pointer is error 10.
    explicit CRegExp(const char* expression, bool ignoreCase = false);
    explicit CRegExp(std::string_view expression, bool ignoreCase = false);
    CRegExp(CRegExp&&) noexcept;
    CRegExp& operator=(CRegExp&&) noexcept;
    ~CRegExp();

    /// Whether the expression compiled. One that didn't never matches.
    bool IsValid() const;

    /// The last error's text and code, empty and 0 without any: what kept the expression from
    /// compiling, or 1 after a match on a null pointer.
    const char* LastError() const { return m_errors.LastError(); }
    int LastErrorCode() const { return m_errors.LastErrorCode(); }

    /// Finds the leftmost match in `subject`, which ends at its first NUL, and stores it with its
    /// groups.
    bool Match(const char* subject);
    bool Match(std::string_view subject);

    /// Offset and length of the last match (index 0) or of its group 1 to 9. Indices beyond are
    /// taken as the nearest of these. A group that took no part, or no match, gives -1 and 0. If a
    /// group was passed more than once its last time counts.
    std::ptrdiff_t SubStart(int index) const;
    std::ptrdiff_t SubLength(int index) const;

    /// Number of groups that took part in the last match; -1 if there is no match.
    int GroupCount() const;

    /// Finds the leftmost match in the tail of `subject` that begins at `tailStart`, without
    /// groups. The tail counts as a whole text: "^" holds at its start, and no character stands
    /// before it. The span's start is an offset in the subject. The stored match stays. No span if
    /// `tailStart` is behind the end.
    RegSpan MatchFrom(const RegSubject& subject, std::size_t tailStart = 0) const;

    /// Tries for a match that begins at `at` in the tail that begins at `tailStart`, as above.
    /// Gives its length or -1. Valid: `tailStart` <= `at` <= length of the subject, else -1.
    /// Allocates nothing unless the expression proves hard on this subject.
    std::ptrdiff_t MatchAt(const RegSubject& subject, std::size_t at, std::size_t tailStart) const;

    /// The start alone of MatchFrom's span, -1 if there is none, and whether MatchAt gives a
    /// length. What lies in a match costs as tries in vain do, so that calls that ask for the same
    /// match again and again stay linear in the subject all together.
    std::ptrdiff_t StartFrom(const RegSubject& subject, std::size_t tailStart = 0) const;
    bool MatchesAt(const RegSubject& subject, std::size_t at, std::size_t tailStart) const;

    /// The character with which every match must start, 0 if none is known.
    unsigned char FirstChar() const;
    /// Whether the expression has one branch only, and that begins with "^".
    bool Anchored() const;
    /// A text that every match must contain, empty if none is known.
    std::string_view MustHave() const;
    /// Bytes of the program in its compact encoding; 32766 at most.
    std::size_t Size() const;

    /// Facts for scanners, worked out anew with each call. All empty for an invalid expression.
    RegFacts Facts() const;

    /// The compiled program, for those who put several together. Empty for an invalid expression.
    const RegCode& Code() const;

    /// The program, one word a node: `index:NAME operand>next`. Empty for an invalid expression.
    std::string Dump() const;

    /// Steps that all searches so far have taken: nodes visited and characters passed.
    std::uint64_t Steps() const;

    /// Bounds the searches to come, and forgets what earlier ones have learnt.
    void SetLimits(const RegLimits& limits) const;

    /// Gives back the memory that hard searches have left for later ones. What they learnt of a
    /// subject is learnt anew.
    void Release() const;
    /// The number of expressions in the process that hold such memory.
    static std::size_t HolderCount();

private:
    void Compile(std::string_view expression, bool ignoreCase);

    CRegErrorHandler m_errors;
    const char* m_subject = nullptr;
    std::unique_ptr<RegEngine> m_engine;
};
