// Matching without backtracking. Stars divide a pattern into segments of a fixed length each. The
// first segment stands at the text's start and the last at its end; those between may move.
//
// Defined is a search with backtracking: each star in turn tries tails of the text, the nearest
// first (or, greedy, the farthest), and keeps the first with which the rest matches. Not greedy,
// that is the same as putting each segment as far to the left as it goes, one after the other: if
// any placing of the rest matches behind a segment, it also does behind one farther to the left,
// since the star between takes up the difference. Greedy it is, for the same reason, putting each
// segment as far to the right as it goes, beginning with the last. So no choice is ever taken back,
// and the cost is at most the text's length times the pattern's.

#include "wildcard.h"

#include <cstddef>
#include <optional>

#include "astring.h"
#include "char_class.h"

namespace wildcard {
namespace {

/// What matches one unit of the text: a literal or `?`.
struct Element {
    char16_t literal;
    bool isAny;
};

/// A run of elements without a star, and where it stands in the text.
struct Segment {
    std::size_t first; ///< in the elements
    std::size_t count;
    std::size_t position = 0;
};

class Matcher {
public:
    Matcher(std::u16string_view text, std::u16string_view pattern, bool noCase)
        : mText(text), mNoCase(noCase) {
        Compile(pattern);
    }

    /// Gives each segment its position; false when they don't fit.
    bool Place(bool greedy) {
        Segment& first = mSegments.front();
        Segment& last = mSegments.back();
        if (mElements.size() > mText.size() || !Fits(first, 0))
            return false;
        last.position = mText.size() - last.count;
        if (mSegments.size() == 1)
            return last.position == 0;
        if (!Fits(last, last.position))
            return false;
        return greedy ? PlaceRightmost() : PlaceLeftmost();
    }

    /// Stores what each wildcard took.
    void Capture(std::vector<AString>& captures) const {
        std::size_t index = 0;
        const auto store = [&](std::size_t from, std::size_t count) {
            if (index == captures.size())
                captures.emplace_back();
            captures[index++] = mText.substr(from, count);
        };
        std::optional<std::size_t> behind; // the segment before
        for (const Segment& segment : mSegments) {
            if (behind)
                store(*behind, segment.position - *behind);
            for (std::size_t i = 0; i < segment.count; ++i) {
                if (mElements[segment.first + i].isAny)
                    store(segment.position + i, 1);
            }
            behind = segment.position + segment.count;
        }
    }

private:
    void Compile(std::u16string_view pattern) {
        mElements.reserve(pattern.size());
        mSegments.push_back({0, 0});
        for (std::size_t i = 0; i < pattern.size(); ++i) {
            if (pattern[i] == u'*') {
                mSegments.push_back({mElements.size(), 0});
                continue;
            }
            const bool isAny = pattern[i] == u'?';
            if (pattern[i] == u'\\' && i + 1 < pattern.size())
                ++i;
            mElements.push_back({Folded(pattern[i]), isAny});
            ++mSegments.back().count;
        }
    }

    char16_t Folded(char16_t ch) const { return mNoCase ? chars::ToLower(ch) : ch; }

    bool Fits(const Segment& segment, std::size_t position) const {
        for (std::size_t i = 0; i < segment.count; ++i) {
            const Element& element = mElements[segment.first + i];
            if (!element.isAny && element.literal != Folded(mText[position + i]))
                return false;
        }
        return true;
    }

    bool PlaceLeftmost() {
        std::size_t from = mSegments.front().count;
        const std::size_t end = mSegments.back().position;
        for (std::size_t k = 1; k + 1 < mSegments.size(); ++k) {
            Segment& segment = mSegments[k];
            while (from + segment.count <= end && !Fits(segment, from))
                ++from;
            segment.position = from;
            from += segment.count;
            if (from > end)
                return false;
        }
        return from <= end;
    }

    bool PlaceRightmost() {
        const std::size_t start = mSegments.front().count;
        std::size_t end = mSegments.back().position;
        for (std::size_t k = mSegments.size() - 2; k > 0; --k) {
            Segment& segment = mSegments[k];
            while (end >= start + segment.count && !Fits(segment, end - segment.count))
                --end;
            if (end < start + segment.count)
                return false;
            end -= segment.count;
            segment.position = end;
        }
        return end >= start;
    }

    std::u16string_view mText;
    bool mNoCase;
    std::vector<Element> mElements;
    std::vector<Segment> mSegments; ///< one more than there are stars
};

} // namespace

bool Match(std::u16string_view text, std::u16string_view pattern, bool noCase, bool greedy,
           std::vector<AString>* captures) {
    Matcher matcher(text, pattern, noCase);
    if (!matcher.Place(greedy))
        return false;
    if (captures)
        matcher.Capture(*captures);
    return true;
}

} // namespace wildcard
