#include "block_time_func.h"

#include "block_named_value.h"

namespace io {

namespace {

/// The arguments in their order: the field of std::tm, and what it is short of the number written.
struct Field {
    const char16_t* name;
    int std::tm::*member;
    int offset;
};
constexpr Field kFields[] = {{u"year", &std::tm::tm_year, 1900}, {u"month", &std::tm::tm_mon, 1},
                             {u"day", &std::tm::tm_mday, 0},     {u"hour", &std::tm::tm_hour, 0},
                             {u"min", &std::tm::tm_min, 0},      {u"sec", &std::tm::tm_sec, 0}};

} // namespace

CBlock_time_func::CBlock_time_func(const AString& name, std::time_t time) : CBlock_func(name) {
    const std::tm* local = time < 0 ? nullptr : std::localtime(&time);
    if (!local)
        return;
    const std::tm now = *local;
    for (const Field& field : kFields)
        *this << CBlock_named_value(AString(field.name), now.*field.member + field.offset);
}

std::time_t CBlock_time_func::GetTime(const CBlock_func& func) {
    if (func.IsEmpty())
        return -1;
    std::tm time{};
    time.tm_mday = 1;
    time.tm_isdst = -1;
    for (const Field& field : kFields) {
        CBlock_named_value argument{AString(field.name)};
        int number = 0;
        // Years near the ends of int would overflow in mktime's sum.
        if (func.Get(argument) && argument.CBlock_value::Get(number) && number > -1000000000 &&
            number < 1000000000)
            time.*field.member = number - field.offset;
    }
    return std::mktime(&time);
}

} // namespace io
