/// PaintGathering: many changes of a document painted once.
#pragma once

class CDocument;

/// While it lives, the document's text views paint nothing and move no pixels, scroll bars and
/// carets; their numbers (top row, sizes, caret, selection) go on as always. At the end of the
/// outermost one each of these views is painted whole.
class PaintGathering {
public:
    /// @param document must outlive this object; its views may go
    explicit PaintGathering(CDocument& document);
    PaintGathering(const PaintGathering&) = delete;
    PaintGathering& operator=(const PaintGathering&) = delete;
    ~PaintGathering();

private:
    CDocument& m_Document;
};
