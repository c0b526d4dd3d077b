/// The root of everything that can be read from and written to a token stream.
#pragma once

#include "astring.h"
#include "quorel_export.h"

namespace io {

class CAbstract_istream;
class CAbstract_ostream;

/// Something that a token stream reads and writes. The block streams know it by this class alone.
class QUOREL_API CStreamio_object {
public:
    virtual ~CStreamio_object() = default;

    /// Takes the object's value from the stream, from its current token on. What happens on other
    /// input is each class's own matter; a stream only ever fails, block classes throw
    /// XStreamioError.
    virtual void Read(CAbstract_istream& stream) = 0;
    /// Appends the object to the stream.
    virtual void Write(CAbstract_ostream& stream) const = 0;

    /// Replaces `out` by the written text. `flags` are the bits of CToken_ostream::SetFloatFlag;
    /// `precision` is the number of digits of numbers without source text, -1 for 6.
    virtual void ToString(AString& out, unsigned flags, int precision) const;
    virtual void ToString(AString& out) const;
    /// Replaces `out` by the binary form, one byte a unit.
    virtual void ToBinaryString(AString& out) const;
    /// Reads a text with the default token grammar. True if the stream is still good behind it.
    virtual bool FromString(const AString& text);
    /// Units that the object takes in binary form; 0 where a class doesn't tell.
    virtual unsigned GetBinarySize(CAbstract_ostream& stream) const;

protected:
    CStreamio_object() = default;
    CStreamio_object(const CStreamio_object&) = default;
    CStreamio_object& operator=(const CStreamio_object&) = default;
};

/// An object that stands as an item in a block.
class QUOREL_API CStreamio_item_object : public CStreamio_object {};

} // namespace io
