#include "token_automaton.h"

#include "byte_classes.h"
#include "reg_places.h"

#include <algorithm>

std::size_t TokenAutomaton::s_cache = 8 << 20;

namespace {

/// Bytes that a state or a list takes beside its key and its row, about.
constexpr std::size_t kNodeSize = 96;

/// What a state's key ends with: the context that its points stand in.
enum Context : char32_t { kPlain = 0, kAfterWord = 1, kAtBegin = 2 };

std::size_t PointsOf(const RegNode& node) {
    if (node.op == RegOp::Exactly)
        return node.length;
    return node.op == RegOp::Plus ? 2 : 1;
}

/// The bytes that a point takes, none where it takes no character.
ByteSet BytesOf(const RegCode& code, const RegNode& node, std::size_t offset) {
    if (node.op == RegOp::Exactly)
        return ByteSet::Of(static_cast<unsigned char>(code.Text(node)[offset]));
    const bool takes = RegPlaces::IsLoop(node) || RegPlaces::IsBarrier(node);
    return takes && node.op != RegOp::End ? code.Set(node.operand) : ByteSet();
}

} // namespace

TokenAutomaton::TokenAutomaton(const std::vector<TokenTraits>& tokens, std::size_t cacheShare)
    : m_tokens(tokens), m_cache(s_cache / cacheShare), m_reported(tokens.size()) {
    AddPoints(tokens);
    SortBytes();
    std::vector<ByteSet> groups;
    for (const TokenTraits& token : tokens)
        AddToGroup(groups, token);
    Forget();
}

void TokenAutomaton::AddPoints(const std::vector<TokenTraits>& tokens) {
    for (std::uint32_t token = 0; token < tokens.size(); ++token) {
        const RegCode& code = tokens[token].expression->Code();
        m_codes.push_back(&code);
        m_firstNode.push_back(m_pointOfNode.size());
        for (std::size_t node = 0; node < code.Nodes().size(); ++node) {
            m_pointOfNode.push_back(static_cast<Point>(m_points.size()));
            for (std::size_t offset = 0; offset < PointsOf(code.Node(node)); ++offset)
                m_points.push_back(
                    {token, static_cast<std::uint16_t>(node), static_cast<std::uint16_t>(offset)});
            m_asksBehind |= code.Node(node).op == RegOp::WordA;
        }
    }
    m_seen = VisitMarks<>(m_points.size());
    m_made = VisitMarks<>(m_points.size());
}

void TokenAutomaton::SortBytes() {
    ByteClasses classes;
    classes.Split(kRegWordSet);
    ByteSet letters; // that stand for themselves
    for (const PointOf& point : m_points) {
        const RegCode& code = *m_codes[point.token];
        const RegNode& node = code.Node(point.node);
        if (node.op == RegOp::Exactly)
            letters |= BytesOf(code, node, point.offset);
        else if (point.offset == 0)
            classes.Split(BytesOf(code, node, 0));
    }
    for (unsigned letter = letters.Next(0); letter < 256; letter = letters.Next(letter + 1))
        classes.Split(ByteSet::Of(static_cast<unsigned char>(letter)));
    m_byteOfClass.resize(classes.Count() + 1);
    for (std::size_t byte = 0; byte < 256; ++byte) {
        m_classes[byte] = classes.Of(static_cast<unsigned char>(byte));
        m_byteOfClass[m_classes[byte]] = byte;
    }
    m_classes[kNothing] = static_cast<std::uint16_t>(classes.Count());
    m_byteOfClass.back() = kNothing;
}

void TokenAutomaton::AddToGroup(std::vector<ByteSet>& groups, const TokenTraits& token) {
    const ByteSet separator = token.separable ? token.startSeparator : ByteSet::All();
    auto group = static_cast<std::size_t>(std::find(groups.begin(), groups.end(), separator) -
                                          groups.begin());
    if (group == groups.size() && group + 1 < kGroups)
        groups.push_back(separator);
    group = std::min(group, kGroups - 1);
    const std::uint32_t bit = std::uint32_t{1} << group;
    for (unsigned byte = 0; byte < 256; ++byte) {
        if (token.first.Has(static_cast<unsigned char>(byte)))
            m_groupsFrom[byte] |= bit;
        if (separator.Has(static_cast<unsigned char>(byte)))
            m_groupsBehind[byte] |= bit;
    }
    m_groupsBehind[kNothing] |= bit;
}

void TokenAutomaton::Forget() {
    m_stateOf.clear();
    m_keys.assign(1, nullptr); // the dead state
    m_steps.assign(m_byteOfClass.size(), Step{kDead, 0});
    for (auto& starts : m_starts)
        starts.fill(kUnknown);
    m_listOf.clear();
    m_lists.assign(1, nullptr); // no list
    m_cached = 0;
}

std::optional<bool> TokenAutomaton::MatchesAt(std::string_view text, std::size_t column) {
    constexpr std::size_t kFew = 32;
    if (m_cached > m_cache)
        Forget();
    State state = StartAt(kNothing, false);
    const std::size_t end = std::min(column + kFew, text.size() + 1);
    for (; state != kDead && column < end; ++column) {
        const std::size_t byteClass =
            m_classes[column < text.size() ? static_cast<unsigned char>(text[column]) : kNothing];
        Step step = m_steps[state * m_byteOfClass.size() + byteClass];
        if (step.next == kUnknown) {
            if (!MayMakeSteps()) {
                AllowWork(kFew); // for the next time
                return std::nullopt;
            }
            step = MakeStep(state, byteClass);
        }
        if (step.ends != 0)
            return true;
        state = step.next;
    }
    return state == kDead ? std::optional(false) : std::nullopt;
}

TokenAutomaton::State TokenAutomaton::MakeStart(std::size_t before, bool covered) {
    m_key.clear();
    m_workLeft -= static_cast<std::ptrdiff_t>(m_tokens.size());
    for (std::uint32_t token = 0; token < m_tokens.size(); ++token) {
        const TokenTraits& traits = m_tokens[token];
        const bool follows =
            before == kNothing || traits.startSeparator.Has(static_cast<unsigned char>(before));
        if (!traits.separable || (follows && !covered))
            m_key.push_back(PointAt(token, m_codes[token]->Entry()));
    }
    const bool afterWord = before != kNothing && IsRegWordChar(static_cast<unsigned char>(before));
    m_key.push_back(before == kNothing          ? kAtBegin
                    : afterWord && m_asksBehind ? kAfterWord
                                                : kPlain);
    return m_starts[covered][before] = m_key.size() > 1 ? MakeState(m_key) : kDead;
}

TokenAutomaton::State TokenAutomaton::MakeState(const std::u32string& key) {
    const auto [at, isNew] = m_stateOf.try_emplace(key, static_cast<State>(m_keys.size()));
    if (isNew) {
        m_keys.push_back(&at->first);
        m_steps.resize(m_steps.size() + m_byteOfClass.size());
        m_cached += key.size() * sizeof(char32_t) + m_byteOfClass.size() * sizeof(Step) + kNodeSize;
        m_workLeft -= static_cast<std::ptrdiff_t>(m_byteOfClass.size());
    }
    return at->second;
}

TokenAutomaton::Step TokenAutomaton::MakeStep(State state, std::size_t byteClass) {
    const std::u32string& from = *m_keys[state];
    const std::size_t byte = m_byteOfClass[byteClass];
    const bool isEnd = byte == kNothing;
    const bool isWord = !isEnd && IsRegWordChar(static_cast<unsigned char>(byte));
    const RegContext context{.atBegin = from.back() == kAtBegin,
                             .afterWord = from.back() == kAfterWord,
                             .next = isEnd    ? RegContext::AtEnd
                                     : isWord ? RegContext::BeforeWord
                                              : RegContext::BeforeOther};
    m_seen.Clear();
    m_made.Clear();
    m_key.clear();
    std::vector<std::uint32_t> ended;
    for (std::size_t i = 0; i + 1 < from.size(); ++i) {
        const std::uint32_t token = m_points[from[i]].token;
        if (!ended.empty() && ended.back() == token)
            continue; // a match that is preferred to this one ends here
        if (Advance(from[i], context, byteClass))
            ended.push_back(token);
    }
    Step step{kDead, ListOf(ended)};
    if (!m_key.empty()) {
        m_key.push_back(isWord && m_asksBehind ? kAfterWord : kPlain);
        step.next = MakeState(m_key);
    }
    m_steps[state * m_byteOfClass.size() + byteClass] = step;
    return step;
}

/// Follows a match from a point up to the next character and over it. What it reaches goes behind
/// m_key. @return whether the match ends before the character, which leaves out what a search
/// would prefer less
bool TokenAutomaton::Advance(Point from, const RegContext& context, std::size_t byteClass) {
    const std::size_t byte = m_byteOfClass[byteClass];
    m_stack.assign(1, from);
    while (!m_stack.empty()) {
        const Point at = m_stack.back();
        m_stack.pop_back();
        --m_workLeft;
        if (!m_seen.Mark(at))
            continue;
        const PointOf point = m_points[at];
        const RegCode& code = *m_codes[point.token];
        const RegNode& node = code.Node(point.node);
        if (node.op == RegOp::End)
            return true;
        const auto push = [&](std::uint16_t way) {
            if (way != kNoWay)
                m_stack.push_back(PointAt(point.token, way));
        };
        const bool isLoop = RegPlaces::IsLoop(node);
        if (isLoop || RegPlaces::IsBarrier(node)) {
            if (byte != kNothing &&
                BytesOf(code, node, point.offset).Has(static_cast<unsigned char>(byte)))
                Behind(at);
            if (isLoop && (node.op == RegOp::Star || point.offset != 0))
                push(node.go);
        } else if (node.op == RegOp::Branch) {
            push(node.other);
            push(node.go);
        } else if (IsRegGroupBound(node.op) || context.Holds(node.op)) {
            push(node.go);
        }
    }
    return false;
}

/// Adds the point behind one that has taken a character.
void TokenAutomaton::Behind(Point eater) {
    const auto [token, place, offset] = m_points[eater];
    const RegNode& node = m_codes[token]->Node(place);
    Point behind = eater;
    if (node.op == RegOp::Exactly && offset + 1 < node.length)
        behind = eater + 1;
    else if (node.op == RegOp::Plus)
        behind = eater - offset + 1;
    else if (node.op != RegOp::Star)
        behind = node.go == kNoWay ? kUnknown : PointAt(token, node.go);
    if (behind != kUnknown && m_made.Mark(behind))
        m_key.push_back(behind);
}

std::uint32_t TokenAutomaton::ListOf(const std::vector<std::uint32_t>& tokens) {
    if (tokens.empty())
        return 0;
    const auto [at, isNew] =
        m_listOf.try_emplace(tokens, static_cast<std::uint32_t>(m_lists.size()));
    if (isNew) {
        m_lists.push_back(&at->first);
        m_cached += tokens.size() * sizeof(tokens[0]) + kNodeSize;
    }
    return at->second;
}
