/// The typed getters of values, functions and vectors.
#pragma once

#include "block_item.h"

namespace io {

/// What is read as one value: a value itself, the first argument of a function, the first element
/// of a vector. Each getter returns false, and leaves its target alone, when there is no value or
/// it is no such thing. Numbers of any kind convert; their bounds are compared before the fraction
/// is cut off, so that 65535.9 is no unsigned short.
class QUOREL_API CBlock_getters : public CBlock_func_arg {
public:
    /// Copies a text and a zero to `text`, which must have room for it.
    virtual bool Get(char16_t* text) const;
    /// True and False alone.
    virtual bool Get(bool& value) const;
    /// A text of any text kind; the source text of a number is none.
    virtual bool Get(AString& text) const;
    virtual bool Get(unsigned int& value) const;
    /// 0 to 4294967295.
    virtual bool Get(unsigned long& value) const;
    virtual bool Get(unsigned short& value) const;
    virtual bool Get(int& value) const;
    /// -2147483648 to 2147483647.
    virtual bool Get(long& value) const;
    virtual bool Get(short& value) const;
    virtual bool Get(float& value) const;
    virtual bool Get(double& value) const;

protected:
    friend class CBlock_func;
    /// The token that the getters read; null if there is none.
    virtual const CToken* GetLeadToken() const = 0;
};

} // namespace io
