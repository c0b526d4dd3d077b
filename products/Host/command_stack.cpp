#include "command_stack.h"

#include "assertion.h"
#include "iquorel_command.h"

bool CommandStack::Run(IQuorelCommand* command) {
    USE_ASSERT(command != nullptr);
    if (!command)
        return false;
    if (!m_Work) {
        delete command;
        return false;
    }
    if (!m_Work->Execute(*command)) {
        m_Work->Destroy(*command);
        return false;
    }
    Destroy(m_Undone);
    m_Done.push_back(command);
    return true;
}

bool CommandStack::Undo() {
    return Move(m_Done, m_Undone, &ICommandWork::Undo);
}

bool CommandStack::Redo() {
    return Move(m_Undone, m_Done, &ICommandWork::Redo);
}

void CommandStack::Clear() {
    Destroy(m_Undone);
    Destroy(m_Done);
}

bool CommandStack::Move(Commands& from, Commands& to, bool (ICommandWork::*work)(IQuorelCommand&)) {
    if (from.empty() || !(m_Work->*work)(*from.back()))
        return false;
    to.push_back(from.back());
    from.pop_back();
    return true;
}

void CommandStack::Destroy(Commands& commands) {
    for (; !commands.empty(); commands.pop_back())
        m_Work->Destroy(*commands.back());
}
