/// IUnknown: an object that counts its references and answers interface ids; the result codes.
#pragma once

#include <cstdint>

#include "interface_id.h"

/// A result of the module's entries: negative is a failure.
using ResultCode = std::int32_t;

/// @name Result codes
/// @{
inline constexpr ResultCode kResultOk = 0;
inline constexpr ResultCode kResultFalse = 1;
inline constexpr ResultCode kResultNoInterface = static_cast<ResultCode>(0x80004002u);
inline constexpr ResultCode kResultPointer = static_cast<ResultCode>(0x80004003u);
inline constexpr ResultCode kResultFail = static_cast<ResultCode>(0x80004005u);
inline constexpr ResultCode kResultNoAggregation = static_cast<ResultCode>(0x80040110u);
inline constexpr ResultCode kResultClassNotAvailable = static_cast<ResultCode>(0x80040111u);
inline constexpr ResultCode kResultOutOfMemory = static_cast<ResultCode>(0x8007000Eu);
/// @}

/// The root of the interfaces that are obtained through the module's entries. An object lives as
/// long as its count is above 0; the Release that brings it to 0 destroys it.
class QUOREL_API IUnknown {
public:
    /// Gives the interface of that id with one more reference.
    /// @return kResultOk; kResultNoInterface, *object null then; kResultPointer for a null object
    virtual ResultCode QueryInterface(const InterfaceId& id, void** object) = 0;
    /// @return the count after it
    virtual std::uint32_t AddRef() = 0;
    /// @return the count after it; at 0 the object is gone
    virtual std::uint32_t Release() = 0;

protected:
    IUnknown() = default;
    IUnknown(const IUnknown&) = default;
    IUnknown& operator=(const IUnknown&) = default;
    ~IUnknown() = default;
};
