#include "streamio_object.h"

#include "token_istring.h"
#include "token_ostring.h"

namespace io {

void CStreamio_object::ToString(AString& out, unsigned flags, int precision) const {
    CToken_ostring stream;
    stream.SetFloatFlag(flags);
    stream.SetPrecision(precision);
    Write(stream);
    stream.GetString(out);
}

void CStreamio_object::ToString(AString& out) const {
    ToString(out, 0, -1);
}

void CStreamio_object::ToBinaryString(AString& out) const {
    CToken_ostring stream(0, true);
    Write(stream);
    stream.GetString(out);
}

bool CStreamio_object::FromString(const AString& text) {
    CToken_istring stream(text);
    Read(stream);
    return stream.Good();
}

unsigned CStreamio_object::GetBinarySize(CAbstract_ostream&) const {
    return 0;
}

} // namespace io
