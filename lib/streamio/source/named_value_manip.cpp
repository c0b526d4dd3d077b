#include "named_value_manip.h"

#include "abstract_istream.h"
#include "read_error.h"

namespace io::detail {

bool IsSameValue(const CToken& a, const CToken& b) {
    if (a.IsNumber() && b.IsNumber())
        return a.GetNumber() == b.GetNumber();
    return a.GetKind() == b.GetKind() && (!a.IsText() || a.GetTextView() == b.GetTextView());
}

void ReadNamedValue(CAbstract_istream& stream, const CBlock_named_value& value,
                    bool (*accept)(const CBlock_named_value& read, void* target), void* target) {
    AString text;
    value.GetName(text);
    if (!stream.IsValue(text)) {
        stream.SetFail();
        return;
    }
    CToken name;
    stream.ReadValue(name);
    if (!stream.IsSymbol(u'=')) {
        stream.PushBack(name);
        stream.SetFail();
        return;
    }
    CToken equals;
    stream.ReadValue(equals);
    CBlock_named_value read;
    const auto giveBack = [&] {
        stream.PushBack(equals);
        stream.PushBack(name);
        stream.SetFail();
    };
    try {
        read.CBlock_value::Read(stream);
    } catch (const XStreamioError&) { // no value there; none was taken
        giveBack();
        return;
    }
    if (accept(read, target))
        return;
    stream.PushBack(read.GetValue());
    giveBack();
}

} // namespace io::detail
