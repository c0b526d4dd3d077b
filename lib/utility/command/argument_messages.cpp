#include "argument_messages.h"

const AString kInputArrayDimension = u"Input array must be one dimensional.";
const AString kInputArrayAccess = u"Invalid input array access.";
const AString kInputArrayType = u"Unsupported input array data type.";
const AString kInputType = u"Unsupported input data type.";
const AString kOutputConversion = u"Output data type conversion error.";
const AString kComplexNeedsPairs = u"Complex data requires an even number of doubles.";
const AString kMissingArgument = u"Missing argument data.";
const AString kNoMemoryForArray = u"Unable to allocate memory for return array.";
const AString kOutputArrayAccess = u"Invalid output array access.";
const AString kNonNumericArgument = u"Non numeric argument.";
const AString kUnspecifiedArgumentType = u"Unspecified command argument type.";
const AString kUnsupportedArgumentType = u"Unsupported argument type.";
const AString kNegativeErrorCode = u"Invalid error code: cannot be negative.";
