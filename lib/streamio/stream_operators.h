/// `<<` and `>>` for token streams.
#pragma once

#include <concepts>

#include "abstract_istream.h"
#include "abstract_ostream.h"
#include "streamio_manip.h"
#include "streamio_object.h"

namespace io {

/// What CAbstract_ostream::Write takes as a value. A character is a symbol, see below.
template <class T>
concept Writable_value =
    std::same_as<T, bool> || std::same_as<T, double> || std::same_as<T, float> ||
    std::same_as<T, unsigned long> || std::same_as<T, long> || std::same_as<T, unsigned int> ||
    std::same_as<T, int> || std::same_as<T, short> || std::same_as<T, CToken>;

template <Writable_value T>
CAbstract_ostream& operator<<(CAbstract_ostream& stream, const T& value) {
    stream.Write(value);
    return stream;
}
inline CAbstract_ostream& operator<<(CAbstract_ostream& stream, std::u16string_view word) {
    stream.Write(word);
    return stream;
}
/// A null text writes nothing.
inline CAbstract_ostream& operator<<(CAbstract_ostream& stream, const char16_t* word) {
    stream.Write(word);
    return stream;
}
inline CAbstract_ostream& operator<<(CAbstract_ostream& stream, char16_t symbol) {
    stream.WriteSymbol(symbol);
    return stream;
}
inline CAbstract_ostream& operator<<(CAbstract_ostream& stream, const CStreamio_object& object) {
    object.Write(stream);
    return stream;
}
inline CAbstract_ostream& operator<<(CAbstract_ostream& stream, const CStreamio_manip& manip) {
    manip.Write(stream);
    return stream;
}
inline CAbstract_ostream& operator<<(CAbstract_ostream& stream,
                                     CAbstract_ostream& (*manipulator)(CAbstract_ostream&)) {
    return stream.Apply(manipulator);
}

template <class T>
concept Readable_value = requires(CAbstract_istream& stream, T& value) {
    { stream.Read(value) } -> std::same_as<bool>;
};

template <Readable_value T>
CAbstract_istream& operator>>(CAbstract_istream& stream, T& value) {
    stream.Read(value);
    return stream;
}
inline CAbstract_istream& operator>>(CAbstract_istream& stream, char16_t symbol) {
    stream.ReadSymbol(symbol);
    return stream;
}
inline CAbstract_istream& operator>>(CAbstract_istream& stream, CStreamio_object& object) {
    object.Read(stream);
    return stream;
}
inline CAbstract_istream& operator>>(CAbstract_istream& stream, CStreamio_manip& manip) {
    manip.Read(stream);
    return stream;
}
inline CAbstract_istream& operator>>(CAbstract_istream& stream, CStreamio_manip&& manip) {
    manip.Read(stream);
    return stream;
}
inline CAbstract_istream& operator>>(CAbstract_istream& stream,
                                     CAbstract_istream& (*manipulator)(CAbstract_istream&)) {
    return stream.Apply(manipulator);
}

/// Manipulators: end the line, end even an empty line.
QUOREL_API CAbstract_ostream& EndLine(CAbstract_ostream& stream);
QUOREL_API CAbstract_ostream& NewLine(CAbstract_ostream& stream);
/// Manipulators: skip the rest of the line, expect a line end.
QUOREL_API CAbstract_istream& SkipLine(CAbstract_istream& stream);
QUOREL_API CAbstract_istream& ReadEol(CAbstract_istream& stream);

} // namespace io
