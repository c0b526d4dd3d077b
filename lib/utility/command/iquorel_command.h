/// IQuorelCommand: one action of a user, as those see it who take part in it.
#pragma once

#include <cstdint>
#include <map>

#include "quorel_export.h"

class QuorelCommandInfo;
class QuorelDeltaState;
class Undoable;

/// What every command answers. Every command is a QuorelCommand, as the constructor sees to.
class QUOREL_API IQuorelCommand {
public:
    /// By key, in ascending order.
    using Infos = std::map<std::int32_t, QuorelCommandInfo*>;

    virtual ~IQuorelCommand() = default;
    virtual bool IsDone() const = 0;
    virtual bool IsUndone() const = 0;
    virtual bool IsRedone() const = 0;
    /// To be called before the command changes the object: it joins the command's step.
    virtual void AddUndoable(Undoable* obj) = 0;
    /// Records a change; it belongs to the command from then on, if that is undoable.
    virtual void AddDeltaState(QuorelDeltaState* state) = 0;
    /// Stores a record, which belongs to the command from then on; the one that was there under the
    /// key is the caller's again.
    virtual void SetCommandInfo(std::int32_t key, QuorelCommandInfo* info) = 0;
    /// Null when there is none.
    virtual QuorelCommandInfo* GetCommandInfo(std::int32_t key) = 0;
    virtual Infos& GetCommandInfos() = 0;

    IQuorelCommand(const IQuorelCommand&) = delete;
    IQuorelCommand& operator=(const IQuorelCommand&) = delete;

private:
    friend class QuorelCommand;
    IQuorelCommand() = default;
};
