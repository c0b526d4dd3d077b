/// The messages of commands that marshal arguments.
#pragma once

#include "astring.h"
#include "quorel_export.h"

/// @name What can be wrong with a command's arguments, and with its results
/// @{
extern QUOREL_API const AString kInputArrayDimension;
extern QUOREL_API const AString kInputArrayAccess;
extern QUOREL_API const AString kInputArrayType;
extern QUOREL_API const AString kInputType;
extern QUOREL_API const AString kOutputConversion;
extern QUOREL_API const AString kComplexNeedsPairs;
extern QUOREL_API const AString kMissingArgument;
extern QUOREL_API const AString kNoMemoryForArray;
extern QUOREL_API const AString kOutputArrayAccess;
extern QUOREL_API const AString kNonNumericArgument;
extern QUOREL_API const AString kUnspecifiedArgumentType;
extern QUOREL_API const AString kUnsupportedArgumentType;
/// Of an error code that is below 0.
extern QUOREL_API const AString kNegativeErrorCode;
/// @}
