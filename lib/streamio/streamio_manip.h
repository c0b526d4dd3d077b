/// Manipulators: small objects that a stream-style operator applies to a stream.
#pragma once

#include "quorel_export.h"

namespace io {

class CAbstract_istream;
class CAbstract_ostream;

/// Reads or writes something when it is put behind `>>` or `<<` of a token stream.
class QUOREL_API CStreamio_manip {
public:
    virtual ~CStreamio_manip() = default;
    /// On other input than expected, marks the stream failed and leaves its tokens as they were.
    virtual void Read(CAbstract_istream& stream) = 0;
    virtual void Write(CAbstract_ostream& stream) const = 0;
};

} // namespace io
