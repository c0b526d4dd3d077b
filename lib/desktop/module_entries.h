/// The C entries of the loadable module: their signatures, and their names for a host that loads
/// it.
#pragma once

#include "iunknown.h"

extern "C" {

/// The factory's interface of that id with one more reference, or null when the factory doesn't
/// answer it, when id is null or when memory is out. The first call makes the factory and counts
/// one module lock; later calls give the same one.
QUOREL_API void* DllGetFactoryInterface(const InterfaceId* id);
/// The class object (IClassFactory) of the factory's class.
/// @return kResultPointer for a null argument; kResultClassNotAvailable for another class, *object
///         null then
QUOREL_API ResultCode DllGetClassObject(const InterfaceId* classId, const InterfaceId* id,
                                        void** object);
/// kResultOk when nothing holds the module, else kResultFalse.
QUOREL_API ResultCode DllCanUnloadNow();
/// Writes the registration by which hosts find the module by its class id.
/// @return the result of the first failing step
QUOREL_API ResultCode DllRegisterServer();
/// Removes the registration; always kResultOk.
QUOREL_API ResultCode DllUnregisterServer();
}

/// @name For looking an entry up in a module opened at run time
/// @{
using GetFactoryInterfaceEntry = void* (*)(const InterfaceId* id);
using GetClassObjectEntry = ResultCode (*)(const InterfaceId* classId, const InterfaceId* id,
                                           void** object);
using ModuleEntry = ResultCode (*)();
inline constexpr const char* kGetFactoryInterfaceEntry = "DllGetFactoryInterface";
inline constexpr const char* kGetClassObjectEntry = "DllGetClassObject";
inline constexpr const char* kCanUnloadNowEntry = "DllCanUnloadNow";
inline constexpr const char* kRegisterServerEntry = "DllRegisterServer";
inline constexpr const char* kUnregisterServerEntry = "DllUnregisterServer";
/// @}
