/// A slow matcher that follows the rules word by word, to compare the engine with.
#pragma once

#include <algorithm>
#include <array>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

/// Parses an expression into a tree and enumerates its matches in the order of preference.
class RegTwin {
public:
    explicit RegTwin(std::string text) : m_text(std::move(text)) {
        try {
            m_root = Expression(false);
        } catch (int error) {
            m_error = error;
        }
    }

    int Error() const { return m_error; }

    /// What an expression means without case: each letter that stands in no class becomes one.
    static std::string Folded(const std::string& text) {
        std::string folded;
        std::size_t classEnd = 0; // the index of the "]" of the class at hand
        for (std::size_t at = 0; at < text.size(); ++at) {
            const auto c = static_cast<unsigned char>(text[at]);
            if (c == '[' && at >= classEnd) {
                std::size_t first = at + 1;
                first += first < text.size() && text[first] == '^' ? 1 : 0;
                first += first < text.size() && text[first] == ']' ? 1 : 0;
                classEnd = std::min(text.find(']', first), text.size());
            }
            const bool isLetter = (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
            if (isLetter && at >= classEnd)
                folded += {'[', static_cast<char>(c & 0xDF), static_cast<char>(c | 0x20), ']'};
            else
                folded += text[at];
        }
        return folded;
    }

    struct Result {
        int start = -1;
        int length = 0;
        std::array<int, 10> starts{};
        std::array<int, 10> ends{};
    };

    /// The leftmost match that starts at `from` or behind it.
    Result Match(std::string_view subject, int from = 0) {
        m_subject = subject;
        for (int at = from; at <= static_cast<int>(subject.size()); ++at) {
            Result result;
            result.starts.fill(-1);
            result.ends.fill(-1);
            m_found = &result;
            const bool matched = Try(*m_root, at, [&](int end) {
                result.start = at;
                result.length = end - at;
                return true;
            });
            if (matched)
                return result;
        }
        return {};
    }

    /// Steps after which matches are given up, to be asked for by `Exhausted`.
    long steps = 1L << 40;
    bool Exhausted() const { return steps <= 0; }

private:
    using Then = std::function<bool(int)>;
    struct Node {
        char kind = 0; ///< `|` list of branches, `&` list of pieces, a repeat, `(`, `s` set, or an
                       ///< assertion
        int group = 0;
        std::string set;
        bool width = false;
        std::vector<std::shared_ptr<Node>> parts;
    };
    using Tree = std::shared_ptr<Node>;

    char Peek(std::size_t ahead = 0) const {
        return m_at + ahead < m_text.size() ? m_text[m_at + ahead] : '\0';
    }
    static bool In(std::string_view set, char c) {
        return c != 0 && set.find(c) != std::string_view::npos;
    }
    static Tree Make(char kind, bool width = false) {
        auto node = std::make_shared<Node>();
        node->kind = kind;
        node->width = width;
        return node;
    }

    Tree Expression(bool inGroup) {
        if (inGroup && ++m_groups > 9)
            throw 12;
        const int group = m_groups;
        Tree all = Make('|', true);
        do {
            m_at += all->parts.empty() ? 0 : 1;
            Tree branch = Make('&');
            while (Peek() != 0 && !In("|)", Peek())) {
                branch->parts.push_back(Piece());
                branch->width |= branch->parts.back()->width;
            }
            all->width &= branch->width;
            all->parts.push_back(branch);
        } while (Peek() == '|');
        if (inGroup != (Peek() == ')'))
            throw inGroup ? 13 : 14;
        if (!inGroup)
            return all;
        ++m_at;
        Tree node = Make('(', all->width);
        node->group = group;
        node->parts = {all};
        return node;
    }

    Tree Piece() {
        Tree atom = Atom();
        const char op = Peek();
        if (!In("*+?", op))
            return atom;
        if (op != '?' && !atom->width)
            throw 16;
        ++m_at;
        if (In("*+?", Peek()))
            throw 17;
        Tree node = Make(op, op == '+');
        node->parts = {atom};
        return node;
    }

    Tree Atom() {
        const char c = m_text[m_at++];
        switch (c) {
        case '(':
            return Expression(true);
        case '[':
            return Class();
        case '*':
        case '+':
        case '?':
            throw 21;
        case '^':
        case '$':
            return Make(c);
        case '\\':
            if (Peek() == 0)
                throw 22;
            ++m_at;
            return In("<>", m_text[m_at - 1]) ? Make(m_text[m_at - 1])
                                              : Set(std::string(1, m_text[m_at - 1]));
        default:
            return c == '.' ? Set("", true) : Set(std::string(1, c));
        }
    }

    Tree Set(const std::string& members, bool complement = false) {
        Tree node = Make('s', true);
        for (int c = 1; c < 256; ++c)
            if (In(members, static_cast<char>(c)) != complement)
                node->set += static_cast<char>(c);
        return node;
    }

    Tree Class() {
        const bool complement = Peek() == '^';
        m_at += complement ? 1 : 0;
        std::string members;
        for (bool first = true; Peek() != 0 && (first || Peek() != ']'); first = false, ++m_at) {
            if (first || Peek() != '-' || In("]", Peek(1)) || Peek(1) == 0) {
                members += Peek();
                continue;
            }
            const auto low = static_cast<unsigned char>(m_text[m_at - 1]);
            const auto high = static_cast<unsigned char>(m_text[++m_at]);
            if (low > high)
                throw 18;
            for (int c = low; c <= high; ++c)
                members += static_cast<char>(c);
        }
        if (Peek() != ']')
            throw 19;
        ++m_at;
        return Set(members, complement);
    }

    static bool IsWord(char c) {
        return In("0123456789_ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz", c);
    }

    bool TryList(const Node& list, std::size_t part, int at, const Then& then) {
        if (part == list.parts.size())
            return then(at);
        return Try(*list.parts[part], at,
                   [&](int next) { return TryList(list, part + 1, next, then); });
    }

    bool TryGroup(const Node& node, int at, const Then& then) {
        const auto group = static_cast<std::size_t>(node.group);
        const auto store = [](int& pointer, int value) {
            pointer = pointer < 0 ? value : pointer;
            return true;
        };
        return Try(*node.parts[0], at,
                   [&](int end) { return then(end) && store(m_found->ends[group], end); }) &&
               store(m_found->starts[group], at);
    }

    bool Try(const Node& node, int at, const Then& then) {
        if (--steps <= 0)
            return false;
        const char next = at < static_cast<int>(m_subject.size())
                              ? m_subject[static_cast<std::size_t>(at)]
                              : '\0';
        const Then again = [&](int end) { return Try(node, end, then); };
        switch (node.kind) {
        case '|':
            for (const Tree& branch : node.parts)
                if (TryList(*branch, 0, at, then))
                    return true;
            return false;
        case '*':
            return Try(*node.parts[0], at, again) || then(at);
        case '+':
            return Try(*node.parts[0], at, [&](int end) { return again(end) || then(end); });
        case '?':
            return Try(*node.parts[0], at, then) || then(at);
        case '(':
            return TryGroup(node, at, then);
        case 's':
            return In(node.set, next) && then(at + 1);
        case '^':
            return at == 0 && then(at);
        case '$':
            return next == 0 && then(at);
        case '<':
            return IsWord(next) &&
                   (at == 0 || !IsWord(m_subject[static_cast<std::size_t>(at - 1)])) && then(at);
        default:
            return !IsWord(next) && then(at);
        }
    }

    std::string m_text;
    std::size_t m_at = 0;
    int m_groups = 0;
    int m_error = 0;
    Tree m_root;
    std::string_view m_subject;
    Result* m_found = nullptr;
};
