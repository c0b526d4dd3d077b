/// A manipulator for one named value.
#pragma once

#include "block_named_value.h"
#include "streamio_manip.h"

namespace io {

namespace detail {
/// Reads the parts of `value` from the stream as CNamed_value_manip says. `accept` takes the value
/// read, or refuses it.
QUOREL_API void ReadNamedValue(CAbstract_istream& stream, const CBlock_named_value& value,
                               bool (*accept)(const CBlock_named_value& read, void* target),
                               void* target);
/// True for equal numbers of any kinds, and for equal kinds with equal texts. How a number, true or
/// false was written makes no difference.
QUOREL_API bool IsSameValue(const CToken& a, const CToken& b);
} // namespace detail

/// Reads `name=value` into a T, or without a T expects that very value; writes `name=value`. T is
/// int, unsigned int, double, bool, AString, or char16_t* (a text that is copied to where the
/// pointer points). When something else is next, the stream fails and has lost no token.
template <class T>
class CNamed_value_manip : public CStreamio_manip {
public:
    /// `destination` may be null, and must outlive the manipulator.
    explicit CNamed_value_manip(CBlock_named_value value, T* destination = nullptr)
        : mValue(std::move(value)), mDestination(destination) {}

    void Read(CAbstract_istream& stream) override {
        detail::ReadNamedValue(stream, mValue, &Accept, this);
    }
    void Write(CAbstract_ostream& stream) const override { mValue.Write(stream); }

private:
    static bool Accept(const CBlock_named_value& read, void* target) {
        auto& self = *static_cast<CNamed_value_manip*>(target);
        return self.mDestination ? read.Get(*self.mDestination)
                                 : detail::IsSameValue(read.GetValue(), self.mValue.GetValue());
    }

    CBlock_named_value mValue;
    T* mDestination;
};

} // namespace io
