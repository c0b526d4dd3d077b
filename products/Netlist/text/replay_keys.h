/// The keys by which a replay changes the text, and the caret at which they act.
#pragma once

#include "quorel_export.h"

#include <cstdint>

class CSimEditDoc;

/// A caret in a document and the keys of a replay. Nothing of it writes records. A place given lies
/// inside the text.
class QUOREL_API IReplayKeys {
public:
    virtual void PutCaret(std::int32_t row, std::int32_t column) = 0;
    virtual std::int32_t CaretRow() const = 0;
    virtual std::int32_t CaretColumn() const = 0;
    /// @name At the caret, as an editor's keyboard has them
    /// @{
    virtual void PressDelete() = 0;
    virtual void PressBackspace() = 0;
    virtual void PressReturn() = 0;
    /// Inserts, whatever the insert mode; a control character other than the tab does nothing.
    virtual void TypeChar(char character) = 0;
    /// @}
    /// The replay has made or changed a line without a key.
    virtual void LineChanged(std::int32_t row) = 0;

protected:
    ~IReplayKeys() = default;
};

/// The keys as primitives of the document, at a caret of their own: for a document without a view.
class QUOREL_API PrimitiveKeys final : public IReplayKeys {
public:
    explicit PrimitiveKeys(CSimEditDoc& document) : m_document(document) {}

    void PutCaret(std::int32_t row, std::int32_t column) override;
    std::int32_t CaretRow() const override { return m_row; }
    std::int32_t CaretColumn() const override { return m_column; }
    void PressDelete() override;
    void PressBackspace() override;
    void PressReturn() override;
    void TypeChar(char character) override;
    void LineChanged(std::int32_t) override {}

private:
    CSimEditDoc& m_document;
    std::int32_t m_row = 0;
    std::int32_t m_column = 0;
};
