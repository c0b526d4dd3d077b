/// QuorelCommandContext: where a command acts.
#pragma once

#include "astring.h"
#include "quorel_export.h"

class ICommandContext;
class IEditor;
class IViewKey;

/// Nothing of it is owned, and each may be null.
class QUOREL_API QuorelCommandContext {
public:
    QuorelCommandContext(ICommandContext* contextObject, IViewKey* viewKey, IEditor* editor)
        : mContextObject(contextObject), mEditor(editor), mViewKey(viewKey) {}
    virtual ~QuorelCommandContext();

    ICommandContext* mContextObject; ///< gets told of done and undone commands
    IEditor* mEditor;                ///< the command's target
    IViewKey* mViewKey;              ///< of the instance in which the user acted
    AString mName;

protected:
    QuorelCommandContext(const QuorelCommandContext&) = default;
    QuorelCommandContext& operator=(const QuorelCommandContext&) = default;
};
