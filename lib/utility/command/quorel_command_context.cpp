#include "quorel_command_context.h"

QuorelCommandContext::~QuorelCommandContext() = default;
